#include "EntityJson.h"

#include "Tree.h"
#include "Values.h"

#include <nlohmann/json.hpp>

namespace Maintctl {

using nlohmann::json;
using Zel::AttrRow;
using Zel::Entity;

json jsonOf(const Entity& entity, const AttrRow& row) {
  if (!row.isCollection()) {
    Zel::ValueSlot value(*row.value, [&](void* to) { row.read(&entity, to); });
    return jsonOf(*row.value, value.at());
  }
  json object = json::object();
  for (const Item& item : itemsOf(entity, row)) {
    if (row.kind != Zel::AttrKind::instantiating) {
      object[item.segment] = jsonOf(*row.value, row.collection->entryValue(item.held.ptr()));
    } else if (const auto member = Zel::ptrCast<Entity>(item.held)) {
      object[item.segment] = jsonOf(*member);
    }
  }
  return object;
}

json jsonOf(const Entity& entity) {
  json object = json::object();
  for (const AttrRow* const row : rowsOf(entity)) {
    object[std::string(row->name)] = jsonOf(entity, *row);
  }
  return object;
}

} // namespace Maintctl
