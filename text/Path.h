#pragma once

#include <Zel/Dir>
#include <Zel/ValueRecord>

#include <vector>

/// Paths name entities below the roots of a `Zel::Dir`: `/` and the name of the root, then for each
/// step `/` and the name of a collection, `/` and the key of its member.
///
///     /units/status/System        /profiles/config/profileTypeBgp,drain-slowly
///
/// A key stands in a path as bare text: strings and other quoted texts without their quotes,
/// enumerators by name, numbers as they are, and of a value with attributes what it stores, joined
/// by commas. `/` and `%`, and inside such a value `,`, are written as `%` and two hexadecimal
/// digits. A member that does not bring its key goes by its name.
///
/// Where an entity has one collection that makes its members, a path may leave out its name:
/// `/units/System`. The full form is tried first at each step, and what is printed is always full.
namespace Zel {

/// Where a path leads as far as there are entities: the last one, null if not even the root is
/// there, and the segments behind it, such as the names and keys of attributes, still escaped.
struct PathEnd {
  Ptr<Entity> entity;
  std::vector<std::string_view> rest; ///< views of the path that was resolved
};

/// Follows a path; one that does not begin with `/` leads nowhere. Reads of keys and members on the
/// way count as such, here and where a path is printed.
ZEL_API PathEnd pathEnd(const Dir& dir, std::string_view path);

/// The entity at a path. Throws `RangeException` "no entity at PATH".
ZEL_API Ptr<Entity> entityAt(const Dir& dir, std::string_view path);

/// The segment of a key, escaped.
ZEL_API String8 pathSegment(const ValueRecord& record, const void* key);

/// Reads a key back from its segment, into one that has been constructed and stays as it was on a
/// failure. Throws `RangeException`.
ZEL_API void readPathSegment(std::string_view segment, const ValueRecord& record, void* to);

} // namespace Zel
