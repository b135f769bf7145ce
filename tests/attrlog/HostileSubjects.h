#pragma once

#include <model/MaintenanceAgentInfo.h>
#include <model/MaintenanceGroup.h>
#include <model/MaintenanceUnitProfile.h>
#include <model/Mapping.h>
#include <model/Profile.h>
#include <model/Unit.h>

#include <ostream>
#include <vector>

/// An entity of each type, for tests that send what makes no sense.
namespace Hostile {

using namespace Maintenance;
using Zel::Entity;
using Zel::Ptr;

inline const Group::GroupKey peers(Group::groupTypeBgp, "p");
inline const Group::GroupKey ports(Group::groupTypeInterface, "i");
inline const Profile::ProfileKey slow(Profile::profileTypeBgp, "s");

/// A record's attribute and payload.
struct Payload {
  Zel::AttributeId attr;
  const char* hex;
};

/// A type, one entity of it with some of all that it may hold, a change of that, and payloads with
/// an enumerator 99 where only known ones are taken.
struct Subject {
  const char* type;
  Ptr<Entity> (*make)();
  void (*change)(Entity& made); ///< null where nothing ever changes
  std::vector<Payload> unknown;
};
inline void PrintTo(const Subject& subject, std::ostream* out) { *out << subject.type; }

template <class E>
E& as(Entity& entity) {
  return dynamic_cast<E&>(entity);
}

inline const std::vector<Subject>& subjects() {
  static const std::vector<Subject> all = {
      {"Maintenance::AgentInfo",
       []() -> Ptr<Entity> {
         const auto agent = agentInfoFactory("root");
         agent->agentPidIs(7);
         agent->restartCountIs(2);
         agent->onBootIs(true);
         agent->onBootMaintEnterIs({"u", Unit::srcOnBoot});
         agent->readyIs(true);
         return agent;
       },
       [](Entity& made) { as<AgentInfo>(made).agentPidIs(8); },
       {{261, "00 00 00 01 75 00 00 00 01 75 00 00 00 63"}}},
      {"Maintenance::GroupToUnit",
       []() -> Ptr<Entity> {
         const auto group = Zel::makeObject<GroupToUnit>(peers);
         group->unitNameIs("u", true);
         return group;
       },
       [](Entity& made) { as<GroupToUnit>(made).unitNameIs("v", false); },
       {}},
      {"Maintenance::GroupToUnitDir",
       []() -> Ptr<Entity> {
         const auto groups = groupToUnitDirFactory("root");
         groups->groupToUnitIs(peers)->unitNameIs("u", true);
         return groups;
       },
       [](Entity& made) { as<GroupToUnitDir>(made).groupToUnitIs(ports); },
       {{258, "00 00 00 63 00 00 00 01 78 08 00 00 00 00 00 00 00"},
        {-258, "00 00 00 63 00 00 00 01 70"}}},
      {"Maintenance::MaintenanceGroup::Config",
       []() -> Ptr<Entity> {
         const auto group = MaintenanceGroup::configFactory("root", peers);
         group->profileIs(slow, true);
         return group;
       },
       [](Entity& made) { as<MaintenanceGroup::Config>(made).profileIs(slow, false); },
       {{259, "00 00 00 63 00 00 00 01 73 01"}, {-259, "00 00 00 63 00 00 00 01 73"}}},
      {"Maintenance::MaintenanceGroup::ConfigDir",
       []() -> Ptr<Entity> {
         const auto groups = MaintenanceGroup::configDirFactory("root");
         groups->maintenanceGroupIs(peers)->profileIs(slow, true);
         return groups;
       },
       [](Entity& made) { as<MaintenanceGroup::ConfigDir>(made).maintenanceGroupIs(ports); },
       {{258, "00 00 00 63 00 00 00 01 78 08 00 00 00 00 00 00 00"},
        {-258, "00 00 00 63 00 00 00 01 70"}}},
      {"Maintenance::MemberToGroup",
       []() -> Ptr<Entity> {
         const auto member = Zel::makeObject<MemberToGroup>("root");
         member->groupIs(peers, true);
         member->selectedProfileIs(Profile::profileTypeBgp, slow);
         member->profileChangeCauseIs(userConfigChange);
         member->partOfDynamicUnitIs(true);
         return member;
       },
       [](Entity& made) { as<MemberToGroup>(made).groupIs(ports, true); },
       {{258, "00 00 00 63 00 00 00 01 70 01"},
        {-258, "00 00 00 63 00 00 00 01 70"},
        {259, "00 00 00 63 00 00 00 01 00 00 00 01 73"},
        {259, "00 00 00 02 00 00 00 63 00 00 00 01 73"},
        {-259, "00 00 00 63"}}},
      {"Maintenance::Profile::Config",
       []() -> Ptr<Entity> { return Zel::makeObject<Profile::Config>(slow); },
       nullptr,
       {}},
      {"Maintenance::Profile::ConfigDir",
       []() -> Ptr<Entity> {
         const auto profiles = Profile::configDirFactory("root");
         profiles->configIs(slow);
         return profiles;
       },
       [](Entity& made) {
         as<Profile::ConfigDir>(made).configIs({Profile::profileTypeUnit, "t"});
       },
       {{258, "00 00 00 63 00 00 00 01 78 08 00 00 00 00 00 00 00"},
        {-258, "00 00 00 63 00 00 00 01 73"}}},
      {"Maintenance::Profile::DefaultProfile",
       []() -> Ptr<Entity> {
         const auto profile = Profile::defaultProfileFactory("root");
         profile->profileNameIs("p");
         return profile;
       },
       [](Entity& made) { as<Profile::DefaultProfile>(made).profileNameIs("q"); },
       {}},
      {"Maintenance::Unit::Config",
       []() -> Ptr<Entity> {
         const auto unit = Unit::configFactory("root");
         unit->unitTypeIs(Unit::dynamic);
         unit->groupIs(peers, true);
         unit->profileNameIs("p");
         return unit;
       },
       [](Entity& made) { as<Unit::Config>(made).groupIs(ports, true); },
       {{260, "00 00 00 63 00 00 00 01 70 01"}, {-260, "00 00 00 63 00 00 00 01 70"}}},
      {"Maintenance::Unit::ConfigDir",
       []() -> Ptr<Entity> {
         const auto units = Unit::configDirFactory("root");
         units->configIs("u")->groupIs(peers, true);
         return units;
       },
       [](Entity& made) { as<Unit::ConfigDir>(made).configIs("v"); },
       {}},
      {"Maintenance::Unit::Input",
       []() -> Ptr<Entity> {
         const auto input = Unit::inputFactory("root");
         input->priorityIs(Unit::srcCli);
         input->unitIs("u", true);
         return input;
       },
       [](Entity& made) { as<Unit::Input>(made).unitIs("v", true); },
       {}},
      {"Maintenance::Unit::MergedInput",
       []() -> Ptr<Entity> { return Unit::mergedInputFactory("root", Unit::srcCli); },
       [](Entity& made) { as<Unit::MergedInput>(made).priorityIs(Unit::srcOnBoot); },
       {}},
      {"Maintenance::Unit::MergedInputDir",
       []() -> Ptr<Entity> {
         const auto merged = Unit::mergedInputDirFactory("root");
         merged->unitIs("u", Unit::srcCli);
         return merged;
       },
       [](Entity& made) { as<Unit::MergedInputDir>(made).unitIs("v", Unit::srcOnBoot); },
       {}},
      {"Maintenance::Unit::Status",
       []() -> Ptr<Entity> {
         const auto unit = Unit::statusFactory("root");
         unit->unitTypeIs(Unit::dynamic);
         unit->groupIs(peers, true);
         unit->profileNameIs("p");
         unit->stateIs(Unit::active);
         unit->reasonIs(Unit::srcCli);
         unit->timeOfStateChangeIs(1);
         unit->onBootMaintExitTimeIs(2);
         unit->historySizeIs(3);
         unit->historyIs(4, "line");
         unit->maintEnterInstanceIs("in");
         unit->maintExitInstanceIs("out");
         Unit::TrafficRates rates;
         rates.outBitsRateIs(1);
         unit->aggTrafficRateIs(rates);
         unit->intfsViolatingTrafficThresholdIs(Vexil::IntfId(1, 2), true);
         unit->totalIntfTrafficViolationsIs(5);
         unit->genIdIs(6);
         return unit;
       },
       [](Entity& made) { as<Unit::Status>(made).genIdIs(8); },
       {{260, "00 00 00 63 00 00 00 01 70 01"}, {-260, "00 00 00 63 00 00 00 01 70"}}},
      {"Maintenance::Unit::StatusDir",
       []() -> Ptr<Entity> {
         const auto units = Unit::statusDirFactory("root");
         units->statusIs("u")->groupIs(peers, true);
         return units;
       },
       [](Entity& made) { as<Unit::StatusDir>(made).statusIs("v"); },
       {}},
      {"MaintenanceUnitProfile::Config",
       []() -> Ptr<Entity> {
         const auto profile = MaintenanceUnitProfile::configFactory("p");
         profile->onBootDurationIs(301);
         profile->onBootEnabledIs(true);
         return profile;
       },
       [](Entity& made) { as<MaintenanceUnitProfile::Config>(made).onBootDurationIs(302); },
       {}},
      {"MaintenanceUnitProfile::ConfigDir",
       []() -> Ptr<Entity> {
         const auto profiles = MaintenanceUnitProfile::configDirFactory("root");
         profiles->configIs("p")->onBootEnabledIs(true);
         return profiles;
       },
       [](Entity& made) { as<MaintenanceUnitProfile::ConfigDir>(made).configIs("q"); },
       {}},
  };
  return all;
}

} // namespace Hostile
