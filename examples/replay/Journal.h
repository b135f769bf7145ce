#pragma once

#include "Line.h"
#include "Log.h"
#include "Model.h"
#include "ProfileWatch.h"
#include "UnitWatch.h"
#include "Watch.h"

namespace Replay {

/// A model that hears itself change: each line of a journal changes it through the mutators of its
/// types, and the notifications that follow are printed before the line is done.
class Journal {
public:
  explicit Journal(std::ostream& out);

  /// Replays one line. Throws `Mismatch` on a bad one, with nothing changed.
  void replay(std::string_view text);

  const Model& model() const noexcept { return model_; }

private:
  void replayProfile(Line& line);
  void replayDefaultProfile(Line& line);

  // The order tells what goes first at the end: the notifiees, so that nobody hears the model being
  // torn down; then the model; then the log, to which the notifiees refer.
  Log log_;
  Model model_;
  Zel::Ptr<ProfilesWatch> profilesWatch_ = watch<ProfilesWatch>(model_.profiles, log_);
  Zel::Ptr<DefaultProfileWatch> defaultProfileWatch_ =
      watch<DefaultProfileWatch>(model_.defaultProfile, log_);
  Zel::Ptr<UnitsWatch> unitsWatch_ = watch<UnitsWatch>(model_.units, log_);
};

} // namespace Replay
