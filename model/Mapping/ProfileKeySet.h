#pragma once

#include <Zel/Attribute>
#include <Zel/Trace>
#include <model/Profile/ProfileKey.h>

namespace Maintenance {

/// Picks one profile among candidates. Nobody is told of a change of the set.
class ZEL_API ProfileKeySet : public Zel::PtrInterface {
public:
  static constexpr std::string_view zelTypeName = "Maintenance::ProfileKeySet";
  static const Zel::TypeTable& zelTable();
  static const Zel::ZelType* _fwkType();
  const Zel::ZelType* fwkType() const override { return _fwkType(); }
  using _Type = Zel::TypeOf<ProfileKeySet>;
  class GenericIf_;

  class ZEL_API ZelProfileKey : public Zel::MapEntry<ZelProfileKey, Profile::ProfileKey, bool> {
    using MapEntry::MapEntry;
  };
  using ProfileKeyMap = Zel::HashMap<ZelProfileKey, Profile::ProfileKey, bool>;

  struct Attr {
    static constexpr Zel::AttributeId profileKey = 130;
    static constexpr Zel::AttributeId winningProfile = 131;
  };

  ProfileKeySet();

  /// The candidates, each with a value that has no say in the choice. Reading one that is not there
  /// yields false.
  bool profileKey(const Profile::ProfileKey& key) const;
  /// Adds the key or overwrites its value.
  void profileKeyIs(const Profile::ProfileKey& key, bool value);
  /// Removes the key and yields the value that it held; false if it is not there.
  bool profileKeyDel(const Profile::ProfileKey& key);
  /// The same for the key under the iterator, which stays on it.
  bool profileKeyDel(ProfileKeyMap::Iterator& at);
  void profileKeyDelAll();
  /// Adds the key. Throws `Zel::NameInUseException` if it is there.
  Zel::Ptr<ZelProfileKey> newProfileKey(const Profile::ProfileKey& key, bool value);
  /// Does nothing.
  void profileKeyNotify(const Profile::ProfileKey& key);
  /// The collection itself, for iteration.
  const ProfileKeyMap& profileKeyMap() const noexcept { return profileKey_; }

  /// The candidate with the greatest name, whatever its type and value; of equal names the first in
  /// the order of iteration; a default key if there is no candidate. Walks the whole set at each
  /// call, and traces the result at level 5 of the facility "MaintenanceMapping".
  Profile::ProfileKey winningProfile() const;

protected:
  ~ProfileKeySet() override;

private:
  ProfileKeyMap profileKey_;
};

ZEL_API Zel::Ptr<ProfileKeySet> profileKeySetFactory();

/// The trace facility of the mappings, "MaintenanceMapping"; off until somebody switches it on.
ZEL_API const Zel::TraceHandle& _defaultTraceHandle();

} // namespace Maintenance
