// A project of its own that uses the installed library; its exit status tells whether it works.

#include <Zel/Entity>
#include <Zel/Exception>
#include <generic/Client.h>
#include <model/Profile.h>
#include <model/Unit.h>

namespace {

struct Watcher : Maintenance::Unit::Status::Notifiee {
  void onState() override { seen = notifier()->state(); }
  Maintenance::Unit::State seen = Maintenance::Unit::init;
};

} // namespace

int main() {
  const auto units = Maintenance::Unit::statusDirFactory("units");
  const auto unit = units->statusIs("Linecard3");
  const auto watcher = Zel::makeObject<Watcher>();
  watcher->isRegisteredNotifieeIs(true);
  watcher->notifierIs(Zel::Ptr<Maintenance::Unit::Status>(unit));
  unit->stateIs(Maintenance::Unit::underMaintenance);
  if (watcher->seen != Maintenance::Unit::underMaintenance) {
    return 1;
  }
  const auto generic = Zel::generic(unit);
  Zel::writeText(generic, generic->attributeId("state"), "'active'");
  if (watcher->seen != Maintenance::Unit::active) {
    return 1;
  }
  // A type that is mentioned nowhere else here is registered all the same.
  if (Zel::ZelType::type("MaintenanceUnitProfile::Config") == nullptr) {
    return 1;
  }
  try {
    Maintenance::Unit::StateInstance(7);
  } catch (const Zel::RangeException& failure) {
    return failure.message() == Zel::String8("State") ? 0 : 1;
  }
  return 1;
}
