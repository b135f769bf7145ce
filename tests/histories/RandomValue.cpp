#include "RandomValue.h"

#include <Vexil/IntfId>
#include <Zel/ValueBuilder>

#include <stdexcept>

namespace Histories {

namespace {

Zel::String8 randomText(Random& random, const TextSizes& sizes) {
  const bool isLong = random.chance(1, sizes.rarity);
  const std::size_t length =
      random.chance(1, 8) ? 0 : static_cast<std::size_t>(random.size(isLong ? sizes.longest : 24));
  std::string bytes(length, '\0');
  const auto first = static_cast<char>(random.below(256));
  for (std::size_t i = 0; i < length; ++i) {
    // Bytes that repeat with a period which divides no size of a chunk, so that none can stand in
    // for another.
    bytes[i] = static_cast<char>(first + static_cast<char>(i % 251));
  }
  return Zel::String8(bytes);
}

double randomTime(Random& random) { return static_cast<double>(random.below(64)) / 4; }

template <class V>
void put(void* to, V value) {
  *static_cast<V*>(to) = std::move(value);
}

void putBuiltin(Random& random, const Zel::ValueRecord& record, const TextSizes& sizes, void* to) {
  const std::string_view name = record.name;
  if (name == "bool") {
    put(to, random.chance(1, 2));
  } else if (name == "U32") {
    put(to, static_cast<unsigned>(random.next() >> random.between(32, 63)));
  } else if (name == "U64") {
    put(to, static_cast<unsigned long long>(random.next() >> random.below(64)));
  } else if (name == "F64") {
    put(to, randomTime(random));
  } else if (name == "Zel::String") {
    put(to, randomText(random, sizes));
  } else if (name == "Zel::Name") {
    put(to, Zel::Name(randomText(random, sizes)));
  } else if (name == "Vexil::IntfId") {
    put(to, Vexil::IntfId(static_cast<unsigned>(random.below(8)),
                          static_cast<unsigned>(random.below(1000))));
  } else {
    throw std::logic_error("no random values of " + std::string(name));
  }
}

} // namespace

void putRandom(Random& random, const Zel::ValueRecord& record, const TextSizes& sizes,
               void* fresh) {
  if (record.enumeration != nullptr) {
    const auto rows = record.enumeration->rows;
    const int number = rows[random.below(rows.size())].number;
    std::memcpy(fresh, &number, sizeof number);
  } else if (record.table != nullptr) {
    const Zel::TypeTable& table = record.table();
    Zel::ValueBuilder builder(record, table, fresh);
    for (const Zel::AttrRow& row : table.rows) {
      if (Zel::isStored(row)) {
        builder.take(row, [&](void* to) { putRandom(random, *row.value, sizes, to); });
      }
    }
    builder.finish();
  } else {
    putBuiltin(random, record, sizes, fresh);
  }
}

AnyValue randomValue(Random& random, const Zel::ValueRecord& record, const TextSizes& sizes) {
  AnyValue value(record);
  putRandom(random, record, sizes, value.at());
  return value;
}

AnyValue numberedKey(const Zel::ValueRecord& record, unsigned number) {
  Random random(Random::mixed(number) ^ record.name.size());
  // One in a few is long, but no two of them and an id are too long for a record.
  const bool isLong = number == longKeyNumber;
  return randomValue(random, record, {isLong ? std::size_t{6000} : std::size_t{24}, 1});
}

} // namespace Histories
