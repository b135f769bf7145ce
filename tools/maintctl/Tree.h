#pragma once

#include "Device.h"

#include <Zel/TypeTable>

#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace Maintctl {

/// What a path is looked up for.
enum class Purpose {
  read,
  change, ///< of what is there
  add,    ///< of what may not be there yet
};

/// What a path leads to. Keys that are not in a collection of plain values, or that one of members
/// could have, lead to an entry too; see `isThere`.
struct Target {
  enum Kind {
    top,        ///< `/`, above the roots
    entity,     ///< a root or a member
    attribute,  ///< one value of it
    collection, ///< of entries or of members
    entry,      ///< under a key of a collection; if it has members, under one that it has not
  };
  Kind kind = top;
  Zel::Ptr<Zel::Entity> owner;       ///< the last entity on the way; null at the top
  const Zel::AttrRow* row = nullptr; ///< the attribute or the collection of it
  std::string segment;               ///< of an entry, as it was typed

  /// The whole path, as it is printed.
  std::string path() const;
  /// Whether an entry is there. Throws `Failure` if the segment is no key.
  bool isThere() const;
};

/// Throws `Failure`: the entry is not there, and what may have been meant.
[[noreturn]] void noneThere(const Target& target);

/// Follows paths in a device's tree. A path may leave out what `text/Path.h` says, end in `/`, and
/// stand in quotes. Keys of entries may hold `/` as they are.
class Tree {
public:
  explicit Tree(Device& device) : device_(device) {}

  /// Sees that the root on the way is in step. Throws `Failure` with `exitNotFound` if the path
  /// leads nowhere.
  Target at(const std::string& path, Purpose purpose);

private:
  void need(const Zel::Name& root, bool toWrite);

  Device& device_;
  std::set<Zel::Name> read_;
  std::set<Zel::Name> written_;
};

/// The attributes of a type that people are shown, a base's first.
std::vector<const Zel::AttrRow*> shownRows(const Zel::TypeTable& table);
std::vector<const Zel::AttrRow*> rowsOf(const Zel::Entity& entity);

/// The collection that makes members, if there is exactly one; else null.
const Zel::AttrRow* onlyCollection(const Zel::Entity& entity);

/// The path of an entity below a root, as it is printed.
std::string pathOf(const Zel::Entity& entity);

/// What is in a collection: segments and the members or the entries of plain values. In a hash
/// collection in the order of segments, else in that of the keys.
struct Item {
  std::string segment;
  Zel::Ptr<Zel::PtrInterface> held;
};
std::vector<Item> itemsOf(const Zel::Entity& owner, const Zel::AttrRow& row);

} // namespace Maintctl
