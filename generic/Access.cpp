#include <generic/Access.h>

namespace Zel {

void AttributeAccess::refuseIndex() const {
  if (index_ != nullptr) [[unlikely]] {
    GenericIf::throwBadIndexAttrException(String8(row_.name).charPtr());
  }
}

void AttributeAccess::notSupported() const {
  GenericIf::throwOpNotSupportedException(String8(row_.name).charPtr(), op_.opId, false);
}

namespace {

/// A generic object of the value of an attribute that `make` constructs in raw storage.
template <class Make>
Ptr<GenericIf> valueOf(const AttrRow& row, bool isConst, const Make& make) {
  ValueSlot slot(*row.value, make);
  return packed(*row.value, slot.at(), isConst, row.name);
}

Ptr<GenericIf> memberOf(const AttrRow& row, bool isConst, const Ptr<PtrInterface>& member) {
  return row.collection->memberTable().type()->genericIf(member.ptr(), isConst);
}

} // namespace

Ptr<GenericIf> AttributeAccess::singular() const {
  refuseIndex();
  if (op_.opId == AttributeOp::opRead) {
    return valueOf(row_, isConst_, [this](void* to) { row_.read(object_, to); });
  }
  if (op_.opId == AttributeOp::opWrite && row_.write != nullptr) {
    row_.write(object_, unpacked(value_, *row_.value, row_.name));
    return nullptr;
  }
  notSupported();
}

Ptr<GenericIf> AttributeAccess::collection() const {
  const CollectionOps& ops = *row_.collection;
  switch (op_.opId) {
  case AttributeOp::opCount:
    return packed(ops.count(object_), isConst_);
  case AttributeOp::opVersion:
    return packed(ops.version(object_), isConst_);
  case AttributeOp::opExists:
    return packed(ops.exists(object_, keyOf(row_, index_)), isConst_);
  default:
    return row_.kind == AttrKind::instantiating ? objectMember() : plainMember();
  }
}

/// Collections of plain values; those that bring their key are written without one.
Ptr<GenericIf> AttributeAccess::plainMember() const {
  const CollectionOps& ops = *row_.collection;
  switch (op_.opId) {
  case AttributeOp::opRead: {
    const void* const key = keyOf(row_, index_);
    return valueOf(row_, isConst_, [&](void* to) { ops.read(object_, key, to); });
  }
  case AttributeOp::opDelete: {
    const void* const key = keyOf(row_, index_);
    return valueOf(row_, isConst_, [&](void* to) { ops.take(object_, key, to); });
  }
  case AttributeOp::opWrite: {
    const void* key = nullptr;
    if (row_.kind == AttrKind::ownKey) {
      refuseIndex();
    } else {
      key = keyOf(row_, index_);
    }
    ops.write(object_, key, unpacked(value_, *row_.value, row_.name));
    return nullptr;
  }
  default:
    notSupported();
  }
}

Ptr<GenericIf> AttributeAccess::objectMember() const {
  const CollectionOps& ops = *row_.collection;
  switch (op_.opId) {
  case AttributeOp::opRead:
    return memberOf(row_, isConst_, ops.member(object_, keyOf(row_, index_)));
  case AttributeOp::opDelete:
    return memberOf(row_, isConst_, ops.takeMember(object_, keyOf(row_, index_)));
  case AttributeOp::opWrite:
    return create();
  default:
    notSupported();
  }
}

Ptr<GenericIf> AttributeAccess::create() const {
  refuseIndex();
  ArgumentReader in(value_);
  const CollectionOps& ops = *row_.collection;
  const void* const key = in.next(*row_.key, keyAttributeName(row_));
  std::vector<const void*> arguments;
  for (const ValueRecord* const wanted : ops.arguments) {
    // Behind the key, the arguments are those of the member's own constructor.
    arguments.push_back(
        in.next(*wanted, constructorArgumentName(ops.memberTable(), arguments.size() + 1)));
  }
  in.finish(row_.name);
  return memberOf(row_, isConst_, ops.create(object_, key, arguments.data()));
}

} // namespace Zel
