#include "Ends.h"

#include <Zel/MsgChannel>
#include <Zel/ZelType>
#include <attrlog/MaintenanceGroup.h>
#include <attrlog/MaintenanceUnitProfile.h>
#include <attrlog/Mapping.h>
#include <attrlog/Profile.h>
#include <attrlog/Unit.h>

#include <gtest/gtest.h>

// The adapters of a directory's members.

namespace {

using namespace Maintenance::Profile;
using Zel::Ptr;
using Zel::StreamAdapter;
using Flags = AnEnd::Flags;
using Adapter = Zel::Entity::ZelNboAttrLogSa;

/// The record that announces the profile (bgp, "p") of the directory (2, 0) under the id (4, 0).
constexpr const char* announcement =
    "00 00 00 2d 02 00 00 00 00 00 00 00 00 00 01 02 01 00 00 00 00 00 00 00 97 00 01 "
    "00 00 00 01 00 00 00 01 70 04 00 00 00 00 00 00 00 03";

class AdapterMembers : public ::testing::Test {
protected:
  /// The adapter of the directory, announced with these flags.
  Ptr<ConfigDir::ZelNboAttrLogSa> announced(unsigned flags = 0) const {
    sender.announce(dir, flags);
    return Zel::ptrCast<ConfigDir::ZelNboAttrLogSa>(adapterOf(dir));
  }
  Ptr<Adapter> adapterOf(const Ptr<Zel::Entity>& entity) const {
    return entity->zelNboAttrLogSa(Ptr<const Zel::NboAttrLog::Out>(sender.out()));
  }
  /// A profile in the directory of which the directory's adapter has not heard.
  Ptr<Config> unheard(const Ptr<ConfigDir::ZelNboAttrLogSa>& own) const {
    own->flagsIs(StreamAdapter::flagSyncFanOut, true);
    dir->configIs(key);
    own->flagsIs(StreamAdapter::flagSyncFanOut, false);
    EXPECT_EQ(sender.written(), "");
    return dir->config(key);
  }

  const Sender sender;
  const Ptr<ConfigDir> dir = configDirFactory("d");
  const ProfileKey key{profileTypeBgp, "p"};
};

TEST_F(AdapterMembers, AreMadeWithTheMembers) {
  const auto own = announced();
  dir->configIs(key);
  EXPECT_EQ(sender.written(), plain(announcement));
  const Ptr<Config> child = dir->config(key);
  const Ptr<Adapter> made = adapterOf(child);
  ASSERT_TRUE(made);
  EXPECT_EQ(made->entityId(), (Zel::EntityId{4, 0}));
  EXPECT_EQ(own->configNboAttrLogAdapter(child), made);
  const Ptr<const ConfigDir::ZelNboAttrLogSa> readable = own;
  EXPECT_EQ(readable->configNboAttrLogAdapter(child), Ptr<const Adapter>(made));
}

TEST_F(AdapterMembers, OfNoMemberThereIsNone) {
  const auto own = announced();
  EXPECT_FALSE(own->configNboAttrLogAdapter(Ptr<const Config>()));
  EXPECT_FALSE(own->configNboAttrLogAdapter(Zel::makeObject<Config>(key)));
}

TEST_F(AdapterMembers, InheritTheFlagsOfTheDirectoryButThoseOfOne) {
  // 15, 9 and 6 are passed on, 12, 11 and 10 are not.
  const auto own = announced(0x9e40);
  EXPECT_EQ(own->zel_bitSet().word(), 0x4109e40U);
  dir->configIs(key);
  // With them go streaming, no FlowOut, and that it is a member's.
  EXPECT_EQ(adapterOf(dir->config(key))->zel_bitSet().word(), 0x5108240U);
}

TEST_F(AdapterMembers, AttachedByTheTypeTheyInheritAllButOneFlag) {
  const auto own = announced(0x9e40);
  const Ptr<Config> child = unheard(own);
  const Zel::ZelType* const type = ConfigDir::_fwkType();
  const Ptr<const Zel::ZelAttr> attr(type->attr(258));
  ASSERT_TRUE(attr);
  type->childAttrLogIs(attr, child, sender.out());
  EXPECT_EQ(sender.written(), plain(announcement));
  EXPECT_EQ(adapterOf(child)->zel_bitSet().word(), 0x4109a40U);
}

TEST_F(AdapterMembers, AttachedByTheTypeNeedsTheCollectionAndAnAdapterOfTheDirectory) {
  const auto own = announced();
  const Ptr<Config> child = unheard(own);
  const Zel::ZelType* const type = ConfigDir::_fwkType();
  const Ptr<const Zel::ZelAttr> other(type->attr(154));
  ASSERT_TRUE(other);
  type->childAttrLogIs(other, child, sender.out());
  type->childAttrLogIs(nullptr, child, sender.out());
  const Ptr<const Zel::ZelAttr> attr(type->attr(258));
  type->childAttrLogIs(attr, Zel::makeObject<Config>(key), sender.out()); // in no directory
  type->childAttrLogIs(attr, nullptr, sender.out());
  const Sender stranger;
  type->childAttrLogIs(attr, child, stranger.out());
  EXPECT_FALSE(adapterOf(child));
  EXPECT_EQ(sender.written(), "");
  EXPECT_EQ(stranger.written(), "");
}

TEST_F(AdapterMembers, OneThatIsNotThereIsMadeAndAnnounced) {
  const auto own = announced();
  const Ptr<Config> child = unheard(own);
  const auto entry = Zel::makeObject<Zel::MsgChannel::Constrainer::ZelEntry>();
  const Ptr<Adapter> made =
      own->configNboAttrLogAdapterIs(Flags(0x8040), child, 1, sender.out(), entry.ptr());
  ASSERT_TRUE(made);
  EXPECT_TRUE(made->hasNotificationActive());
  EXPECT_EQ(made->zel_bitSet().word(), 0x4108040U);
  EXPECT_EQ(made->channelEntry(), entry.ptr());
  EXPECT_EQ(sender.demuxer().adapter({4, 0}), made.ptr());
  EXPECT_EQ(sender.written(), plain(announcement));
}

TEST_F(AdapterMembers, OneThatIsThereIsAnnouncedAgainWithItsId) {
  const auto own = announced();
  dir->configIs(key);
  const Ptr<Config> child = dir->config(key);
  const Ptr<Adapter> made = adapterOf(child);
  EXPECT_EQ(sender.written(), plain(announcement));
  EXPECT_EQ(own->configNboAttrLogAdapterIs(Flags(0x8040), child, 1, sender.out(), nullptr), made);
  EXPECT_EQ(sender.written(), plain(announcement));
  EXPECT_EQ(made->zel_bitSet().word(), 0x5108040U);
}

TEST_F(AdapterMembers, OneThatIsThereAndAnnouncedIsYieldedWithoutARecord) {
  const auto own = announced();
  dir->configIs(key);
  const Ptr<Config> child = dir->config(key);
  EXPECT_EQ(sender.written(), plain(announcement));
  const Flags flags(StreamAdapter::flagWeakNotifiee | StreamAdapter::flagAnnounced);
  EXPECT_EQ(own->configNboAttrLogAdapterIs(flags, child, 1, sender.out(), nullptr),
            adapterOf(child));
  EXPECT_EQ(sender.written(), "");
}

TEST_F(AdapterMembers, ANewOneIsAnnouncedWhateverItsFlags) {
  const auto own = announced();
  const Ptr<Config> child = unheard(own);
  const Flags flags(StreamAdapter::flagWeakNotifiee | StreamAdapter::flagAnnounced);
  EXPECT_TRUE(own->configNboAttrLogAdapterIs(flags, child, 1, sender.out(), nullptr));
  EXPECT_EQ(sender.written(), plain(announcement));
}

TEST_F(AdapterMembers, OneThatIsTakenOutEndsItsMirroring) {
  const auto own = announced();
  dir->configIs(key);
  const Ptr<Config> child = dir->config(key);
  const Ptr<Adapter> made = adapterOf(child);
  EXPECT_FALSE(own->configNboAttrLogAdapterDel(nullptr));
  EXPECT_EQ(own->configNboAttrLogAdapterDel(child), made);
  EXPECT_EQ(sender.demuxer().adapter({4, 0}), nullptr);
  EXPECT_FALSE(adapterOf(child));
  EXPECT_EQ(made->zelNotifierEntity(), nullptr);
  EXPECT_FALSE(own->configNboAttrLogAdapterDel(child));
}

TEST_F(AdapterMembers, ADirectoryThatIsInstantiatedSendsItsList) {
  const auto own = announced();
  const Ptr<Config> child = unheard(own);
  own->zelInstantiateSerialize();
  EXPECT_EQ(sender.written(), plain(announcement));
  EXPECT_TRUE(adapterOf(child));
}

TEST_F(AdapterMembers, AUnitThatIsInstantiatedSendsNothing) {
  const auto unit = Maintenance::Unit::statusFactory("u");
  sender.announce(unit);
  unit->groupIs(Group::GroupKey(), true);
  EXPECT_NE(sender.written(), "");
  adapterOf(unit)->zelInstantiateSerialize();
  EXPECT_EQ(sender.written(), "");
}

TEST_F(AdapterMembers, OfDirectoriesOfConfiguredUnitsAndMergedInputsToo) {
  namespace Unit = Maintenance::Unit;
  const auto configured = Unit::configDirFactory("c");
  const auto merged = Unit::mergedInputDirFactory("m");
  sender.announce(configured);
  sender.announce(merged);
  const auto configs = Zel::ptrCast<Unit::ConfigDir::ZelNboAttrLogSa>(adapterOf(configured));
  const auto inputs = Zel::ptrCast<Unit::MergedInputDir::ZelNboAttrLogSa>(adapterOf(merged));
  configured->configIs("u");
  merged->unitIs("u", Unit::srcCli);
  const auto config = configured->config("u");
  const auto input = merged->unit("u");
  EXPECT_EQ(configs->configNboAttrLogAdapter(config), adapterOf(config));
  EXPECT_EQ(inputs->unitNboAttrLogAdapter(input), adapterOf(input));
  EXPECT_EQ(configs->configNboAttrLogAdapterDel(config)->entityId(), (Zel::EntityId{6, 0}));
  EXPECT_EQ(inputs->unitNboAttrLogAdapterDel(input)->entityId(), (Zel::EntityId{8, 0}));
  EXPECT_FALSE(configs->configNboAttrLogAdapter(config));
  EXPECT_FALSE(inputs->unitNboAttrLogAdapter(input));
  EXPECT_TRUE(configs->configNboAttrLogAdapterIs(Flags(0x40), config, 1, sender.out(), nullptr));
  EXPECT_TRUE(inputs->unitNboAttrLogAdapterIs(Flags(0x40), input, 1, sender.out(), nullptr));
  EXPECT_EQ(adapterOf(config)->entityId(), (Zel::EntityId{10, 0}));
  EXPECT_EQ(adapterOf(input)->entityId(), (Zel::EntityId{12, 0}));
}

TEST_F(AdapterMembers, AttachedByTheTypesOfOtherDirectoriesToo) {
  using namespace Maintenance;
  const Group::GroupKey group(Group::groupTypeBgp, "g");
  const auto expectAttached = [&](const Ptr<Zel::Entity>& parent, auto&& make) {
    const Zel::ZelType* const type = parent->fwkType();
    SCOPED_TRACE(type->fullName());
    sender.announce(parent);
    adapterOf(parent)->flagsIs(StreamAdapter::flagSyncFanOut, true);
    const Ptr<Zel::Entity> child(make());
    adapterOf(parent)->flagsIs(StreamAdapter::flagSyncFanOut, false);
    EXPECT_FALSE(adapterOf(child));
    type->childAttrLogIs(Ptr<const Zel::ZelAttr>(type->attr(154)), child, sender.out());
    EXPECT_FALSE(adapterOf(child));
    EXPECT_EQ(sender.written(), "");
    type->childAttrLogIs(Ptr<const Zel::ZelAttr>(type->attr(258)), child, sender.out());
    EXPECT_TRUE(adapterOf(child));
    const std::string written = sender.written();
    EXPECT_NE(written.find("00 00 01 02 01 00 00 00 00 00 00 00 97 00 01"), written.npos);
  };
  const auto configs = Unit::configDirFactory("c");
  expectAttached(configs, [&] { return configs->newConfig("u"); });
  const auto units = Unit::statusDirFactory("s");
  expectAttached(units, [&] { return units->newStatus("u"); });
  const auto inputs = Unit::mergedInputDirFactory("m");
  expectAttached(inputs, [&] { return inputs->newUnit("u", Unit::srcCli); });
  const auto mapped = groupToUnitDirFactory("g");
  expectAttached(mapped, [&] { return mapped->newGroupToUnit(group); });
  const auto groups = MaintenanceGroup::configDirFactory("n");
  expectAttached(groups, [&] { return groups->newMaintenanceGroup(group); });
  const auto unitProfiles = MaintenanceUnitProfile::configDirFactory("p");
  expectAttached(unitProfiles, [&] { return unitProfiles->newConfig("u"); });
}

TEST_F(AdapterMembers, OfADirectoryOfUnitsToo) {
  using namespace Maintenance::Unit;
  const auto units = statusDirFactory("d");
  sender.announce(units);
  const auto own = Zel::ptrCast<StatusDir::ZelNboAttrLogSa>(adapterOf(units));
  units->statusIs("u");
  EXPECT_EQ(own->statusNboAttrLogAdapter(units->status("u")), adapterOf(units->status("u")));
  EXPECT_EQ(own->statusNboAttrLogAdapterDel(units->status("u"))->entityId(), (Zel::EntityId{4, 0}));
  EXPECT_FALSE(own->statusNboAttrLogAdapter(units->status("u")));
  EXPECT_TRUE(
      own->statusNboAttrLogAdapterIs(Flags(0x40), units->status("u"), 1, sender.out(), nullptr));
  EXPECT_EQ(adapterOf(units->status("u"))->entityId(), (Zel::EntityId{6, 0}));
}

} // namespace
