// The attribute log in memory, with units that hold something of everything: their changes, of all
// kinds, and their walk. What has come to the other end is compared with what was sent.

#include "Bench.h"
#include "attrlog/Link.h"
#include "mixed/Units.h"

#include <Zel/AttrLogRoot>
#include <Zel/StateDigest>
#include <attrlog/Unit.h>

#include <cstdint>
#include <ctime>
#include <string>

namespace {

using Bench::Link;
using Bench::Mixed::Kind;
using Bench::Mixed::Units;
using Maintenance::Unit::StatusDir;

constexpr std::size_t batch = 2000; // changes, for which the ring has room

/// Seconds of processor time that the process has had: a neighbour's are not measured.
double processorTime() {
  timespec time{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

/// Units and their mirror.
struct Mirrored {
  explicit Mirrored(std::size_t count)
      : dir(Bench::Mixed::made(count)), root(link.here->demuxer()->exportIs(dir)->root()),
        units(dir) {
    link.settle();
  }
  bool isInStep() const {
    const auto mirror = link.mirror("units");
    const auto& counts = link.there->demuxer()->counts();
    return mirror && link.there->isUp() && counts.badValues + counts.refused == 0 &&
           counts.unknownEntities + counts.unknownAttributes == 0 &&
           Zel::stateDigest(*mirror) == Zel::stateDigest(*dir);
  }

  Link link;
  Zel::Ptr<StatusDir> dir;
  Zel::Ptr<Zel::NboAttrLog::Root> root;
  Units units;
};

enum class Timed : std::uint8_t { exporter, mirror };

/// Changes units one after the other, in batches that the mirror takes each time. `kindOf` tells
/// what is changed from a place and how often all units have been changed.
template <class KindOf>
void changes(benchmark::State& state, std::size_t count, Timed timed, const KindOf& kindOf) {
  Mirrored mirrored(count);
  const Zel::NboAttrLog::Out& out = *mirrored.link.here->out();
  const auto& counts = mirrored.link.there->demuxer()->counts();
  const std::uint64_t written = out.recordsWritten();
  const std::uint64_t applied = counts.records;
  const std::uint64_t bytes = out.bytesWritten();
  std::size_t place = 0;
  std::size_t round = 0;
  for (auto _ : state) {
    const auto start = processorTime();
    for (std::size_t i = 0; i < batch; ++i) {
      mirrored.units.change(place, kindOf(place, round));
      if (++place == count) {
        place = 0;
        ++round;
      }
    }
    const auto changed = processorTime();
    while (mirrored.link.mirrorStep()) {
    }
    const double took = timed == Timed::exporter ? changed - start : processorTime() - changed;
    state.SetIterationTime(took);
  }
  const auto all = static_cast<std::uint64_t>(state.iterations()) * batch;
  if (out.recordsWritten() - written != all || counts.records - applied != all) {
    state.SkipWithError("not one record for each change");
  } else if (mirrored.root->coalesced() != 0) {
    state.SkipWithError("changes were coalesced");
  } else if (!mirrored.isInStep()) {
    state.SkipWithError("the mirror differs");
  }
  state.SetItemsProcessed(static_cast<std::int64_t>(all));
  state.SetBytesProcessed(static_cast<std::int64_t>(out.bytesWritten() - bytes));
}

void walk(benchmark::State& state, std::size_t count) {
  const auto dir = Bench::Mixed::made(count);
  const std::uint64_t digest = Zel::stateDigest(*dir);
  std::uint64_t bytes = 0;
  for (auto _ : state) {
    Link link;
    const auto start = processorTime();
    link.exportIs(dir);
    link.settle();
    const double took = processorTime() - start;
    state.SetIterationTime(took);
    bytes += link.here->out()->bytesWritten();
    const auto mirror = link.mirror("units");
    if (!link.there->isUp() || link.there->demuxer()->adapters() != count + 1 || !mirror ||
        Zel::stateDigest(*mirror) != digest) {
      state.SkipWithError("the mirror differs");
      break;
    }
  }
  state.SetItemsProcessed(static_cast<std::int64_t>(count) * state.iterations());
  state.SetBytesProcessed(static_cast<std::int64_t>(bytes));
}

template <class KindOf>
void changeOperations(const std::string& name, std::size_t count, const KindOf& kindOf) {
  Bench::operation("change " + name, [=](auto& state) {
    changes(state, count, Timed::exporter, kindOf);
  })->UseManualTime();
  Bench::operation("apply " + name, [=](auto& state) {
    changes(state, count, Timed::mirror, kindOf);
  })->UseManualTime();
}

} // namespace

void Bench::registerAll() {
  constexpr std::size_t count = 10'000;
  changeOperations("mixed", count, [](std::size_t place, std::size_t round) {
    return static_cast<Kind>((round + place) % Mixed::kinds);
  });
  constexpr const char* names[Mixed::kinds] = {"state", "traffic", "history", "group"};
  for (std::size_t kind = 0; kind < Mixed::kinds; ++kind) {
    changeOperations(names[kind], count,
                     [kind](std::size_t, std::size_t) { return static_cast<Kind>(kind); });
  }
  for (const std::size_t walked : {1000U, 100'000U}) {
    operation(sized("walk", walked), [walked](auto& state) {
      walk(state, walked);
    })->UseManualTime();
  }
}
