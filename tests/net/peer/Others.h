#pragma once

#include <model/MaintenanceAgentInfo.h>
#include <model/MaintenanceGroup.h>
#include <model/MaintenanceUnitProfile.h>
#include <model/Mapping.h>
#include <model/Profile.h>
#include <model/Unit.h>

#include <random>
#include <vector>

/// The rest of a device's tree, beside its units: roots with all other entity types below them.
class Others {
public:
  static const std::vector<Zel::Name>& names();

  /// In the order of the names.
  std::vector<Zel::Ptr<Zel::Entity>> roots() const;
  /// A change somewhere: of a value, of a key or of a member.
  void change(std::mt19937_64& random);

private:
  const Zel::Ptr<Maintenance::AgentInfo> agent_ = Maintenance::agentInfoFactory("agent");
  const Zel::Ptr<Maintenance::Unit::ConfigDir> configured_ =
      Maintenance::Unit::configDirFactory("configured");
  const Zel::Ptr<Maintenance::Profile::DefaultProfile> default_ =
      Maintenance::Profile::defaultProfileFactory("default");
  const Zel::Ptr<Maintenance::MaintenanceGroup::ConfigDir> groups_ =
      Maintenance::MaintenanceGroup::configDirFactory("groups");
  const Zel::Ptr<Maintenance::GroupToUnitDir> groupToUnit_ =
      Maintenance::groupToUnitDirFactory("groupToUnit");
  const Zel::Ptr<Maintenance::Unit::Input> input_ = Maintenance::Unit::inputFactory("input");
  const Zel::Ptr<Maintenance::MemberToGroup> member_ =
      Zel::makeObject<Maintenance::MemberToGroup>("member");
  const Zel::Ptr<Maintenance::Unit::MergedInputDir> merged_ =
      Maintenance::Unit::mergedInputDirFactory("merged");
  const Zel::Ptr<Maintenance::Profile::ConfigDir> profiles_ =
      Maintenance::Profile::configDirFactory("profiles");
  const Zel::Ptr<MaintenanceUnitProfile::ConfigDir> unitProfiles_ =
      MaintenanceUnitProfile::configDirFactory("unitProfiles");
};
