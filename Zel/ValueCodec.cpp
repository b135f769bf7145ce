#include <Zel/ValueCodec>

#include <Zel/ValueBuilder>

#include <array>
#include <optional>

namespace Zel {

void encodeValue(const ValueRecord& record, const void* value, WireWriter& out) {
  if (record.encode != nullptr) [[likely]] {
    record.encode(value, out);
    return;
  }
  if (record.enumeration != nullptr) {
    std::uint32_t number;
    std::memcpy(&number, value, sizeof number);
    out.put32(number);
    return;
  }
  for (const AttrRow& row : record.table().rows) {
    if (isStored(row)) {
      ValueSlot member(*row.value, [&](void* at) { row.read(value, at); });
      encodeValue(*row.value, member.at(), out);
    }
  }
}

namespace {

constexpr std::size_t fewKeys = 4;

/// Whether a value is made of a few keys and nothing else, as most keys of collections are.
bool isOfFewKeys(const TypeTable& table) {
  std::size_t keys = 0;
  for (const AttrRow& row : table.rows) {
    if (row.kind == AttrKind::key) {
      ++keys;
    } else if (isStored(row) || isConstructorArgument(row)) {
      return false;
    }
  }
  return keys == table.constructor.arguments.size() && keys <= fewKeys;
}

void decodeKeys(const ValueRecord& record, const TypeTable& table, void* to,
                ByteConnection::In& in) {
  std::array<std::optional<ValueSlot>, fewKeys> keys;
  std::array<const void*, fewKeys> arguments{};
  std::size_t place = 0;
  for (const AttrRow& row : table.rows) {
    if (row.kind == AttrKind::key) {
      keys[place].emplace(*row.value);
      decodeValue(*row.value, keys[place]->at(), in);
      arguments[place] = keys[place]->at();
      ++place;
    }
  }
  ValueSlot made(record, [&](void* at) { table.constructor.value(at, arguments.data()); });
  record.assign(to, made.at());
}

} // namespace

void decodeValue(const ValueRecord& record, void* to, ByteConnection::In& in) {
  if (record.decode != nullptr) [[likely]] {
    record.decode(to, in);
    return;
  }
  if (record.enumeration != nullptr) {
    const int number = enumInstance(*record.enumeration, in.nextU32());
    std::memcpy(to, &number, sizeof number);
    return;
  }
  const TypeTable& table = record.table();
  if (isOfFewKeys(table)) {
    decodeKeys(record, table, to, in);
    return;
  }
  ValueSlot fresh(record);
  ValueBuilder builder(record, table, fresh.at());
  for (const AttrRow& row : table.rows) {
    if (isStored(row)) {
      builder.take(row, [&](void* member) { decodeValue(*row.value, member, in); });
    }
  }
  builder.finish();
  record.assign(to, fresh.at());
}

} // namespace Zel
