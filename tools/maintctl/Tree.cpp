#include "Tree.h"

#include "Failure.h"
#include "Nearest.h"
#include "Values.h"
#include "Words.h"

#include <Zel/ZelType>
#include <text/Path.h>

#include <algorithm>

namespace Maintctl {

namespace {

using Zel::AttrKind;
using Zel::AttrRow;
using Zel::Entity;
using Zel::Name;
using Zel::TypeTable;
using Zel::ValueSlot;

std::vector<std::string> attributeNames(const std::vector<const AttrRow*>& rows) {
  std::vector<std::string> names;
  names.reserve(rows.size());
  for (const AttrRow* const row : rows) {
    names.emplace_back(row->name);
  }
  return names;
}

std::vector<std::string> segmentsOf(const std::vector<Item>& items) {
  std::vector<std::string> segments;
  segments.reserve(items.size());
  for (const Item& item : items) {
    segments.push_back(item.segment);
  }
  return segments;
}

[[noreturn]] void noRoot(std::string_view segment, Device& device) {
  std::vector<std::string> names;
  for (const auto& [name, type] : device.roots()) {
    names.push_back(segmentOf(Zel::valueRecord<Name>, &name));
  }
  throw Failure(exitNotFound, "no root " + printable(segment) +
                                  hint(segment, names, "there are", "'ls /' lists all"));
}

/// What `segment` should have named below an entity: one of its attributes, or a member of the only
/// collection that has some.
[[noreturn]] void nothingBelow(const Entity& entity, std::string_view segment) {
  const std::string path = pathOf(entity);
  const std::string lists = "'ls " + path + "' lists what is there";
  std::vector<std::string> names = attributeNames(rowsOf(entity));
  const AttrRow* const only = onlyCollection(entity);
  if (only == nullptr) {
    throw Failure(exitNotFound, "no attribute " + printable(segment) + " of " + path +
                                    hint(segment, names, "it has", lists));
  }
  const std::vector<std::string> segments = segmentsOf(itemsOf(entity, *only));
  const std::string missing =
      "no " + std::string(only->name) + " " + printable(segment) + " in " + path;
  if (const std::string meant = nearest(segment, segments); !meant.empty()) {
    throw Failure(exitNotFound, missing + ", did you mean " + meant + "?");
  }
  if (const std::string meant = nearest(segment, names); !meant.empty()) {
    throw Failure(exitNotFound, missing + ", did you mean " + meant + "?");
  }
  throw Failure(
      exitNotFound,
      missing + (segments.empty() ? ", it is empty" : hint(segment, segments, "there are", lists)));
}

bool entryIsThere(const Entity& owner, const AttrRow& row, const std::string& segment) {
  ValueSlot key(*row.key);
  try {
    readKey(segment, *row.key, key.at(), "");
  } catch (const Failure&) {
    return false;
  }
  return row.collection->exists(&owner, key.at());
}

/// What the segments behind the last entity name.
Target below(const Zel::Ptr<Entity>& owner, std::vector<std::string_view> rest, Purpose purpose) {
  Target target{Target::entity, owner, nullptr, {}};
  const TypeTable* const table = owner->fwkType()->table();
  if (rest.empty()) {
    return target;
  }
  const AttrRow* row = table->row(rest[0]);
  if (row != nullptr && row->kind == AttrKind::frameworkKey) {
    row = nullptr;
  }
  const AttrRow* const only = onlyCollection(*owner);
  if (row == nullptr) { // of a member, its collection left out
    if (rest.size() == 1 && rest[0].empty() && purpose != Purpose::add) {
      return target;
    }
    if (rest.size() > 1 || only == nullptr || purpose != Purpose::add) {
      nothingBelow(*owner, rest[0]);
    }
    return {Target::entry, owner, only, std::string(rest[0])};
  }
  target.row = row;
  target.kind = row->isCollection() ? Target::collection : Target::attribute;
  if (rest.size() == 1) {
    return target;
  }
  if (!row->isCollection()) {
    if (rest.size() == 2 && rest[1].empty() && purpose != Purpose::add) {
      return target;
    }
    throw Failure(exitNotFound, "nothing is below " + target.path() + ", which is one value");
  }
  // The rest is one key. A path of a member that goes on behind it leads nowhere.
  const bool hasMembers = row->kind == AttrKind::instantiating;
  Target entry{Target::entry, owner, row, std::string(rest[1])};
  for (std::size_t at = 2; at < rest.size(); ++at) {
    if (hasMembers) {
      noneThere(entry);
    }
    entry.segment.append("%2F").append(rest[at]);
  }
  if (purpose == Purpose::add) {
    return entry;
  }
  if (hasMembers ? rest[1].empty()
                 : entry.segment.empty() && !entryIsThere(*owner, *row, entry.segment)) {
    return target; // only the path ends in "/"
  }
  if (hasMembers) {
    noneThere(entry);
  }
  return entry;
}

} // namespace

std::string Target::path() const {
  std::string path = kind == top ? "/" : pathOf(*owner);
  if (row != nullptr) {
    path.append("/").append(row->name);
  }
  if (kind == entry) {
    path.append("/").append(escaped(segment));
  }
  return path;
}

bool Target::isThere() const {
  ValueSlot key(*row->key);
  readKey(segment, *row->key, key.at(), "the key in " + path());
  return row->collection->exists(owner.ptr(), key.at());
}

void noneThere(const Target& target) {
  Target collection = target;
  collection.kind = Target::collection;
  const std::string path = collection.path();
  const std::vector<std::string> segments = segmentsOf(itemsOf(*target.owner, *target.row));
  throw Failure(exitNotFound,
                "no " + printable(target.segment) + " in " + path +
                    (segments.empty() ? ", it is empty"
                                      : hint(target.segment, segments, "there are",
                                             "'ls " + path + "' lists what is there")));
}

void Tree::need(const Name& root, bool toWrite) {
  if (written_.contains(root) || (!toWrite && read_.contains(root))) {
    return;
  }
  device_.need(root, toWrite);
  (toWrite ? written_ : read_).insert(root);
}

Target Tree::at(const std::string& typed, Purpose purpose) {
  const std::string path = unquoted(typed);
  if (!path.starts_with('/')) {
    throw Failure(exitNotFound, "a path begins with /, got " + printable(path) +
                                    (path.empty() ? "" : ", did you mean /" + path + "?"));
  }
  if (path == "/") {
    return {};
  }
  const std::string segment = path.substr(1, path.find('/', 1) - 1);
  Name root;
  try {
    readKey(segment, Zel::valueRecord<Name>, &root, "a root");
  } catch (const Failure&) {
    noRoot(segment, device_);
  }
  if (!read_.contains(root) && !written_.contains(root) && !device_.roots().contains(root)) {
    noRoot(segment, device_);
  }
  need(root, purpose != Purpose::read);
  const Zel::PathEnd end = Zel::pathEnd(*device_.dir(), path);
  if (!end.entity) {
    noRoot(segment, device_);
  }
  return below(end.entity, end.rest, purpose);
}

std::vector<const AttrRow*> shownRows(const TypeTable& table) {
  std::vector<const AttrRow*> rows;
  table.forEachRow([&](const AttrRow& row) {
    if (row.kind != AttrKind::frameworkKey && (row.options & Zel::internal) == 0) {
      rows.push_back(&row);
    }
  });
  return rows;
}

std::vector<const AttrRow*> rowsOf(const Entity& entity) {
  return shownRows(*entity.fwkType()->table());
}

const AttrRow* onlyCollection(const Entity& entity) {
  const AttrRow* found = nullptr;
  for (const AttrRow* const row : rowsOf(entity)) {
    if (row->kind == AttrKind::instantiating) {
      if (found != nullptr) {
        return nullptr;
      }
      found = row;
    }
  }
  return found;
}

std::string pathOf(const Entity& entity) { return escaped(entity.uriPath().text().view()); }

std::vector<Item> itemsOf(const Entity& owner, const AttrRow& row) {
  std::vector<Item> items;
  const Zel::IterationOps& ops = row.collection->iteration;
  for (Zel::CollectionPosition at(ops, [&](void* to) { ops.first(to, &owner); }); at;
       at.advance()) {
    ValueSlot key(*row.key, [&](void* to) { at.key(to); });
    items.push_back({segmentOf(*row.key, key.at()), Zel::Ptr<Zel::PtrInterface>(at.entry())});
  }
  if (row.kind != AttrKind::ordered) {
    std::sort(items.begin(), items.end(),
              [](const Item& a, const Item& b) { return a.segment < b.segment; });
  }
  return items;
}

} // namespace Maintctl
