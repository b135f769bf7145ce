#pragma once

#include <Zel/ZelType>

#include <ostream>
#include <span>
#include <vector>

namespace Conformance {

/// What is known of an attribute's descriptor from outside, as plain literals.
struct ExpectedAttr {
  Zel::AttributeId id;
  std::string_view name;
  Zel::FlagWords flags;
  unsigned introspection;
  std::string_view type;
  std::string_view index{};        ///< empty on a singular attribute
  std::string_view keyAttribute{}; ///< of a collection whose members bring their key
};

struct ExpectedArgument {
  std::string_view name;
  std::string_view type;
};

/// The same of a type's descriptor.
struct ExpectedDescriptor {
  std::string_view name;
  std::string_view base; ///< empty without one
  Zel::FlagWords flags;
  std::size_t size;
  bool madeByList; ///< a value that takes a list, or an object that anybody may make
  bool madeByName; ///< an entity that takes its name and nothing else
  std::span<const ExpectedArgument> arguments;
  std::span<const ExpectedAttr> attributes; ///< what it registers itself, in order

  friend void PrintTo(const ExpectedDescriptor& type, std::ostream* out) { *out << type.name; }
};

/// All types of the model and the foreign model, in the order in which they are registered.
const std::vector<ExpectedDescriptor>& expectedDescriptors();
std::vector<ExpectedDescriptor> profileDescriptors();
std::vector<ExpectedDescriptor> unitDescriptors();
std::vector<ExpectedDescriptor> mappingDescriptors();
std::vector<ExpectedDescriptor> maintenanceGroupDescriptors();
std::vector<ExpectedDescriptor> maintenanceUnitProfileDescriptors();
std::vector<ExpectedDescriptor> maintenanceAgentInfoDescriptors();
std::vector<ExpectedDescriptor> foreignDescriptors();

/// What every entity type begins with.
std::span<const ExpectedAttr> entityAttributes();

/// One kind of attribute as its flags tell it.
struct Combination {
  Zel::FlagWords flags;
  unsigned introspection;
};

/// All that there are.
std::span<const Combination> combinations();

// Type flags.
inline constexpr Zel::FlagWords enumerationFlags{0x11, 0x20000000};
inline constexpr Zel::FlagWords valueFlags{0x1, 0x20000000};
inline constexpr Zel::FlagWords entityFlags{0x0, 0x28000000};
inline constexpr Zel::FlagWords objectFlags{0x0, 0x20000000};

// Arguments of many types.
inline constexpr ExpectedArgument nameArgument[] = {{"name", "Zel::Name"}};

} // namespace Conformance
