#include "Descriptors.h"

#include <model/MaintenanceGroup.h>

namespace Conformance {

namespace {

// clang-format off
constexpr ExpectedArgument configArguments[] = {
    {"name", "Zel::Name"}, {"key", "Group::GroupKey"},
};
constexpr ExpectedAttr config[] = {
    {154, "zelHasAttrLogInterface", {0x22001, 0x400}, 8, "bool"},
    {258, "key",     {0x220109, 0x40000400}, 2, "Group::GroupKey"},
    {259, "profile", {0x1a20143, 0x1000400}, 2, "bool", "Maintenance::Profile::ProfileKey"},
    {0,   "fwkKey",  {0x200001, 0x400},      0, "Group::GroupKey"},
};

constexpr ExpectedAttr configDir[] = {
    {154, "zelHasAttrLogInterface", {0x22001, 0x400}, 8, "bool"},
    {258, "maintenanceGroup", {0x9a20143, 0x11000400}, 0, "Maintenance::MaintenanceGroup::Config",
     "Group::GroupKey", "key"},
};
// clang-format on

} // namespace

std::vector<ExpectedDescriptor> maintenanceGroupDescriptors() {
  using namespace Maintenance::MaintenanceGroup;
  // clang-format off
  return {
      {"Maintenance::MaintenanceGroup::Config", "Zel::Entity", entityFlags, sizeof(Config), true,
       false, configArguments, config},
      {"Maintenance::MaintenanceGroup::ConfigDir", "Zel::Entity", entityFlags, sizeof(ConfigDir),
       true, true, nameArgument, configDir},
  };
  // clang-format on
}

} // namespace Conformance
