#include "mutator/Mutator.h"
#include "mutator/SlotSubject.h"
#include "peers/SigcStatus.h"

void Bench::registerAll() { mutatorOperations<SlotSubject<SigcStatus>>(); }
