#include <registration/TypeOf.h>

namespace Zel {

namespace {

Name shortName(std::string_view fullName) {
  const std::size_t scope = fullName.rfind(':');
  return Name(scope == fullName.npos ? fullName : fullName.substr(scope + 1));
}

const ZelType* baseOf(const TypeTable& table) {
  if (table.base != nullptr) {
    return table.base().type();
  }
  switch (table.kind) {
  case TypeKind::entity:
    return Entity::_fwkType();
  case TypeKind::object:
    return PtrInterface::_fwkType();
  default:
    return nullptr;
  }
}

} // namespace

TableType::TableType(const TypeTable& table)
    : ZelType(shortName(table.name), nullptr, baseOf(table), {}) {
  tableIs(&table);
}

TableType::TableType(const ValueRecord& record)
    : ZelType(shortName(record.name), nullptr, nullptr, {}) {
  recordIs(&record);
  enumerationIs(record.enumeration);
  tableIs(record.table != nullptr ? &record.table() : nullptr);
}

TableType::~TableType() = default;

Ptr<Entity> TableType::newEntity(const Name& name, Dir* /*dir*/) const {
  const TypeTable* const own = table();
  if (own == nullptr || own->kind != TypeKind::entity || !own->named || !own->hasFactory ||
      own->constructor.arguments.size() != 1 || own->row(fwkKeyId) != nullptr) {
    return nullptr;
  }
  const void* const arguments[] = {&name};
  return ptrCast<Entity>(own->constructor.object(arguments));
}

} // namespace Zel
