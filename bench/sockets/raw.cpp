// The limits: the same bytes through the same sockets, and next to nothing at either end.

#include "sockets/Processes.h"

#include <array>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

namespace {

using namespace Bench::Sockets;

struct Record {
  std::uint64_t entity;
  std::uint32_t attribute;
  std::uint32_t value;
  std::uint64_t rest[2];
};
static_assert(sizeof(Record) == 32);

/// Reads whole records, up to `count`, and calls `visit` on each.
template <class Record, class Visit>
void readRecords(int socket, std::size_t count, const Visit& visit) {
  std::vector<char> buffer(1 << 18);
  std::size_t size = 0;
  while (count != 0) {
    size += readSome(socket, buffer.data() + size, buffer.size() - size);
    std::size_t at = 0;
    for (; count != 0 && size - at >= sizeof(Record); at += sizeof(Record), --count) {
      Record record;
      std::memcpy(&record, buffer.data() + at, sizeof record);
      visit(record);
    }
    size -= at;
    std::memmove(buffer.data(), buffer.data() + at, size);
  }
}

/// Changes of ten thousand entities, written once there are `batch` bytes.
double changes(std::size_t batch, std::size_t count) {
  constexpr std::size_t entities = 10'000;
  const SharedBoard board;
  Pair pair;
  {
    const Process reader([&] {
      placeIs(Place::last);
      std::vector<std::array<std::uint32_t, 4>> values(entities);
      std::uint64_t sum = 0;
      const int socket = pair.readerEnd();
      board->readersReady = 1;
      readRecords<Record>(socket, count, [&](const Record& record) {
        values[record.entity][record.attribute % 4] = record.value;
        sum += record.value;
      });
      board->endedAt(now());
      if (sum != std::uint64_t{count} * (count - 1) / 2) {
        fail("records missing");
      }
    });
    placeIs(Place::first);
    const int socket = pair.writerEnd();
    waitFor([&] { return board->readersReady == 1; });
    std::vector<Record> records;
    records.reserve(batch / sizeof(Record));
    board->started = now();
    for (std::size_t i = 0; i < count; ++i) {
      records.push_back({i * 7919 % entities,
                         static_cast<std::uint32_t>(i % 4),
                         static_cast<std::uint32_t>(i),
                         {}});
      if (records.size() == records.capacity() || i + 1 == count) {
        writeAll(socket, records.data(), records.size() * sizeof(Record));
        records.clear();
      }
    }
  }
  return (board->ended - board->started) / static_cast<double>(count) * 1e9;
}

double pingPong(Place other, std::size_t count) {
  Pair pair;
  double took = 0;
  {
    const Process reader([&] {
      placeIs(other);
      const int socket = pair.readerEnd();
      Record record;
      for (std::size_t i = 0; i < count; ++i) {
        readAll(socket, &record, sizeof record);
        writeAll(socket, &record, sizeof record);
      }
    });
    placeIs(Place::first);
    const int socket = pair.writerEnd();
    Record record{};
    const double started = now();
    for (std::size_t i = 0; i < count; ++i) {
      record.value = static_cast<std::uint32_t>(i);
      writeAll(socket, &record, sizeof record);
      readAll(socket, &record, sizeof record);
    }
    took = now() - started;
    if (record.value != count - 1) {
      fail("another answer");
    }
  }
  return took / static_cast<double>(count) * 1e9;
}

/// Objects with a name of 20 bytes, each made at the other end with a name of its own.
double walk(std::size_t count) {
  struct Entity {
    std::uint64_t id;
    std::uint32_t type;
    char name[28];
  };
  static_assert(sizeof(Entity) == 40);
  struct Object {
    std::uint64_t id;
    std::uint32_t type;
    std::unique_ptr<std::string> name;
  };
  const SharedBoard board;
  Pair pair;
  {
    const Process reader([&] {
      placeIs(Place::last);
      std::vector<std::unique_ptr<Object>> objects(count);
      const int socket = pair.readerEnd();
      waitFor([&] { return board->writerReady.load(); });
      board->started = now();
      const char go = 1;
      writeAll(socket, &go, 1);
      readRecords<Entity>(socket, count, [&](const Entity& entity) {
        objects[entity.id] = std::make_unique<Object>(
            Object{entity.id, entity.type, std::make_unique<std::string>(entity.name, 20)});
      });
      board->endedAt(now());
      if (*objects.back()->name != "profile-" + std::string(12, 'x')) {
        fail("another name");
      }
    });
    placeIs(Place::first);
    const int socket = pair.writerEnd();
    std::vector<std::unique_ptr<Object>> objects;
    for (std::size_t i = 0; i < count; ++i) {
      objects.push_back(std::make_unique<Object>(
          Object{i, 1, std::make_unique<std::string>("profile-" + std::string(12, 'x'))}));
    }
    board->writerReady = true;
    char go;
    readAll(socket, &go, 1);
    std::vector<Entity> batch;
    batch.reserve(65536 / sizeof(Entity));
    for (const auto& object : objects) {
      Entity entity{object->id, object->type, {}};
      std::memcpy(entity.name, object->name->data(), object->name->size());
      batch.push_back(entity);
      if (batch.size() == batch.capacity() || object == objects.back()) {
        writeAll(socket, batch.data(), batch.size() * sizeof(Entity));
        batch.clear();
      }
    }
  }
  return (board->ended - board->started) / static_cast<double>(count) * 1e9;
}

} // namespace

Bench::Sockets::Operations Bench::Sockets::operations() {
  return {
      {"changes", [] { return changes(65536, 20'000'000); }},
      {"changes each", [] { return changes(sizeof(Record), 500'000); }},
      {"round trip one", [] { return pingPong(Place::first, 100'000); }},
      {"round trip two", [] { return pingPong(Place::last, 20'000); }},
      {"walk", [] { return walk(100'000); }},
  };
}
