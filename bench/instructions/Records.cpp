#include "Operation.h"

#include <Zel/Demuxer>
#include <Zel/StateDigest>
#include <model/Unit/StatusDir.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

namespace Instructions {

namespace {

using namespace Maintenance;
using Unit::Status;
using Unit::StatusDir;
using Zel::Connection;
using Zel::Name;
using Zel::Ptr;
using Zel::String8;

/// Units that `here` exports and `there` mirrors, over rings that hold all that is done at once.
class Ends {
public:
  explicit Ends(unsigned count) {
    for (unsigned i = 0; i != count; ++i) {
      names.emplace_back("unit" + std::to_string(1000 + i));
      units.push_back(dir->statusIs(names.back()));
      units.back()->profileNameIs("profile");
    }
  }
  ~Ends() {
    here->close();
    there->close();
  }
  Ends(const Ends&) = delete;
  Ends& operator=(const Ends&) = delete;

  void share() {
    here->demuxer()->exportIs(dir);
    settle();
  }
  /// What `here` has written, to `there`, which applies nothing of it yet.
  void deliver() const {
    while (here->wantsWrite()) {
      const auto bytes = here->pendingOutput();
      const auto space = there->inputSpace();
      const std::size_t count = std::min(bytes.size(), space.size());
      expect(count != 0, "the ring has room");
      std::memcpy(space.data(), bytes.data(), count);
      here->outputConsumed(count);
      there->inputReceived(count);
    }
  }
  void settle() const {
    while (here->service() || here->wantsWrite()) {
      deliver();
      while (there->service()) {
      }
    }
  }
  void expectEqual(const char* what) const {
    const Ptr<Zel::Entity> mirror = roots->entity("units");
    expect(mirror && Zel::stateDigest(*dir) == Zel::stateDigest(*mirror), what);
    expect(there->demuxer()->counts().refused + there->demuxer()->counts().badValues == 0, what);
  }

  static Zel::ConnectionLimits limits() {
    Zel::ConnectionLimits limits;
    limits.outCapacity = limits.inCapacity = std::size_t{1} << 22;
    return limits;
  }

  const Ptr<StatusDir> dir = Unit::statusDirFactory("units");
  const Ptr<Zel::Dir> roots = Zel::makeObject<Zel::Dir>();
  const Ptr<Connection> here =
      Zel::makeObject<Connection>(Connection::End::first, String8(), limits());
  const Ptr<Connection> there =
      Zel::makeObject<Connection>(Connection::End::second, String8(), limits(),
                                  Zel::makeObject<Zel::NboAttrLog::DirMounts>(
                                      roots, Zel::PtrInterface::NotifieeConst::Zel_BitSet()));
  std::vector<Name> names;
  std::vector<Ptr<Status>> units;
};

/// Counts a change as far as its record, and the record as far as the change. `change` makes one
/// record.
template <class Change>
void record(const std::string& what, const Change& change) {
  Ends ends(8);
  ends.share();
  const std::uint64_t before = ends.here->out()->recordsWritten();
  operation(("to a record: " + what).c_str(), [&](unsigned i) { change(ends, i); });
  expect(ends.here->out()->recordsWritten() - before == std::uint64_t{2} * times, what.c_str());
  ends.settle();
  ends.expectEqual(what.c_str());

  // The same again, applied piece by piece: a budget of one byte is one record.
  Ends others(8);
  others.share();
  for (unsigned i = 0; i != 2 * times; ++i) {
    change(others, i);
  }
  others.deliver();
  operation(("from a record: " + what).c_str(),
            [&](unsigned /*i*/) { others.there->demuxer()->inputApply(1); });
  expect(!others.there->demuxer()->inputApply(1), what.c_str());
  others.expectEqual(what.c_str());
}

} // namespace

void records() {
  std::vector<String8> texts;
  std::vector<Group::GroupKey> keys;
  for (unsigned i = 0; i != 2 * times; ++i) {
    texts.emplace_back("text" + std::to_string(1000 + i));
    keys.emplace_back(Group::groupTypeBgp, texts.back());
  }
  const auto at = [](Ends& ends, unsigned i) -> Status& { return *ends.units[i % 8]; };
  record("number", [&](Ends& ends, unsigned i) { at(ends, i).genIdIs(i + 1); });
  record("enumeration", [&](Ends& ends, unsigned i) {
    at(ends, i).stateIs(i / 8 % 2 == 0 ? Unit::active : Unit::underMaintenance);
  });
  record("time", [&](Ends& ends, unsigned i) { at(ends, i).timeOfStateChangeIs(i + 0.5); });
  record("text", [&](Ends& ends, unsigned i) { at(ends, i).profileNameIs(texts[i]); });
  record("value of several", [&](Ends& ends, unsigned i) {
    Unit::TrafficRates rates;
    rates.inBitsRateIs(i + 1);
    at(ends, i).aggTrafficRateIs(rates);
  });
  record("entry of a set", [&](Ends& ends, unsigned i) { at(ends, i).groupIs(keys[i], true); });
  record("entry of a set, changed",
         [&](Ends& ends, unsigned i) { at(ends, i).groupIs(keys[0], i / 8 % 2 == 0); });
  record("line of history", [&](Ends& ends, unsigned i) { at(ends, i).historyIs(i, texts[i]); });
  record("member made and deleted", [&](Ends& ends, unsigned i) {
    if (i % 2 == 0) {
      ends.dir->statusIs("another");
    } else {
      ends.dir->statusDel("another");
    }
  });
}

void walks() {
  constexpr std::uint64_t members = std::uint64_t{2} * times;
  Ends ends(members);
  ends.here->demuxer()->exportIs(ends.dir);
  // A turn is that of one adapter, mostly a member's: all of its attributes.
  operation("turn of a walk, written",
            [&](unsigned /*i*/) { ends.here->demuxer()->outputWrite(1); });
  while (ends.here->service()) {
  }
  const std::uint64_t bytes = ends.here->out()->bytesWritten();
  expect(ends.here->out()->recordsWritten() > 16 * members, "a walk sends all");
  ends.deliver();
  // In as many pieces, of whole records.
  operation("piece of a walk, applied",
            [&](unsigned /*i*/) { ends.there->demuxer()->inputApply(bytes / members); });
  while (ends.there->service()) {
  }
  ends.expectEqual("a walk brings all");
}

} // namespace Instructions
