#pragma once

#include "Log.h"

#include <model/Profile.h>

namespace Replay {

/// Prints the profiles that come and go.
///
/// Like every notifiee it derives from the class `Notifiee` of the type that it hears of, and
/// overrides the callbacks of the attributes that it cares for; the others do nothing. `notifier()`
/// is the object that it hears of. Its destructor is protected: counted objects are never deleted
/// by hand.
class ProfilesWatch : public Maintenance::Profile::ConfigDir::Notifiee {
public:
  explicit ProfilesWatch(Log& log) : log_(log) {}

  /// Every collection has three callbacks of one name; this brings in those that stay as they are.
  using Notifiee::onConfig;
  void onConfig(const Maintenance::Profile::ProfileKey& key) override;

protected:
  ~ProfilesWatch() override = default;

private:
  Log& log_;
};

/// Prints changes of the default profile's name.
class DefaultProfileWatch : public Maintenance::Profile::DefaultProfile::Notifiee {
public:
  explicit DefaultProfileWatch(Log& log) : log_(log) {}

  void onProfileName() override;

protected:
  ~DefaultProfileWatch() override = default;

private:
  Log& log_;
};

} // namespace Replay
