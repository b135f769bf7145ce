#include <registration/Framework.h>
#include <registration/MaintenanceAgentInfo.h>
#include <registration/MaintenanceGroup.h>
#include <registration/MaintenanceUnitProfile.h>
#include <registration/Mapping.h>
#include <registration/Profile.h>
#include <registration/Unit.h>

#include <ios>

namespace {

/// All that happens when the library is loaded, in an order that is told here and nowhere else.
/// What it needs from other files is initialised at compile time or at its first use.
class AtLoad {
public:
  AtLoad() noexcept { // a process that cannot hold its descriptors ends here
    Zel::frameworkLoad();
    Maintenance::Profile::zelModule().load();
    Maintenance::Unit::zelModule().load();
    Maintenance::zelMappingModule().load();
    Maintenance::MaintenanceGroup::zelModule().load();
    MaintenanceUnitProfile::zelModule().load();
    Maintenance::zelMaintenanceAgentInfoModule().load();
  }

private:
  std::ios_base::Init streams_; // callbacks may print from here on
};

const AtLoad atLoad;

} // namespace
