#include "Shells.h"

#include <attrlog/Mapping.h>

#include <gtest/gtest.h>

// What the adapters of the mappings offer by the names of their attributes.

namespace {

using namespace Maintenance;
using Group::GroupKey;
using Profile::ProfileKey;
using Zel::Ptr;

const GroupKey uplinks(Group::groupTypeInterface, "x");
const ProfileKey drain(Profile::profileTypeBgp, "y");

TEST(MappingShells, OfAMemberWriteOneEntryOrItsDeletion) {
  const Announced<MemberToGroup> member(Zel::makeObject<MemberToGroup>("m"));
  member.adapter->zelHandleGroupSerializeSing(uplinks, true, false);
  EXPECT_EQ(member.sender.written(), plain("00 00 00 26 02 00 00 00 00 00 00 00 "
                                           "00 00 01 02 01 00 00 00 00 00 00 00 00 00 01 "
                                           "00 00 00 02 00 00 00 01 78 01 03"));
  member.adapter->zelHandleSelectedProfileSerializeSing(Profile::profileTypeUnit, drain, false);
  EXPECT_EQ(member.sender.written(), plain("00 00 00 29 02 00 00 00 00 00 00 00 "
                                           "00 00 01 03 01 00 00 00 00 00 00 00 00 00 01 "
                                           "00 00 00 03 00 00 00 01 00 00 00 01 79 03"));
  member.adapter->zelHandleSelectedProfileSerializeSing(Profile::profileTypeUnit, drain, true);
  EXPECT_EQ(member.sender.written(), plain("00 00 00 20 02 00 00 00 00 00 00 00 "
                                           "ff ff fe fd 01 00 00 00 00 00 00 00 00 00 01 "
                                           "00 00 00 03 03"));
}

TEST(MappingShells, OfAGroupWriteOneUnitOrItsDeletion) {
  const Announced<GroupToUnit> group(Zel::makeObject<GroupToUnit>(uplinks));
  group.adapter->zelHandleUnitNameSerializeSing("s", true, false);
  EXPECT_EQ(group.sender.written(), plain("00 00 00 22 02 00 00 00 00 00 00 00 "
                                          "00 00 01 03 01 00 00 00 00 00 00 00 00 00 01 "
                                          "00 00 00 01 73 01 03"));
  group.adapter->zelHandleUnitNameSerializeSing("s", true, true);
  EXPECT_EQ(group.sender.written(), plain("00 00 00 21 02 00 00 00 00 00 00 00 "
                                          "ff ff fe fd 01 00 00 00 00 00 00 00 00 00 01 "
                                          "00 00 00 01 73 03"));
}

TEST(MappingShells, OfADirectoryWriteThatAMemberHasGone) {
  const Announced<GroupToUnitDir> dir(groupToUnitDirFactory("d"));
  dir.adapter->zelHandleGroupToUnitSerializeSing(uplinks, nullptr);
  EXPECT_EQ(dir.sender.written(), plain("00 00 00 25 02 00 00 00 00 00 00 00 "
                                        "ff ff fe fe 01 00 00 00 00 00 00 00 00 00 01 "
                                        "00 00 00 02 00 00 00 01 78 03"));
}

TEST(MappingShells, OfCollectionsHaveNothingLeftWhereNothingIsOwed) {
  const Announced<MemberToGroup> member(Zel::makeObject<MemberToGroup>("m"));
  EXPECT_TRUE(member.adapter->zelHandleGroupSerializeColl());
  EXPECT_TRUE(member.adapter->zelHandleSelectedProfileSerializeColl());
  const Announced<GroupToUnit> group(Zel::makeObject<GroupToUnit>(uplinks));
  EXPECT_TRUE(group.adapter->zelHandleUnitNameSerializeColl());
  const Announced<GroupToUnitDir> dir(groupToUnitDirFactory("d"));
  EXPECT_TRUE(dir.adapter->zelHandleGroupToUnitSerializeColl());
  EXPECT_EQ(member.sender.written() + group.sender.written() + dir.sender.written(), "");
}

TEST(MappingShells, OfADirectoryFindMakeAndDropTheAdapterOfAMember) {
  const Announced<GroupToUnitDir> dir(groupToUnitDirFactory("d"));
  const Ptr<GroupToUnit> group = dir.entity->groupToUnitIs(uplinks);
  const auto made = group->zelNboAttrLogSa(dir.sender.out());
  ASSERT_TRUE(made);
  EXPECT_EQ(dir.adapter->groupToUnitNboAttrLogAdapter(group), made);
  EXPECT_EQ(dir.adapter->groupToUnitNboAttrLogAdapterDel(group), made);
  EXPECT_FALSE(dir.adapter->groupToUnitNboAttrLogAdapter(group));
  EXPECT_TRUE(dir.adapter->groupToUnitNboAttrLogAdapterIs(AnEnd::Flags(0x40), group, 1,
                                                          dir.sender.out(), nullptr));
  EXPECT_TRUE(group->zelNboAttrLogSa(dir.sender.out()));
}

TEST(MappingShells, OfWhatAMemberOwesSetOneBitEach) {
  const auto flowOut = cleanOf(Zel::makeObject<MemberToGroup>("m"));
  auto bits = flowOut->zelDirtyBitSet0();
  EXPECT_EQ(bits.word(), 0x6U);
  bits.zelGroupHasSyncedIs(false);
  EXPECT_EQ(bits.word(), 0x4U);
  bits.zelSelectedProfileHasSyncedIs(false);
  EXPECT_EQ(bits.word(), 0U);
  bits.zelIsProfileChangeCauseDirtyIs(true);
  EXPECT_EQ(bits.word(), 0x8U);
  bits.zelIsPartOfDynamicUnitDirtyIs(true);
  EXPECT_EQ(bits.word(), 0x18U);
}

TEST(MappingShells, OfWhatAGroupAndADirectoryOweSetTheirBit) {
  auto units = cleanOf(Zel::makeObject<GroupToUnit>(uplinks));
  units->zelDirtyBitSet0().zelUnitNameHasSyncedIs(false);
  EXPECT_EQ(units->zelDirtyBitSet0().word(), 0U);
  auto groups = cleanOf(groupToUnitDirFactory("d"));
  groups->zelDirtyBitSet0().zelGroupToUnitHasSyncedIs(false);
  EXPECT_EQ(groups->zelDirtyBitSet0().word(), 0U);
  groups->zelDirtyBitSet0().zelGroupToUnitHasSyncedIs(true);
  EXPECT_EQ(groups->zelDirtyBitSet0().word(), 0x2U);
}

TEST(MappingShells, OfDirtyKeysKeepEachTableByItself) {
  const auto member = cleanOf(Zel::makeObject<MemberToGroup>("m"));
  member->zelIsGroupDirtyIs(uplinks, true);
  EXPECT_TRUE(member->hasDirtyAttributes());
  EXPECT_EQ(member->zelIsSelectedProfileDirtyMap().count(), 0U);
  EXPECT_TRUE(member->zelIsGroupDirtyDel(uplinks));
  EXPECT_FALSE(member->hasDirtyAttributes());
  member->zelIsSelectedProfileDirtyIs(Profile::profileTypeBgp, true);
  EXPECT_TRUE(member->newZelIsSelectedProfileDirty(Profile::profileTypeUnit, true));
  EXPECT_EQ(member->zelIsSelectedProfileDirtyMap().count(), 2U);
  using MemberFlowOut = MemberToGroup::ZelNboAttrLogSa::FlowOut;
  MemberFlowOut::ZelIsSelectedProfileDirtyMap::Iterator at(member->zelIsSelectedProfileDirtyMap());
  EXPECT_TRUE(member->zelIsSelectedProfileDirtyDel(at));
  EXPECT_FALSE(member->zelIsSelectedProfileDirtyDel(Profile::profileTypeBgp)); // the first
  EXPECT_TRUE(member->zelIsSelectedProfileDirtyDel(Profile::profileTypeUnit));
  EXPECT_FALSE(member->hasDirtyAttributes());

  const auto units = cleanOf(Zel::makeObject<GroupToUnit>(uplinks));
  units->zelIsUnitNameDirtyIs("s", false);
  EXPECT_TRUE(units->hasDirtyAttributes());
  EXPECT_TRUE(units->zelIsUnitNameDirtyDel("s"));
  EXPECT_FALSE(units->zelIsUnitNameDirtyDel("s"));

  const auto groups = cleanOf(groupToUnitDirFactory("d"));
  groups->zelIsGroupToUnitDirtyIs(uplinks, true);
  EXPECT_TRUE(groups->hasDirtyAttributes());
  EXPECT_TRUE(groups->zelIsGroupToUnitDirtyDel(uplinks));
  EXPECT_FALSE(groups->hasDirtyAttributes());
}

} // namespace
