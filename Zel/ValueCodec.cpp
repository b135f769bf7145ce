#include <Zel/ValueCodec>

#include <Zel/ValueBuilder>

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
