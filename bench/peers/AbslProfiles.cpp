#include "peers/AbslProfiles.h"

#include "peers/MappedProfilesBodies.h"

namespace Bench {

template class MappedProfiles<
    absl::flat_hash_map<Maintenance::Profile::ProfileKey, ProfileEntity<NoHook>*, ProfileHash>>;

} // namespace Bench
