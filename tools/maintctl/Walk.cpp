#include "Walk.h"

#include "Tree.h"

namespace Maintctl {

void walk(const Zel::Entity& entity, const std::string& path, Visitor& visitor) {
  for (const Zel::AttrRow* const row : rowsOf(entity)) {
    if (visitor.wants(*row)) {
      walk(entity, *row, path + std::string(row->name) + (row->isCollection() ? "/" : ""), visitor);
    }
  }
}

void walk(const Zel::Entity& entity, const Zel::AttrRow& row, const std::string& path,
          Visitor& visitor) {
  if (!row.isCollection()) {
    Zel::ValueSlot value(*row.value, [&](void* to) { row.read(&entity, to); });
    visitor.value(path, *row.value, value.at());
    return;
  }
  for (const Item& item : itemsOf(entity, row)) {
    const std::string place = path + item.segment;
    if (row.kind != Zel::AttrKind::instantiating) {
      visitor.value(place, *row.value, row.collection->entryValue(item.held.ptr()));
    } else if (const auto member = Zel::ptrCast<Zel::Entity>(item.held)) {
      visitor.member(place, row, *member);
      walk(*member, place + "/", visitor);
    }
  }
}

} // namespace Maintctl
