#include <registration/Registration.h>

#include <registration/Flags.h>

namespace Zel {

namespace {

/// The last of what a collection whose members bring their key is told.
constexpr unsigned ownKeyIndexFlags = 0x22;

void inheritAttributes(IntrospectionReactor& reactor, ZelType& type) {
  for (const Ptr<ZelAttr>& inherited : type.base()->attributeQ()) {
    const Ptr<ZelAttr> copy = inherited->zelCopyFor(&type);
    type.attributeQEnq(copy);
    reactor.handleAttr(copy);
    reactor.handleAttrContextExit();
  }
}

/// A collection whose members bring their key.
void ownKeyAttribute(IntrospectionReactor& reactor, ZelType& type, const AttrRow& row) {
  const Name name(row.name);
  const ZelType* const element = row.kind == AttrKind::instantiating
                                     ? row.collection->memberTable().type()
                                     : row.value->type();
  const Name key(keyAttributeName(row));
  const ZelAttr* const keyAttr = element->attr(key);
  if (keyAttr == nullptr) {
    throwInternalException("registered before its members: " + type.name() + "::" + name);
  }
  type.attrDel(name);
  const Ptr<ZelAttr> attr =
      type.attrIs(name, element, keyAttr, nullptr, attrFlags(type.table()->kind, row), row.id);
  attr->indexTypeIs(row.key->type());
  attr->keyAttrNameIs(key);
  attr->keyTypeNameIs(Name(row.key->name));
  attr->indexNameIs(key);
  attr->indexOptionIs(0);
  attr->indexFlagsIs(ownKeyIndexFlags);
  attr->rowIs(&row);
  type.attributeQEnq(attr);
  reactor.handleAttr(attr);
  reactor.handleAttrContextExit();
}

void ownAttribute(IntrospectionReactor& reactor, ZelType& type, const AttrRow& row) {
  if (row.kind == AttrKind::instantiating || row.kind == AttrKind::ownKey) {
    ownKeyAttribute(reactor, type, row);
    return;
  }
  reactor
      .defNoninstantiatingAttr(&type, Name(row.name), row.value->type(),
                               row.key != nullptr ? row.key->type() : nullptr,
                               attrFlags(type.table()->kind, row), introspectionFlags(row), row.id)
      ->rowIs(&row);
}

void enumerators(IntrospectionReactor& reactor, ZelType& type) {
  type.valAttrIs(type.attr("value")); // before an enumerator may have that name
  for (const Enumerator& enumerator : type.enumeration()->rows) {
    reactor.defNoninstantiatingAttr(&type, Name(enumerator.name), &type, nullptr, enumeratorFlags,
                                    0, enumerator.number);
  }
}

} // namespace

void registerType(IntrospectionReactor& reactor, ZelType& type) {
  const TypeTable* const table = type.table();
  const bool isEntity = table != nullptr && table->kind == TypeKind::entity;
  reactor.handleType(Ptr<const ZelType>(&type), Ptr<const ZelType>(type.base()));
  type.sizeIs(static_cast<unsigned>(type.record() != nullptr ? type.record()->size : table->size));
  if (type.record() != nullptr) {
    type.isValueIs(true);
  }
  if (isEntity) {
    type.isEntityIs(true);
  }
  if (type.enumeration() != nullptr) {
    type.isEnumTypeIs(true);
  }
  type.hasGenericIfSupportIs(true);
  if (table != nullptr) {
    for (std::size_t at = 0; at < table->constructor.arguments.size(); ++at) {
      type.constructorArgNameQEnq(Name(constructorArgumentName(*table, at)));
      type.constructorArgTypeQEnq(Name(table->constructor.arguments[at]->name));
    }
  }
  if (type.base() != nullptr) {
    inheritAttributes(reactor, type);
  }
  if (isEntity) {
    reactor.defNoninstantiatingAttr(&type, "zelHasAttrLogInterface", Builtin<bool>::_fwkType(),
                                    nullptr, frameworkFlags, ofFramework, zelHasAttrLogInterfaceId);
  }
  if (table != nullptr) {
    for (const AttrRow& row : table->rows) {
      ownAttribute(reactor, type, row);
    }
  }
  if (type.enumeration() != nullptr) {
    enumerators(reactor, type);
  }
  reactor.handleScopeExit();
}

} // namespace Zel
