#include "GenericFixture.h"

#include <generic/MaintenanceAgentInfo.h>
#include <generic/MaintenanceGroup.h>
#include <generic/MaintenanceUnitProfile.h>

// Groups, unit profiles and the agent's information through generic objects.

namespace {

using namespace TestGeneric;
using Group::GroupKey;
using Maintenance::AgentInfo;
using Maintenance::Profile::ProfileKey;
using Maintenance::Profile::profileTypeBgp;
using Maintenance::Profile::profileTypeUnit;
using Noted = Maintenance::OnBootUnitAndReason;
using ProfileConfig = Maintenance::Profile::Config;
namespace Groups = Maintenance::MaintenanceGroup;
namespace Unit = Maintenance::Unit;
namespace UnitProfiles = MaintenanceUnitProfile;

Ptr<const Zel::ZelType> type(const Zel::ZelType* descriptor) {
  return Ptr<const Zel::ZelType>(descriptor);
}

Handle made(const Zel::ZelType* descriptor, const Handle& list) {
  return descriptor->genericIf(static_cast<const GenericIf*>(list.ptr()), false);
}

const GroupKey peers(Group::groupTypeBgp, "peers");

TEST(GenericGroup, IsMadeFromItsNameAndItsKey) {
  const Handle group = made(Groups::Config::_fwkType(), Zel::arguments(Zel::Name("g"), peers));
  EXPECT_EQ(group->name(), "g");
  EXPECT_EQ(Zel::readAttribute<GroupKey>(group, 258), peers);
  EXPECT_EQ(messageOf<Zel::TypeException>(
                [] { made(Groups::Config::_fwkType(), Zel::arguments(Zel::Name("g"))); }),
            "argument missing or of the wrong type: key");
  EXPECT_EQ(messageOf<Zel::UnknownArgException>([] {
              made(Groups::Config::_fwkType(), Zel::arguments(Zel::Name("g"), peers, true));
            }),
            "too many arguments: Config");
}

TEST(GenericGroup, OfADirectoryIsMadeByItsKeyAloneAndNamedByIt) {
  const auto groups = Groups::configDirFactory("groups");
  const Handle object = Zel::generic(groups);
  const Handle group = Zel::createMember(object, 258, peers);
  EXPECT_EQ(group->name(),
            "Value('Group::GroupKey', ** {'type': 'groupTypeBgp', 'name': 'peers'})");
  EXPECT_EQ(group->voidPtrIs(type(Groups::Config::_fwkType())),
            groups->maintenanceGroup(peers).ptr());
  Zel::setMember(group, 259, ProfileKey(profileTypeBgp, "slow"), true);
  EXPECT_TRUE(groups->maintenanceGroup(peers)->profile(ProfileKey(profileTypeBgp, "slow")));
  EXPECT_EQ(messageOf<Zel::TypeException>([&] { Zel::readMember(object, 258, nullptr); }),
            "argument missing or of the wrong type: key");
  EXPECT_EQ(messageOf<Zel::UnknownArgException>([&] { Zel::createMember(object, 258, peers, 1U); }),
            "too many arguments: maintenanceGroup");
}

TEST(GenericGroup, DeliversItsProfilesByKeyIfOneIsWaitingAndElseAsAWhole) {
  const auto group = Groups::configFactory("g", peers);
  Log log;
  Listener listener(log);
  const Handle object = told(Zel::generic(group), listener);
  const auto deliver = [&](Zel::AttributeId id) {
    object->pendingAttributeIs(id);
    object->handleNotification(nullptr);
    return std::exchange(log, {});
  };
  for (const Zel::AttributeId id : {259, -1}) {
    EXPECT_EQ(deliver(id), Log());
    group->zelNotifieeList().head()->zelPendingProfile = {ProfileKey(profileTypeBgp, "slow"), 1};
    EXPECT_EQ(deliver(id), Log{"259 " + textOf(Zel::generic(ProfileKey(profileTypeBgp, "slow")))});
    group->zelNotifieeList().head()->zelPendingProfile.count = 2;
    EXPECT_EQ(deliver(id), Log{"259"});
  }
  EXPECT_EQ(deliver(-2), Log{"259"});
  EXPECT_EQ(deliver(258), Log());
}

TEST(GenericGroup, AndUnitProfilesOfDirectoriesAreDeliveredWithoutAnyWaiting) {
  Log log;
  Listener listener(log);
  for (const Handle& object : {Zel::generic(Groups::configDirFactory("groups")),
                               Zel::generic(UnitProfiles::configDirFactory("profiles"))}) {
    told(object, listener);
    for (const Zel::AttributeId id : {-1, 258, -2}) {
      object->pendingAttributeIs(id);
      object->handleNotification(nullptr);
    }
    EXPECT_EQ(std::exchange(log, {}), Log{"258"});
  }
}

struct GenericUnitProfile : testing::Test {
  const Ptr<UnitProfiles::Config> profile = UnitProfiles::configFactory("careful");
  Log log;
  Listener listener{log};
  const Handle object = told(Zel::generic(profile), listener);
};

TEST_F(GenericUnitProfile, PassesForItsBasesToo) {
  EXPECT_EQ(object->type(), type(UnitProfiles::Config::_fwkType()));
  for (const Zel::ZelType* const base :
       {UnitProfiles::Config::_fwkType(), ProfileConfig::_fwkType(), Zel::Entity::_fwkType(),
        Zel::PtrInterface::_fwkType()}) {
    EXPECT_EQ(object->voidPtrIs(type(base)), profile.ptr());
  }
  EXPECT_EQ(messageOf<Zel::TypeException>(
                [&] { object->voidPtrIs(type(UnitProfiles::ConfigDir::_fwkType())); }),
            "argument missing or of the wrong type: Config");
}

TEST_F(GenericUnitProfile, FindsAndReadsTheKeyOfItsBase) {
  EXPECT_EQ(object->attributeId("key"), 258);
  EXPECT_EQ(object->attributeId("profileName"), 386);
  EXPECT_EQ(object->attributeString(258), "key");
  EXPECT_EQ(object->attributeString(386), "profileName");
  EXPECT_EQ(Zel::readAttribute<ProfileKey>(object, 258), ProfileKey(profileTypeUnit, "careful"));
  EXPECT_EQ(Zel::readAttribute<Zel::String8>(object, 386), "careful");
}

TEST_F(GenericUnitProfile, TakesAnyDurationAndNoWriteOfItsLimits) {
  for (const unsigned duration : {1U, 100000U}) {
    Zel::writeAttribute(object, 387, duration);
    EXPECT_EQ(profile->onBootDuration(), duration);
  }
  EXPECT_EQ(Zel::readAttribute<unsigned>(object, 388), 300U);
  EXPECT_EQ(Zel::readAttribute<unsigned>(object, 389), 3600U);
  EXPECT_EQ(messageOf<Zel::OpNotSupportedException>([&] { Zel::writeAttribute(object, 388, 1U); }),
            "operation 128 not supported on minOnBootDuration");
  EXPECT_EQ(log, (Log{"387", "387"}));
}

TEST_F(GenericUnitProfile, IsNotHeardOfByAGenericObjectOfItsBase) {
  Listener ofBase(log, "base ");
  const Handle base =
      told(dynamic_cast<Zel::GenericIfPtrInterface&>(*object).baseGenericIf(), ofBase);
  EXPECT_EQ(base->type(), type(ProfileConfig::_fwkType()));
  profile->onBootDurationIs(1);
  profile->onBootEnabledIs(true);
  EXPECT_EQ(log, (Log{"387", "390"}));
}

TEST_F(GenericUnitProfile, DeliversItsOwnTwoAttributes) {
  for (const Zel::AttributeId all : {-1, -2}) {
    log.clear();
    object->pendingAttributeIs(all);
    object->handleNotification(nullptr);
    EXPECT_EQ(log, (Log{"387", "390"}));
  }
}

TEST_F(GenericUnitProfile, IsMadeFromItsNameInADirectoryOrWithout) {
  const Handle one = made(UnitProfiles::Config::_fwkType(), Zel::arguments("bold"));
  EXPECT_EQ(Zel::readAttribute<Zel::String8>(one, 386), "bold");
  EXPECT_EQ(messageOf<Zel::TypeException>(
                [] { made(UnitProfiles::Config::_fwkType(), Zel::arguments()); }),
            "argument missing or of the wrong type: profileName");
  const auto profiles = UnitProfiles::configDirFactory("unit profiles");
  const Handle dir = Zel::generic(profiles);
  const Handle member = Zel::createMember(dir, 258, "bold");
  EXPECT_EQ(member->voidPtrIs(type(ProfileConfig::_fwkType())), profiles->config("bold").ptr());
  EXPECT_EQ(messageOf<Zel::TypeException>([&] { Zel::readMember(dir, 258, nullptr); }),
            "argument missing or of the wrong type: profileName");
}

struct GenericAgentInfo : testing::Test {
  static constexpr Zel::AttributeId notes = 261;
  const Ptr<AgentInfo> agent = Maintenance::agentInfoFactory("agent");
  const Handle object = Zel::generic(agent);
  const Noted system{"System", Unit::srcCli};
};

TEST_F(GenericAgentInfo, TakesAValueWithoutAnIndexAndFindsItByItsName) {
  EXPECT_EQ(attributeOp(object, notes, Op::opWrite, nullptr, Zel::generic(system)), nullptr);
  EXPECT_EQ(agent->onBootMaintEnter("System"), system);
  EXPECT_EQ(Zel::readMember<Noted>(object, notes, "System"), system);
  EXPECT_TRUE(Zel::exists(object, notes, "System"));
  EXPECT_EQ(Zel::count(object, notes), 1U);
  EXPECT_EQ(Zel::value<Noted>(Zel::deleteMember(object, notes, "System")), system);
  EXPECT_EQ(Zel::value<Noted>(Zel::deleteMember(object, notes, "System")), Noted());
}

TEST_F(GenericAgentInfo, RefusesAnIndexAtAWriteAndAsksForTheNameElsewhere) {
  EXPECT_EQ(messageOf<Zel::BadIndexAttrException>([&] {
              attributeOp(object, notes, Op::opWrite, Zel::generic("System"), Zel::generic(system));
            }),
            "attribute takes no index: onBootMaintEnter");
  EXPECT_EQ(messageOf<Zel::TypeException>([&] { attributeOp(object, notes, Op::opWrite); }),
            "argument missing or of the wrong type: onBootMaintEnter");
  for (const Op::OpId op : {Op::opRead, Op::opExists, Op::opDelete}) {
    EXPECT_EQ(messageOf<Zel::TypeException>([&] { attributeOp(object, notes, op); }),
              "argument missing or of the wrong type: unitName");
  }
  EXPECT_EQ(agent->onBootMaintEnterMap().count(), 0U);
}

TEST_F(GenericAgentInfo, DeliversAllFiveAttributesInOrder) {
  Log log;
  Listener listener(log);
  told(object, listener);
  object->pendingAttributeIs(-2);
  object->handleNotification(nullptr);
  EXPECT_EQ(log, (Log{"258", "259", "260", "261", "262"}));
}

TEST_F(GenericAgentInfo, IsToldOfANoteByItsName) {
  Log log;
  Listener listener(log);
  told(object, listener);
  agent->onBootMaintEnterIs(system);
  agent->restartCountInc(1);
  EXPECT_EQ(log, (Log{"261 'System'", "259"}));
}

TEST(GenericOnBootUnitAndReason, IsMadeFromBothArgumentsOrNone) {
  const Handle both = made(Noted::_fwkType(), Zel::arguments("System", Unit::srcOnBoot));
  EXPECT_EQ(Zel::value<Noted>(both), Noted("System", Unit::srcOnBoot));
  EXPECT_EQ(Zel::value<Noted>(made(Noted::_fwkType(), Zel::arguments())), Noted());
  EXPECT_EQ(
      messageOf<Zel::TypeException>([] { made(Noted::_fwkType(), Zel::arguments("System")); }),
      "argument missing or of the wrong type: reason");
  EXPECT_EQ(messageOf<Zel::UnknownArgException>(
                [] { made(Noted::_fwkType(), Zel::arguments("System", Unit::srcOnBoot, 1U)); }),
            "too many arguments: OnBootUnitAndReason");
}

} // namespace
