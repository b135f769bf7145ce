#include "Channel.h"
#include "Payload.h"

#include "support/Failure.h"

#include <Zel/ZelType>
#include <attrlog/MaintenanceGroup.h>

// Records of maintenance groups, byte for byte.

namespace {

using namespace Maintenance::MaintenanceGroup;
using Group::GroupKey;
using Maintenance::Profile::ProfileKey;

const GroupKey peers(Group::groupTypeBgp, "peers");
const ProfileKey slow(Maintenance::Profile::profileTypeBgp, "slow");

TEST(MaintenanceGroupRecords, TheRootHasItsNameAndThenItsKey) {
  const Sender sender;
  const auto group = configFactory("chosen", peers);
  sender.demuxer().exportIs(group);
  EXPECT_EQ(sender.written(),
            plain("00 00 00 67 01 00 00 00 00 00 00 00 "
                  "00 00 00 88 01 00 00 00 00 00 00 00 00 00 01 "
                  "01 00 00 00 25 4d 61 69 6e 74 65 6e 61 6e 63 65 3a 3a 4d 61 69 6e 74 65 6e 61 "
                  "6e 63 65 47 72 6f 75 70 3a 3a 43 6f 6e 66 69 67 03 00 00 00 06 63 68 6f 73 65 "
                  "6e 00 00 00 01 00 00 00 05 70 65 65 72 73 04 02 00 00 00 00 00 00 00 03 "
                  "00 00 00 28 02 00 00 00 00 00 00 00 "
                  "00 00 00 89 00 00 00 00 0c 00 00 00 00 00 01 "
                  "00 00 01 03 00 00 00 00 00 00 00 00 03 "
                  "00 00 00 28 02 00 00 00 00 00 00 00 "
                  "00 00 00 89 00 00 00 00 0c 00 00 00 00 00 01 "
                  "00 00 01 03 00 00 00 02 00 00 00 00 03"));
}

TEST(MaintenanceGroupRecords, TheNameThatArrivesIsTaken) {
  const Channel<Config> channel(configFactory("chosen", peers));
  ASSERT_TRUE(channel.mirror);
  EXPECT_EQ(channel.mirror->name(), "chosen");
  EXPECT_EQ(channel.mirror->key(), peers);
}

TEST(MaintenanceGroupRecords, AProfileIsAnEntry) {
  const Channel<Config> channel(configFactory("group", peers));
  channel.original->profileIs(slow, true);
  channel.expectWritten("00 00 00 29 02 00 00 00 00 00 00 00 "
                        "00 00 01 03 01 00 00 00 00 00 00 00 00 00 01 "
                        "00 00 00 01 00 00 00 04 73 6c 6f 77 01 03");
  EXPECT_TRUE(channel.mirror->profile(slow));
  channel.original->profileDel(slow);
  channel.expectWritten("00 00 00 28 02 00 00 00 00 00 00 00 "
                        "ff ff fe fd 01 00 00 00 00 00 00 00 00 00 01 "
                        "00 00 00 01 00 00 00 04 73 6c 6f 77 03");
  EXPECT_EQ(channel.mirror->profileMap().count(), 0U);
}

TEST(MaintenanceGroupRecords, AMemberIsToldByItsKeyAndNamedByTheTextOfItAtBothEnds) {
  const Channel<ConfigDir> channel(configDirFactory("groups"));
  const auto group = channel.original->maintenanceGroupIs(peers);
  channel.expectWritten("00 00 00 31 02 00 00 00 00 00 00 00 "
                        "00 00 01 02 01 00 00 00 00 00 00 00 97 00 01 "
                        "00 00 00 01 00 00 00 05 70 65 65 72 73 04 00 00 00 00 00 00 00 03");
  const auto copy = channel.mirror->maintenanceGroup(peers);
  ASSERT_TRUE(copy);
  EXPECT_EQ(copy->name(), group->name());
  EXPECT_EQ(copy->name(), "Value('Group::GroupKey', ** {'type': 'groupTypeBgp', 'name': 'peers'})");
  channel.original->maintenanceGroupDel(peers);
  channel.expectWritten("00 00 00 29 02 00 00 00 00 00 00 00 "
                        "ff ff fe fe 01 00 00 00 00 00 00 00 00 00 01 "
                        "00 00 00 01 00 00 00 05 70 65 65 72 73 03");
  EXPECT_FALSE(channel.mirror->maintenanceGroup(peers));
}

TEST(MaintenanceGroupRecords, ARootOfAnUnknownTypeOfGroupIsNotMade) {
  const auto made = [](std::string_view hex) {
    return Config::_fwkType()->newEntity(Zel::Ptr<Zel::NboAttrLog::In>(ringOf(hex)), {}, 0,
                                         nullptr);
  };
  EXPECT_EQ(made("00 00 00 01 67 00 00 00 01 00 00 00 01 78")->name(), "g");
  EXPECT_EQ(Support::rangeFailure([&] { made("00 00 00 01 67 00 00 00 63 00 00 00 01 78"); }),
            "GroupType");
}

TEST(MaintenanceGroupRecords, AProfileThatIsNotSentAnewBetweenTheMarkersGoesWithoutEcho) {
  const Channel<Config> channel(configFactory("group", peers));
  const ProfileKey fast(Maintenance::Profile::profileTypeBgp, "fast");
  channel.mirror->profileIs(slow, true);
  channel.mirror->profileIs(fast, true);
  channel.receiver.written();
  channel.receiver.apply("00 00 00 28 02 00 00 00 00 00 00 00 "
                         "00 00 00 89 00 00 00 00 0c 00 00 00 00 00 01 "
                         "00 00 01 03 00 00 00 00 00 00 00 00 03 "
                         "00 00 00 29 02 00 00 00 00 00 00 00 "
                         "00 00 01 03 01 00 00 00 00 00 00 00 00 00 01 "
                         "00 00 00 01 00 00 00 04 73 6c 6f 77 00 03 "
                         "00 00 00 28 02 00 00 00 00 00 00 00 "
                         "00 00 00 89 00 00 00 00 0c 00 00 00 00 00 01 "
                         "00 00 01 03 00 00 00 02 00 00 00 00 03");
  ASSERT_EQ(channel.mirror->profileMap().count(), 1U);
  EXPECT_NE(channel.mirror->profileMap()[slow], nullptr);
  EXPECT_FALSE(channel.mirror->profile(slow));
  EXPECT_EQ(channel.receiver.written(), "");
}

TEST(MaintenanceGroupRecords, AMemberInACompoundRecordIsNamedByItsKeyToo) {
  const Channel<ConfigDir> channel(configDirFactory("groups"));
  channel.receiver.apply("00 00 00 3d 02 00 00 00 00 00 00 00 "
                         "00 00 00 90 01 00 00 00 00 00 00 00 00 00 01 "
                         "00 08 00 00 00 00 01 02 00 00 00 00 "
                         "00 00 00 01 00 00 00 05 70 65 65 72 73 04 00 00 00 00 00 00 00 03");
  EXPECT_EQ(channel.receiver.failure(), "");
  const auto member = channel.mirror->maintenanceGroup(peers);
  ASSERT_TRUE(member);
  EXPECT_EQ(member->name(),
            "Value('Group::GroupKey', ** {'type': 'groupTypeBgp', 'name': 'peers'})");
}

TEST(MaintenanceGroupRecords, AnUnknownTypeOfGroupOrProfileIsPassedOver) {
  const Channel<Config> channel(configFactory("group", peers));
  const std::string record = "00 00 00 29 02 00 00 00 00 00 00 00 "
                             "00 00 01 03 01 00 00 00 00 00 00 00 00 00 01 "
                             "00 00 00 09 00 00 00 04 73 6c 6f 77 01 03";
  channel.receiver.apply(record);
  EXPECT_EQ(channel.receiver.failure(), "");
  EXPECT_EQ(channel.receiver.counts().badValues, 1U);
  EXPECT_EQ(channel.mirror->profileMap().count(), 0U);
}

} // namespace
