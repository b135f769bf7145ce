#pragma once

#include "Ownership.h"
#include "RandomValue.h"
#include "Swarm.h"

#include <functional>
#include <map>
#include <unordered_map>
#include <unordered_set>

namespace Histories {

/// What has been done to an attribute of a type.
struct Mutations {
  std::uint64_t writes = 0; ///< of values, entries and members
  std::uint64_t deletions = 0;
  std::size_t longest = 0; ///< of the texts written

  Mutations& operator+=(const Mutations& other);
};

/// By the names of types and attributes.
using AllMutations = std::map<std::pair<std::string_view, std::string_view>, Mutations>;

/// What a program is going to do.
struct Deed {
  enum What : std::uint8_t { written, deleted, cleared, memberMade, memberDeleted };

  What what;
  Zel::Entity& entity;
  const Zel::AttrRow& row;
  const void* key; ///< null where there is none
  Path path;       ///< of the entity, or of the member
};

/// One of the models that take part: its roots, and what it does to them by chance.
class Model {
public:
  explicit Model(unsigned number) : number_(number), roots_(Zel::makeObject<Zel::Dir>()) {}

  unsigned number() const { return number_; }
  const Zel::Ptr<Zel::Dir>& roots() const { return roots_; }

  /// Takes note of all entities, as those that everybody knows.
  void knownIs();
  void knownDel() { known_.clear(); }
  const std::unordered_map<Path, Zel::Ptr<Zel::Entity>>& known() const { return known_; }

  /// Makes a random change somewhere that this model owns, of those of the swarm; whether it found
  /// one to make. Entities that it deletes are added to `deleted`.
  bool change(Random& random, const Ownership& ownership, const TextSizes& sizes,
              std::unordered_set<Path>& deleted, const Swarm& swarm = {});

  /// What it has done so far.
  const AllMutations& mutations() const { return mutations_; }

  /// Says what is done, to whoever wants to know.
  std::function<void(const std::string&)> told;
  /// Hears of each change before it is made.
  std::function<void(const Deed&)> about;

private:
  struct Place {
    Zel::Entity* entity;
    Path path;
    std::optional<unsigned> freshOwner; ///< who made it, if not everybody knows it yet
    unsigned directoryOwner;            ///< who owns the directory that it is in
  };

  Zel::Name randomRoot(Random& random) const;
  Place randomPlace(Random& random, const Zel::Name& root, const Ownership& ownership) const;
  void freshOwnerFind(Place& place, unsigned owner) const;
  bool owns(const Place& place, const Zel::AttrRow& row, std::uint64_t key,
            const Ownership& ownership) const;
  bool singularChange(Random& random, const Place& place, const Zel::AttrRow& row,
                      const Ownership& ownership, const TextSizes& sizes, const Swarm& swarm);
  bool entryChange(Random& random, const Place& place, const Zel::AttrRow& row,
                   const Ownership& ownership, const TextSizes& sizes, const Swarm& swarm);
  bool memberChange(Random& random, const Place& place, const Zel::AttrRow& row,
                    const Ownership& ownership, std::unordered_set<Path>& deleted,
                    const Swarm& swarm);
  void announce(const Deed& deed) const;
  void tell(const Place& place, const Zel::AttrRow& row, const std::string& what) const;
  Mutations& mutationsOf(const Place& place, const Zel::AttrRow& row);

  const unsigned number_;
  const Zel::Ptr<Zel::Dir> roots_;
  std::unordered_map<Path, Zel::Ptr<Zel::Entity>> known_;
  AllMutations mutations_;
};

/// Roots with all entity types of the library's own model below them.
std::vector<Zel::Ptr<Zel::Entity>> makeModelRoots();
/// The same, and those of the model of tests: all that a history may have.
std::vector<Zel::Ptr<Zel::Entity>> makeRoots();

} // namespace Histories
