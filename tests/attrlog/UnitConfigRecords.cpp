#include "Channel.h"
#include "Payload.h"

#include <Zel/ZelType>
#include <attrlog/Unit.h>

#include <gtest/gtest.h>

// One record of each attribute of a configured unit and of its directory, byte for byte, and what
// the mirror makes of it.

namespace {

using namespace Maintenance::Unit;

class UnitConfigRecords : public ::testing::Test {
protected:
  Channel<Config> channel{configFactory("u")};
  const Zel::Ptr<Config>& unit = channel.original;
  const Zel::Ptr<Config>& mirror = channel.mirror;
};

TEST_F(UnitConfigRecords, TheRootIsMadeWithItsName) {
  channel.expectWritten("");
  EXPECT_EQ(mirror->unitName(), "u");
  const auto args = ringOf("00 00 00 01 75");
  const auto made =
      Config::_fwkType()->newEntity(Zel::Ptr<Zel::NboAttrLog::In>(args), {}, 0, nullptr);
  EXPECT_EQ(made->fwkType(), Config::_fwkType());
  EXPECT_EQ(made->name(), "u");
  EXPECT_EQ(args->left(), 0U);
}

TEST_F(UnitConfigRecords, UnitType) {
  unit->unitTypeIs(dynamic);
  channel.expectWritten("00 00 00 20 02 00 00 00 00 00 00 00 "
                        "00 00 01 03 01 00 00 00 00 00 00 00 00 00 01 "
                        "00 00 00 01 03");
  EXPECT_EQ(mirror->unitType(), dynamic);
}

TEST_F(UnitConfigRecords, Group) {
  const Group::GroupKey key(Group::groupTypeInterface, "x");
  unit->groupIs(key, false);
  channel.expectWritten("00 00 00 26 02 00 00 00 00 00 00 00 "
                        "00 00 01 04 01 00 00 00 00 00 00 00 00 00 01 "
                        "00 00 00 02 00 00 00 01 78 00 03");
  EXPECT_EQ(mirror->groupMap().count(), 1U);
  EXPECT_FALSE(mirror->group(key));
  unit->groupIs(key, true);
  channel.expectWritten("00 00 00 26 02 00 00 00 00 00 00 00 "
                        "00 00 01 04 01 00 00 00 00 00 00 00 00 00 01 "
                        "00 00 00 02 00 00 00 01 78 01 03");
  EXPECT_TRUE(mirror->group(key));
  unit->groupDel(key);
  channel.expectWritten("00 00 00 25 02 00 00 00 00 00 00 00 "
                        "ff ff fe fc 01 00 00 00 00 00 00 00 00 00 01 "
                        "00 00 00 02 00 00 00 01 78 03");
  EXPECT_EQ(mirror->groupMap().count(), 0U);
}

TEST_F(UnitConfigRecords, ProfileName) {
  unit->profileNameIs("fast");
  channel.expectWritten("00 00 00 24 02 00 00 00 00 00 00 00 "
                        "00 00 01 05 01 00 00 00 00 00 00 00 00 00 01 "
                        "00 00 00 04 66 61 73 74 03");
  EXPECT_EQ(mirror->profileName(), "fast");
}

TEST_F(UnitConfigRecords, AnUnknownKindIsCountedAndKept) {
  channel.receiver.apply("00 00 00 20 02 00 00 00 00 00 00 00 "
                         "00 00 01 03 01 00 00 00 00 00 00 00 00 00 01 "
                         "00 00 00 63 03");
  EXPECT_EQ(channel.receiver.counts().unknownEnums, 1U);
  EXPECT_EQ(static_cast<int>(mirror->unitType()), 99);
}

TEST_F(UnitConfigRecords, AGroupThatIsNotSentAnewBetweenTheMarkersGoesWithoutEcho) {
  const Receiver& receiver = channel.receiver;
  const auto key = [](const char* name) { return Group::GroupKey(Group::groupTypeBgp, name); };
  for (const char* const name : {"a", "b", "c"}) {
    mirror->groupIs(key(name), true);
  }
  receiver.written();
  receiver.apply("00 00 00 28 02 00 00 00 00 00 00 00 "
                 "00 00 00 89 00 00 00 00 0c 00 00 00 00 00 01 "
                 "00 00 01 04 00 00 00 00 00 00 00 00 03");
  EXPECT_EQ(mirror->groupMap().count(), 3U);
  receiver.apply("00 00 00 26 02 00 00 00 00 00 00 00 "
                 "00 00 01 04 01 00 00 00 00 00 00 00 00 00 01 "
                 "00 00 00 01 00 00 00 01 61 00 03 "
                 "00 00 00 25 02 00 00 00 00 00 00 00 "
                 "ff ff fe fc 01 00 00 00 00 00 00 00 00 00 01 "
                 "00 00 00 01 00 00 00 01 62 03");
  EXPECT_EQ(mirror->groupMap().count(), 2U);
  EXPECT_TRUE(mirror->group(key("c")));
  receiver.apply("00 00 00 28 02 00 00 00 00 00 00 00 "
                 "00 00 00 89 00 00 00 00 0c 00 00 00 00 00 01 "
                 "00 00 01 04 00 00 00 02 00 00 00 00 03");
  ASSERT_EQ(mirror->groupMap().count(), 1U);
  EXPECT_NE(mirror->groupMap()[key("a")], nullptr);
  EXPECT_FALSE(mirror->group(key("a")));
  EXPECT_EQ(receiver.written(), "");
}

TEST_F(UnitConfigRecords, AllOfOneIsItsAttributesInAscendingId) {
  const Sender sender;
  unit->groupIs(Group::GroupKey(Group::groupTypeBgp, "p"), true);
  sender.demuxer().exportIs(unit);
  EXPECT_EQ(sender.written(),
            plain("00 00 00 49 01 00 00 00 00 00 00 00 "
                  "00 00 00 88 01 00 00 00 00 00 00 00 00 00 01 "
                  "01 00 00 00 19 4d 61 69 6e 74 65 6e 61 6e 63 65 3a 3a 55 6e 69 74 3a 3a "
                  "43 6f 6e 66 69 67 03 00 00 00 01 75 04 02 00 00 00 00 00 00 00 03 "
                  "00 00 00 20 02 00 00 00 00 00 00 00 "
                  "00 00 01 03 01 00 00 00 00 00 00 00 00 00 01 "
                  "00 00 00 00 03 "
                  "00 00 00 28 02 00 00 00 00 00 00 00 "
                  "00 00 00 89 00 00 00 00 0c 00 00 00 00 00 01 "
                  "00 00 01 04 00 00 00 00 00 00 00 00 03 "
                  "00 00 00 26 02 00 00 00 00 00 00 00 "
                  "00 00 01 04 01 00 00 00 00 00 00 00 00 00 01 "
                  "00 00 00 01 00 00 00 01 70 01 03 "
                  "00 00 00 28 02 00 00 00 00 00 00 00 "
                  "00 00 00 89 00 00 00 00 0c 00 00 00 00 00 01 "
                  "00 00 01 04 00 00 00 02 00 00 00 00 03 "
                  "00 00 00 20 02 00 00 00 00 00 00 00 "
                  "00 00 01 05 01 00 00 00 00 00 00 00 00 00 01 "
                  "00 00 00 00 03"));
}

class UnitConfigDirRecords : public ::testing::Test {
protected:
  Channel<ConfigDir> channel{configDirFactory("d")};
  const Zel::Ptr<ConfigDir>& dir = channel.original;
  const Zel::Ptr<ConfigDir>& mirror = channel.mirror;
};

TEST_F(UnitConfigDirRecords, AMemberIsItsNameAndItsId) {
  dir->configIs("u");
  channel.expectWritten("00 00 00 29 02 00 00 00 00 00 00 00 "
                        "00 00 01 02 01 00 00 00 00 00 00 00 97 00 01 "
                        "00 00 00 01 75 04 00 00 00 00 00 00 00 03");
  ASSERT_TRUE(mirror->config("u"));
  dir->config("u")->unitTypeIs(builtin);
  channel.expectWritten("00 00 00 20 04 00 00 00 00 00 00 00 "
                        "00 00 01 03 01 00 00 00 00 00 00 00 00 00 01 "
                        "00 00 00 02 03");
  EXPECT_EQ(mirror->config("u")->unitType(), builtin);
  dir->configDel("u");
  channel.expectWritten("00 00 00 21 02 00 00 00 00 00 00 00 "
                        "ff ff fe fe 01 00 00 00 00 00 00 00 00 00 01 "
                        "00 00 00 01 75 03");
  EXPECT_FALSE(mirror->config("u"));
}

TEST_F(UnitConfigDirRecords, AHitIsNoRecord) {
  dir->configIs("u");
  channel.expectWritten("00 00 00 29 02 00 00 00 00 00 00 00 "
                        "00 00 01 02 01 00 00 00 00 00 00 00 97 00 01 "
                        "00 00 00 01 75 04 00 00 00 00 00 00 00 03");
  dir->configIs("u");
  channel.expectWritten("");
}

TEST_F(UnitConfigDirRecords, AMemberInACompoundRecord) {
  channel.receiver.apply("00 00 00 35 02 00 00 00 00 00 00 00 "
                         "00 00 00 90 01 00 00 00 00 00 00 00 00 00 01 "
                         "00 08 00 00 00 00 01 02 00 00 00 00 "
                         "00 00 00 01 75 04 00 00 00 00 00 00 00 03");
  EXPECT_EQ(channel.receiver.failure(), "");
  EXPECT_TRUE(mirror->config("u"));
}

} // namespace
