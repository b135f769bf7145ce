#include "Journal.h"

#include "Arguments.h"
#include "UnitCommands.h"

namespace Replay {

using Maintenance::Profile::ProfileKey;
using Maintenance::Profile::ProfileType;
using Maintenance::Profile::ProfileTypeInstance;

Journal::Journal(std::ostream& out) : log_(out) {}

void Journal::replay(std::string_view text) {
  Line line(text);
  if (line.done()) {
    return; // blank, or a comment
  }
  const double now = takeTime(line);
  log_.nowIs(now);
  constexpr const char* expected = "\"profile\", \"default-profile\" or \"unit\"";
  const std::string& word = line.word(expected);
  if (word == "profile") {
    replayProfile(line);
  } else if (word == "default-profile") {
    replayDefaultProfile(line);
  } else if (word == "unit") {
    replayUnit(line, model_, now);
  } else {
    throw Mismatch{expected, word};
  }
}

void Journal::replayProfile(Line& line) {
  const ProfileType type = takeEnumerator<ProfileType>(line, "a profile type", ProfileTypeInstance);
  const ProfileKey key(type, takeName(line, "the name of a profile"));
  const bool isThere = static_cast<bool>(model_.profiles->config(key));
  const bool add = takeChange(line, "add", "remove", "a profile", isThere);
  line.end();
  // The handle that either yields is of no use here, and dropped: the directory holds what is in
  // it, and a profile that has been taken out ends with that handle.
  if (add) {
    model_.profiles->configIs(key);
  } else {
    model_.profiles->configDel(key);
  }
}

void Journal::replayDefaultProfile(Line& line) {
  const Zel::String8 name = takeName(line, "the name of a profile");
  line.end();
  model_.defaultProfile->profileNameIs(name);
}

} // namespace Replay
