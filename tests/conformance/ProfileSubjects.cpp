#include "Subject.h"

#include <model/Profile.h>

namespace Conformance {

namespace {

using namespace Maintenance::Profile;

class ConfigRecorder : public Recorder<Config> {};

class ConfigDirRecorder : public Recorder<ConfigDir> {
  void onConfig(const ProfileKey& key) override { hear(ConfigDir::Attr::config, key); }
  void onConfig() override { hear(ConfigDir::Attr::config); }
};

class DefaultProfileRecorder : public Recorder<DefaultProfile> {
  void onProfileName() override { hear(DefaultProfile::Attr::profileName); }
};

} // namespace

void addProfileSubjects(std::vector<Subject>& all) {
  const ProfileKey key(profileTypeBgp, "drain");
  all.push_back(SubjectOf<ProfileKey>("ProfileKey", [key] { return key; })
                    .reads<&ProfileKey::type>(ProfileKey::Attr::type, profileTypeBgp)
                    .reads<&ProfileKey::name>(ProfileKey::Attr::name, "drain")
                    .reads<&ProfileKey::hash>(ProfileKey::Attr::hash, key.hash()));
  all.push_back(SubjectOf<Config, ConfigRecorder>("ProfileConfig",
                                                  [key] { return Zel::makeObject<Config>(key); })
                    .reads<&Config::key>(Config::Attr::key, key)
                    .reads<&Config::fwkKey>(Zel::fwkKeyId, key));
  all.push_back(SubjectOf<ConfigDir, ConfigDirRecorder>("ProfileConfigDir", [] {
                  return configDirFactory("dir");
                }).finds<&ConfigDir::config, &ConfigDir::configMap>(ConfigDir::Attr::config));
  using Attr = DefaultProfile::Attr;
  all.push_back(
      SubjectOf<DefaultProfile, DefaultProfileRecorder>(
          "DefaultProfile", [] { return defaultProfileFactory("default"); })
          .reads<&DefaultProfile::systemDefaultProfileName>(Attr::systemDefaultProfileName,
                                                            "#DEFAULTPROFILE")
          .reads<&DefaultProfile::profileName>(Attr::profileName, "")
          .reads<&DefaultProfile::reservedProfileName>(Attr::reservedProfileName, "default"));
}

} // namespace Conformance
