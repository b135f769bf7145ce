#include "peers/StandardProfiles.h"

#include "peers/MappedProfilesBodies.h"

namespace Bench {

template class MappedProfiles<
    std::unordered_map<Maintenance::Profile::ProfileKey, ProfileEntity<NoHook>*, ProfileHash>>;

} // namespace Bench
