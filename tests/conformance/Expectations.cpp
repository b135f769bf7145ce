#include "Expectations.h"

#include <vector>

namespace Conformance {

std::span<const ExpectedType> expectations() {
  static const std::vector<ExpectedType> all = [] {
    std::vector<ExpectedType> made;
    for (const auto& module : {profileExpectations(), unitExpectations(), mappingExpectations(),
                               maintenanceGroupExpectations(), maintenanceUnitProfileExpectations(),
                               maintenanceAgentInfoExpectations(), foreignExpectations()}) {
      made.insert(made.end(), module.begin(), module.end());
    }
    return made;
  }();
  return all;
}

} // namespace Conformance
