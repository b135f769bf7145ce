#pragma once

#include "Tree.h"

#include <string>

/// Writes with `write` if the entity is of its type; whether it was.
template <class E, class Write>
bool isWritten(const Zel::Ptr<Zel::Entity>& entity, const Write& write) {
  const auto own = Zel::ptrCast<E>(entity);
  if (own) {
    write(*own);
  }
  return static_cast<bool>(own);
}

/// Nothing of a profile ever changes.
inline bool isConstant(const Zel::Ptr<Zel::Entity>& entity) {
  return Zel::ptrCast<Maintenance::Profile::Config>(entity) &&
         !Zel::ptrCast<MaintenanceUnitProfile::Config>(entity);
}

/// Changes something about an entity, of whatever type it is; false if nobody knows that.
inline bool probe(const Zel::Ptr<Zel::Entity>& root) {
  using namespace Maintenance;
  static unsigned probes = 0; // each of another name, since one that is there changes nothing
  const Zel::String8 text(("probe" + std::to_string(++probes)).c_str());
  const Zel::Name name(text);
  const Group::GroupKey group(Group::groupTypeBgp, name);
  const Profile::ProfileKey profile(Profile::profileTypeBgp, text);
  return isWritten<Unit::StatusDir>(root, [&](auto& to) { to.statusIs(name); }) ||
         isWritten<Unit::ConfigDir>(root, [&](auto& to) { to.configIs(name); }) ||
         isWritten<Unit::MergedInputDir>(root, [&](auto& to) { to.unitIs(name, Unit::srcCli); }) ||
         isWritten<Unit::Input>(root, [&](auto& to) { to.unitIs(text, true); }) ||
         isWritten<Unit::Status>(root, [&](auto& to) { to.profileNameIs(text); }) ||
         isWritten<Unit::Config>(root, [&](auto& to) { to.profileNameIs(text); }) ||
         isWritten<Unit::MergedInput>(
             root, [&](auto& to) { to.priorityIs(static_cast<Unit::InputSrc>(100 + probes)); }) ||
         isWritten<Profile::ConfigDir>(root, [&](auto& to) { to.configIs(profile); }) ||
         isWritten<Profile::DefaultProfile>(root, [&](auto& to) { to.profileNameIs(text); }) ||
         isWritten<GroupToUnitDir>(root, [&](auto& to) { to.groupToUnitIs(group); }) ||
         isWritten<GroupToUnit>(root, [&](auto& to) { to.unitNameIs(name, true); }) ||
         isWritten<MemberToGroup>(root, [&](auto& to) { to.groupIs(group, true); }) ||
         isWritten<MaintenanceGroup::ConfigDir>(root,
                                                [&](auto& to) { to.maintenanceGroupIs(group); }) ||
         isWritten<MaintenanceGroup::Config>(root,
                                             [&](auto& to) { to.profileIs(profile, true); }) ||
         isWritten<MaintenanceUnitProfile::ConfigDir>(root, [&](auto& to) { to.configIs(text); }) ||
         isWritten<MaintenanceUnitProfile::Config>(
             root, [&](auto& to) { to.onBootDurationIs(10000 + probes); }) ||
         isWritten<AgentInfo>(root, [&](auto& to) { to.agentPidIs(10000 + probes); });
}
