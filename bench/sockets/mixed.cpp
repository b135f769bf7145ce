// Sessions over sockets, with units that hold something of everything: their changes, of all kinds
// mixed, and their walk. As many bytes as a session has sent then go through the same sockets once
// more, with next to nothing at either end.

#include "mixed/Units.h"
#include "sockets/Driver.h"
#include "sockets/Together.h"

#include <Zel/AttrLogRoot>
#include <Zel/StateDigest>
#include <attrlog/Unit.h>

#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace Bench::Sockets;
using Maintenance::Unit::StatusDir;
using Zel::Ptr;

constexpr std::size_t batch = 65536;

/// What the processes tell each other of one measurement.
struct Boards {
  SharedBoard session;
  SharedBoard raw;
};

void rawWrite(int socket, const Boards& boards) {
  const std::vector<char> buffer(batch, 'x');
  boards.raw->started = now();
  for (std::uint64_t left = boards.session->bytes; left != 0;) {
    const std::size_t piece = std::min<std::uint64_t>(left, buffer.size());
    writeAll(socket, buffer.data(), piece);
    left -= piece;
  }
}

void rawRead(int socket, const Boards& boards) {
  std::vector<char> buffer(1 << 18);
  for (std::uint64_t left = boards.session->bytes; left != 0;) {
    left -= readSome(socket, buffer.data(), std::min<std::uint64_t>(left, buffer.size()));
  }
  boards.raw->endedAt(now());
}

/// The figures of a measurement of `count` pieces of work, each named `work` and what it is.
Together::Figures figures(const std::string& work, const Boards& boards, std::size_t count) {
  const auto bytes = static_cast<double>(boards.session->bytes);
  const auto each = [count](double seconds) { return seconds / static_cast<double>(count) * 1e9; };
  const double took = boards.session->ended - boards.session->started;
  const double rawTook = boards.raw->ended - boards.raw->started;
  return {{work, each(took)},
          {work + ", MB/s", bytes / took * 1e-6},
          {work + ", writer", each(boards.session->writerTime)},
          {work + ", reader", each(boards.session->readerTime)},
          {work + ", raw", each(rawTook)},
          {work + ", raw MB/s", bytes / rawTook * 1e-6}};
}

Ptr<Zel::Exports> offering(const Ptr<Zel::Entity>& root) {
  auto exports = Zel::makeObject<Zel::Exports>();
  exports->entityIs(root, Zel::accessReadOnly);
  return exports;
}

/// The end of a session at the writer, who has sent `bytes` of it that count.
void writerEnds(int socket, const Exporter& exporter, const StatusDir& dir, std::uint64_t bytes,
                const Boards& boards) {
  if (exporter.root->coalesced() != 0) {
    fail("changes were coalesced: " + std::to_string(exporter.root->coalesced()));
  }
  boards.session->bytes = bytes;
  boards.session->digest = Zel::stateDigest(dir);
  boards.session->sent = exporter.driver.connection().out()->bytesWritten();
  waitFor([&] { return boards.raw->readersReady == 1; });
  rawWrite(socket, boards);
}

/// The same at the reader.
void readerEnds(int socket, Mirror& mirror, const Boards& boards) {
  waitFor([&] { return boards.session->sent != 0; });
  while (mirror.driver.received() != boards.session->sent) {
    mirror.driver.receive();
  }
  const Zel::NboAttrLog::Demuxer::Counts& counts = mirror.driver.connection().demuxer()->counts();
  if (counts.badValues + counts.refused + counts.unknownEntities + counts.unknownAttributes != 0) {
    fail("records have been passed over");
  }
  if (Zel::stateDigest(*mirror.mount->entity()) != boards.session->digest) {
    fail("the mirror differs");
  }
  boards.raw->readersReady = 1;
  rawRead(socket, boards);
}

/// Changes of units, a quarter of each kind, written once there are 64 KiB of them.
Together::Figures changes(const std::string& work, std::size_t units, std::size_t rounds) {
  const Boards boards;
  Pair pair;
  {
    const Process reader([&] {
      placeIs(Place::last);
      const int socket = pair.readerEnd();
      Mirror mirror(socket, "units");
      mirror.settle();
      const auto& counts = mirror.driver.connection().demuxer()->counts();
      const std::uint64_t last = counts.records + units * rounds;
      const double before = processorTime();
      boards.session->readersReady = 1;
      while (counts.records < last) {
        mirror.driver.receive();
      }
      boards.session->endedAt(now());
      boards.session->readerTime = processorTime() - before;
      readerEnds(socket, mirror, boards);
      if (counts.records != last) {
        fail("not one record for each change");
      }
    });
    placeIs(Place::first);
    const int socket = pair.writerEnd();
    const Ptr<StatusDir> dir = Bench::Mixed::made(units);
    Bench::Mixed::Units changed(dir);
    Exporter exporter(socket, offering(dir), "units");
    waitFor([&] { return boards.session->readersReady == 1; });
    const auto& out = *exporter.driver.connection().out();
    const std::uint64_t sent = out.bytesWritten();
    const double before = processorTime();
    boards.session->started = now();
    for (std::size_t round = 0; round < rounds; ++round) {
      changed.changeAll(round, [&] {
        if (exporter.driver.pending() >= batch) {
          exporter.driver.flush();
        }
      });
    }
    exporter.driver.flush();
    boards.session->writerTime = processorTime() - before;
    writerEnds(socket, exporter, *dir, out.bytesWritten() - sent, boards);
  }
  return figures(work, boards, units * rounds);
}

/// A directory of units, from the hello until the mount is live.
Together::Figures walk(const std::string& work, std::size_t units) {
  const Boards boards;
  Pair pair;
  {
    const Process reader([&] {
      placeIs(Place::last);
      const int socket = pair.readerEnd();
      waitFor([&] { return boards.session->writerReady.load(); });
      const double before = processorTime();
      boards.session->started = now();
      Mirror mirror(socket, "units");
      mirror.settle();
      boards.session->endedAt(now());
      boards.session->readerTime = processorTime() - before;
      if (Zel::ptrCast<StatusDir>(mirror.mount->entity())->statusMap().count() != units) {
        fail("not all units have come");
      }
      readerEnds(socket, mirror, boards);
    });
    placeIs(Place::first);
    const int socket = pair.writerEnd();
    const Ptr<StatusDir> dir = Bench::Mixed::made(units);
    const double before = processorTime();
    boards.session->writerReady = true;
    const Exporter exporter(socket, offering(dir), "units");
    boards.session->writerTime = processorTime() - before;
    writerEnds(socket, exporter, *dir, exporter.driver.connection().out()->bytesWritten(), boards);
  }
  return figures(work, boards, units);
}

} // namespace

Bench::Sockets::Operations Bench::Sockets::operations() {
  const auto changed = std::make_shared<Together>([] { return changes("changes", 10'000, 200); });
  const auto walked = std::make_shared<Together>([] { return walk("walk", 100'000); });
  Operations all;
  for (const char* const figure : {"", ", MB/s", ", writer", ", reader", ", raw", ", raw MB/s"}) {
    for (const auto& [work, run] : {std::pair{"changes", changed}, std::pair{"walk", walked}}) {
      const std::string name = std::string(work) + figure;
      all.emplace(name, [run = run, name] { return (*run)[name]; });
    }
  }
  return all;
}
