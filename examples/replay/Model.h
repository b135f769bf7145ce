#pragma once

#include <model/Profile.h>
#include <model/Unit.h>

namespace Replay {

/// The roots of what a journal changes, made by the factories of their types.
///
/// A root lives as long as some handle on it: these here, which is why they are kept. The
/// directories own their members, so no handle is kept on a profile or a unit: whoever needs one
/// looks it up, and holds what the look-up yields for as long as it works on it.
struct Model {
  Zel::Ptr<Maintenance::Profile::ConfigDir> profiles =
      Maintenance::Profile::configDirFactory("profiles");
  Zel::Ptr<Maintenance::Profile::DefaultProfile> defaultProfile =
      Maintenance::Profile::defaultProfileFactory("defaultProfile");
  Zel::Ptr<Maintenance::Unit::StatusDir> units = Maintenance::Unit::statusDirFactory("units");
};

} // namespace Replay
