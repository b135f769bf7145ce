#include "Channel.h"
#include "Payload.h"

#include "support/Failure.h"
#include "support/Slot.h"

#include <attrlog/Mapping.h>

#include <gtest/gtest.h>

// One record of each attribute of the mappings, byte for byte, and what the mirror makes of it.

namespace {

using namespace Maintenance;
using Group::GroupKey;
using Profile::ProfileKey;
using Support::rangeFailure;
using Support::slotOf;

const GroupKey uplinks(Group::groupTypeInterface, "x");

class MemberToGroupRecords : public ::testing::Test {
protected:
  Channel<MemberToGroup> channel{Zel::makeObject<MemberToGroup>("m")};
  const Zel::Ptr<MemberToGroup>& member = channel.original;
  const Zel::Ptr<MemberToGroup>& mirror = channel.mirror;
};

TEST_F(MemberToGroupRecords, TheMirrorIsMadeFromItsName) {
  ASSERT_TRUE(mirror);
  EXPECT_EQ(mirror->name(), "m");
  EXPECT_EQ(mirror->fwkType(), MemberToGroup::_fwkType());
}

TEST_F(MemberToGroupRecords, Group) {
  member->groupIs(uplinks, true);
  channel.expectWritten("00 00 00 26 02 00 00 00 00 00 00 00 "
                        "00 00 01 02 01 00 00 00 00 00 00 00 00 00 01 "
                        "00 00 00 02 00 00 00 01 78 01 03");
  EXPECT_TRUE(mirror->group(uplinks));
  member->groupDel(uplinks);
  channel.expectWritten("00 00 00 25 02 00 00 00 00 00 00 00 "
                        "ff ff fe fe 01 00 00 00 00 00 00 00 00 00 01 "
                        "00 00 00 02 00 00 00 01 78 03");
  EXPECT_EQ(mirror->groupMap().count(), 0U);
}

TEST_F(MemberToGroupRecords, SelectedProfileWithATypeOfItsOwn) {
  member->selectedProfileIs(Profile::profileTypeUnit, ProfileKey(Profile::profileTypeBgp, "y"));
  channel.expectWritten("00 00 00 29 02 00 00 00 00 00 00 00 "
                        "00 00 01 03 01 00 00 00 00 00 00 00 00 00 01 "
                        "00 00 00 03 00 00 00 01 00 00 00 01 79 03");
  EXPECT_EQ(mirror->selectedProfile(Profile::profileTypeUnit),
            ProfileKey(Profile::profileTypeBgp, "y"));
  member->selectedProfileDel(Profile::profileTypeUnit);
  channel.expectWritten("00 00 00 20 02 00 00 00 00 00 00 00 "
                        "ff ff fe fd 01 00 00 00 00 00 00 00 00 00 01 "
                        "00 00 00 03 03");
  EXPECT_EQ(mirror->selectedProfileMap().count(), 0U);
}

TEST_F(MemberToGroupRecords, ProfileChangeCause) {
  member->profileChangeCauseIs(userConfigChange);
  channel.expectWritten("00 00 00 20 02 00 00 00 00 00 00 00 "
                        "00 00 01 04 01 00 00 00 00 00 00 00 00 00 01 "
                        "00 00 00 02 03");
  EXPECT_EQ(mirror->profileChangeCause(), userConfigChange);
}

TEST_F(MemberToGroupRecords, AnUnknownCauseArrivesAsItsNumberAndIsCounted) {
  const auto unknown = static_cast<ProfileChangeCause>(3);
  member->profileChangeCauseIs(unknown);
  channel.expectWritten("00 00 00 20 02 00 00 00 00 00 00 00 "
                        "00 00 01 04 01 00 00 00 00 00 00 00 00 00 01 "
                        "00 00 00 03 03");
  EXPECT_EQ(mirror->profileChangeCause(), unknown);
  EXPECT_EQ(channel.receiver.counts().unknownEnums, 1U);
}

TEST_F(MemberToGroupRecords, PartOfDynamicUnit) {
  member->partOfDynamicUnitIs(true);
  channel.expectWritten("00 00 00 1d 02 00 00 00 00 00 00 00 "
                        "00 00 01 05 00 00 00 00 01 00 00 00 00 00 01 "
                        "01 03");
  EXPECT_TRUE(mirror->partOfDynamicUnit());
}

TEST_F(MemberToGroupRecords, AnUnknownTypeInAKeyIsABadValue) {
  for (const char* payload : {"00 00 00 04 00 00 00 01 00 00 00 01 79",    // of the key
                              "00 00 00 03 00 00 00 04 00 00 00 01 79"}) { // of the profile
    const Channel<MemberToGroup> other(Zel::makeObject<MemberToGroup>("m"));
    other.receiver.apply(std::string("00 00 00 29 02 00 00 00 00 00 00 00 "
                                     "00 00 01 03 01 00 00 00 00 00 00 00 00 00 01 ") +
                         payload + " 03");
    EXPECT_EQ(other.receiver.counts().badValues, 1U) << payload;
    EXPECT_EQ(other.receiver.counts().unknownEnums, 0U);
    EXPECT_EQ(other.mirror->selectedProfileMap().count(), 0U);
  }
}

class GroupToUnitDirRecords : public ::testing::Test {
protected:
  Channel<GroupToUnitDir> channel{groupToUnitDirFactory("d")};
  const Zel::Ptr<GroupToUnitDir>& dir = channel.original;
  const Zel::Ptr<GroupToUnitDir>& mirror = channel.mirror;
};

TEST_F(GroupToUnitDirRecords, AMemberByItsGroupAndTheUnitsBelowIt) {
  dir->groupToUnitIs(uplinks);
  channel.expectWritten("00 00 00 2d 02 00 00 00 00 00 00 00 "
                        "00 00 01 02 01 00 00 00 00 00 00 00 97 00 01 "
                        "00 00 00 02 00 00 00 01 78 04 00 00 00 00 00 00 00 03");
  const auto copy = mirror->groupToUnit(uplinks);
  ASSERT_TRUE(copy);
  EXPECT_EQ(copy->key(), uplinks);
  EXPECT_EQ(copy->name(), "");
  dir->groupToUnit(uplinks)->unitNameIs("s", true);
  channel.expectWritten("00 00 00 22 04 00 00 00 00 00 00 00 "
                        "00 00 01 03 01 00 00 00 00 00 00 00 00 00 01 "
                        "00 00 00 01 73 01 03");
  EXPECT_TRUE(copy->unitName("s"));
  dir->groupToUnit(uplinks)->unitNameDel("s");
  channel.expectWritten("00 00 00 21 04 00 00 00 00 00 00 00 "
                        "ff ff fe fd 01 00 00 00 00 00 00 00 00 00 01 "
                        "00 00 00 01 73 03");
  EXPECT_EQ(copy->unitNameMap().count(), 0U);
  dir->groupToUnitDel(uplinks);
  channel.expectWritten("00 00 00 25 02 00 00 00 00 00 00 00 "
                        "ff ff fe fe 01 00 00 00 00 00 00 00 00 00 01 "
                        "00 00 00 02 00 00 00 01 78 03");
  EXPECT_FALSE(mirror->groupToUnit(uplinks));
}

TEST(GroupToUnitRecords, ARootIsMadeFromItsKeyAlone) {
  const Sender sender;
  const Receiver receiver;
  sender.demuxer().exportIs(Zel::makeObject<GroupToUnit>(uplinks));
  receiver.apply(sender.written());
  const auto mirror = Zel::ptrCast<GroupToUnit>(receiver.roots->entity(""));
  ASSERT_TRUE(mirror);
  EXPECT_EQ(mirror->key(), uplinks);
}

template <class V>
void expectBytes(const V& value, std::string_view hex) {
  EXPECT_EQ(payloadOf([&](const auto& out) { out << value; }), plain(hex));
  const auto ring = ringOf(std::string(hex) + " 5a");
  EXPECT_TRUE(V(ring.ptr(), Zel::StreamBogon{}) == value);
  EXPECT_EQ(ring->left(), 1U);
}

TEST(SelectionKeyBytes, AreBothFieldsWithoutTheHash) {
  expectBytes(GroupProfileSelKey(Group::groupTypeInterface, 0x01020304), "00 00 00 02 01 02 03 04");
  expectBytes(UnitProfileSelKey("ab", userConfigChange), "00 00 00 02 61 62 00 00 00 02");
}

TEST(SelectionKeyBytes, OfAnUnknownEnumeratorAreARangeFailure) {
  const auto group = ringOf("00 00 00 03 00 00 00 01");
  EXPECT_EQ(rangeFailure([&] { GroupProfileSelKey(group.ptr(), Zel::StreamBogon{}); }),
            "GroupType");
  const auto unit = ringOf("00 00 00 01 61 00 00 00 03");
  EXPECT_EQ(rangeFailure([&] { UnitProfileSelKey(unit.ptr(), Zel::StreamBogon{}); }),
            "ProfileChangeCause");
}

TEST(MappingAdapters, HaveTheirCallbacksInAscendingIdBehindThoseOfAll) {
  constexpr std::ptrdiff_t firstOwn = 56;
  using M = MemberToGroup::ZelNboAttrLogSa;
  EXPECT_EQ(slotOf(&M::onGroup), firstOwn);
  EXPECT_EQ(slotOf(&M::onSelectedProfile), firstOwn + 1);
  EXPECT_EQ(slotOf(&M::onProfileChangeCause), firstOwn + 2);
  EXPECT_EQ(slotOf(&M::onPartOfDynamicUnit), firstOwn + 3);
  EXPECT_EQ(slotOf(&GroupToUnit::ZelNboAttrLogSa::onUnitName), firstOwn);
  EXPECT_EQ(slotOf(&GroupToUnitDir::ZelNboAttrLogSa::onGroupToUnit), firstOwn);
}

struct Word {
  Zel::AttributeId start;
  unsigned word;
  bool isDirty;
};

template <class T>
void expectWords(const Zel::Ptr<T>& entity, std::initializer_list<Word> rows) {
  const auto out = Zel::makeObject<Zel::NboAttrLog::Out>(65536U);
  const auto adapter = entity->zelNboAttrLogSaIs({}, 1, out, nullptr);
  for (const Word& row : rows) {
    const auto flowOut = Zel::makeObject<typename T::ZelNboAttrLogSa::FlowOut>(
        out, adapter, Zel::ConnectDesc(), false, row.start);
    EXPECT_EQ(flowOut->zelDirtyBitSet0().word(), row.word) << row.start;
    EXPECT_EQ(flowOut->hasDirtyAttributes(), row.isDirty) << row.start;
  }
}

TEST(MappingFlowOut, OfAMemberStartsWithTheseBits) {
  expectWords(Zel::makeObject<MemberToGroup>("m"), {{0, 0x18, true},
                                                    {258, 0x18, true},
                                                    {259, 0x1a, true},
                                                    {260, 0x1e, true},
                                                    {261, 0x16, true},
                                                    {262, 0x6, false}});
}

TEST(MappingFlowOut, OfAGroupAndItsDirectoryStartsWithTheseBits) {
  expectWords(Zel::makeObject<GroupToUnit>(uplinks),
              {{0, 0, true}, {259, 0, true}, {260, 0x2, false}});
  expectWords(groupToUnitDirFactory("d"), {{0, 0, true}, {258, 0, true}, {259, 0x2, false}});
}

} // namespace
