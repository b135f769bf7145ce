#include "Descriptors.h"

#include <model/Profile.h>

namespace Conformance {

namespace {

// clang-format off
constexpr ExpectedAttr profileType[] = {
    {1, "value",                {0x20001, 0x400},      0, "Maintenance::Profile::ProfileType"},
    {0, "profileTypeNone",      {0x20001, 0x40200400}, 0, "Maintenance::Profile::ProfileType"},
    {1, "profileTypeBgp",       {0x20001, 0x40200400}, 0, "Maintenance::Profile::ProfileType"},
    {2, "profileTypeInterface", {0x20001, 0x40200400}, 0, "Maintenance::Profile::ProfileType"},
    {3, "profileTypeUnit",      {0x20001, 0x40200400}, 0, "Maintenance::Profile::ProfileType"},
};

constexpr ExpectedArgument profileKeyArguments[] = {
    {"type", "Maintenance::Profile::ProfileType"}, {"name", "Zel::String"},
};
constexpr ExpectedAttr profileKey[] = {
    {2, "type", {0x220109, 0x40000400}, 2, "Maintenance::Profile::ProfileType"},
    {3, "name", {0x220109, 0x40000400}, 2, "Zel::String"},
    {4, "hash", {0x220001, 0x400},      0, "U32"},
};

constexpr ExpectedArgument configArguments[] = {
    {"key", "Maintenance::Profile::ProfileKey"},
};
constexpr ExpectedAttr config[] = {
    {154, "zelHasAttrLogInterface", {0x22001, 0x400}, 8, "bool"},
    {258, "key",    {0x220109, 0x40000400}, 2, "Maintenance::Profile::ProfileKey"},
    {0,   "fwkKey", {0x200001, 0x400},      0, "Maintenance::Profile::ProfileKey"},
};

constexpr ExpectedAttr configDir[] = {
    {154, "zelHasAttrLogInterface", {0x22001, 0x400}, 8, "bool"},
    {258, "config", {0x9a20143, 0x11000400}, 0, "Maintenance::Profile::Config",
     "Maintenance::Profile::ProfileKey", "key"},
};

constexpr ExpectedAttr defaultProfile[] = {
    {154, "zelHasAttrLogInterface", {0x22001, 0x400}, 8, "bool"},
    {258, "systemDefaultProfileName", {0x220001, 0x40000410}, 0, "Zel::String"},
    {259, "profileName",              {0x220143, 0x1000400},  2, "Zel::String"},
    {260, "reservedProfileName",      {0x220001, 0x40000410}, 0, "Zel::String"},
};
// clang-format on

} // namespace

std::vector<ExpectedDescriptor> profileDescriptors() {
  using namespace Maintenance::Profile;
  // clang-format off
  return {
      {"Maintenance::Profile::ProfileType", "", enumerationFlags, 4, false, false, {}, profileType},
      {"Maintenance::Profile::ProfileKey", "", valueFlags, sizeof(ProfileKey), true, false,
       profileKeyArguments, profileKey},
      {"Maintenance::Profile::Config", "Zel::Entity", entityFlags, sizeof(Config), false,
       false, configArguments, config},
      {"Maintenance::Profile::ConfigDir", "Zel::Entity", entityFlags, sizeof(ConfigDir),
       true, true, nameArgument, configDir},
      {"Maintenance::Profile::DefaultProfile", "Zel::Entity", entityFlags, sizeof(DefaultProfile),
       true, true, nameArgument, defaultProfile},
  };
  // clang-format on
}

} // namespace Conformance
