#include "Model.h"

#include <foreign/model/Carrier.h>
#include <foreign/model/Depot.h>
#include <foreign/model/Order.h>
#include <foreign/model/Perishable.h>
#include <foreign/model/Product.h>
#include <foreign/model/Rack.h>

#include <Zel/ValueBuilder>
#include <model/MaintenanceAgentInfo.h>
#include <model/MaintenanceGroup.h>
#include <model/MaintenanceUnitProfile.h>
#include <model/Mapping.h>
#include <model/Profile.h>
#include <model/Unit.h>

namespace Histories {

namespace {

constexpr unsigned keysOfCollection = 18;
constexpr unsigned keysOfDirectory = 8;

/// Texts that are sent whole.
TextSizes whole(const TextSizes& sizes) {
  return {std::min<std::size_t>(sizes.longest, 7000), sizes.rarity};
}

std::size_t textLength(const Zel::ValueRecord& record, const void* value) {
  return &record == &Zel::valueRecord<Zel::String8>
             ? static_cast<const Zel::String8*>(value)->length()
             : 0;
}

const TextSizes& sizesOf(const Zel::AttrRow& row, const TextSizes& sizes, const TextSizes& small) {
  return row.value == &Zel::valueRecord<Zel::String8> ? sizes : small;
}

/// The collection of members of a type; null if it has none.
const Zel::AttrRow* membersOf(const Zel::TypeTable& table) {
  const Zel::AttrRow* found = nullptr;
  forFlowingRows(table, [&](const Zel::AttrRow& row) {
    found = row.kind == Zel::AttrKind::instantiating ? &row : found;
  });
  return found;
}

/// The attributes of a type and of its members, and one for the type itself.
unsigned weight(const Zel::TypeTable& table) {
  static std::unordered_map<const Zel::TypeTable*, unsigned> known;
  if (const auto at = known.find(&table); at != known.end()) {
    return at->second;
  }
  unsigned count = 1;
  forFlowingRows(table, [&](const Zel::AttrRow& /*row*/) { ++count; });
  if (const Zel::AttrRow* const members = membersOf(table)) {
    count += weight(members->collection->memberTable());
  }
  known[&table] = count;
  return count;
}

} // namespace

Mutations& Mutations::operator+=(const Mutations& other) {
  writes += other.writes;
  deletions += other.deletions;
  longest = std::max(longest, other.longest);
  return *this;
}

void Model::knownIs() {
  known_.clear();
  forEntities(*roots_, [&](Zel::Entity& entity, Path path) {
    known_[path] = Zel::Ptr<Zel::Entity>(&entity);
  });
}

void Model::tell(const Place& place, const Zel::AttrRow& row, const std::string& what) const {
  if (told) {
    told("model " + std::to_string(number_) + ": " + std::string(tableOf(*place.entity).name) +
         " " + shown(place.path) + " " + std::string(row.name) + " " + what);
  }
}

Mutations& Model::mutationsOf(const Place& place, const Zel::AttrRow& row) {
  return mutations_[{tableOf(*place.entity).name, row.name}];
}

void Model::freshOwnerFind(Place& place, unsigned owner) const {
  const auto found = known_.find(place.path);
  if (!place.freshOwner && (found == known_.end() || found->second.ptr() != place.entity)) {
    place.freshOwner = owner;
  }
}

/// Each attribute is as likely as any other, of whatever type it is: a type of many attributes, or
/// a directory of such, is the place of more changes.
Model::Place Model::randomPlace(Random& random, const Ownership& ownership) const {
  std::uint64_t all = 0;
  for (const auto& [name, root] : roots_->entities()) {
    all += weight(tableOf(*root));
  }
  std::uint64_t skip = random.below(all);
  auto root = roots_->entities().begin();
  while (skip >= weight(tableOf(*root->second))) {
    skip -= weight(tableOf(*root->second));
    ++root;
  }
  Place place{root->second.ptr(), rootPath(root->first), std::nullopt, 0};
  freshOwnerFind(place, 0);
  while (const Zel::AttrRow* const directory = membersOf(tableOf(*place.entity))) {
    const unsigned count = directory->collection->count(place.entity);
    if (count == 0 || !random.chance(weight(directory->collection->memberTable()),
                                     weight(tableOf(*place.entity)))) {
      break;
    }
    const Zel::IterationOps& ops = directory->collection->iteration;
    Zel::CollectionPosition at(ops, [&](void* to) { ops.first(to, place.entity); });
    for (std::uint64_t others = random.below(count); others != 0; --others) {
      at.advance();
    }
    Zel::ValueSlot key(*directory->key, [&](void* to) { at.key(to); });
    const unsigned owner = ownership.directoryOwner(place.path, directory->id);
    place.entity = static_cast<Zel::Entity*>(at.member());
    place.path = memberPath(place.path, directory->id, valueHash(*directory->key, key.at()));
    freshOwnerFind(place, owner);
    place.directoryOwner = place.freshOwner.value_or(owner);
  }
  return place;
}

bool Model::owns(const Place& place, const Zel::AttrRow& row, std::uint64_t key,
                 const Ownership& ownership) const {
  if ((row.options & Zel::constructorArgument) != 0) {
    return place.directoryOwner == number_; // for whom asking for a member is writing it
  }
  return place.freshOwner.value_or(ownership.owner(place.path, row.id, key)) == number_;
}

bool Model::change(Random& random, const Ownership& ownership, const TextSizes& sizes,
                   std::unordered_set<Path>& deleted) {
  if (roots_->entities().empty()) {
    return false;
  }
  const Place place = randomPlace(random, ownership);
  std::vector<const Zel::AttrRow*> rows;
  forFlowingRows(tableOf(*place.entity), [&](const Zel::AttrRow& row) { rows.push_back(&row); });
  if (rows.empty()) {
    return false; // nothing about it ever changes
  }
  const Zel::AttrRow& row = *rows[random.below(rows.size())];
  const Zel::Ptr<Zel::Entity> kept(place.entity);
  if (!row.isCollection()) {
    return singularChange(random, place, row, ownership, sizes);
  }
  return row.kind == Zel::AttrKind::instantiating
             ? memberChange(random, place, row, ownership, deleted)
             : entryChange(random, place, row, ownership, sizes);
}

bool Model::singularChange(Random& random, const Place& place, const Zel::AttrRow& row,
                           const Ownership& ownership, const TextSizes& sizes) {
  if (!owns(place, row, 0, ownership)) {
    return false;
  }
  if (row.increment != nullptr && random.chance(1, 2)) {
    const auto by = static_cast<unsigned>(random.below(3));
    tell(place, row, "incremented by " + std::to_string(by));
    row.increment(place.entity, by);
    ++mutationsOf(place, row).writes;
    return true;
  }
  AnyValue value = randomValue(random, *row.value, sizesOf(row, sizes, whole(sizes)));
  if (row.value->enumeration != nullptr && random.chance(1, 16)) {
    const int unknown = static_cast<int>(1000 + random.below(5));
    std::memcpy(value.at(), &unknown, sizeof unknown);
  }
  tell(place, row, "written");
  row.write(place.entity, value.at());
  mutationsOf(place, row) += {1, 0, textLength(*row.value, value.at())};
  return true;
}

bool Model::entryChange(Random& random, const Place& place, const Zel::AttrRow& row,
                        const Ownership& ownership, const TextSizes& sizes) {
  const Zel::CollectionOps& ops = *row.collection;
  const AnyValue key = numberedKey(*row.key, static_cast<unsigned>(random.below(keysOfCollection)));
  if (!owns(place, row, valueHash(*row.key, key.at()), ownership)) {
    return false;
  }
  const bool ownsAll = place.freshOwner || ownership.isWhole(place.path, row.id);
  if (ownsAll && random.chance(1, 40)) {
    tell(place, row, "cleared");
    ops.eraseAll(place.entity);
    return true;
  }
  const std::string number = shown(valueHash(*row.key, key.at()));
  if (random.chance(1, 4)) {
    tell(place, row, "deleted " + number);
    const bool wasThere = ops.erase(place.entity, key.at());
    mutationsOf(place, row).deletions += wasThere ? 1 : 0;
    return wasThere;
  }
  const TextSizes small = whole(sizes);
  AnyValue value(*row.value);
  if (row.kind == Zel::AttrKind::ownKey) {
    const Zel::TypeTable& table = row.value->table();
    Zel::ValueBuilder builder(*row.value, table, value.at());
    for (const Zel::AttrRow& part : table.rows) {
      if (part.name == Zel::keyAttributeName(row)) {
        builder.take(part, [&](void* to) { part.value->assign(to, key.at()); });
      } else if (Zel::isStored(part)) {
        builder.take(part, [&](void* to) { putRandom(random, *part.value, small, to); });
      }
    }
    builder.finish();
  } else {
    putRandom(random, *row.value, sizesOf(row, sizes, small), value.at());
  }
  tell(place, row, "entry " + number);
  ops.write(place.entity, key.at(), value.at());
  mutationsOf(place, row) += {1, 0, textLength(*row.value, value.at())};
  return true;
}

bool Model::memberChange(Random& random, const Place& place, const Zel::AttrRow& row,
                         const Ownership& ownership, std::unordered_set<Path>& deleted) {
  if (place.freshOwner.value_or(ownership.directoryOwner(place.path, row.id)) != number_) {
    return false;
  }
  const Zel::CollectionOps& ops = *row.collection;
  const AnyValue key = numberedKey(*row.key, static_cast<unsigned>(random.below(keysOfDirectory)));
  const std::uint64_t hash = valueHash(*row.key, key.at());
  const Path path = memberPath(place.path, row.id, hash);
  const std::string number = shown(path);
  if (random.chance(1, 60)) {
    tell(place, row, "cleared");
    forEntities(*place.entity, place.path,
                [&](Zel::Entity& /*entity*/, Path below) { deleted.insert(below); });
    deleted.erase(place.path);
    ops.eraseAll(place.entity);
    return true;
  }
  if (random.chance(1, 3)) {
    tell(place, row, "deleted " + number);
    deleted.insert(path);
    const bool wasThere = ops.erase(place.entity, key.at());
    mutationsOf(place, row).deletions += wasThere ? 1 : 0;
    return wasThere;
  }
  std::vector<AnyValue> values;
  std::vector<const void*> arguments;
  for (const Zel::ValueRecord* const argument : ops.arguments) {
    values.push_back(randomValue(random, *argument, {}));
  }
  for (const AnyValue& value : values) {
    arguments.push_back(value.at());
  }
  tell(place, row, "member " + number);
  ops.create(place.entity, key.at(), arguments.data());
  ++mutationsOf(place, row).writes;
  return true;
}

std::vector<Zel::Ptr<Zel::Entity>> makeModelRoots() {
  return {
      Maintenance::Unit::statusDirFactory("units"),
      Maintenance::Unit::configDirFactory("configured"),
      Maintenance::Unit::inputFactory("input"),
      Maintenance::Unit::mergedInputDirFactory("merged"),
      Maintenance::Profile::configDirFactory("profiles"),
      Maintenance::Profile::defaultProfileFactory("default"),
      Maintenance::groupToUnitDirFactory("units of groups"),
      Zel::makeObject<Maintenance::MemberToGroup>("member"),
      Maintenance::MaintenanceGroup::configDirFactory("groups"),
      MaintenanceUnitProfile::configDirFactory("unit profiles"),
      Maintenance::agentInfoFactory("agent"),
  };
}

std::vector<Zel::Ptr<Zel::Entity>> makeRoots() {
  std::vector<Zel::Ptr<Zel::Entity>> roots = makeModelRoots();
  for (const Zel::Ptr<Zel::Entity>& root : std::initializer_list<Zel::Ptr<Zel::Entity>>{
           Zel::makeObject<Foreign::Rack>("rack"),
           Zel::makeObject<Foreign::Carrier>("carrier"),
           Zel::makeObject<Foreign::Depot>("depot"),
           Zel::makeObject<Foreign::OrderDir>("orders"),
           Zel::makeObject<Foreign::ProductDir>("products"),
           Zel::makeObject<Foreign::PerishableDir>("perishables"),
       }) {
    roots.push_back(root);
  }
  return roots;
}

} // namespace Histories
