#include "LocalDevice.h"

#include "Failure.h"

#include <Zel/ZelType>
#include <model/Profile.h>
#include <model/Unit.h>

namespace Maintctl {

LocalDevice::LocalDevice() : dir_(Zel::makeObject<Zel::Dir>()) {
  dir_->entityIs(Maintenance::Unit::statusDirFactory("status"));
  dir_->entityIs(Maintenance::Profile::configDirFactory("profiles"));
  dir_->entityIs(Maintenance::Profile::defaultProfileFactory("defaultProfile"));
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
