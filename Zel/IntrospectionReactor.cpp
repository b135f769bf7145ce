#include <Zel/IntrospectionReactor>

#include <Zel/Exception>

#include <algorithm>

namespace Zel {

namespace {

constinit bool ready = true;

} // namespace

IntrospectionReactor::~IntrospectionReactor() = default;

Ptr<IntrospectionReactor> IntrospectionReactor::global() {
  static auto* const reactor = new IntrospectionReactor; // its birth reference is never given back
  return Ptr<IntrospectionReactor>(ready ? reactor : nullptr);
}

void IntrospectionReactor::readyIs(bool isReady) noexcept { ready = isReady; }

NameSpace& IntrospectionReactor::innermostNames() noexcept {
  const auto open = std::find_if(open_.rbegin(), open_.rend(),
                                 [](const Scope& scope) { return scope.names != nullptr; });
  return open != open_.rend() ? *open->names : root_;
}

void IntrospectionReactor::handleNameSpace(const char* name) {
  auto& scopes = innermostNames().scopes_;
  auto at = std::find_if(scopes.begin(), scopes.end(),
                         [name](const NameSpace& scope) { return scope.name() == Name(name); });
  if (at == scopes.end()) {
    scopes.emplace_back(name);
    at = std::prev(scopes.end());
  }
  open_.push_back({&*at, nullptr});
}

void IntrospectionReactor::handleType(const Ptr<const ZelType>& type,
                                      const Ptr<const ZelType>& base) {
  if (type->base() != base.ptr()) {
    throwInternalException("another base than the descriptor's: " + type->name());
  }
  innermostNames().types_.push_back(type.ptr());
  open_.push_back({nullptr, type.ptr()});
}

void IntrospectionReactor::handleScopeExit() {
  if (open_.empty() || context_) {
    throwInternalException(context_ ? "an attribute's context is open" : "no scope is open");
  }
  open_.pop_back();
}

Ptr<ZelAttr> IntrospectionReactor::defNoninstantiatingAttr(
    ZelType* container, Name name, const ZelType* attrType, const ZelType* indexType,
    const ZelAttr::AttrFlags& flags, ZelAttr::ZelAttrIntrospectionFlags introspection,
    AttributeId id) {
  if (open_.empty() || open_.back().type != container) {
    throwInternalException("not the open type: " + container->name());
  }
  auto attr = makeObject<ZelAttr>(container, std::move(name), attrType, indexType, flags,
                                  introspection, id);
  container->attributeQEnq(attr);
  return attr;
}

void IntrospectionReactor::handleAttr(const Ptr<ZelAttr>& attr) {
  const ZelType* const type = open_.empty() ? nullptr : open_.back().type;
  if (context_ || type == nullptr || type->attributeQ().empty() ||
      !(type->attributeQ().back() == attr)) {
    throwInternalException("not the last attribute of the open type: " + attr->name());
  }
  context_ = attr;
}

void IntrospectionReactor::handleAttrContextExit() {
  if (!context_) {
    throwInternalException("no attribute's context is open");
  }
  context_ = nullptr;
}

} // namespace Zel
