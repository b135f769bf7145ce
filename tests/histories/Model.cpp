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

bool isText(const Zel::AttrRow& row) { return row.value == &Zel::valueRecord<Zel::String8>; }

/// Whether a program changes such an attribute at all.
bool changes(const Swarm& swarm, const Zel::AttrRow& row) {
  if (row.kind == Zel::AttrKind::instantiating) {
    return swarm.may(Doing::member);
  }
  if (row.isCollection()) {
    return swarm.may(Doing::entry);
  }
  return swarm.may(isText(row) ? Doing::text : Doing::number) ||
         (row.increment != nullptr && swarm.may(Doing::increment));
}

TextSizes sizesOf(const Zel::AttrRow& row, const TextSizes& sizes, const Swarm& swarm) {
  return isText(row) && swarm.may(Doing::longText) ? sizes : whole(sizes);
}

/// A number for one of few keys.
unsigned keyNumber(Random& random, unsigned keys, const Swarm& swarm) {
  const auto number = static_cast<unsigned>(random.below(keys));
  return number == longKeyNumber && !swarm.may(Doing::longKey) ? 0 : number;
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
Zel::Name Model::randomRoot(Random& random) const {
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
  return root->first;
}

Model::Place Model::randomPlace(Random& random, const Zel::Name& root,
                                const Ownership& ownership) const {
  Place place{roots_->entity(root).ptr(), rootPath(root), std::nullopt, 0};
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
                   std::unordered_set<Path>& deleted, const Swarm& swarm) {
  if (roots_->entities().empty()) {
    return false;
  }
  const Zel::Name root = randomRoot(random);
  const std::optional<Ownership> own = ownership.in(rootPath(root), number_);
  if (!own) {
    return false;
  }
  const Place place = randomPlace(random, root, *own);
  std::vector<const Zel::AttrRow*> rows;
  forFlowingRows(tableOf(*place.entity), [&](const Zel::AttrRow& row) {
    if (changes(swarm, row)) {
      rows.push_back(&row);
    }
  });
  if (rows.empty()) {
    return false; // nothing about it ever changes, or not by these doings
  }
  const Zel::AttrRow& row = *rows[random.below(rows.size())];
  const Zel::Ptr<Zel::Entity> kept(place.entity);
  if (!row.isCollection()) {
    return singularChange(random, place, row, *own, sizes, swarm);
  }
  return row.kind == Zel::AttrKind::instantiating
             ? memberChange(random, place, row, *own, deleted, swarm)
             : entryChange(random, place, row, *own, sizes, swarm);
}

void Model::announce(const Deed& deed) const {
  if (about) {
    about(deed);
  }
}

bool Model::singularChange(Random& random, const Place& place, const Zel::AttrRow& row,
                           const Ownership& ownership, const TextSizes& sizes, const Swarm& swarm) {
  if (!owns(place, row, 0, ownership)) {
    return false;
  }
  const bool mayIncrement = row.increment != nullptr && swarm.may(Doing::increment);
  if (mayIncrement && (!swarm.may(Doing::number) || random.chance(1, 2))) {
    const auto by = static_cast<unsigned>(random.below(3));
    tell(place, row, "incremented by " + std::to_string(by));
    announce({Deed::written, *place.entity, row, nullptr, place.path});
    row.increment(place.entity, by);
    ++mutationsOf(place, row).writes;
    return true;
  }
  Random of = random.fork();
  AnyValue value = randomValue(of, *row.value, sizesOf(row, sizes, swarm));
  if (row.value->enumeration != nullptr && swarm.may(Doing::strangeEnum) && of.chance(1, 16)) {
    const int unknown = static_cast<int>(1000 + of.below(5));
    std::memcpy(value.at(), &unknown, sizeof unknown);
  }
  tell(place, row, "written");
  announce({Deed::written, *place.entity, row, nullptr, place.path});
  row.write(place.entity, value.at());
  mutationsOf(place, row) += {1, 0, textLength(*row.value, value.at())};
  return true;
}

bool Model::entryChange(Random& random, const Place& place, const Zel::AttrRow& row,
                        const Ownership& ownership, const TextSizes& sizes, const Swarm& swarm) {
  const Zel::CollectionOps& ops = *row.collection;
  const AnyValue key = numberedKey(*row.key, keyNumber(random, keysOfCollection, swarm));
  if (!owns(place, row, valueHash(*row.key, key.at()), ownership)) {
    return false;
  }
  const bool ownsAll = place.freshOwner || ownership.isWhole(place.path, row.id);
  if (ownsAll && swarm.may(Doing::entryClear) && random.chance(1, 40)) {
    tell(place, row, "cleared");
    announce({Deed::cleared, *place.entity, row, nullptr, place.path});
    ops.eraseAll(place.entity);
    return true;
  }
  const std::string number = shown(valueHash(*row.key, key.at()));
  if (swarm.may(Doing::entryDelete) && random.chance(1, 4)) {
    tell(place, row, "deleted " + number);
    announce({Deed::deleted, *place.entity, row, key.at(), place.path});
    const bool wasThere = ops.erase(place.entity, key.at());
    mutationsOf(place, row).deletions += wasThere ? 1 : 0;
    return wasThere;
  }
  Random of = random.fork();
  AnyValue value(*row.value);
  if (row.kind == Zel::AttrKind::ownKey) {
    const Zel::TypeTable& table = row.value->table();
    Zel::ValueBuilder builder(*row.value, table, value.at());
    for (const Zel::AttrRow& part : table.rows) {
      if (part.name == Zel::keyAttributeName(row)) {
        builder.take(part, [&](void* to) { part.value->assign(to, key.at()); });
      } else if (Zel::isStored(part)) {
        builder.take(part, [&](void* to) { putRandom(of, *part.value, whole(sizes), to); });
      }
    }
    builder.finish();
  } else {
    putRandom(of, *row.value, sizesOf(row, sizes, swarm), value.at());
  }
  tell(place, row, "entry " + number);
  announce({Deed::written, *place.entity, row, key.at(), place.path});
  ops.write(place.entity, key.at(), value.at());
  mutationsOf(place, row) += {1, 0, textLength(*row.value, value.at())};
  return true;
}

bool Model::memberChange(Random& random, const Place& place, const Zel::AttrRow& row,
                         const Ownership& ownership, std::unordered_set<Path>& deleted,
                         const Swarm& swarm) {
  if (place.freshOwner.value_or(ownership.directoryOwner(place.path, row.id)) != number_) {
    return false;
  }
  const Zel::CollectionOps& ops = *row.collection;
  const AnyValue key = numberedKey(*row.key, keyNumber(random, keysOfDirectory, swarm));
  const std::uint64_t hash = valueHash(*row.key, key.at());
  const Path path = memberPath(place.path, row.id, hash);
  const std::string number = shown(path);
  if (swarm.may(Doing::memberClear) && random.chance(1, 60)) {
    tell(place, row, "cleared");
    announce({Deed::cleared, *place.entity, row, nullptr, place.path});
    forEntities(*place.entity, place.path,
                [&](Zel::Entity& /*entity*/, Path below) { deleted.insert(below); });
    deleted.erase(place.path);
    ops.eraseAll(place.entity);
    return true;
  }
  const bool isThere = ops.exists(place.entity, key.at());
  if (swarm.may(Doing::memberDelete) && random.chance(1, 3)) {
    tell(place, row, "deleted " + number);
    if (isThere) {
      announce({Deed::memberDeleted, *place.entity, row, key.at(), path});
    }
    deleted.insert(path);
    const bool wasThere = ops.erase(place.entity, key.at());
    mutationsOf(place, row).deletions += wasThere ? 1 : 0;
    return wasThere;
  }
  std::vector<AnyValue> values;
  std::vector<const void*> arguments;
  for (const Zel::ValueRecord* const argument : ops.arguments) {
    Random of = random.fork();
    values.push_back(randomValue(of, *argument, {}));
  }
  for (const AnyValue& value : values) {
    arguments.push_back(value.at());
  }
  tell(place, row, "member " + number);
  if (!isThere) {
    announce({Deed::memberMade, *place.entity, row, key.at(), path});
  }
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
