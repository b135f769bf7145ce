#include <registration/Module.h>

#include <Zel/IntrospectionReactor>
#include <registration/Registration.h>

namespace Zel {

void forcePointerAccessH(const void* accessor) {
  asm volatile("" : : "r"(accessor)); // used, as far as the compiler can tell
}

namespace {

/// Asks for the types that the attributes of a type name: the modules of those that are not
/// registered yet register themselves now, while no scope is open.
void typesNamedBy(const ZelType& type) {
  if (type.table() == nullptr) {
    return;
  }
  for (const AttrRow& row : type.table()->rows) {
    for (const ValueRecord* const record : {row.value, row.key}) {
      if (record != nullptr) {
        record->type();
      }
    }
    if (row.kind == AttrKind::instantiating) {
      row.collection->memberTable().type();
    }
  }
}

} // namespace

const ZelType* Module::make(std::size_t place) {
  ModuleType& wanted = types_[place];
  zelInit(); // which may have made it
  if (wanted.type != nullptr) {
    return wanted.type;
  }
  const Ptr<ZelType> made = wanted.make();
  if (wanted.type != nullptr) { // its base asked for it
    return wanted.type;
  }
  wanted.type = made.ptr();
  made->referencesLeak();
  if (made->base() != nullptr) {
    const_cast<ZelType*>(made->base())->derivedTypeQEnq(made);
  }
  return made.ptr();
}

void Module::zelInit() {
  if (registered_) {
    return;
  }
  const Ptr<IntrospectionReactor> reactor = IntrospectionReactor::global();
  if (!reactor) {
    return;
  }
  registered_ = true;
  Entity::_fwkType();
  for (std::size_t place = 0; place < types_.size(); ++place) {
    fwkType(place);
    if (types_[place].forceAccess != nullptr) {
      types_[place].forceAccess();
    }
  }
  for (const ModuleType& type : types_) {
    typesNamedBy(*type.type);
  }
  for (const std::string_view scope : scopes_) {
    reactor->handleNameSpace(String8(scope).charPtr());
  }
  for (const ModuleType& type : types_) {
    registerType(*reactor, *type.type);
  }
  for (std::size_t scope = 0; scope < scopes_.size(); ++scope) {
    reactor->handleScopeExit();
  }
}

void Module::load() {
  for (std::size_t place = 0; place < types_.size(); ++place) {
    const ZelType* const type = fwkType(place);
    if (!types_[place].inTree) {
      ZelType::typeNodeIs(type, Name(types_[place].name));
      types_[place].inTree = true;
    }
  }
  zelInit();
}

} // namespace Zel
