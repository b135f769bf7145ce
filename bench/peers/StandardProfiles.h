#pragma once

#include "peers/MappedProfiles.h"
#include "peers/Peer.h"

#include <unordered_map>

namespace Bench {

using StandardProfiles = MappedProfiles<
    std::unordered_map<Maintenance::Profile::ProfileKey, ProfileEntity<NoHook>*, ProfileHash>>;
extern template class BENCH_PEER MappedProfiles<
    std::unordered_map<Maintenance::Profile::ProfileKey, ProfileEntity<NoHook>*, ProfileHash>>;

} // namespace Bench
