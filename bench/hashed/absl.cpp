#include "hashed/MappedSubject.h"
#include "peers/AbslProfiles.h"

void Bench::registerAll() { profileOperations<MappedSubject<AbslProfiles>>(); }
