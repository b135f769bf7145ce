#include "Channel.h"

#include <attrlog/MaintenanceUnitProfile.h>

// Records of unit profiles, byte for byte.

namespace {

using namespace MaintenanceUnitProfile;
using Maintenance::Profile::ProfileKey;
using Maintenance::Profile::profileTypeUnit;

TEST(UnitProfileRecords, TheRootNamesTwoTypesAndFlowsItsOwnAttributes) {
  const Sender sender;
  const auto profile = configFactory("careful");
  sender.demuxer().exportIs(profile);
  EXPECT_EQ(sender.written(),
            plain("00 00 00 74 01 00 00 00 00 00 00 00 "
                  "00 00 00 88 01 00 00 00 00 00 00 00 00 00 01 "
                  "01 00 00 00 1e 4d 61 69 6e 74 65 6e 61 6e 63 65 55 6e 69 74 50 72 6f 66 69 6c "
                  "65 3a 3a 43 6f 6e 66 69 67 00 00 00 1c 4d 61 69 6e 74 65 6e 61 6e 63 65 3a 3a "
                  "50 72 6f 66 69 6c 65 3a 3a 43 6f 6e 66 69 67 03 00 00 00 07 63 61 72 65 66 75 "
                  "6c 04 02 00 00 00 00 00 00 00 03 "
                  "00 00 00 20 02 00 00 00 00 00 00 00 "
                  "00 00 01 83 00 00 00 00 04 00 00 00 00 00 01 "
                  "00 00 01 2c 03 "
                  "00 00 00 1d 02 00 00 00 00 00 00 00 "
                  "00 00 01 86 00 00 00 00 01 00 00 00 00 00 01 "
                  "00 03"));
}

TEST(UnitProfileRecords, ARootIsMadeWithTheKeyOfItsBase) {
  const Channel<Config> channel(configFactory("careful"));
  ASSERT_TRUE(channel.mirror);
  EXPECT_EQ(channel.mirror->profileName(), "careful");
  EXPECT_EQ(channel.mirror->key(), ProfileKey(profileTypeUnit, "careful"));
  EXPECT_EQ(channel.mirror->name(), "");
}

TEST(UnitProfileRecords, AMemberIsToldByItsNameAndItsAttributesAreOfFixedSize) {
  const Channel<ConfigDir> channel(configDirFactory("unit profiles"));
  const auto profile = channel.original->configIs("careful");
  channel.expectWritten("00 00 00 2f 02 00 00 00 00 00 00 00 "
                        "00 00 01 02 01 00 00 00 00 00 00 00 97 00 01 "
                        "00 00 00 07 63 61 72 65 66 75 6c 04 00 00 00 00 00 00 00 03");
  const auto copy = channel.mirror->config("careful");
  ASSERT_TRUE(copy);
  EXPECT_EQ(copy->key(), ProfileKey(profileTypeUnit, "careful"));
  profile->onBootDurationIs(600);
  channel.expectWritten("00 00 00 20 04 00 00 00 00 00 00 00 "
                        "00 00 01 83 00 00 00 00 04 00 00 00 00 00 01 "
                        "00 00 02 58 03");
  profile->onBootEnabledIs(true);
  channel.expectWritten("00 00 00 1d 04 00 00 00 00 00 00 00 "
                        "00 00 01 86 00 00 00 00 01 00 00 00 00 00 01 "
                        "01 03");
  EXPECT_EQ(copy->onBootDuration(), 600U);
  EXPECT_TRUE(copy->onBootEnabled());
  channel.original->configDel("careful");
  channel.expectWritten("00 00 00 27 02 00 00 00 00 00 00 00 "
                        "ff ff fe fe 01 00 00 00 00 00 00 00 00 00 01 "
                        "00 00 00 07 63 61 72 65 66 75 6c 03");
  EXPECT_EQ(channel.mirror->configMap().count(), 0U);
}

TEST(UnitProfileRecords, AMemberInACompoundRecordIsMadeByItsName) {
  const Channel<ConfigDir> channel(configDirFactory("unit profiles"));
  channel.receiver.apply("00 00 00 3b 02 00 00 00 00 00 00 00 "
                         "00 00 00 90 01 00 00 00 00 00 00 00 00 00 01 "
                         "00 08 00 00 00 00 01 02 00 00 00 00 "
                         "00 00 00 07 63 61 72 65 66 75 6c 04 00 00 00 00 00 00 00 03");
  EXPECT_EQ(channel.receiver.failure(), "");
  ASSERT_TRUE(channel.mirror->config("careful"));
  EXPECT_EQ(channel.mirror->config("careful")->key(), ProfileKey(profileTypeUnit, "careful"));
}

TEST(UnitProfileRecords, AFlowThatStartsAtAConstantHasNothingToSay) {
  const Sender sender;
  const auto profile = configFactory("careful");
  sender.announce(profile);
  const auto adapter = profile->zelNboAttrLogSa(Zel::Ptr<const Zel::NboAttrLog::Out>(sender.out()));
  ASSERT_TRUE(adapter);
  EXPECT_EQ(adapter->handleAttrFlowOut(388), 0);
  EXPECT_EQ(adapter->handleAttrFlowOut(389), 0);
  EXPECT_EQ(sender.written(), "");
}

TEST(UnitProfileRecords, ItsAdapterIsOneOfItsBaseToo) {
  const Sender sender;
  const auto profile = configFactory("careful");
  sender.announce(profile);
  const auto adapter = profile->zelNboAttrLogSa(Zel::Ptr<const Zel::NboAttrLog::Out>(sender.out()));
  EXPECT_TRUE(Zel::ptrCast<Config::ZelNboAttrLogSa>(adapter));
  EXPECT_TRUE(Zel::ptrCast<Maintenance::Profile::Config::ZelNboAttrLogSa>(adapter));
}

} // namespace
