#include <Zel/GenericIf>

#include <Zel/Activity>
#include <Zel/Entity>

#include <string>

namespace Zel {

using AttributeOp = GenericIf::AttributeOp;
using AttributeIteratorConst = GenericIf::AttributeIteratorConst;

namespace {

std::string unknownAttribute(const GenericIf& object, const String8& attribute) {
  std::string text(object.type()->name().view());
  text += ": ";
  text += attribute.view();
  return text;
}

String8 textOf(AttributeId id) { return String8(std::to_string(id)); }

} // namespace

const ZelType* GenericIf::fwkType() const { return _fwkType(); }

void GenericIf::onAttribute(AttributeId /*id*/) {}
void GenericIf::onAttribute(AttributeId /*id*/, Ptr<const GenericIf>& /*key*/) {}

ActivitySm* GenericIf::zelFwkActivity() { return ActivitySm::installed(); }
const ActivitySm* GenericIf::zelFwkActivity() const { return ActivitySm::installed(); }
ActivitySm* GenericIf::actsm() { return ActivitySm::installed(); }

String8 GenericIf::attributeString(AttributeId /*id*/) const { return "unknown"; }

AttributeId GenericIf::attributeId(String8 name) const {
  throwUnknownAttrException(unknownAttribute(*this, name).c_str());
}

Ptr<GenericIf> GenericIf::attributeOp(const AttributeOp& op, const Ptr<const GenericIf>& /*index*/,
                                      const Ptr<GenericIf>& /*value*/) {
  refuseIfConst(op);
  throwUnknownAttrException(unknownAttribute(*this, textOf(op.attributeId)).c_str());
}

void GenericIf::zelDoZombieReactors(bool zombie) {
  if (zombie != zelMarkedForDeletion()) {
    zelMarkedForDeletionIs(zombie);
  }
}

AttributeIteratorConst GenericIf::attributeIteratorConst(AttributeId id) const {
  throwUnknownAttrException(unknownAttribute(*this, textOf(id)).c_str());
}

AttributeIteratorConst
GenericIf::attributeIteratorKeyConst(AttributeId id, const Ptr<const GenericIf>& /*key*/) const {
  throwUnknownAttrException(unknownAttribute(*this, textOf(id)).c_str());
}

Ptr<GenericIf> GenericIf::attributeIterator_iterObj(const AttributeIteratorConst& /*at*/) {
  return nullptr;
}

Ptr<const GenericIf> GenericIf::attributeIterator_iterObj(const AttributeIteratorConst& at) const {
  return const_cast<GenericIf*>(this)->attributeIterator_iterObj(at);
}

void* GenericIf::attributeIterator_iterInc(const AttributeIteratorConst& /*at*/) const {
  return nullptr;
}

Ptr<const GenericIf>
GenericIf::attributeIterator_iterKey(const AttributeIteratorConst& /*at*/) const {
  return nullptr;
}

void* GenericIf::attributeIterator_iterClone(const AttributeIteratorConst& /*at*/) const {
  return nullptr;
}

bool GenericIf::attributeIterator_nonNull(const AttributeIteratorConst& /*at*/) const {
  return false;
}

void* GenericIf::attributeIterator_iterDel(const AttributeIteratorConst& /*at*/) const {
  return nullptr;
}

GenericIf::AttributeIterator GenericIf::attributeIterator(AttributeId id) {
  return AttributeIterator(attributeIteratorConst(id));
}

GenericIf::AttributeIterator GenericIf::attributeIteratorKey(AttributeId id,
                                                             const Ptr<const GenericIf>& key) {
  return AttributeIterator(attributeIteratorKeyConst(id, key));
}

void GenericIf::throwConstException(const char* message) { throw ConstException(message); }

void GenericIf::throwBadIndexAttrException(const char* attribute) {
  throw BadIndexAttrException(String8("attribute takes no index: ") + attribute);
}

void GenericIf::throwOpNotSupportedException(const char* attribute, AttributeOp::OpId op,
                                             bool isConst) {
  std::string text = "operation " + std::to_string(op) + " not supported on " + attribute;
  if (isConst) {
    text += " of a const instance";
  }
  throw OpNotSupportedException(String8(text));
}

void GenericIf::throwTypeException(const char* argument) {
  throw TypeException(String8("argument missing or of the wrong type: ") + argument);
}

void GenericIf::throwUnknownArgException(const char* owner) {
  throw UnknownArgException(String8("too many arguments: ") + owner);
}

void GenericIf::throwUnknownAttrException(const char* type) {
  throw UnknownAttrException(String8("unknown attribute of ") + type);
}

AttributeIteratorConst::AttributeIteratorConst(const AttributeIteratorConst& other)
    : object_(other.object_), id_(other.id_),
      iterState(object_ ? object_->attributeIterator_iterClone(other) : nullptr) {}

AttributeIteratorConst::AttributeIteratorConst(AttributeIteratorConst&& other) noexcept
    : object_(std::move(other.object_)), id_(other.id_),
      iterState(std::exchange(other.iterState, nullptr)) {}

AttributeIteratorConst& AttributeIteratorConst::operator=(AttributeIteratorConst other) noexcept {
  object_.swap(other.object_);
  std::swap(id_, other.id_);
  std::swap(iterState, other.iterState);
  return *this;
}

AttributeIteratorConst::~AttributeIteratorConst() {
  if (object_) { // not of one that was moved from
    object_->attributeIterator_iterDel(*this);
  }
}

GenericIf::List_::~List_() = default;

GenericIf::List_& GenericIf::List_::add(Ptr<GenericIf> argument) {
  if (argument.ptr() == this) {
    throwTypeException(List::_fwkType()->name().charPtr());
  }
  queue_.enq(argument);
  return *this;
}

Ptr<const ZelType> GenericIf::List_::type() const { return Ptr<const ZelType>(List::_fwkType()); }

void* GenericIf::List_::voidPtrIs(const Ptr<const ZelType>& wanted) const {
  if (wanted.ptr() != List::_fwkType()) {
    throwTypeException(List::_fwkType()->name().charPtr());
  }
  return &queue_;
}

String8 GenericIf::List_::strRep() const {
  std::string text = "[";
  for (const List::ZelGenericIf* at = queue_.head().ptr(); at != nullptr;
       at = at->zelNext().ptr()) {
    const Ptr<GenericIf>& argument = at->zelValue();
    text += text.size() > 1 ? ", " : "";
    text += argument ? argument->strRep().view() : "null";
  }
  return String8(text + "]");
}

Ptr<GenericIf> GenericIf::List_::clone() {
  auto copy = makeObject<List_>();
  copy->queue_ = queue_;
  copy->hasNotificationActiveIs(true);
  return copy;
}

GenericIfPtrInterface::~GenericIfPtrInterface() = default;

Ptr<GenericIf> GenericIfPtrInterface::attributeOp(const AttributeOp& op,
                                                  const Ptr<const GenericIf>& index,
                                                  const Ptr<GenericIf>& value) {
  const TypeTable* const table = op.attributeId == fwkKeyId ? type()->table() : nullptr;
  const AttrRow* const row = table != nullptr ? table->row(fwkKeyId) : nullptr;
  if (row == nullptr) {
    return GenericIf::attributeOp(op, index, value);
  }
  const PtrInterface& object = zelReadOnly("fwkKey", op, index);
  ValueSlot key(*row->value, [&](void* to) { row->read(&object, to); });
  return row->value->type()->genericIf(static_cast<const void*>(key.at()), isConst());
}

const PtrInterface& GenericIfPtrInterface::zelReadOnly(const char* attribute, const AttributeOp& op,
                                                       const Ptr<const GenericIf>& index) const {
  refuseIfConst(op);
  if (index) {
    throwBadIndexAttrException(attribute);
  }
  if (op.opId != AttributeOp::opRead) {
    throwOpNotSupportedException(attribute, op.opId, false);
  }
  if (zelObject() == nullptr) {
    throwNoObject();
  }
  return *zelObject();
}

void GenericIfPtrInterface::throwNoObject() {
  throwInternalException("generic object of no object");
}

String8 GenericIfPtrInterface::attributeString(AttributeId id) const {
  const ZelAttr* const attr = type()->attr(id);
  return attr != nullptr ? String8(attr->name()) : GenericIf::attributeString(id);
}

String8 GenericIfPtrInterface::strRep() const {
  return valueToStrepOfRawPtr(zelObject(),
                              type()->isEntity() ? Entity::_fwkType() : PtrInterface::_fwkType());
}

Ptr<GenericIf> GenericIfPtrInterface::baseGenericIf() {
  const ZelType* base = type()->base();
  while (base != nullptr && base->table() == nullptr) {
    base = base->base();
  }
  return base != nullptr ? base->genericIf_(zelObject(), isConst()) : nullptr;
}

Ptr<const GenericIf> GenericIfPtrInterface::baseGenericIf() const {
  return const_cast<GenericIfPtrInterface*>(this)->baseGenericIf();
}

GenericIfEntity::~GenericIfEntity() = default;

namespace {

/// Result of a read of one of the framework's attributes.
template <class V>
Ptr<GenericIf> made(const V& value, bool isConst) {
  return valueRecord<V>.type()->genericIf(static_cast<const void*>(&value), isConst);
}

} // namespace

Ptr<GenericIf> GenericIfEntity::attributeOp(const AttributeOp& op,
                                            const Ptr<const GenericIf>& index,
                                            const Ptr<GenericIf>& value) {
  const auto entity = [&](const char* attribute) -> const Entity& {
    const auto& read = static_cast<const Entity&>(zelReadOnly(attribute, op, index));
    read.zelReadInc();
    return read;
  };
  switch (op.attributeId) {
  case entityNameId:
    return made(entity("name").name(), isConst());
  case zelHasAttrLogInterfaceId:
    return made(entity("zelHasAttrLogInterface").zelHasAttrLogInterface(), isConst());
  case zelNboAttrLogSaForMsgChannelId:
    refuseIfConst(op);
    throwOpNotSupportedException("zelNboAttrLogSaForMsgChannel", op.opId, false);
  default:
    return GenericIfPtrInterface::attributeOp(op, index, value);
  }
}

String8 GenericIfEntity::attributeString(AttributeId id) const {
  const auto* const entity = static_cast<const Entity*>(zelObject());
  return entity != nullptr ? entity->attributeString(id)
                           : GenericIfPtrInterface::attributeString(id);
}

void GenericIfEntity::onAttribute(AttributeId id) {
  if (listener_ != nullptr) {
    listener_->onAttribute(*this, id);
  }
}

void GenericIfEntity::onAttribute(AttributeId id, Ptr<const GenericIf>& key) {
  if (listener_ != nullptr) {
    listener_->onAttribute(*this, id, key);
  }
}

} // namespace Zel
