#include "Descriptors.h"

#include <model/Unit.h>

namespace Conformance {

namespace {

// clang-format off
constexpr ExpectedAttr unitType[] = {
    {1, "value",          {0x20001, 0x400},      0, "Maintenance::Unit::UnitType"},
    {0, "userConfigured", {0x20001, 0x40200400}, 0, "Maintenance::Unit::UnitType"},
    {1, "dynamic",        {0x20001, 0x40200400}, 0, "Maintenance::Unit::UnitType"},
    {2, "builtin",        {0x20001, 0x40200400}, 0, "Maintenance::Unit::UnitType"},
};

constexpr ExpectedAttr inputSrc[] = {
    {1, "value",        {0x20001, 0x400},      0, "Maintenance::Unit::InputSrc"},
    {0, "srcUnknown",   {0x20001, 0x40200400}, 0, "Maintenance::Unit::InputSrc"},
    {1, "srcOnBoot",    {0x20001, 0x40200400}, 0, "Maintenance::Unit::InputSrc"},
    {2, "srcOnBootCli", {0x20001, 0x40200400}, 0, "Maintenance::Unit::InputSrc"},
    {3, "srcCli",       {0x20001, 0x40200400}, 0, "Maintenance::Unit::InputSrc"},
};

constexpr ExpectedAttr builtinUnitName[] = {
    {2, "system",   {0x220001, 0x40000410}, 0, "Zel::Name"},
    {3, "linecard", {0x220001, 0x40000410}, 0, "Zel::Name"},
};

constexpr ExpectedAttr maintenanceStageClasses[] = {
    {2, "maintEnterClass", {0x220001, 0x40000410}, 0, "Zel::Name"},
    {3, "maintExitClass",  {0x220001, 0x40000410}, 0, "Zel::Name"},
};

constexpr ExpectedAttr maintenanceStageList[] = {
    {2, "bgpStage",     {0x220001, 0x40000410}, 0, "Zel::String"},
    {3, "rateMonStage", {0x220001, 0x40000410}, 0, "Zel::String"},
};

constexpr ExpectedAttr trafficRates[] = {
    {2, "outBitsRate",     {0x220107, 0x400}, 2, "U64"},
    {3, "inBitsRate",      {0x220107, 0x400}, 2, "U64"},
    {4, "statsUpdateTime", {0x220107, 0x400}, 2, "F64"},
};

constexpr ExpectedAttr state[] = {
    {1, "value",                {0x20001, 0x400},      0, "Maintenance::Unit::State"},
    {0, "init",                 {0x20001, 0x40200400}, 0, "Maintenance::Unit::State"},
    {1, "active",               {0x20001, 0x40200400}, 0, "Maintenance::Unit::State"},
    {2, "maintenanceModeEnter", {0x20001, 0x40200400}, 0, "Maintenance::Unit::State"},
    {3, "underMaintenance",     {0x20001, 0x40200400}, 0, "Maintenance::Unit::State"},
    {4, "failedEnter",          {0x20001, 0x40200400}, 0, "Maintenance::Unit::State"},
    {5, "maintenanceModeExit",  {0x20001, 0x40200400}, 0, "Maintenance::Unit::State"},
    {6, "failedExit",           {0x20001, 0x40200400}, 0, "Maintenance::Unit::State"},
};

constexpr ExpectedAttr config[] = {
    {154, "zelHasAttrLogInterface", {0x22001, 0x400},       8, "bool"},
    {258, "unitName",               {0x220001, 0x400},      0, "Zel::String"},
    {259, "unitType",               {0x220143, 0x1000400},  2, "Maintenance::Unit::UnitType"},
    {260, "group",                  {0x1a20143, 0x1000400}, 2, "bool", "Group::GroupKey"},
    {261, "profileName",            {0x220143, 0x1000400},  2, "Zel::String"},
    {0,   "fwkKey",                 {0x200001, 0x400},      0, "Zel::Name"},
};

constexpr ExpectedAttr configDir[] = {
    {154, "zelHasAttrLogInterface", {0x22001, 0x400}, 8, "bool"},
    {258, "config", {0x9a20143, 0x11000400}, 0, "Maintenance::Unit::Config", "Zel::Name", "name"},
};

constexpr ExpectedAttr status[] = {
    {154, "zelHasAttrLogInterface",    {0x22001, 0x400},       8, "bool"},
    {258, "unitName",                  {0x220001, 0x400},      0, "Zel::String"},
    {259, "unitType",                  {0x220143, 0x1000400},  2, "Maintenance::Unit::UnitType"},
    {260, "group",                     {0x1a20143, 0x1000400}, 2, "bool", "Group::GroupKey"},
    {261, "profileName",               {0x220143, 0x1000400},  2, "Zel::String"},
    {262, "state",                     {0x220143, 0x1000400},  2, "Maintenance::Unit::State"},
    {263, "reason",                    {0x220143, 0x1000400},  2, "Maintenance::Unit::InputSrc"},
    {264, "timeOfStateChange",         {0x220143, 0x1000400},  2, "F64"},
    {265, "onBootMaintExitTime",       {0x220143, 0x1000400},  2, "F64"},
    {266, "defaultHistorySize",        {0x220001, 0x40000410}, 0, "U32"},
    {267, "historySize",               {0x220143, 0x1000400},  2, "U32"},
    {268, "history",                   {0x1a20143, 0x1000400}, 2, "Zel::String", "F64"},
    {269, "maintEnterInstance",        {0x220143, 0x1000400},  2, "Zel::String"},
    {270, "maintExitInstance",         {0x220143, 0x1000400},  2, "Zel::String"},
    {271, "aggTrafficRate", {0x220143, 0x1000400}, 2, "Maintenance::Unit::TrafficRates"},
    {272, "intfsViolatingTrafficThreshold", {0x1a20143, 0x1000400}, 2, "bool", "Vexil::IntfId"},
    {273, "totalIntfTrafficViolations", {0x220143, 0x1000400}, 2, "U32"},
    {274, "genId",                     {0x220143, 0x1000400},  2, "U32"},
    {0,   "fwkKey",                    {0x200001, 0x400},      0, "Zel::Name"},
};

constexpr ExpectedAttr statusDir[] = {
    {154, "zelHasAttrLogInterface", {0x22001, 0x400}, 8, "bool"},
    {258, "status", {0x9a20143, 0x11000400}, 0, "Maintenance::Unit::Status", "Zel::Name", "name"},
};

constexpr ExpectedAttr input[] = {
    {154, "zelHasAttrLogInterface", {0x22001, 0x400},       8, "bool"},
    {258, "priority",               {0x220143, 0x1000400},  2, "Maintenance::Unit::InputSrc"},
    {259, "unit",                   {0x1a20143, 0x1000400}, 2, "bool", "Zel::String"},
};

constexpr ExpectedArgument mergedInputArguments[] = {
    {"name", "Zel::Name"}, {"priority", "Maintenance::Unit::InputSrc"},
};
constexpr ExpectedAttr mergedInput[] = {
    {154, "zelHasAttrLogInterface", {0x22001, 0x400},      8, "bool"},
    {258, "unitName",               {0x220001, 0x400},     0, "Zel::Name"},
    {259, "priority",               {0x22014b, 0x1000400}, 2, "Maintenance::Unit::InputSrc"},
    {0,   "fwkKey",                 {0x200001, 0x400},     0, "Zel::Name"},
};

constexpr ExpectedAttr mergedInputDir[] = {
    {154, "zelHasAttrLogInterface", {0x22001, 0x400}, 8, "bool"},
    {258, "unit", {0x9a20143, 0x11000400}, 0, "Maintenance::Unit::MergedInput", "Zel::Name",
     "name"},
};

constexpr ExpectedAttr maintenanceOp[] = {
    {1, "value",                 {0x20001, 0x400},      0, "Maintenance::Unit::MaintenanceOp"},
    {0, "unknown",               {0x20001, 0x40200400}, 0, "Maintenance::Unit::MaintenanceOp"},
    {1, "maintenanceEnter",      {0x20001, 0x40200400}, 0, "Maintenance::Unit::MaintenanceOp"},
    {2, "maintenanceExit",       {0x20001, 0x40200400}, 0, "Maintenance::Unit::MaintenanceOp"},
    {3, "maintenanceEnterAbort", {0x20001, 0x40200400}, 0, "Maintenance::Unit::MaintenanceOp"},
    {4, "maintenanceExitAbort",  {0x20001, 0x40200400}, 0, "Maintenance::Unit::MaintenanceOp"},
};

constexpr ExpectedArgument stageMgrInstKeyArguments[] = {{"instanceName", "Zel::String"}};
constexpr ExpectedAttr stageMgrInstKey[] = {
    {2, "instanceName", {0x2000b, 0x400},  0, "Zel::String"},
    {3, "unitName",     {0x220107, 0x400}, 2, "Zel::String"},
    {4, "genId",        {0x220107, 0x400}, 2, "U32"},
};
// clang-format on

} // namespace

std::vector<ExpectedDescriptor> unitDescriptors() {
  using namespace Maintenance::Unit;
  // clang-format off
  return {
      {"Maintenance::Unit::UnitType", "", enumerationFlags, 4, false, false, {}, unitType},
      {"Maintenance::Unit::InputSrc", "", enumerationFlags, 4, false, false, {}, inputSrc},
      {"Maintenance::Unit::BuiltinUnitName", "", valueFlags, 1, true, false, {}, builtinUnitName},
      {"Maintenance::Unit::MaintenanceStageClasses", "", valueFlags, 1, true, false, {},
       maintenanceStageClasses},
      {"Maintenance::Unit::MaintenanceStageList", "", valueFlags, 1, true, false, {},
       maintenanceStageList},
      {"Maintenance::Unit::TrafficRates", "", valueFlags, sizeof(TrafficRates), true, false, {},
       trafficRates},
      {"Maintenance::Unit::Config", "Zel::Entity", entityFlags, sizeof(Config), true, false,
       nameArgument, config},
      {"Maintenance::Unit::ConfigDir", "Zel::Entity", entityFlags, sizeof(ConfigDir), true,
       true, nameArgument, configDir},
      {"Maintenance::Unit::State", "", enumerationFlags, 4, false, false, {}, state},
      {"Maintenance::Unit::Status", "Zel::Entity", entityFlags, sizeof(Status), true, false,
       nameArgument, status},
      {"Maintenance::Unit::StatusDir", "Zel::Entity", entityFlags, sizeof(StatusDir), true, true,
       nameArgument, statusDir},
      {"Maintenance::Unit::Input", "Zel::Entity", entityFlags, sizeof(Input), true, true,
       nameArgument, input},
      {"Maintenance::Unit::MergedInput", "Zel::Entity", entityFlags, sizeof(MergedInput), true,
       false, mergedInputArguments, mergedInput},
      {"Maintenance::Unit::MergedInputDir", "Zel::Entity", entityFlags, sizeof(MergedInputDir),
       true, true, nameArgument, mergedInputDir},
      {"Maintenance::Unit::MaintenanceOp", "", enumerationFlags, 4, false, false, {},
       maintenanceOp},
      {"Maintenance::Unit::StageMgrInstKey", "", valueFlags, sizeof(StageMgrInstKey), true, false,
       stageMgrInstKeyArguments, stageMgrInstKey},
  };
  // clang-format on
}

} // namespace Conformance
