#include "LocalDevice.h"

#include "Failure.h"

#include <Zel/ZelType>
#include <model/MaintenanceAgentInfo.h>
#include <model/MaintenanceGroup.h>
#include <model/MaintenanceUnitProfile.h>
#include <model/Mapping.h>
#include <model/Profile.h>
#include <model/Unit.h>

namespace Maintctl {

namespace {

/// What one source asks for.
Zel::Ptr<Zel::Entity> inputOf(const char* name, Maintenance::Unit::InputSrc source) {
  const Zel::Ptr<Maintenance::Unit::Input> input = Maintenance::Unit::inputFactory(name);
  input->priorityIs(source);
  return input;
}

} // namespace

// All of the model that is not within something else, but for `MemberToGroup`: which members a
// device has, and of which kinds, is known to those who keep them.
LocalDevice::LocalDevice() : dir_(Zel::makeObject<Zel::Dir>()) {
  dir_->entityIs(Maintenance::agentInfoFactory("agentInfo"));
  dir_->entityIs(inputOf("cliInput", Maintenance::Unit::srcCli));
  dir_->entityIs(Maintenance::Profile::defaultProfileFactory("defaultProfile"));
  dir_->entityIs(Maintenance::groupToUnitDirFactory("groupToUnit"));
  dir_->entityIs(Maintenance::MaintenanceGroup::configDirFactory("groups"));
  dir_->entityIs(Maintenance::Unit::mergedInputDirFactory("mergedInput"));
  dir_->entityIs(inputOf("onBootInput", Maintenance::Unit::srcOnBoot));
  dir_->entityIs(Maintenance::Profile::configDirFactory("profiles"));
  dir_->entityIs(Maintenance::Unit::statusDirFactory("status"));
  dir_->entityIs(MaintenanceUnitProfile::configDirFactory("unitProfiles"));
  dir_->entityIs(Maintenance::Unit::configDirFactory("units"));
}

std::map<Zel::Name, Zel::String8> LocalDevice::roots() {
  std::map<Zel::Name, Zel::String8> found;
  for (const auto& [name, root] : dir_->entities()) {
    found.emplace(name, root->fwkType()->fullName());
  }
  return found;
}

void LocalDevice::need(const Zel::Name& root, bool /*toWrite*/) {
  if (!dir_->entity(root)) {
    throw Failure(exitNotFound, std::string("no root ") + root.charPtr());
  }
}

bool LocalDevice::wait(const std::function<bool()>& isDone, double /*seconds*/) { return isDone(); }

Zel::Session::DigestResult LocalDevice::verify(const Zel::Name& /*root*/) {
  throw Failure(exitUsage, "there is nothing to compare this tree with, name a server by --socket");
}

} // namespace Maintctl
