#include <registration/Flags.h>

namespace Zel {

namespace {

using namespace AttrFlag;

constexpr unsigned changeable = hasMutator | notifies | stored;

/// What the kind alone says.
FlagWords flagsOfKind(AttrKind kind) {
  switch (kind) {
  case AttrKind::constant:
    return {named | passedOn, constantOfType | neverChanges};
  case AttrKind::key:
    return {named | passedOn | AttrFlag::constructorArgument | stored, neverChanges};
  case AttrKind::computed:
    return {named | passedOn, 0};
  case AttrKind::frameworkKey:
    return {passedOn, 0};
  case AttrKind::valueMember:
    return {named | passedOn | hasMutator | plainWrite | stored, 0};
  case AttrKind::computedMember:
    return {named | hasMutator, 0};
  case AttrKind::singular:
  case AttrKind::counter:
    return {named | passedOn | changeable, inAttributeLog};
  case AttrKind::keyed:
  case AttrKind::ordered:
  case AttrKind::ownKey:
    return {named | passedOn | changeable | collection, inAttributeLog};
  case AttrKind::instantiating:
    return {named | passedOn | changeable | collection | AttrFlag::instantiating,
            inAttributeLog | madeByCollection};
  }
  return {};
}

} // namespace

FlagWords attrFlags(TypeKind owner, const AttrRow& row) {
  FlagWords flags = flagsOfKind(row.kind);
  flags.first |= present;
  flags.second |= everywhere;
  if ((row.options & AttrOption::constructorArgument) != 0) {
    flags.first |= AttrFlag::constructorArgument;
  }
  if ((row.options & AttrOption::virtualAccess) != 0) {
    flags.first |= AttrFlag::virtualAccess;
  }
  if ((row.options & AttrOption::silent) != 0) {
    flags.first &= ~notifies;
  }
  if ((row.options & AttrOption::internal) != 0) {
    flags.first &= ~passedOn;
  }
  if (owner != TypeKind::entity) {
    flags.second &= ~inAttributeLog;
  }
  return flags;
}

ZelAttr::ZelAttrIntrospectionFlags introspectionFlags(const AttrRow& row) {
  switch (row.kind) {
  case AttrKind::key:
  case AttrKind::valueMember:
  case AttrKind::singular:
  case AttrKind::counter:
  case AttrKind::keyed:
  case AttrKind::ordered:
    return inTextAndWalk;
  default:
    return 0;
  }
}

} // namespace Zel
