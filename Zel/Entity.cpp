#include <Zel/Entity>

#include <Zel/Exception>
#include <Zel/StreamAdapter>
#include <Zel/ZelType>

#include <utility>

namespace Zel {

constinit thread_local const Entity* FreshMember::current_ = nullptr;
constinit thread_local WritePermission* WritePermission::current_ = nullptr;

Entity::~Entity() = default;

Name Entity::name() const { return name_; }

Ptr<const Entity> Entity::parent() const { return Ptr<const Entity>(parent_); }
Ptr<Entity> Entity::parent() { return Ptr<Entity>(parent_); }

void Entity::parentIs(const Ptr<Entity>& parent) {
  parent_ = parent.ptr();
  handleParent(parent);
}

void Entity::zelWriteCheck(AttributeId id) const {
  // Used up even where it is not needed: whom this write is told to may freeze the tree.
  const bool isPermitted = WritePermission::take(*this, id);
  for (const Entity* at = this; (at->referenceWord() & guardBit) == 0; at = at->parent_) {
    if (at->parent_ == nullptr) {
      if (at->zelIsFrozen() && !isPermitted) {
        throwReadOnlyException(attributeString(id), fullName());
      }
      return;
    }
  }
}

const ZelAttr* Entity::parentAttr() const {
  const Ptr<const Entity> holder = parent();
  const ZelType* const type = holder ? holder->fwkType() : nullptr;
  return type != nullptr ? type->attr(parentAttrId()) : nullptr;
}

AttributeId Entity::parentAttrId() const { return parentAttrId_; }
void Entity::parentAttrIdIs(AttributeId id) { parentAttrId_ = id; }

String8 Entity::fullName() const {
  const Ptr<const Entity> holder = parent();
  return holder ? holder->fullName() + "/" + name() : String8(name());
}

String8 Entity::attributeString(AttributeId id) const {
  switch (id) {
  case fwkKeyId:
    return "fwkKey";
  case entityNameId:
    return "name";
  case zelHasAttrLogInterfaceId:
    return "zelHasAttrLogInterface";
  case zelNboAttrLogSaForMsgChannelId:
    return "zelNboAttrLogSaForMsgChannel";
  default:
    return "unknown";
  }
}

void Entity::zelNotifieeAdapterIs(const Ptr<const Entity>& /*adapter*/) {}
void Entity::handleParent(const Ptr<Entity>& /*parent*/) {}

Ptr<const Entity::ZelNboAttrLogSa>
Entity::zelNboAttrLogSa(const Ptr<const NboAttrLog::Out>& /*out*/) const {
  return nullptr;
}

bool Entity::zelHasAttrLogInterface() const { return false; }

Ptr<Entity::ZelNboAttrLogSa> Entity::zelNboAttrLogSa(const Ptr<const NboAttrLog::Out>& /*out*/) {
  return nullptr;
}

Ptr<Entity::ZelNboAttrLogSa>
Entity::zelNboAttrLogSaForMsgChannel(const Ptr<ZelNboAttrLogSa>& /*other*/) const {
  return nullptr;
}

Ptr<Entity::ZelNboAttrLogSa>
Entity::zelNboAttrLogSaIs(PtrInterface::NotifieeConst::Zel_BitSet /*flags*/, unsigned /*option*/,
                          const Ptr<NboAttrLog::Out>& /*out*/, PtrInterface* /*owner*/) {
  return nullptr;
}

Ptr<Entity::ZelNboAttrLogSa> Entity::zelNboAttrLogSaDel(const Ptr<const NboAttrLog::Out>& /*out*/) {
  return nullptr;
}

void WritePermission::give(const Entity& entity, AttributeId id) noexcept {
  isGiven_ = true;
  id_ = id;
  entity_ = &entity;
  outer_ = std::exchange(current_, this);
}

bool WritePermission::take(const Entity& entity, AttributeId id) noexcept {
  if (current_ == nullptr || current_->entity_ != &entity || current_->id_ != id) {
    return false;
  }
  current_->entity_ = nullptr;
  return true;
}

Entity::NotifieeConst::~NotifieeConst() = default;
void Entity::NotifieeConst::onParent() {}
void Entity::NotifieeConst::onVersion() {}

} // namespace Zel
