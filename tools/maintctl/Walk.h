#pragma once

#include <Zel/Entity>
#include <Zel/TypeTable>

#include <string>

namespace Maintctl {

/// Sees the values and the members of a tree.
class Visitor {
public:
  Visitor() = default;
  Visitor(const Visitor&) = delete;
  Visitor& operator=(const Visitor&) = delete;
  virtual ~Visitor() = default;

  /// Whether an attribute is of interest.
  virtual bool wants(const Zel::AttrRow& row) = 0;
  /// A value: of an attribute, or of an entry of a collection.
  virtual void value(const std::string& path, const Zel::ValueRecord& record,
                     const void* value) = 0;
  /// A member, before what is below it.
  virtual void member(const std::string& path, const Zel::AttrRow& row,
                      const Zel::Entity& member) = 0;
};

/// Shows a visitor all that is below an entity, in the order of attributes, and within each that of
/// `itemsOf`. `path` goes before all paths; it is empty, or ends in "/".
void walk(const Zel::Entity& entity, const std::string& path, Visitor& visitor);

/// The same of one attribute or collection.
void walk(const Zel::Entity& entity, const Zel::AttrRow& row, const std::string& path,
          Visitor& visitor);

} // namespace Maintctl
