#include <registration/Framework.h>

#include <Zel/GenericIf>
#include <Zel/IntrospectionReactor>
#include <registration/Flags.h>

namespace Zel {

namespace {

constexpr std::string_view zelScopes[] = {"Zel"};
constexpr std::string_view groupScopes[] = {"Group"};
constexpr std::string_view vexilScopes[] = {"Vexil"};

constinit ModuleOf<TypeList<bool, unsigned, unsigned long long, double>> builtins({});
constinit ModuleOf<TypeList<String8, Name>> strings(zelScopes);
constinit ModuleOf<TypeList<Group::GroupType, Group::GroupKey>> group(groupScopes);
constinit ModuleOf<TypeList<Vexil::IntfId>> vexil(vexilScopes);

/// A class of the framework that no table describes.
class FrameworkType : public ZelType {
public:
  FrameworkType(const char* name, const ZelType* base) : ZelType(name, nullptr, base, {}) {}
};

/// Makes the descriptor at the first request. It is kept before it has attributes, since their
/// types may ask for it.
const ZelType* frameworkType(ZelType*& kept, const char* name, std::size_t size,
                             const ZelType* base) {
  if (kept == nullptr) {
    const Ptr<ZelType> type(makeObject<FrameworkType>(name, base));
    kept = type.ptr();
    kept->referencesLeak();
    kept->sizeIs(static_cast<unsigned>(size));
    if (base != nullptr) {
      const_cast<ZelType*>(base)->derivedTypeQEnq(type);
    }
  }
  return kept;
}

constinit ZelType* ptrInterfaceType = nullptr;
constinit ZelType* entityType = nullptr;
constinit ZelType* genericIfType = nullptr;
constinit ZelType* listType = nullptr;

void fillEntityType(ZelType& entity) {
  entity.isEntityIs(true);
  const FlagWords nameFlags{AttrFlag::present | AttrFlag::constructorArgument | AttrFlag::stored |
                                AttrFlag::named | AttrFlag::passedOn,
                            AttrFlag::everywhere | AttrFlag::neverChanges};
  entity.attributeQEnq(makeObject<ZelAttr>(&entity, "name", Name::_fwkType(), nullptr, nameFlags,
                                           ofFramework, entityNameId));
  entity.attributeQEnq(makeObject<ZelAttr>(&entity, "zelNboAttrLogSaForMsgChannel",
                                           PtrInterface::_fwkType(), nullptr, frameworkFlags,
                                           ofFramework, zelNboAttrLogSaForMsgChannelId));
}

} // namespace

template <>
const ZelType* Builtin<bool>::_fwkType() {
  return builtins.fwkType<bool>();
}
template <>
const ZelType* Builtin<unsigned>::_fwkType() {
  return builtins.fwkType<unsigned>();
}
template <>
const ZelType* Builtin<unsigned long long>::_fwkType() {
  return builtins.fwkType<unsigned long long>();
}
template <>
const ZelType* Builtin<double>::_fwkType() {
  return builtins.fwkType<double>();
}

const ZelType* String8::_fwkType() { return strings.fwkType<String8>(); }
const ZelType* Name::_fwkType() { return strings.fwkType<Name>(); }

const ZelType* PtrInterface::_fwkType() {
  return frameworkType(ptrInterfaceType, "PtrInterface", sizeof(PtrInterface), nullptr);
}

const ZelType* Entity::_fwkType() {
  if (entityType == nullptr) {
    frameworkType(entityType, "Entity", sizeof(Entity), PtrInterface::_fwkType());
    fillEntityType(*entityType);
  }
  return entityType;
}

const ZelType* GenericIf::_fwkType() {
  return frameworkType(genericIfType, "GenericIf", sizeof(GenericIf), PtrInterface::_fwkType());
}

const ZelType* GenericIf::List::_fwkType() {
  return frameworkType(listType, "List", sizeof(GenericIf::List::Queue), nullptr);
}

namespace {

/// Enters a class of the framework in the tree of types and, as far as the reactor is ready, in the
/// scope `Zel`.
void declare(const ZelType* type, const char* fullName) {
  ZelType::typeNodeIs(type, fullName);
  if (const Ptr<IntrospectionReactor> reactor = IntrospectionReactor::global()) {
    reactor->handleNameSpace("Zel");
    reactor->handleType(Ptr<const ZelType>(type), Ptr<const ZelType>(type->base()));
    reactor->handleScopeExit();
    reactor->handleScopeExit();
  }
}

} // namespace

void frameworkLoad() {
  builtins.load();
  strings.load();
  declare(PtrInterface::_fwkType(), "Zel::PtrInterface");
  declare(Entity::_fwkType(), "Zel::Entity");
  declare(GenericIf::_fwkType(), "Zel::GenericIf");
  declare(GenericIf::List::_fwkType(), "Zel::GenericIf::List");
  group.load();
  vexil.load();
}

} // namespace Zel

namespace Group {

const Zel::ZelType* _fwkType_GroupType() { return Zel::group.fwkType<GroupType>(); }
const Zel::ZelType* GroupKey::_fwkType() { return Zel::group.fwkType<GroupKey>(); }

} // namespace Group

const Zel::ZelType* Vexil::IntfId::_fwkType() { return Zel::vexil.fwkType<IntfId>(); }
