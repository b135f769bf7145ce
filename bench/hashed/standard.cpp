#include "hashed/MappedSubject.h"
#include "peers/StandardProfiles.h"

void Bench::registerAll() { profileOperations<MappedSubject<StandardProfiles>>(); }
