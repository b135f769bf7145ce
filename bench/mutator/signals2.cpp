#include "mutator/Mutator.h"
#include "mutator/SlotSubject.h"
#include "peers/Signals2Status.h"

void Bench::registerAll() {
  mutatorOperations<SlotSubject<Signals2Status<boost::signals2::mutex>>>();
}
