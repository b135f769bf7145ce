#include "UnitCommands.h"

#include "Arguments.h"

#include <algorithm>

namespace Replay {

namespace {

using namespace Maintenance::Unit;
using Zel::String8;

/// The unit's writer keeps the history at its size; the library trims nothing.
void trimHistory(Status& unit) {
  const unsigned size = unit.historySize();
  // The oldest line comes first. An iterator stays valid when the entry under it is deleted.
  for (Status::HistoryMap::Iterator at(unit.historyMap()); unit.historyMap().count() > size;
       at.advance()) {
    unit.historyDel(at);
  }
}

void replayState(Line& line, Status& unit, double now) {
  const State state = takeEnumerator<State>(line, "a state", StateInstance);
  InputSrc reason = unit.reason();
  if (!line.done()) {
    line.keyword("by");
    reason = takeEnumerator<InputSrc>(line, "a reason", InputSrcInstance);
  }
  line.end();
  // A mutator touches its own attribute only: that the time goes with the state is ours to see to.
  const bool isChange = state != unit.state();
  unit.stateIs(state);
  unit.reasonIs(reason); // the same value again tells nobody
  if (isChange) {
    unit.timeOfStateChangeIs(now);
  }
}

void replayProfile(Line& line, Status& unit, double /*now*/) {
  const String8 name = takeName(line, "the name of a profile");
  line.end();
  unit.profileNameIs(name);
}

void replayGroup(Line& line, Status& unit, double /*now*/) {
  const Group::GroupType type =
      takeEnumerator<Group::GroupType>(line, "a group type", Group::GroupTypeInstance);
  const Group::GroupKey key(type, takeName(line, "the name of a group"));
  const bool isThere = unit.groupMap()[key] != nullptr;
  const bool add = takeChange(line, "add", "remove", "a group", isThere);
  line.end();
  if (add) {
    unit.groupIs(key, true);
  } else {
    unit.groupDel(key);
  }
}

void replayRates(Line& line, Status& unit, double now) {
  TrafficRates rates;
  line.keyword("in");
  rates.inBitsRateIs(takeRate(line));
  line.keyword("out");
  rates.outBitsRateIs(takeRate(line));
  line.end();
  rates.statsUpdateTimeIs(now);
  unit.aggTrafficRateIs(rates); // a value changes as a whole
}

void replayViolation(Line& line, Status& unit, double /*now*/) {
  const Vexil::IntfId interface = takeInterface(line);
  const bool isThere = unit.intfsViolatingTrafficThresholdMap()[interface] != nullptr;
  const bool begin = takeChange(line, "begin", "end", "a violation", isThere);
  line.end();
  if (begin) {
    unit.intfsViolatingTrafficThresholdIs(interface, true);
    unit.totalIntfTrafficViolationsInc(1);
  } else {
    unit.intfsViolatingTrafficThresholdDel(interface);
  }
}

void replayHistory(Line& line, Status& unit, double now) {
  const String8 text(std::string_view(line.word("a text in quotes")));
  line.end();
  unit.historyIs(now, text); // a line of the same time is replaced
  trimHistory(unit);
}

void replayHistorySize(Line& line, Status& unit, double /*now*/) {
  const unsigned size = takeNumber(line, "a number of history lines");
  line.end();
  unit.historySizeIs(size);
  trimHistory(unit);
}

void replayGeneration(Line& line, Status& unit, double /*now*/) {
  const unsigned id = takeNumber(line, "a generation");
  line.end();
  unit.genIdIs(id);
}

void replayOnBootExit(Line& line, Status& unit, double /*now*/) {
  const double time = takeTime(line);
  line.end();
  unit.onBootMaintExitTimeIs(time);
}

void replayStageManager(Line& line, Status& unit, double /*now*/) {
  const std::string operation = line.word("\"enter\" or \"exit\"");
  if (operation != "enter" && operation != "exit") {
    throw Mismatch{"\"enter\" or \"exit\"", operation};
  }
  // The key packs the unit's name and a generation, from 1 on, into the one text of the status.
  StageMgrInstKey key;
  key.unitNameIs(unit.unitName());
  key.genIdIs(takeNumber(line, "a generation", 1));
  line.end();
  if (operation == "enter") {
    unit.maintEnterInstanceIs(key.instanceName());
  } else {
    unit.maintExitInstanceIs(key.instanceName());
  }
}

struct Command {
  std::string_view word;
  void (*replay)(Line& line, Status& unit, double now);
};

constexpr Command commands[] = {
    {"state", replayState},
    {"profile", replayProfile},
    {"group", replayGroup},
    {"rates", replayRates},
    {"violation", replayViolation},
    {"history", replayHistory},
    {"history-size", replayHistorySize},
    {"generation", replayGeneration},
    {"on-boot-exit", replayOnBootExit},
    {"stage-manager", replayStageManager},
};

} // namespace

void replayUnit(Line& line, Model& model, double now) {
  const String8 name = takeName(line, "the name of a unit");
  std::string expected = "\"add\", \"remove\"";
  for (const Command& command : commands) {
    expected += &command == std::end(commands) - 1 ? " or " : ", ";
    expected += quoted(command.word);
  }
  const std::string word = line.word(expected);

  // This handle keeps the unit whole to the end of the command, whatever a notifiee does to the
  // directory meanwhile.
  const Zel::Ptr<Status> unit = model.units->status(name);
  if (word == "add") {
    const UnitType type = takeEnumerator<UnitType>(line, "a unit type", UnitTypeInstance);
    line.end();
    if (unit) {
      throw Mismatch{"a unit that is not there yet", std::string(name.view())};
    }
    // Makes the unit, tells the directory's notifiees, and yields it.
    model.units->statusIs(name)->unitTypeIs(type);
    return;
  }
  const auto* const command = std::find_if(std::begin(commands), std::end(commands),
                                           [&](const Command& c) { return c.word == word; });
  if (word != "remove" && command == std::end(commands)) {
    throw Mismatch{expected, word};
  }
  if (!unit) {
    throw Mismatch{"a unit that is there", std::string(name.view())};
  }
  if (word == "remove") {
    line.end();
    model.units->statusDel(name);
  } else {
    command->replay(line, *unit, now);
  }
}

} // namespace Replay
