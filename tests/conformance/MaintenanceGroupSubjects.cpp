#include "Subject.h"

#include <model/MaintenanceGroup.h>

namespace Conformance {

namespace {

using namespace Maintenance::MaintenanceGroup;

class ConfigRecorder : public Recorder<Config> {
  void onProfile(const Maintenance::Profile::ProfileKey& key) override {
    hear(Config::Attr::profile, key);
  }
  void onProfile() override { hear(Config::Attr::profile); }
};

class ConfigDirRecorder : public Recorder<ConfigDir> {
  void onMaintenanceGroup(const Group::GroupKey& key) override {
    hear(ConfigDir::Attr::maintenanceGroup, key);
  }
  void onMaintenanceGroup() override { hear(ConfigDir::Attr::maintenanceGroup); }
};

} // namespace

void addMaintenanceGroupSubjects(std::vector<Subject>& all) {
  const Group::GroupKey key(Group::groupTypeBgp, "peers");
  all.push_back(SubjectOf<Config, ConfigRecorder>("GroupConfig",
                                                  [key] { return configFactory("group", key); })
                    .reads<&Config::key>(Config::Attr::key, key)
                    .looksUp<&Config::profile, &Config::profileMap>(Config::Attr::profile)
                    .reads<&Config::fwkKey>(Zel::fwkKeyId, key));
  all.push_back(SubjectOf<ConfigDir, ConfigDirRecorder>("GroupConfigDir",
                                                        [] { return configDirFactory("dir"); })
                    .finds<&ConfigDir::maintenanceGroup, &ConfigDir::maintenanceGroupMap>(
                        ConfigDir::Attr::maintenanceGroup));
}

} // namespace Conformance
