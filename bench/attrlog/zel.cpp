// The attribute log in memory: one change to bytes, bytes to one change, walks, and how both scale.

#include "Bench.h"
#include "attrlog/Link.h"

#include <attrlog/Unit.h>

#include <chrono>
#include <memory>
#include <vector>

namespace {

using namespace Maintenance::Unit;
using Bench::Link;

std::vector<Zel::Ptr<Status>> members(const StatusDir& dir) {
  std::vector<Zel::Ptr<Status>> all;
  for (StatusDir::StatusMap::IteratorConst at(dir.statusMap()); at; at.advance()) {
    all.emplace_back(const_cast<Status*>(at.operator->()));
  }
  return all;
}

/// Exported units whose connection is drained without being read.
struct Exporter {
  explicit Exporter(std::size_t count) : dir(Bench::units(count)), all(members(*dir)) {
    link.exportIs(dir);
    link.settle();
  }
  void drain() {
    if (link.here->out()->freeSpace() < 65536) {
      for (auto bytes = link.here->pendingOutput(); !bytes.empty();
           bytes = link.here->pendingOutput()) {
        link.here->outputConsumed(bytes.size());
      }
    }
  }
  Link link;
  Zel::Ptr<StatusDir> dir;
  std::vector<Zel::Ptr<Status>> all;
};

void encode(benchmark::State& state) {
  Exporter exporter(1);
  const auto adapter = Zel::ptrCast<Status::ZelNboAttrLogSa>(exporter.all[0]->zelNboAttrLogSa(
      Zel::Ptr<const Zel::NboAttrLog::Out>(exporter.link.here->out())));
  const std::uint64_t before = exporter.link.here->out()->recordsWritten();
  for (auto _ : state) {
    adapter->onGenId();
    exporter.drain();
  }
  if (exporter.link.here->out()->recordsWritten() - before !=
      static_cast<std::uint64_t>(state.iterations())) {
    state.SkipWithError("records missing");
  }
  state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()));
}

/// Changes `changed` of `count` units, in a scattered order.
void change(benchmark::State& state, std::size_t count, std::size_t changed) {
  Exporter exporter(count);
  std::size_t at = 0;
  for (auto _ : state) {
    Status& unit = *exporter.all[at % changed * 7919 % count];
    unit.genIdIs(static_cast<unsigned>(++at));
    exporter.drain();
  }
  state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()));
}

/// The version counters of all units of a mirror.
std::uint64_t versions(const Link& link) {
  std::uint64_t sum = 0;
  for (const auto& unit : members(*Zel::ptrCast<StatusDir>(link.mirror("units")))) {
    sum += unit->versionCounter();
  }
  return sum;
}

/// Records of changes of 1500 units, read again and again. Each unit comes at least twice, or a
/// record that is read again would change nothing.
void apply(benchmark::State& state, std::size_t count) {
  Exporter exporter(count);
  constexpr std::size_t units = 1500;
  constexpr std::size_t batch = 2 * units;
  std::vector<std::uint8_t> bytes;
  for (std::size_t i = 0; i < batch; ++i) {
    exporter.all[i % units * 7919 % count]->genIdIs(static_cast<unsigned>(i + 1));
  }
  for (auto piece = exporter.link.here->pendingOutput(); !piece.empty();
       piece = exporter.link.here->pendingOutput()) {
    bytes.insert(bytes.end(), piece.begin(), piece.end());
    exporter.link.here->outputConsumed(piece.size());
  }
  Zel::Connection& reader = *exporter.link.there;
  const std::uint64_t before = versions(exporter.link);
  for (auto _ : state) {
    for (std::size_t done = 0; done < bytes.size();) {
      const auto space = reader.inputSpace();
      const std::size_t piece = std::min(space.size(), bytes.size() - done);
      std::memcpy(space.data(), bytes.data() + done, piece);
      reader.inputReceived(piece);
      done += piece;
      while (reader.service(1 << 20)) {
      }
    }
  }
  if (!reader.isUp()) {
    state.SkipWithError(reader.failure().charPtr());
  } else if (versions(exporter.link) - before !=
             static_cast<std::uint64_t>(state.iterations()) * batch) {
    state.SkipWithError("not every record was a change");
  }
  state.SetItemsProcessed(static_cast<std::int64_t>(batch) * state.iterations());
}

struct Plain : Status::Notifiee {
  void onGenId() override { ++heard; }
  std::uint64_t heard = 0;
};

void mutator(benchmark::State& state, bool muted) {
  Exporter exporter(1);
  const auto unit = statusFactory("unit");
  const auto plain = Zel::makeObject<Plain>();
  Status& changed = muted ? *exporter.all[0] : *unit;
  if (muted) {
    exporter.all[0]
        ->zelNboAttrLogSa(Zel::Ptr<const Zel::NboAttrLog::Out>(exporter.link.here->out()))
        ->flagsIs(Zel::StreamAdapter::flagMuted, true);
  } else {
    plain->isRegisteredNotifieeIs(true);
    plain->notifierIs(unit);
  }
  unsigned value = changed.genId();
  for (auto _ : state) {
    changed.genIdIs(++value);
  }
  state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()));
}

template <class Make>
void walk(benchmark::State& state, std::size_t count, Make&& make) {
  const auto root = make(count);
  for (auto _ : state) {
    Link link;
    const auto start = std::chrono::steady_clock::now();
    link.exportIs(root);
    link.settle();
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
    state.SetIterationTime(took.count());
    if (!link.there->isUp() || link.there->demuxer()->adapters() != count + 1) {
      state.SkipWithError("not all has arrived");
    }
  }
  state.SetItemsProcessed(static_cast<std::int64_t>(count) * state.iterations());
}

void connections(benchmark::State& state, std::size_t count) {
  const auto dir = Bench::units(1);
  const auto unit = members(*dir)[0];
  std::vector<std::unique_ptr<Link>> links;
  for (std::size_t i = 0; i < count; ++i) {
    links.push_back(std::make_unique<Link>());
    links.back()->exportIs(dir);
    links.back()->settle();
  }
  unsigned value = 0;
  for (auto _ : state) {
    unit->genIdIs(++value);
    for (const auto& link : links) {
      if (link->here->out()->freeSpace() < 65536) {
        const auto bytes = link->here->pendingOutput();
        link->here->outputConsumed(bytes.size());
      }
    }
  }
  state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()));
}

} // namespace

void Bench::registerAll() {
  operation("encode", encode);
  operation("mutator muted", [](auto& state) { mutator(state, true); });
  operation("mutator plain", [](auto& state) { mutator(state, false); });
  for (const std::size_t count : {1U, 1000U, 10'000U, 100'000U, 1'000'000U}) {
    operation(sized("change", count), [count](auto& state) { change(state, count, count); });
    if (count > 1000) {
      operation(sized("change of the same", count),
                [count](auto& state) { change(state, count, 1000); });
    }
    operation(sized("apply", count), [count](auto& state) { apply(state, count); });
  }
  for (const std::size_t count : {1U, 2U, 4U, 8U, 16U}) {
    operation(sized("connections", count), [count](auto& state) { connections(state, count); });
  }
  for (const std::size_t count : {1000U, 100'000U, 1'000'000U}) {
    operation(sized("walk profiles", count), [count](auto& state) {
      walk(state, count, profiles);
    })->UseManualTime();
    operation(sized("walk units", count), [count](auto& state) {
      walk(state, count, units);
    })->UseManualTime();
  }
}
