#include "Rest.h"

#include <Zel/NboAttrLog>
#include <Zel/ValueBuilder>

#include <algorithm>
#include <array>

namespace Histories {

namespace {

using Zel::NboAttrLog::recordOverhead;

std::uint64_t valueBytes(const Zel::ValueRecord& record, const void* value) {
  if (record.enumeration != nullptr) {
    return sizeof(std::uint32_t);
  }
  if (&record == &Zel::valueRecord<Zel::String8> || &record == &Zel::valueRecord<Zel::Name>) {
    return sizeof(std::uint32_t) + static_cast<const Zel::String8*>(value)->length();
  }
  if (record.table != nullptr) {
    std::uint64_t bytes = 0;
    for (const Zel::AttrRow& row : record.table().rows) {
      if (Zel::isStored(row)) {
        Zel::ValueSlot part(*row.value, [&](void* to) { row.read(value, to); });
        bytes += valueBytes(*row.value, part.at());
      }
    }
    return bytes;
  }
  return sizeof(std::uint64_t); // no other value has more
}

/// A value's records, with the key in each.
std::uint64_t recordBytes(std::uint64_t key, std::uint64_t value) {
  constexpr std::uint64_t shortest = 16384; // of a part that is not the last
  return key + value + recordOverhead + (value / shortest) * (key + recordOverhead);
}

std::uint64_t entityBytes(const Zel::Entity& entity) {
  constexpr std::uint64_t marker = recordOverhead + 12;
  constexpr std::uint64_t announcement = recordOverhead + 512; // with type and arguments
  std::uint64_t bytes = announcement;
  forFlowingRows(tableOf(entity), [&](const Zel::AttrRow& row) {
    if (!row.isCollection()) {
      Zel::ValueSlot value(*row.value, [&](void* to) { row.read(&entity, to); });
      bytes += recordBytes(0, valueBytes(*row.value, value.at()));
      return;
    }
    bytes += 3 * marker;
    const Zel::IterationOps& ops = row.collection->iteration;
    Zel::CollectionPosition at(ops, [&](void* to) { ops.first(to, &entity); });
    for (; at; at.advance()) {
      Zel::ValueSlot key(*row.key, [&](void* to) { at.key(to); });
      const std::uint64_t size = valueBytes(*row.key, key.at());
      bytes += row.kind == Zel::AttrKind::instantiating
                   ? 2 * size + entityBytes(static_cast<const Zel::Entity&>(*at.member()))
                   : recordBytes(size, valueBytes(*row.value, at.value()));
    }
  });
  return bytes;
}

} // namespace

std::uint64_t walkBytes(const Zel::Dir& roots) {
  std::uint64_t bytes = 0;
  for (const auto& [name, root] : roots.entities()) {
    bytes += entityBytes(*root);
  }
  return bytes;
}

Simulation::Time restBound(const std::vector<Simulation::Link*>& links, std::uint64_t state,
                           std::size_t roots) {
  constexpr std::uint64_t turns = 16; // in which the ends of a session say things to each other
  constexpr std::uint64_t said = 512; // bytes of all that is said of a root, and of a hello
  constexpr std::uint64_t stepsOfATurn = 3; // it is said, sent, and arrives
  const std::uint64_t times = 2 * (2 + 2 * (links.size() + 1));
  Simulation::Time steps = 0;
  for (const Simulation::Link* const link : links) {
    const std::uint64_t piece = std::min(link->traits().pieces, link->traits().inFlight);
    steps += turns * stepsOfATurn + (times * (state + (roots + 1) * said) + piece - 1) / piece;
  }
  return steps;
}

} // namespace Histories
