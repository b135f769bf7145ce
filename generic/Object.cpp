#include <generic/Object.h>

#include <generic/Access.h>

namespace Zel {

const AttrRow* attributeRow(const TypeTable& table, AttributeId id) {
  return id == fwkKeyId ? nullptr : table.row(id);
}

Ptr<GenericIf> objectFromList(const TypeTable& table, const GenericIf* list) {
  const ZelType* const type = table.type();
  if (!table.hasFactory) {
    return type->ZelType::genericIf(list, false);
  }
  ArgumentReader in(list);
  const Ptr<PtrInterface> made = table.constructor.object(constructorArguments(table, in).data());
  return type->genericIf(made.ptr(), false);
}

template <class Base>
GenericObject<Base>::~GenericObject() = default;

template <class Base>
Ptr<const ZelType> GenericObject<Base>::type() const {
  return Ptr<const ZelType>(zelView().table.type());
}

template <class Base>
void* GenericObject<Base>::voidPtrIs(const Ptr<const ZelType>& wanted) const {
  const ObjectView view = zelView();
  const ZelType* const own = view.table.type();
  if (!own->isA(wanted.ptr())) {
    GenericIf::throwTypeException(own->name().charPtr());
  }
  return view.object;
}

template <class Base>
AttributeId GenericObject<Base>::attributeId(String8 name) const {
  const ZelAttr* const attr = zelView().table.type()->attr(name.view());
  if (attr == nullptr) [[unlikely]] {
    return Base::attributeId(std::move(name));
  }
  attr->zelReadInc();
  return attr->id();
}

template <class Base>
Ptr<GenericIf> GenericObject<Base>::attributeOp(const AttributeOp& op,
                                                const Ptr<const GenericIf>& index,
                                                const Ptr<GenericIf>& value) {
  this->refuseIfConst(op);
  const ObjectView view = zelView();
  const AttrRow* const row = attributeRow(view.table, op.attributeId);
  if (row == nullptr) {
    return Base::attributeOp(op, index, value);
  }
  if (view.object == nullptr) {
    Base::throwNoObject();
  }
  // A notifiee may let go of this, and with it of the object that is being written.
  const Ptr<PtrInterface> kept(op.opId >= AttributeOp::firstWriting ? view.object : nullptr);
  return AttributeAccess(*row, view.object, op, index.ptr(), value.ptr(), this->isConst()).result();
}

namespace {

/// What a position in a collection is: a row, an iterator of its collection, and the object that
/// has the collection, which must not go before. The record of the position owns it.
struct Position {
  const AttrRow& row;
  CollectionPosition at;
  const Ptr<const PtrInterface> owner;
};

Position* positionOf(const GenericIf::AttributeIteratorConst& at) {
  return static_cast<Position*>(at.iterState);
}

/// A position at what `make` constructs in raw storage.
template <class Make>
Position* newPosition(const AttrRow& row, const PtrInterface* owner, Make&& make) {
  return new Position{row, CollectionPosition(row.collection->iteration, make),
                      Ptr<const PtrInterface>(owner)};
}

/// The collection of an id; null if there is none.
const AttrRow* collectionRow(const TypeTable& table, AttributeId id) {
  const AttrRow* const row = attributeRow(table, id);
  return row != nullptr && row->isCollection() ? row : nullptr;
}

} // namespace

template <class Base>
GenericIf::AttributeIteratorConst
GenericObject<Base>::attributeIteratorConst(AttributeId id) const {
  const ObjectView view = zelView();
  const AttrRow* const row = collectionRow(view.table, id);
  if (row == nullptr) {
    return Base::attributeIteratorConst(id);
  }
  if (view.object == nullptr) {
    Base::throwNoObject();
  }
  return {Ptr<const GenericIf>(this), id, newPosition(*row, view.object, [&](void* at) {
            row->collection->iteration.first(at, view.object);
          })};
}

template <class Base>
GenericIf::AttributeIteratorConst
GenericObject<Base>::attributeIteratorKeyConst(AttributeId id,
                                               const Ptr<const GenericIf>& key) const {
  const ObjectView view = zelView();
  const AttrRow* const row = collectionRow(view.table, id);
  if (row == nullptr) {
    return Base::attributeIteratorKeyConst(id, key);
  }
  if (view.object == nullptr) {
    Base::throwNoObject();
  }
  const void* const wanted = keyOf(*row, key.ptr());
  return {Ptr<const GenericIf>(this), id, newPosition(*row, view.object, [&](void* at) {
            row->collection->iteration.atKey(at, view.object, wanted);
          })};
}

// A position without a state is of no collection; the base answers for it.

template <class Base>
Ptr<GenericIf> GenericObject<Base>::attributeIterator_iterObj(const AttributeIteratorConst& at) {
  const Position* const position = positionOf(at);
  if (position == nullptr) {
    return Base::attributeIterator_iterObj(at);
  }
  if (!position->at) {
    return nullptr;
  }
  const AttrRow& row = position->row;
  if (row.kind == AttrKind::instantiating) {
    return row.collection->memberTable().type()->genericIf(position->at.member(), this->isConst());
  }
  return packed(*row.value, position->at.value(), this->isConst(), row.name);
}

template <class Base>
void* GenericObject<Base>::attributeIterator_iterInc(const AttributeIteratorConst& at) const {
  Position* const position = positionOf(at);
  if (position == nullptr) {
    return Base::attributeIterator_iterInc(at);
  }
  position->at.advance();
  return nullptr;
}

template <class Base>
Ptr<const GenericIf>
GenericObject<Base>::attributeIterator_iterKey(const AttributeIteratorConst& at) const {
  const Position* const position = positionOf(at);
  if (position == nullptr) {
    return Base::attributeIterator_iterKey(at);
  }
  if (!position->at) {
    return nullptr;
  }
  const AttrRow& row = position->row;
  ValueSlot key(*row.key, [&](void* to) { position->at.key(to); });
  return packed(*row.key, key.at(), true, row.name);
}

template <class Base>
void* GenericObject<Base>::attributeIterator_iterClone(const AttributeIteratorConst& at) const {
  const Position* const position = positionOf(at);
  if (position == nullptr) {
    return Base::attributeIterator_iterClone(at);
  }
  return new Position(*position);
}

template <class Base>
bool GenericObject<Base>::attributeIterator_nonNull(const AttributeIteratorConst& at) const {
  const Position* const position = positionOf(at);
  return position != nullptr ? static_cast<bool>(position->at)
                             : Base::attributeIterator_nonNull(at);
}

template <class Base>
void* GenericObject<Base>::attributeIterator_iterDel(const AttributeIteratorConst& at) const {
  const Position* const position = positionOf(at);
  if (position == nullptr) {
    return Base::attributeIterator_iterDel(at);
  }
  delete position;
  return nullptr;
}

template class GenericObject<GenericIfPtrInterface>;
template class GenericObject<GenericIfEntity>;

} // namespace Zel
