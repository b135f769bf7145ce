#include "Subject.h"

#include <model/MaintenanceUnitProfile.h>

namespace Conformance {

namespace {

using namespace MaintenanceUnitProfile;
using Attr = Config::Attr;

class ConfigRecorder : public Recorder<Config> {
  void onOnBootDuration() override { hear(Attr::onBootDuration); }
  void onOnBootEnabled() override { hear(Attr::onBootEnabled); }
};

class ConfigDirRecorder : public Recorder<ConfigDir> {
  void onConfig(Zel::String8 profileName) override { hear(ConfigDir::Attr::config, profileName); }
  void onConfig() override { hear(ConfigDir::Attr::config); }
};

} // namespace

void addMaintenanceUnitProfileSubjects(std::vector<Subject>& all) {
  using Base = Maintenance::Profile::Config;
  const Maintenance::Profile::ProfileKey key(Maintenance::Profile::profileTypeUnit, "careful");
  all.push_back(SubjectOf<Config, ConfigRecorder>("UnitProfileConfig",
                                                  [] { return configFactory("careful"); })
                    .derivedFrom("Maintenance::Profile::Config")
                    .reads<&Base::key>(Base::Attr::key, key)
                    .reads<&Base::fwkKey>(Zel::fwkKeyId, key)
                    .reads<&Config::profileName>(Attr::profileName, "careful")
                    .reads<&Config::onBootDuration>(Attr::onBootDuration, 300)
                    .reads<&Config::minOnBootDuration>(Attr::minOnBootDuration, 300)
                    .reads<&Config::maxOnBootDuration>(Attr::maxOnBootDuration, 3600)
                    .reads<&Config::onBootEnabled>(Attr::onBootEnabled, false));
  all.push_back(SubjectOf<ConfigDir, ConfigDirRecorder>("UnitProfileConfigDir", [] {
                  return configDirFactory("dir");
                }).finds<&ConfigDir::config, &ConfigDir::configMap>(ConfigDir::Attr::config));
}

} // namespace Conformance
