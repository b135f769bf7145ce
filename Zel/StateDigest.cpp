#include <Zel/StateDigest>

#include <Zel/TypeTable>
#include <Zel/ValueBuilder>
#include <Zel/ZelType>

#include <array>

namespace Zel {

namespace {

/// A multiply-and-fold hash over 64-bit words.
class Digest {
public:
  void add(std::uint64_t word) noexcept {
    state_ = (state_ ^ word) * 0x9e3779b97f4a7c15U;
    state_ ^= state_ >> 32;
  }

  void add(std::string_view bytes) noexcept {
    add(bytes.size());
    for (; bytes.size() >= sizeof(std::uint64_t); bytes.remove_prefix(sizeof(std::uint64_t))) {
      add(WireWriter::networkOrder(load(bytes, sizeof(std::uint64_t))));
    }
    if (!bytes.empty()) {
      add(WireWriter::networkOrder(load(bytes, bytes.size())));
    }
  }

  void add(const ValueRecord& record, const void* value) {
    if (record.enumeration != nullptr) {
      add(static_cast<std::uint64_t>(*static_cast<const int*>(value)));
    } else if (&record == &valueRecord<double>) {
      addDouble(*static_cast<const double*>(value));
    } else if (&record == &valueRecord<String8> || &record == &valueRecord<Name>) {
      add(static_cast<const String8*>(value)->view());
    } else if (record.table != nullptr) {
      addMembers(record.table(), value);
    } else {
      std::array<std::uint8_t, maxLeaf> bytes;
      WireWriter writer(bytes.data(), bytes.size());
      record.encode(value, writer);
      add(std::string_view(reinterpret_cast<const char*>(bytes.data()), maxLeaf - writer.room()));
    }
  }

  void add(const Entity& entity) {
    const ZelType* const type = entity.fwkType();
    if (type == nullptr || type->table() == nullptr) {
      return;
    }
    for (const TypeTable& table : type->table()->chain()) {
      for (const AttrRow& row : table.rows) {
        if (row.flows()) {
          addAttribute(row, entity);
        }
      }
    }
  }

  std::uint64_t value() const noexcept { return state_; }

private:
  static constexpr std::size_t maxLeaf = 4096; // of a value that has no attributes

  static std::uint64_t load(std::string_view bytes, std::size_t count) noexcept {
    std::uint64_t word = 0;
    std::memcpy(&word, bytes.data(), count);
    return word;
  }

  void addDouble(double number) noexcept {
    constexpr std::uint64_t anyNaN = 0x7ff8000000000000;
    add(number != number ? anyNaN
                         : std::bit_cast<std::uint64_t>(number + 0.0)); // -0.0 + 0.0 is 0.0
  }

  void addMembers(const TypeTable& table, const void* value) {
    for (const AttrRow& row : table.rows) {
      if (isStored(row)) {
        ValueSlot member(*row.value, [&](void* to) { row.read(value, to); });
        add(*row.value, member.at());
      }
    }
  }

  void addAttribute(const AttrRow& row, const Entity& entity) {
    add(static_cast<std::uint64_t>(row.id));
    if (row.isCollection()) {
      addCollection(row, entity);
    } else {
      ValueSlot value(*row.value, [&](void* to) { row.read(&entity, to); });
      add(*row.value, value.at());
    }
  }

  void addCollection(const AttrRow& row, const Entity& entity) {
    const CollectionOps& ops = *row.collection;
    add(ops.count(&entity));
    CollectionPosition at(ops.iteration, [&](void* to) { ops.iteration.first(to, &entity); });
    for (; at; at.advance()) {
      ValueSlot key(*row.key, [&](void* to) { at.key(to); });
      add(*row.key, key.at());
      if (row.kind == AttrKind::instantiating) {
        add(*static_cast<const Entity*>(at.member()));
      } else {
        add(*row.value, at.value());
      }
    }
  }

  std::uint64_t state_ = 0x243f6a8885a308d3U;
};

} // namespace

std::uint64_t stateDigest(const Entity& entity) {
  Digest digest;
  digest.add(entity);
  return digest.value();
}

} // namespace Zel
