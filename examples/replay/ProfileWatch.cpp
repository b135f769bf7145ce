#include "ProfileWatch.h"

#include "Line.h"

namespace Replay {

void ProfilesWatch::onConfig(const Maintenance::Profile::ProfileKey& key) {
  const std::string type(stringValue(key.type()).view());
  log_.line("profile " + type + ' ' + shown(key.name().view()),
            notifier()->config(key) ? "added" : "removed");
}

void DefaultProfileWatch::onProfileName() {
  // The callback brings no value: the notifiee reads what is there now.
  log_.line("default profile", "profileName = " + shown(notifier()->profileName().view()));
}

} // namespace Replay
