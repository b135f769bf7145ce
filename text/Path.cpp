#include <text/Path.h>

#include <Zel/GenericIf>

namespace Zel {

namespace {

/// Null where a type has none, as types of tests may.
const TypeTable* entityTable(const Entity& entity) {
  const ZelType* const type = entity.fwkType();
  return type == nullptr ? nullptr : type->table();
}

/// The attribute of a member that is its key in the collection that holds it; null if it goes by
/// its name.
const AttrRow* keyRow(const Entity& member, const Entity& holder) {
  const TypeTable* const held = entityTable(member);
  const TypeTable* const table = entityTable(holder);
  const AttrRow* const collection = table != nullptr ? table->row(member.parentAttrId()) : nullptr;
  if (held == nullptr || collection == nullptr || collection->kind != AttrKind::instantiating) {
    return nullptr;
  }
  const AttrRow* const row = held->row(keyAttributeName(*collection));
  return row != nullptr && row->kind == AttrKind::key ? row : nullptr;
}

/// The segment of an entity; one without a holder is a root.
String8 segmentOf(const Entity& entity, const Entity* holder) {
  const AttrRow* const row = holder != nullptr ? keyRow(entity, *holder) : nullptr;
  if (row == nullptr) {
    const Name name = entity.name();
    return pathSegment(valueRecord<Name>, &name);
  }
  ValueSlot key(*row->value, [&](void* at) { row->read(&entity, at); });
  return pathSegment(*row->value, key.at());
}

/// Reads what may be no key.
bool isKey(std::string_view segment, const ValueRecord& record, void* to) {
  const Expect otherwise(exceptionId);
  try {
    readPathSegment(segment, record, to);
    return true;
  } catch (const Exception&) {
    return false;
  }
}

Ptr<Entity> rootOf(const Dir& dir, std::string_view segment) {
  Name name;
  return isKey(segment, valueRecord<Name>, &name) ? dir.entity(name) : nullptr;
}

/// The member of a collection that makes its members.
Ptr<Entity> memberOf(const Entity& owner, const AttrRow& row, std::string_view segment) {
  ValueSlot key(*row.key);
  if (!isKey(segment, *row.key, key.at()) || !row.collection->exists(&owner, key.at())) {
    return nullptr;
  }
  return ptrCast<Entity>(row.collection->member(&owner, key.at()));
}

/// The one collection that makes its members; null if there are none or several.
const AttrRow* onlyCollection(const TypeTable& type) {
  const AttrRow* found = nullptr;
  unsigned count = 0;
  type.forEachRow([&](const AttrRow& row) {
    if (row.kind == AttrKind::instantiating) {
      found = &row;
      ++count;
    }
  });
  return count == 1 ? found : nullptr;
}

/// Goes one step down and takes its segments off; null if there is no such member.
Ptr<Entity> stepDown(const Entity& from, std::span<const std::string_view>& segments) {
  const TypeTable* const table = entityTable(from);
  if (table == nullptr || segments.empty()) {
    return nullptr;
  }
  const AttrRow* const named = table->row(segments[0]);
  if (named != nullptr && named->kind == AttrKind::instantiating && segments.size() > 1) {
    if (Ptr<Entity> member = memberOf(from, *named, segments[1])) {
      segments = segments.subspan(2);
      return member;
    }
  }
  if (const AttrRow* const only = onlyCollection(*table)) {
    if (Ptr<Entity> member = memberOf(from, *only, segments[0])) {
      segments = segments.subspan(1);
      return member;
    }
  }
  return nullptr;
}

std::vector<std::string_view> segmentsOf(std::string_view path) {
  std::vector<std::string_view> segments;
  while (!path.empty()) {
    const std::size_t end = path.find('/', 1);
    segments.push_back(path.substr(1, end == std::string_view::npos ? end : end - 1));
    path.remove_prefix(std::min(end, path.size()));
  }
  return segments;
}

/// Whether the entity's topmost parent is a root of the directory.
bool isBelow(const Dir& dir, const Entity& entity) {
  Ptr<const Entity> top(&entity);
  while (const Ptr<const Entity> parent = top->parent()) {
    top = parent;
  }
  return dir.entity(top->name()) == top;
}

Ptr<Entity> readReference(String8::IteratorConst& first, const String8::IteratorConst& last) {
  TextReader in(first, last);
  in.skipSpace();
  if (in.atEnd() || (in.peek() != 'n' && in.peek() != '\'' && in.peek() != '"')) {
    in.expected("null or a quoted path");
  }
  if (in.peek() == 'n') {
    in.need("null");
    return nullptr;
  }
  const String8 path = in.string();
  const Ptr<Dir> dir = Dir::active();
  if (!dir) {
    throwRangeException("no directory to look up " + path);
  }
  return entityAt(*dir, path.view());
}

} // namespace

PathEnd pathEnd(const Dir& dir, std::string_view path) {
  if (!path.starts_with('/')) {
    return {};
  }
  const std::vector<std::string_view> all = segmentsOf(path);
  std::span<const std::string_view> segments = all;
  Ptr<Entity> at = rootOf(dir, segments[0]);
  if (at) {
    segments = segments.subspan(1);
    while (const Ptr<Entity> next = stepDown(*at, segments)) {
      at = next;
    }
  }
  return {at, {segments.begin(), segments.end()}};
}

Ptr<Entity> entityAt(const Dir& dir, std::string_view path) {
  const PathEnd end = pathEnd(dir, path);
  if (!end.entity || !end.rest.empty()) {
    throwRangeException("no entity at " + String8(path));
  }
  return end.entity;
}

EntityUriPath Entity::uriPath() const {
  const Ptr<const Entity> holder = parent();
  if (!holder) {
    return EntityUriPath("/" + segmentOf(*this, nullptr));
  }
  return EntityUriPath(holder->uriPath().text() + "/" + holder->attributeString(parentAttrId()) +
                       "/" + segmentOf(*this, holder.ptr()));
}

Ptr<Entity> sequenceToValueOfPtr(String8::IteratorConst& first, const String8::IteratorConst& last,
                                 Entity* /*selector*/) {
  return readReference(first, last);
}

Ptr<PtrInterface> sequenceToValueOfPtr(String8::IteratorConst& first,
                                       const String8::IteratorConst& last,
                                       PtrInterface* /*selector*/) {
  return readReference(first, last);
}

String8 valueToStrepOfRawPtr(const PtrInterface* object, const ZelType* type) {
  if (object == nullptr) {
    return "null";
  }
  const auto* const entity = dynamic_cast<const Entity*>(object);
  const Ptr<Dir> dir = Dir::active();
  if (entity != nullptr && dir && isBelow(*dir, *entity)) {
    return valueToStrep(entity->uriPath().text());
  }
  const ZelType* const own = object->fwkType();
  const ZelType* const seen = own != nullptr ? own : type;
  return "object(" + (seen == nullptr ? String8("unknown") : String8(seen->fullName())) + ")";
}

} // namespace Zel
