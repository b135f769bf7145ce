#include "Descriptors.h"

#include <model/MaintenanceUnitProfile.h>

namespace Conformance {

namespace {

// clang-format off
constexpr ExpectedArgument configArguments[] = {{"profileName", "Zel::String"}};
constexpr ExpectedAttr config[] = {
    {154, "zelHasAttrLogInterface", {0x22001, 0x400},       8, "bool"},
    {386, "profileName",            {0x220109, 0x40000400}, 2, "Zel::String"},
    {387, "onBootDuration",         {0x220143, 0x1000400},  2, "U32"},
    {388, "minOnBootDuration",      {0x220001, 0x40000410}, 0, "U32"},
    {389, "maxOnBootDuration",      {0x220001, 0x40000410}, 0, "U32"},
    {390, "onBootEnabled",          {0x220143, 0x1000400},  2, "bool"},
};

constexpr ExpectedAttr configDir[] = {
    {154, "zelHasAttrLogInterface", {0x22001, 0x400}, 8, "bool"},
    {258, "config", {0x9a20143, 0x11000400}, 0, "MaintenanceUnitProfile::Config", "Zel::String",
     "profileName"},
};
// clang-format on

} // namespace

std::vector<ExpectedDescriptor> maintenanceUnitProfileDescriptors() {
  using namespace MaintenanceUnitProfile;
  // clang-format off
  return {
      {"MaintenanceUnitProfile::Config", "Maintenance::Profile::Config", entityFlags,
       sizeof(Config), true, false, configArguments, config},
      {"MaintenanceUnitProfile::ConfigDir", "Zel::Entity", entityFlags, sizeof(ConfigDir), true,
       true, nameArgument, configDir},
  };
  // clang-format on
}

} // namespace Conformance
