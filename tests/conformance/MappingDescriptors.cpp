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

constexpr ExpectedArgument groupProfileSelKeyArguments[] = {
    {"groupType", "Group::GroupType"}, {"profileSelReqId", "U32"},
};
constexpr ExpectedAttr groupProfileSelKey[] = {
    {2, "groupType",       {0x220109, 0x40000400}, 2, "Group::GroupType"},
    {3, "profileSelReqId", {0x220109, 0x40000400}, 2, "U32"},
    {4, "hash",            {0x20001, 0x400},       0, "U32"},
};

constexpr ExpectedArgument groupSelectionArguments[] = {
    {"groupProfileSelKey", "Maintenance::GroupProfileSelKey"},
};
constexpr ExpectedAttr groupProfileSelectionIn[] = {
    {130, "trigger",            {0x220143, 0x400},      2, "bool"},
    {131, "groupProfileSelKey", {0x220109, 0x40000400}, 2, "Maintenance::GroupProfileSelKey"},
    {132, "groupName",          {0x1a20143, 0x400},     2, "bool", "Zel::String"},
    {0,   "fwkKey",             {0x200001, 0x400},      0, "Maintenance::GroupProfileSelKey"},
};

constexpr ExpectedAttr groupProfileSelectionOut[] = {
    {130, "groupProfileSelKey", {0x220109, 0x40000400}, 2, "Maintenance::GroupProfileSelKey"},
    {0,   "fwkKey",             {0x200001, 0x400},      0, "Maintenance::GroupProfileSelKey"},
};

constexpr ExpectedArgument unitProfileSelKeyArguments[] = {
    {"unitName", "Zel::String"}, {"profileChangeCause", "Maintenance::ProfileChangeCause"},
};
constexpr ExpectedAttr unitProfileSelKey[] = {
    {2, "unitName",           {0x220109, 0x40000400}, 2, "Zel::String"},
    {3, "profileChangeCause", {0x220109, 0x40000400}, 2, "Maintenance::ProfileChangeCause"},
    {4, "hash",               {0x20001, 0x400},       0, "U32"},
};

constexpr ExpectedArgument unitSelectionArguments[] = {
    {"unitProfileSelKey", "Maintenance::UnitProfileSelKey"},
};
constexpr ExpectedAttr unitProfileSelection[] = {
    {130, "unitProfileSelKey", {0x220109, 0x40000400}, 2, "Maintenance::UnitProfileSelKey"},
    {131, "genId",             {0x220143, 0x400},      2, "U32"},
    {132, "complete",          {0x220143, 0x400},      2, "bool"},
    {133, "considerUnitState", {0x220143, 0x400},      2, "bool"},
    {134, "groupProfileSelectionIn",  {0x9a20143, 0x10000400}, 0,
     "Maintenance::GroupProfileSelectionIn", "Maintenance::GroupProfileSelKey",
     "groupProfileSelKey"},
    {135, "groupProfileSelectionOut", {0x9a20143, 0x10000400}, 0,
     "Maintenance::GroupProfileSelectionOut", "Maintenance::GroupProfileSelKey",
     "groupProfileSelKey"},
    {0,   "fwkKey",            {0x200001, 0x400},      0, "Maintenance::UnitProfileSelKey"},
};

constexpr ExpectedAttr profileSelection[] = {
    {130, "unitProfileSelection", {0x9a20143, 0x10000400}, 0, "Maintenance::UnitProfileSelection",
     "Maintenance::UnitProfileSelKey", "unitProfileSelKey"},
};

constexpr ExpectedAttr profileKeySet[] = {
    {130, "profileKey",     {0x1a20103, 0x400}, 2, "bool", "Maintenance::Profile::ProfileKey"},
    {131, "winningProfile", {0x20001, 0x400},   0, "Maintenance::Profile::ProfileKey"},
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
      {"Maintenance::GroupProfileSelKey", "", valueFlags, sizeof(GroupProfileSelKey), true, false,
       groupProfileSelKeyArguments, groupProfileSelKey},
      {"Maintenance::GroupProfileSelectionIn", "Zel::PtrInterface", objectFlags,
       sizeof(GroupProfileSelectionIn), true, false, groupSelectionArguments,
       groupProfileSelectionIn},
      {"Maintenance::GroupProfileSelectionOut", "Zel::PtrInterface", objectFlags,
       sizeof(GroupProfileSelectionOut), true, false, groupSelectionArguments,
       groupProfileSelectionOut},
      {"Maintenance::UnitProfileSelKey", "", valueFlags, sizeof(UnitProfileSelKey), true, false,
       unitProfileSelKeyArguments, unitProfileSelKey},
      {"Maintenance::UnitProfileSelection", "Zel::PtrInterface", objectFlags,
       sizeof(UnitProfileSelection), true, false, unitSelectionArguments, unitProfileSelection},
      {"Maintenance::ProfileSelection", "Zel::PtrInterface", objectFlags, sizeof(ProfileSelection),
       true, false, {}, profileSelection},
      {"Maintenance::ProfileKeySet", "Zel::PtrInterface", objectFlags, sizeof(ProfileKeySet), true,
       false, {}, profileKeySet},
  };
  // clang-format on
}

} // namespace Conformance
