#include "Channel.h"
#include "Pair.h"

#include <attrlog/Mapping.h>
#include <attrlog/Unit.h>

#include <gtest/gtest.h>

// All that the export of a mapping or of a directory writes, byte for byte, and records that reach
// one whose class is derived.

namespace {

using namespace Maintenance;
using Group::GroupKey;
using Profile::ProfileKey;
using Zel::Ptr;

const GroupKey uplinks(Group::groupTypeInterface, "x");
const ProfileKey drain(Profile::profileTypeBgp, "y");

TEST(MappingRoots, OfAMemberItsNameAndItsAttributesInAscendingId) {
  const Sender sender;
  const auto member = Zel::makeObject<MemberToGroup>("m");
  member->groupIs(uplinks, true);
  member->selectedProfileIs(Profile::profileTypeUnit, drain);
  sender.demuxer().exportIs(member);
  EXPECT_EQ(sender.written(),
            plain("00 00 00 4a 01 00 00 00 00 00 00 00 "
                  "00 00 00 88 01 00 00 00 00 00 00 00 00 00 01 "
                  "01 00 00 00 1a 4d 61 69 6e 74 65 6e 61 6e 63 65 3a 3a 4d 65 6d 62 65 72 54 6f "
                  "47 72 6f 75 70 03 00 00 00 01 6d 04 02 00 00 00 00 00 00 00 03 "
                  "00 00 00 28 02 00 00 00 00 00 00 00 "
                  "00 00 00 89 00 00 00 00 0c 00 00 00 00 00 01 "
                  "00 00 01 02 00 00 00 00 00 00 00 00 03 "
                  "00 00 00 26 02 00 00 00 00 00 00 00 "
                  "00 00 01 02 01 00 00 00 00 00 00 00 00 00 01 "
                  "00 00 00 02 00 00 00 01 78 01 03 "
                  "00 00 00 28 02 00 00 00 00 00 00 00 "
                  "00 00 00 89 00 00 00 00 0c 00 00 00 00 00 01 "
                  "00 00 01 02 00 00 00 02 00 00 00 00 03 "
                  "00 00 00 28 02 00 00 00 00 00 00 00 "
                  "00 00 00 89 00 00 00 00 0c 00 00 00 00 00 01 "
                  "00 00 01 03 00 00 00 00 00 00 00 00 03 "
                  "00 00 00 29 02 00 00 00 00 00 00 00 "
                  "00 00 01 03 01 00 00 00 00 00 00 00 00 00 01 "
                  "00 00 00 03 00 00 00 01 00 00 00 01 79 03 "
                  "00 00 00 28 02 00 00 00 00 00 00 00 "
                  "00 00 00 89 00 00 00 00 0c 00 00 00 00 00 01 "
                  "00 00 01 03 00 00 00 02 00 00 00 00 03 "
                  "00 00 00 20 02 00 00 00 00 00 00 00 "
                  "00 00 01 04 01 00 00 00 00 00 00 00 00 00 01 "
                  "00 00 00 00 03 "
                  "00 00 00 1d 02 00 00 00 00 00 00 00 "
                  "00 00 01 05 00 00 00 00 01 00 00 00 00 00 01 "
                  "00 03"));
}

TEST(MappingRoots, OfAGroupItsKeyAndItsUnits) {
  const Sender sender;
  const auto group = Zel::makeObject<GroupToUnit>(uplinks);
  group->unitNameIs("s", false);
  sender.demuxer().exportIs(group);
  EXPECT_EQ(sender.written(),
            plain("00 00 00 4c 01 00 00 00 00 00 00 00 "
                  "00 00 00 88 01 00 00 00 00 00 00 00 00 00 01 "
                  "01 00 00 00 18 4d 61 69 6e 74 65 6e 61 6e 63 65 3a 3a 47 72 6f 75 70 54 6f 55 "
                  "6e 69 74 03 00 00 00 02 00 00 00 01 78 04 02 00 00 00 00 00 00 00 03 "
                  "00 00 00 28 02 00 00 00 00 00 00 00 "
                  "00 00 00 89 00 00 00 00 0c 00 00 00 00 00 01 "
                  "00 00 01 03 00 00 00 00 00 00 00 00 03 "
                  "00 00 00 22 02 00 00 00 00 00 00 00 "
                  "00 00 01 03 01 00 00 00 00 00 00 00 00 00 01 "
                  "00 00 00 01 73 00 03 "
                  "00 00 00 28 02 00 00 00 00 00 00 00 "
                  "00 00 00 89 00 00 00 00 0c 00 00 00 00 00 01 "
                  "00 00 01 03 00 00 00 02 00 00 00 00 03"));
}

TEST(MappingRoots, OfADirectoryOfGroupsItsMembersByTheirKeys) {
  const Sender sender;
  const auto dir = groupToUnitDirFactory("d");
  dir->newGroupToUnit(uplinks);
  sender.demuxer().exportIs(dir);
  EXPECT_EQ(sender.written(),
            plain("00 00 00 4b 01 00 00 00 00 00 00 00 "
                  "00 00 00 88 01 00 00 00 00 00 00 00 00 00 01 "
                  "01 00 00 00 1b 4d 61 69 6e 74 65 6e 61 6e 63 65 3a 3a 47 72 6f 75 70 54 6f 55 "
                  "6e 69 74 44 69 72 03 00 00 00 01 64 04 02 00 00 00 00 00 00 00 03 "
                  "00 00 00 28 02 00 00 00 00 00 00 00 "
                  "00 00 00 89 00 00 00 00 0c 00 00 00 00 00 01 "
                  "00 00 01 02 00 00 00 00 00 00 00 00 03 "
                  "00 00 00 2d 02 00 00 00 00 00 00 00 "
                  "00 00 01 02 01 00 00 00 00 00 00 00 97 00 01 "
                  "00 00 00 02 00 00 00 01 78 04 00 00 00 00 00 00 00 03 "
                  "00 00 00 28 02 00 00 00 00 00 00 00 "
                  "00 00 00 89 00 00 00 00 0c 00 00 00 00 00 01 "
                  "00 00 01 02 00 00 00 02 00 00 00 00 03 "
                  "00 00 00 28 04 00 00 00 00 00 00 00 "
                  "00 00 00 89 00 00 00 00 0c 00 00 00 00 00 01 "
                  "00 00 01 03 00 00 00 00 00 00 00 00 03 "
                  "00 00 00 28 04 00 00 00 00 00 00 00 "
                  "00 00 00 89 00 00 00 00 0c 00 00 00 00 00 01 "
                  "00 00 01 03 00 00 00 02 00 00 00 00 03"));
}

TEST(MappingRoots, OfADirectoryOfConfiguredUnitsTheMarkers) {
  const Sender sender;
  const auto dir = Unit::configDirFactory("d");
  sender.demuxer().exportIs(dir);
  EXPECT_EQ(sender.written(),
            plain("00 00 00 4c 01 00 00 00 00 00 00 00 "
                  "00 00 00 88 01 00 00 00 00 00 00 00 00 00 01 "
                  "01 00 00 00 1c 4d 61 69 6e 74 65 6e 61 6e 63 65 3a 3a 55 6e 69 74 3a 3a "
                  "43 6f 6e 66 69 67 44 69 72 03 00 00 00 01 64 04 02 00 00 00 00 00 00 00 03 "
                  "00 00 00 28 02 00 00 00 00 00 00 00 "
                  "00 00 00 89 00 00 00 00 0c 00 00 00 00 00 01 "
                  "00 00 01 02 00 00 00 00 00 00 00 00 03 "
                  "00 00 00 28 02 00 00 00 00 00 00 00 "
                  "00 00 00 89 00 00 00 00 0c 00 00 00 00 00 01 "
                  "00 00 01 02 00 00 00 02 00 00 00 00 03"));
}

class GroupToUnitDirMirror : public testing::Test {
protected:
  const Channel<GroupToUnitDir> channel{groupToUnitDirFactory("d")};
  const Ptr<GroupToUnitDir>& mirror = channel.mirror;
};

TEST_F(GroupToUnitDirMirror, TakesAMemberInACompoundRecord) {
  channel.receiver.apply("00 00 00 39 02 00 00 00 00 00 00 00 "
                         "00 00 00 90 01 00 00 00 00 00 00 00 00 00 01 "
                         "00 08 00 00 00 00 01 02 00 00 00 00 "
                         "00 00 00 02 00 00 00 01 78 04 00 00 00 00 00 00 00 03");
  EXPECT_EQ(channel.receiver.failure(), "");
  ASSERT_TRUE(mirror->groupToUnit(uplinks));
  channel.receiver.apply("00 00 00 2d 02 00 00 00 00 00 00 00 "
                         "ff ff ff 70 01 00 00 00 00 00 00 00 00 00 01 "
                         "00 08 00 00 ff ff fe fe "
                         "00 00 00 02 00 00 00 01 78 03");
  EXPECT_EQ(channel.receiver.failure(), "");
  EXPECT_FALSE(mirror->groupToUnit(uplinks));
}

TEST_F(GroupToUnitDirMirror, PassesOverAMemberOfAnUnknownType) {
  channel.receiver.apply("00 00 00 2d 02 00 00 00 00 00 00 00 "
                         "00 00 01 02 01 00 00 00 00 00 00 00 97 00 01 "
                         "00 00 00 03 00 00 00 01 78 04 00 00 00 00 00 00 00 03");
  EXPECT_EQ(channel.receiver.failure(), "");
  EXPECT_EQ(channel.receiver.counts().badValues, 1U);
  EXPECT_EQ(channel.receiver.counts().unknownEnums, 0U);
  EXPECT_EQ(mirror->groupToUnitMap().count(), 0U);
}

/// Writes down which mutators are called.
class Told : public MemberToGroup {
public:
  Told() : MemberToGroup("m") {}

  using MemberToGroup::groupDel;
  bool groupDel(const GroupKey& key) override {
    calls.emplace_back("groupDel");
    return MemberToGroup::groupDel(key);
  }
  void groupIs(const GroupKey& key, bool value) override {
    calls.emplace_back("groupIs");
    MemberToGroup::groupIs(key, value);
  }
  using MemberToGroup::selectedProfileDel;
  ProfileKey selectedProfileDel(Profile::ProfileType type) override {
    calls.emplace_back("selectedProfileDel");
    return MemberToGroup::selectedProfileDel(type);
  }
  void selectedProfileIs(Profile::ProfileType type, const ProfileKey& key) override {
    calls.emplace_back("selectedProfileIs");
    MemberToGroup::selectedProfileIs(type, key);
  }
  void profileChangeCauseIs(ProfileChangeCause cause) override {
    calls.emplace_back("profileChangeCauseIs");
    MemberToGroup::profileChangeCauseIs(cause);
  }
  void partOfDynamicUnitIs(bool part) override {
    calls.emplace_back("partOfDynamicUnitIs");
    MemberToGroup::partOfDynamicUnitIs(part);
  }

  std::vector<std::string> calls;
};

TEST(DerivedMembers, AreWrittenToThroughTheMutatorsOfTheirClass) {
  using Calls = std::vector<std::string>;
  Pair pair;
  const auto member = Zel::makeObject<Told>();
  pair.here->demuxer()->exportIs(member);
  pair.settle();
  const auto mirror = pair.mirror<MemberToGroup>("m");
  ASSERT_TRUE(mirror);
  mirror->groupIs(uplinks, true);
  mirror->selectedProfileIs(Profile::profileTypeUnit, drain);
  mirror->profileChangeCauseIs(maintenanceOperation);
  mirror->partOfDynamicUnitIs(true);
  pair.settle();
  EXPECT_EQ(member->calls,
            (Calls{"groupIs", "selectedProfileIs", "profileChangeCauseIs", "partOfDynamicUnitIs"}));
  member->calls.clear();
  mirror->groupDel(uplinks);
  mirror->selectedProfileDel(Profile::profileTypeUnit);
  pair.settle();
  EXPECT_EQ(member->calls, (Calls{"groupDel", "selectedProfileDel"}));
  EXPECT_EQ(member->groupMap().count(), 0U);
  EXPECT_EQ(member->selectedProfileMap().count(), 0U);
}

} // namespace
