#include "Descriptors.h"

#include <model/MaintenanceAgentInfo.h>

namespace Conformance {

namespace {

// clang-format off
constexpr ExpectedArgument onBootUnitAndReasonArguments[] = {
    {"unitName", "Zel::String"}, {"reason", "Maintenance::Unit::InputSrc"},
};
constexpr ExpectedAttr onBootUnitAndReason[] = {
    {2, "unitName", {0x220109, 0x40000400}, 2, "Zel::String"},
    {3, "reason",   {0x220109, 0x40000400}, 2, "Maintenance::Unit::InputSrc"},
};

constexpr ExpectedAttr agentInfo[] = {
    {154, "zelHasAttrLogInterface", {0x22001, 0x400},       8, "bool"},
    {258, "agentPid",               {0x220143, 0x1000400},  2, "U32"},
    {259, "restartCount",           {0x220143, 0x1000400},  2, "U32"},
    {260, "onBoot",                 {0x220143, 0x1000400},  2, "bool"},
    {261, "onBootMaintEnter",       {0x1a20143, 0x1000400}, 0, "Maintenance::OnBootUnitAndReason",
     "Zel::String", "unitName"},
    {262, "ready",                  {0x220143, 0x1000400},  2, "bool"},
};
// clang-format on

} // namespace

std::vector<ExpectedDescriptor> maintenanceAgentInfoDescriptors() {
  using namespace Maintenance;
  // clang-format off
  return {
      {"Maintenance::OnBootUnitAndReason", "", valueFlags, sizeof(OnBootUnitAndReason), true,
       false, onBootUnitAndReasonArguments, onBootUnitAndReason},
      {"Maintenance::AgentInfo", "Zel::Entity", entityFlags, sizeof(AgentInfo), true, true,
       nameArgument, agentInfo},
  };
  // clang-format on
}

} // namespace Conformance
