#pragma once

#include <Zel/StateDigest>
#include <model/MaintenanceAgentInfo.h>
#include <model/MaintenanceGroup.h>
#include <model/MaintenanceUnitProfile.h>
#include <model/Mapping.h>
#include <model/Profile.h>
#include <model/Unit.h>

#include <vector>

/// Roots with all entity types of the model below them, and some of everything.
struct Tree {
  Tree() {
    units->statusIs("System");
    const Zel::Ptr<Maintenance::Unit::Status> system = units->status("System");
    system->historyIs(1.0, "one");
    system->historyIs(2.0, "two");
    system->groupIs(peers, true);
    system->profileNameIs("fast");
    profiles->configIs(slow);
    configured->configIs("System")->groupIs(peers, true);
    input->unitIs("System", true);
    merged->unitIs("System", Maintenance::Unit::srcCli);
    unitsOfGroups->groupToUnitIs(peers)->unitNameIs("System", true);
    member->groupIs(peers, true);
    member->selectedProfileIs(slow.type(), slow);
    groups->maintenanceGroupIs(peers)->profileIs(slow, true);
    unitProfiles->configIs("slow")->onBootEnabledIs(true);
    agent->onBootMaintEnterIs({"System", Maintenance::Unit::srcOnBoot});
  }

  std::uint64_t digest() const {
    std::uint64_t all = 0;
    for (const Zel::Ptr<Zel::Entity>& root : roots) {
      all = all * 31 + Zel::stateDigest(*root);
    }
    return all;
  }

  const Group::GroupKey peers{Group::groupTypeBgp, "peers"};
  const Maintenance::Profile::ProfileKey slow{Maintenance::Profile::profileTypeBgp, "slow"};
  const Zel::Ptr<Maintenance::Unit::StatusDir> units = Maintenance::Unit::statusDirFactory("units");
  const Zel::Ptr<Maintenance::Profile::ConfigDir> profiles =
      Maintenance::Profile::configDirFactory("profiles");
  const Zel::Ptr<Maintenance::Profile::DefaultProfile> standard =
      Maintenance::Profile::defaultProfileFactory("standard");
  const Zel::Ptr<Maintenance::Unit::ConfigDir> configured =
      Maintenance::Unit::configDirFactory("configured");
  const Zel::Ptr<Maintenance::Unit::Input> input = Maintenance::Unit::inputFactory("input");
  const Zel::Ptr<Maintenance::Unit::MergedInputDir> merged =
      Maintenance::Unit::mergedInputDirFactory("merged");
  const Zel::Ptr<Maintenance::GroupToUnitDir> unitsOfGroups =
      Maintenance::groupToUnitDirFactory("units of groups");
  const Zel::Ptr<Maintenance::MemberToGroup> member =
      Zel::makeObject<Maintenance::MemberToGroup>("member");
  const Zel::Ptr<Maintenance::MaintenanceGroup::ConfigDir> groups =
      Maintenance::MaintenanceGroup::configDirFactory("groups");
  const Zel::Ptr<MaintenanceUnitProfile::ConfigDir> unitProfiles =
      MaintenanceUnitProfile::configDirFactory("unit profiles");
  const Zel::Ptr<Maintenance::AgentInfo> agent = Maintenance::agentInfoFactory("agent");

  /// New ones go to the end: the ids in the kept corpus follow from the order.
  const std::vector<Zel::Ptr<Zel::Entity>> roots{units,  profiles,     standard,      configured,
                                                 input,  merged,       unitsOfGroups, member,
                                                 groups, unitProfiles, agent};
};
