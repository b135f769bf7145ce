#pragma once

#include "Device.h"

#include <string>
#include <vector>

namespace Maintctl {

/// An entity that people ask for.
struct Member {
  std::string name; ///< as it is typed
  std::string path;
  Zel::Ptr<Zel::Entity> entity;
};

/// The units that words name: the members of `/status` by their names, any other entity by its
/// path. All units without words. Throws `Failure` if one is not there, or is no entity.
std::vector<Member> membersAt(Device& device, const std::vector<std::string>& words);

} // namespace Maintctl
