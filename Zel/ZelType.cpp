#include <Zel/ZelType>

#include <Zel/GenericIf>

#include <algorithm>
#include <string>
#include <unordered_map>

namespace Zel {

namespace {

/// The tree of types by name.
struct TypeTree {
  std::deque<const ZelType*> inOrder;
  std::unordered_map<std::string_view, const ZelType*> byName; // the names are the types' own
};

/// Spreads the names of one type well enough, by their length and three of their bytes.
std::size_t shortHash(std::string_view name) noexcept {
  if (name.empty()) {
    return 0;
  }
  const auto byte = [&](std::size_t at) -> std::size_t {
    return static_cast<unsigned char>(name[at]);
  };
  return name.size() * 31 + byte(0) * 7 + byte(name.size() / 2) * 3 + byte(name.size() - 1);
}

TypeTree& typeTree() {
  static auto* const tree = new TypeTree; // descriptors are looked up until the process ends
  return *tree;
}

} // namespace

ZelType::ZelType(Name name, const ZelType* outerType, const ZelType* base, ZelTypeFlags flags)
    : name_(std::move(name)), outerType_(outerType), base_(base), flags_(flags) {}

ZelType::~ZelType() = default;

void ZelType::typeFlagsDoEmbeddedWriteConstraints() {}

Ptr<Entity> ZelType::newEntity(const Name& /*name*/, Dir* /*dir*/) const { return nullptr; }

Ptr<Entity> ZelType::newEntity(const Ptr<NboAttrLog::In>& /*in*/,
                               PtrInterface::NotifieeConst::Zel_BitSet /*flags*/,
                               unsigned /*option*/, PtrInterface* /*owner*/) const {
  return nullptr;
}

void ZelType::childAttrLogIs(const Ptr<const ZelAttr>& /*attr*/, const Ptr<PtrInterface>& /*child*/,
                             const Ptr<NboAttrLog::Out>& /*out*/) const {}

Ptr<GenericIf> ZelType::genericIf(const void* /*raw*/, bool isConst) const {
  GenericIf::throwOpNotSupportedException(name_.charPtr(), GenericIf::AttributeOp::opRead, isConst);
}

Ptr<GenericIf> ZelType::genericIf(const GenericIf* /*list*/, bool isConst) const {
  GenericIf::throwOpNotSupportedException(name_.charPtr(), GenericIf::AttributeOp::opWrite,
                                          isConst);
}

Ptr<GenericIf> ZelType::genericIf(const String8& /*text*/, bool isConst) const {
  GenericIf::throwOpNotSupportedException(name_.charPtr(), GenericIf::AttributeOp::opRead, isConst);
}

Ptr<GenericIf> ZelType::genericIf_(PtrInterface* /*object*/, bool isConst) const {
  GenericIf::throwOpNotSupportedException(name_.charPtr(), GenericIf::AttributeOp::opRead, isConst);
}

Ptr<GenericIf> ZelType::genericIf(std::nullptr_t /*none*/, bool isConst) const {
  return genericIf(static_cast<const void*>(nullptr), isConst);
}

Ptr<GenericIf> ZelType::genericIf(const char* text, bool isConst) const {
  return genericIf(String8(text), isConst);
}

Ptr<GenericIf> ZelType::genericIf(PtrInterface* object, bool isConst) const {
  if (object == nullptr) {
    return nullptr;
  }
  const ZelType* const own = object->fwkType();
  return (own != nullptr ? own : this)->genericIf_(object, isConst);
}

bool ZelType::isA(const ZelType* other) const noexcept {
  const ZelType* type = this;
  while (type != nullptr && type != other) {
    type = type->base_;
  }
  return type != nullptr;
}

ZelAttr* ZelType::attr(std::string_view name) const noexcept {
  if (places_.empty()) {
    return nullptr;
  }
  for (std::size_t at = shortHash(name) & (places_.size() - 1); places_[at] != nullptr;
       at = (at + 1) & (places_.size() - 1)) {
    if (places_[at]->name().view() == name) {
      return places_[at];
    }
  }
  return nullptr;
}

ZelAttr* ZelType::attr(AttributeId id) const noexcept {
  const auto found = std::find_if(attributeQ_.rbegin(), attributeQ_.rend(),
                                  [id](const Ptr<ZelAttr>& attr) { return attr->id() == id; });
  return found != attributeQ_.rend() ? found->ptr() : nullptr;
}

void ZelType::flagIs(unsigned& word, unsigned bit, bool set) {
  if (((word & bit) != 0) == set) {
    return;
  }
  word ^= bit;
  typeFlagsDoEmbeddedWriteConstraints();
}

void ZelType::isValueIs(bool value) { flagIs(flags_.first, valueFlag, value); }
void ZelType::isEntityIs(bool entity) { flagIs(flags_.second, entityFlag, entity); }

void ZelType::isEnumTypeIs(bool enumType) {
  flagIs(flags_.first, enumTypeFlag, enumType);
  const Name value = "value";
  if (enumType && attr(value) == nullptr) {
    attributeQEnq(
        makeObject<ZelAttr>(this, value, this, nullptr, FlagWords{0x20001, 0x400}, 0U, 1));
  }
}

void ZelType::hasGenericIfSupportIs(bool support) {
  flagIs(flags_.second, genericIfSupportFlag, support);
}

void ZelType::attributeQEnq(const Ptr<ZelAttr>& attr) {
  attributeQ_.push_back(attr);
  placesFill();
}

void ZelType::attrDel(const Name& name) {
  std::erase_if(attributeQ_, [&](const Ptr<ZelAttr>& attr) { return attr->name() == name; });
  placesFill();
}

void ZelType::placesFill() {
  std::size_t size = 4;
  while (size < 2 * attributeQ_.size()) {
    size *= 2;
  }
  places_.assign(size, nullptr);
  for (const Ptr<ZelAttr>& attr : attributeQ_) {
    std::size_t at = shortHash(attr->name().view()) & (size - 1);
    while (places_[at] != nullptr && !(places_[at]->name() == attr->name())) {
      at = (at + 1) & (size - 1);
    }
    places_[at] = attr.ptr(); // of two with one name, the later is the type's own
  }
}

Ptr<ZelAttr> ZelType::attrIs(Name name, const ZelType* element, const ZelAttr* keyAttr,
                             const ZelAttr* /*second*/, FlagWords flags, AttributeId id) {
  auto attr = makeObject<ZelAttr>(this, std::move(name), element, nullptr, flags, 0U, id);
  attr->keyAttrIs(keyAttr);
  return attr;
}

void ZelType::typeNodeIs(const ZelType* type, const Name& fullName) {
  TypeTree& tree = typeTree();
  if (tree.byName.contains(fullName.view()) || !type->fullName_.empty()) {
    return; // the keys are views of the names
  }
  type->fullName_ = fullName;
  tree.byName.emplace(type->fullName_.view(), type);
  tree.inOrder.push_back(type);
}

const ZelType* ZelType::type(std::string_view fullName) noexcept {
  const auto found = typeTree().byName.find(fullName);
  return found != typeTree().byName.end() ? found->second : nullptr;
}

const std::deque<const ZelType*>& ZelType::types() noexcept { return typeTree().inOrder; }

ZelAttr::ZelAttr(const ZelType* container, Name name, const ZelType* attrType,
                 const ZelType* indexType, AttrFlags flags, ZelAttrIntrospectionFlags introspection,
                 AttributeId id)
    : container_(container), name_(std::move(name)), attrType_(attrType), indexType_(indexType),
      flags_(flags), introspection_(introspection), id_(id) {}

ZelAttr::~ZelAttr() = default;

Ptr<ZelAttr> ZelAttr::zelCopyFor(const ZelType* derived) const {
  auto copy =
      makeObject<ZelAttr>(derived, name_, attrType_, indexType_, flags_, introspection_, id_);
  copy->keyAttrName_ = keyAttrName_;
  copy->keyTypeName_ = keyTypeName_;
  copy->indexName_ = indexName_;
  copy->indexOption_ = indexOption_;
  copy->indexFlags_ = indexFlags_;
  copy->keyAttr_ = keyAttr_;
  copy->row_ = row_;
  return copy;
}

void ZelAttr::indexTypeIs(const ZelType* type) { indexType_ = type; }
void ZelAttr::keyAttrNameIs(const Name& name) { keyAttrName_ = name; }
void ZelAttr::keyTypeNameIs(const Name& fullName) { keyTypeName_ = fullName; }
void ZelAttr::indexNameIs(const Name& name) { indexName_ = name; }
void ZelAttr::indexOptionIs(unsigned option) { indexOption_ = option; }
void ZelAttr::indexFlagsIs(unsigned flags) { indexFlags_ = flags; }

} // namespace Zel
