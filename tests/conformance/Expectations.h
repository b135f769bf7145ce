#pragma once

#include <Zel/TypeTable>

#include <span>

namespace Conformance {

/// What is known of an attribute from outside, as plain literals.
struct Expected {
  Zel::AttributeId id;
  std::string_view name;
  Zel::AttrKind kind;
  unsigned options;
  std::string_view key;   ///< empty if it is no collection
  std::string_view value; ///< empty in an instantiating collection
};

/// The same of a type.
struct ExpectedType {
  std::string_view name;
  Zel::TypeKind kind;
  bool named;
  std::span<const Expected> rows; ///< its own attributes, in order
};

/// All types, in the order of `subjects()`.
std::span<const ExpectedType> expectations();
std::span<const ExpectedType> profileExpectations();
std::span<const ExpectedType> unitExpectations();
std::span<const ExpectedType> mappingExpectations();
std::span<const ExpectedType> maintenanceGroupExpectations();
std::span<const ExpectedType> maintenanceUnitProfileExpectations();
std::span<const ExpectedType> maintenanceAgentInfoExpectations();
std::span<const ExpectedType> foreignExpectations();

} // namespace Conformance
