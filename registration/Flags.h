#pragma once

#include <Zel/ZelType>

namespace Zel {

/// Bits of `ZelAttr::AttrFlags` that are set by kind.
namespace AttrFlag {

// Of the first word.
inline constexpr unsigned present = 0x1;
inline constexpr unsigned hasMutator = 0x2;
inline constexpr unsigned plainWrite = 0x4; ///< straight into the value, nobody is told
inline constexpr unsigned constructorArgument = 0x8;
inline constexpr unsigned notifies = 0x40;
inline constexpr unsigned stored = 0x100;
inline constexpr unsigned virtualAccess = 0x2000;
inline constexpr unsigned named = 0x20000;
inline constexpr unsigned passedOn = 0x200000; ///< to the framework; without effect here
inline constexpr unsigned collection = 0x1800000;
inline constexpr unsigned instantiating = 0x8000000;

// Of the second word.
inline constexpr unsigned constantOfType = 0x10;
inline constexpr unsigned everywhere = 0x400;
inline constexpr unsigned enumerator = 0x200000;
inline constexpr unsigned inAttributeLog = 0x1000000;
inline constexpr unsigned madeByCollection = 0x10000000;
inline constexpr unsigned neverChanges = 0x40000000;

} // namespace AttrFlag

/// Flags that are no row's.
inline constexpr FlagWords enumeratorFlags{AttrFlag::present | AttrFlag::named,
                                           AttrFlag::everywhere | AttrFlag::enumerator |
                                               AttrFlag::neverChanges};
/// Of an attribute that the framework gives to every entity, with a virtual accessor.
inline constexpr FlagWords frameworkFlags{
    AttrFlag::present | AttrFlag::virtualAccess | AttrFlag::named, AttrFlag::everywhere};

inline constexpr ZelAttr::ZelAttrIntrospectionFlags inTextAndWalk = 2;
inline constexpr ZelAttr::ZelAttrIntrospectionFlags ofFramework = 8;

/// The flags of an attribute, from its kind, its options and the kind of its type.
ZEL_API FlagWords attrFlags(TypeKind owner, const AttrRow& row);

/// Its introspection flags; 0 on a collection whose members bring their key.
ZEL_API ZelAttr::ZelAttrIntrospectionFlags introspectionFlags(const AttrRow& row);

} // namespace Zel
