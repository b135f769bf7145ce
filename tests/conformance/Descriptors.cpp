#include "Descriptors.h"

namespace Conformance {

namespace {

// clang-format off
constexpr ExpectedAttr ofEveryEntity[] = {
    {130, "name",                         {0x220109, 0x40000400}, 8, "Zel::Name"},
    {155, "zelNboAttrLogSaForMsgChannel", {0x22001, 0x400},       8, "Zel::PtrInterface"},
};

constexpr Combination known[] = {
    {{0x20001, 0x40200400},    0}, // enumerator
    {{0x20001, 0x400},         0}, // computed for the type's own use; the number of an enumeration
    {{0x220001, 0x400},        0}, // computed
    {{0x220001, 0x40000410},   0}, // constant of a type
    {{0x200001, 0x400},        0}, // framework key
    {{0x22001, 0x400},         8}, // virtual framework attribute
    {{0x2000b, 0x400},         0}, // computed constructor argument with a mutator
    {{0x220107, 0x400},        2}, // member of a value
    {{0x220109, 0x40000400},   2}, // key
    {{0x220143, 0x1000400},    2}, // singular, of an entity
    {{0x22014b, 0x1000400},    2}, // the same that is a constructor argument
    {{0x222143, 0x1000400},    2}, // the same with virtual mutators
    {{0x220143, 0x400},        2}, // singular, of another object
    {{0x1a20143, 0x1000400},   2}, // keyed, of an entity
    {{0x1a22143, 0x1000400},   2}, // the same with virtual mutators
    {{0x1a20143, 0x400},       2}, // keyed, of another object
    {{0x1a20103, 0x400},       2}, // the same, silent
    {{0x9a20143, 0x11000400},  0}, // instantiating, of an entity
    {{0x9a20143, 0x10000400},  0}, // instantiating, of another object
    {{0x1a20143, 0x1000400},   0}, // values that bring their key
};
// clang-format on

} // namespace

std::span<const ExpectedAttr> entityAttributes() { return ofEveryEntity; }
std::span<const Combination> combinations() { return known; }

const std::vector<ExpectedDescriptor>& expectedDescriptors() {
  static const std::vector<ExpectedDescriptor> all = [] {
    std::vector<ExpectedDescriptor> made;
    for (const auto& module : {profileDescriptors(), unitDescriptors(), mappingDescriptors(),
                               maintenanceGroupDescriptors(), maintenanceUnitProfileDescriptors(),
                               maintenanceAgentInfoDescriptors(), foreignDescriptors()}) {
      made.insert(made.end(), module.begin(), module.end());
    }
    return made;
  }();
  return all;
}

} // namespace Conformance
