#pragma once

#include "peers/MappedProfiles.h"
#include "peers/Peer.h"

#include <absl/container/flat_hash_map.h>

namespace Bench {

using AbslProfiles = MappedProfiles<
    absl::flat_hash_map<Maintenance::Profile::ProfileKey, ProfileEntity<NoHook>*, ProfileHash>>;
extern template class BENCH_PEER MappedProfiles<
    absl::flat_hash_map<Maintenance::Profile::ProfileKey, ProfileEntity<NoHook>*, ProfileHash>>;

} // namespace Bench
