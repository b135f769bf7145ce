#include <generic/Value.h>

#include <generic/Arguments.h>
#include <text/Value.h>

namespace Zel {

namespace {

/// The name and the id of the one attribute of an enumeration.
constexpr const char* enumValueName = "value";
constexpr AttributeId enumValueId = 1;

/// A type's own attribute; null if it has none of this id.
const AttrRow* ownRow(const ValueRecord& record, AttributeId id) {
  return record.table != nullptr ? record.table().ownRow(id) : nullptr;
}

const char* shortName(const ValueRecord& record) { return record.type()->name().charPtr(); }

} // namespace

void* GenericValue::zelVoidPtr(const ValueRecord& record, void* value, const ZelType* wanted) {
  if (wanted != record.type()) [[unlikely]] {
    throwTypeException(shortName(record));
  }
  return value;
}

String8 GenericValue::zelAttributeString(const ValueRecord& record, AttributeId id,
                                         String8 fromBase) {
  if (record.enumeration != nullptr) {
    return id == enumValueId ? enumValueName : fromBase;
  }
  const AttrRow* const row = ownRow(record, id);
  return row != nullptr ? String8(row->name) : fromBase;
}

AttributeId GenericValue::zelAttributeId(const ValueRecord& record, const String8& name) const {
  const ZelAttr* const attr = record.type()->attr(name.view());
  if (attr != nullptr) {
    attr->zelReadInc();
  }
  // Enumerators are attributes of the descriptor, but no wrapper has them.
  if (record.enumeration != nullptr) {
    return name == enumValueName ? enumValueId : GenericIf::attributeId(name);
  }
  return attr != nullptr ? attr->id() : GenericIf::attributeId(name);
}

Ptr<GenericIf> GenericValue::zelAttributeOp(const ValueRecord& record, void* value,
                                            const AttributeOp& op,
                                            const Ptr<const GenericIf>& index,
                                            const Ptr<GenericIf>& argument) {
  if (record.enumeration != nullptr) {
    if (op.attributeId != enumValueId) {
      throwUnknownAttrException(shortName(record));
    }
    return record.type()->genericIf(static_cast<const void*>(value), false);
  }
  refuseIfConst(op);
  if (const AttrRow* const row = ownRow(record, op.attributeId)) {
    return zelRowOp(*row, value, op, index.ptr(), argument.ptr());
  }
  if (op.attributeId == fwkKeyId && op.opId == AttributeOp::opEquals) {
    return packed(record.equal(value, unpacked(index.ptr(), record, "zelOpArg")), isConst());
  }
  return GenericIf::attributeOp(op, index, argument);
}

Ptr<GenericIf> GenericValue::zelRowOp(const AttrRow& row, void* value, const AttributeOp& op,
                                      const GenericIf* index, const GenericIf* argument) {
  if (index != nullptr) {
    throwBadIndexAttrException(String8(row.name).charPtr());
  }
  if (op.opId == AttributeOp::opRead) {
    ValueSlot field(*row.value, [&](void* to) { row.read(value, to); });
    return packed(*row.value, field.at(), isConst(), row.name);
  }
  if (op.opId == AttributeOp::opWrite && row.write != nullptr) {
    row.write(value, unpacked(argument, *row.value, row.name));
    return nullptr;
  }
  throwOpNotSupportedException(String8(row.name).charPtr(), op.opId, false);
}

String8 GenericValue::zelStrRep(const ValueRecord& record, const void* value) {
  return textOf(record, value);
}

Ptr<GenericIf> valueFromList(const ValueRecord& record, const GenericIf* list) {
  ArgumentReader in(list);
  if (in.atEnd()) {
    return record.type()->genericIf(static_cast<const void*>(nullptr), false);
  }
  const TypeTable& table = record.table();
  const std::vector<const void*> arguments = constructorArguments(table, in);
  ValueSlot made(record, [&](void* to) { table.constructor.value(to, arguments.data()); });
  return record.type()->genericIf(static_cast<const void*>(made.at()), false);
}

Ptr<GenericIf> valueFromText(const ValueRecord& record, const String8& text, bool isConst) {
  ValueSlot read(record);
  readWhole(text, record, read.at());
  return record.type()->genericIf(static_cast<const void*>(read.at()), isConst);
}

} // namespace Zel
