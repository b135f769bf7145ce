#pragma once

#include <generic/Reactor.h>
#include <generic/Value.h>
#include <model/Profile.h>

/// The generic objects of the profile types.
namespace Maintenance::Profile {

class ZEL_API Config::GenericIf_ : public Zel::EntityGenericIf<Config> {
public:
  class GenericIf_Adapter_;
  GenericIf_(const Zel::Ptr<Config>& object, bool isConst);

  /// There is no factory for it to call.
  static void genericIfListConstructor(const Zel::Ptr<const Zel::GenericIf>& list) = delete;

protected:
  ~GenericIf_() override;
};

class ZEL_API Config::GenericIf_::GenericIf_Adapter_
    : public Zel::GenericAdapter<Config, Config::GenericIf_> {
public:
  using GenericAdapter::GenericAdapter;

protected:
  ~GenericIf_Adapter_() override;
};

class ZEL_API ConfigDir::GenericIf_ : public Zel::EntityGenericIf<ConfigDir> {
public:
  class GenericIf_Adapter_;
  GenericIf_(const Zel::Ptr<ConfigDir>& object, bool isConst);

  void onConfig(const ProfileKey& key) { zelOnMember(Attr::config, &key); }

protected:
  ~GenericIf_() override;
};

class ZEL_API ConfigDir::GenericIf_::GenericIf_Adapter_
    : public Zel::GenericAdapter<ConfigDir, ConfigDir::GenericIf_> {
public:
  using GenericAdapter::GenericAdapter;

  void onConfig(const ProfileKey& key) override { zelForward(&GenericIf_::onConfig, key); }
  void onConfig() override { zelForwardCollection(Attr::config); }

protected:
  ~GenericIf_Adapter_() override;
};

class ZEL_API DefaultProfile::GenericIf_ : public Zel::EntityGenericIf<DefaultProfile> {
public:
  class GenericIf_Adapter_;
  GenericIf_(const Zel::Ptr<DefaultProfile>& object, bool isConst);

  void onProfileName() { zelOnSingular(Attr::profileName); }

protected:
  ~GenericIf_() override;
};

class ZEL_API DefaultProfile::GenericIf_::GenericIf_Adapter_
    : public Zel::GenericAdapter<DefaultProfile, DefaultProfile::GenericIf_> {
public:
  using GenericAdapter::GenericAdapter;

  void onProfileName() override { zelForward(&GenericIf_::onProfileName); }

protected:
  ~GenericIf_Adapter_() override;
};

} // namespace Maintenance::Profile
