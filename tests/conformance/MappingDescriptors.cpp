#include "Descriptors.h"

#include <model/Mapping.h>

namespace Conformance {

namespace {

// clang-format off
constexpr ExpectedAttr profileChangeCause[] = {
    {1, "value",                {0x20001, 0x400},      0, "Maintenance::ProfileChangeCause"},
    {0, "initialCreation",      {0x20001, 0x40200400}, 0, "Maintenance::ProfileChangeCause"},
    {1, "maintenanceOperation", {0x20001, 0x40200400}, 0, "Maintenance::ProfileChangeCause"},
    {2, "userConfigChange",     {0x20001, 0x40200400}, 0, "Maintenance::ProfileChangeCause"},
};

constexpr ExpectedAttr memberToGroup[] = {
    {154, "zelHasAttrLogInterface", {0x22001, 0x400}, 8, "bool"},
    {258, "group",              {0x1a22143, 0x1000400}, 2, "bool", "Group::GroupKey"},
    {259, "selectedProfile",    {0x1a22143, 0x1000400}, 2, "Maintenance::Profile::ProfileKey",
     "Maintenance::Profile::ProfileType"},
    {260, "profileChangeCause", {0x222143, 0x1000400},  2, "Maintenance::ProfileChangeCause"},
    {261, "partOfDynamicUnit",  {0x222143, 0x1000400},  2, "bool"},
};

constexpr ExpectedArgument groupToUnitArguments[] = {{"key", "Group::GroupKey"}};
constexpr ExpectedAttr groupToUnit[] = {
    {154, "zelHasAttrLogInterface", {0x22001, 0x400}, 8, "bool"},
    {258, "key",      {0x220109, 0x40000400}, 2, "Group::GroupKey"},
    {259, "unitName", {0x1a20143, 0x1000400}, 2, "bool", "Zel::Name"},
    {0,   "fwkKey",   {0x200001, 0x400},      0, "Group::GroupKey"},
};

constexpr ExpectedAttr groupToUnitDir[] = {
    {154, "zelHasAttrLogInterface", {0x22001, 0x400}, 8, "bool"},
    {258, "groupToUnit", {0x9a20143, 0x11000400}, 0, "Maintenance::GroupToUnit",
     "Group::GroupKey", "key"},
};
// clang-format on

} // namespace

std::vector<ExpectedDescriptor> mappingDescriptors() {
  using namespace Maintenance;
  // clang-format off
  return {
      {"Maintenance::ProfileChangeCause", "", enumerationFlags, 4, false, false, {},
       profileChangeCause},
      {"Maintenance::MemberToGroup", "Zel::Entity", entityFlags, sizeof(MemberToGroup), false,
       false, nameArgument, memberToGroup},
      {"Maintenance::GroupToUnit", "Zel::Entity", entityFlags, sizeof(GroupToUnit), false, false,
       groupToUnitArguments, groupToUnit},
      {"Maintenance::GroupToUnitDir", "Zel::Entity", entityFlags, sizeof(GroupToUnitDir), true,
       true, nameArgument, groupToUnitDir},
  };
  // clang-format on
}

} // namespace Conformance
