// Sessions over sockets: changes in batches and one by one, the round trip of a change and its
// answer, the walk of a directory, and ten readers of which one is slow.

#include "sockets/Reader.h"

#include <Zel/AttrLogRoot>

#include <memory>
#include <string>
#include <vector>

namespace {

using namespace Bench::Sockets;
using Maintenance::Unit::Status;
using Maintenance::Unit::StatusDir;
using Zel::Ptr;

constexpr std::size_t batch = 65536;

/// What a measurement yields: the time on the clock, or what one side took of a processor's.
enum class Time : std::uint8_t { clock, writer, reader };

double eachOf(const Board& board, std::size_t count, Time time = Time::clock) {
  const double took = time == Time::writer   ? board.writerTime.load()
                      : time == Time::reader ? board.readerTime.load()
                                             : board.ended - board.started;
  return took / static_cast<double>(count) * 1e9;
}

Ptr<Zel::Exports> offering(const Ptr<Zel::Entity>& root, Zel::Access most = Zel::accessReadOnly) {
  const auto exports = Zel::makeObject<Zel::Exports>();
  exports->entityIs(root, most);
  return exports;
}

void nothingCoalesced(const Exporter& exporter) {
  if (exporter.root->coalesced() != 0) {
    fail("changes were coalesced: " + std::to_string(exporter.root->coalesced()));
  }
}

/// Changes of units, written once there are `least` bytes of them.
double changes(std::size_t rounds, std::size_t least, bool isHeard, Time time = Time::clock) {
  const SharedBoard board;
  Pair pair;
  {
    const Process reader([&] {
      placeIs(Place::last);
      Reader own(pair.readerEnd(), board);
      if (isHeard) {
        own.listen();
      }
      own.run(rounds);
    });
    placeIs(Place::first);
    const Ptr<StatusDir> dir = Units::made();
    const Units units(dir);
    Exporter exporter(pair.writerEnd(), offering(dir), "units");
    waitFor([&] { return board->readersReady == 1; });
    const double before = processorTime();
    board->started = now();
    units.change(rounds, [&] {
      if (exporter.driver.pending() >= least) {
        exporter.driver.flush();
      }
    });
    exporter.driver.flush();
    board->writerTime = processorTime() - before;
    nothingCoalesced(exporter);
  }
  return eachOf(*board, rounds * Units::count, time);
}

/// Answers each change of a number with one of another.
struct Answerer : Status::Notifiee {
  void onGenId() override {
    Status& unit = *Zel::ptrCast<Status>(
        Zel::Ptr<Zel::PtrInterface>(const_cast<Zel::PtrInterface*>(rawNotifier())));
    unit.totalIntfTrafficViolationsIs(unit.genId());
  }
};
struct Listener : Status::Notifiee {
  void onTotalIntfTrafficViolations() override { ++heard; }
  std::uint64_t heard = 0;
};

double roundTrip(Place other, std::size_t count) {
  const SharedBoard board;
  Pair pair;
  {
    const Process reader([&] {
      placeIs(other);
      Mirror mirror(pair.readerEnd(), "units", Zel::accessReadWrite);
      mirror.settle();
      const Units units(Zel::ptrCast<StatusDir>(mirror.mount->entity()));
      const auto answerer = listener<Answerer>(units.all()[0]);
      board->readersReady = 1;
      while (units.at(0).genId() != count) {
        mirror.driver.receive();
        mirror.driver.flush();
      }
    });
    placeIs(Place::first);
    const Ptr<StatusDir> dir = Units::made();
    const Units units(dir);
    Exporter exporter(pair.writerEnd(), offering(dir, Zel::accessReadWrite), "units");
    const auto heard = listener<Listener>(units.all()[0]);
    waitFor([&] { return board->readersReady == 1; });
    board->started = now();
    for (unsigned i = 1; i <= count; ++i) {
      units.at(0).genIdIs(i);
      exporter.driver.flush();
      while (heard->heard != i) {
        exporter.driver.receive();
      }
    }
    board->endedAt(now());
    nothingCoalesced(exporter);
  }
  return eachOf(*board, count);
}

/// A directory of profiles, from the hello until the mount is live.
double walk(std::size_t count, Time time = Time::clock) {
  using namespace Maintenance::Profile;
  const SharedBoard board;
  Pair pair;
  {
    const Process reader([&] {
      placeIs(Place::last);
      const int socket = pair.readerEnd();
      waitFor([&] { return board->writerReady.load(); });
      const double before = processorTime();
      board->started = now();
      Mirror mirror(socket, "profiles");
      mirror.settle();
      board->endedAt(now());
      board->readerTime = processorTime() - before;
      if (Zel::ptrCast<ConfigDir>(mirror.mount->entity())->configMap().count() != count) {
        fail("not all profiles have come");
      }
    });
    placeIs(Place::first);
    const auto dir = configDirFactory("profiles");
    for (std::size_t i = 0; i < count; ++i) {
      dir->configIs(ProfileKey(profileTypeBgp, name(i)));
    }
    const int socket = pair.writerEnd();
    const double before = processorTime();
    board->writerReady = true;
    const Exporter exporter(socket, offering(dir), "profiles");
    board->writerTime = processorTime() - before;
  }
  return eachOf(*board, count, time);
}

/// The same changes for several readers. The last may be slow; the time is that of the others.
double readers(std::size_t count, bool isLastSlow, std::size_t rounds) {
  const std::size_t fast = isLastSlow ? count - 1 : count;
  const SharedBoard board;
  std::vector<std::unique_ptr<Pair>> pairs;
  std::vector<std::unique_ptr<Process>> processes;
  const Ptr<StatusDir> dir = Units::made();
  const Units units(dir);
  placeIs(Place::any);
  for (std::size_t i = 0; i < count; ++i) {
    pairs.push_back(std::make_unique<Pair>());
    processes.push_back(std::make_unique<Process>([&, i] {
      Reader own(pairs[i]->readerEnd(), board);
      i < fast ? own.run(rounds) : own.runSlowly(rounds);
    }));
  }
  const auto exports = offering(dir);
  std::vector<std::unique_ptr<Exporter>> exporters;
  for (const auto& pair : pairs) {
    exporters.push_back(std::make_unique<Exporter>(pair->writerEnd(), exports, "units"));
  }
  waitFor([&] { return board->readersReady == count; });
  const auto flushAll = [&] {
    for (std::size_t i = 0; i < fast; ++i) {
      exporters[i]->driver.flush();
    }
    if (isLastSlow) {
      exporters.back()->driver.flushSome();
    }
  };
  board->started = now();
  units.change(rounds, [&] {
    if (exporters.front()->driver.pending() >= batch) {
      flushAll();
    }
  });
  flushAll();
  for (std::size_t i = 0; i < fast; ++i) {
    processes[i] = nullptr; // which waits for its end
    nothingCoalesced(*exporters[i]);
  }
  if (isLastSlow) {
    board->isOver = true;
    Exporter& slow = *exporters.back();
    if (slow.root->coalesced() == 0) {
      fail("the slow reader was not slow");
    }
    while (slow.root->owed() != 0 || slow.driver.pending() != 0) {
      slow.driver.flush();
    }
  }
  processes.clear();
  return eachOf(*board, rounds * Units::count);
}

} // namespace

Bench::Sockets::Operations Bench::Sockets::operations() {
  return {
      {"changes", [] { return changes(200, batch, false); }},
      {"changes, writer", [] { return changes(200, batch, false, Time::writer); }},
      {"changes, reader", [] { return changes(200, batch, false, Time::reader); }},
      {"changes heard", [] { return changes(200, batch, true); }},
      {"changes each", [] { return changes(50, 1, false); }},
      {"round trip one", [] { return roundTrip(Place::first, 100'000); }},
      {"round trip two", [] { return roundTrip(Place::last, 20'000); }},
      {"walk", [] { return walk(100'000); }},
      {"walk, writer", [] { return walk(100'000, Time::writer); }},
      {"walk, reader", [] { return walk(100'000, Time::reader); }},
      {"nine readers", [] { return readers(9, false, 30); }},
      {"ten readers", [] { return readers(10, false, 30); }},
      {"nine readers and a slow one", [] { return readers(10, true, 30); }},
  };
}
