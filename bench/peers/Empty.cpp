// A shared library with next to nothing in it: the limit for the time that loading takes.

#include "peers/Peer.h"

BENCH_PEER int benchEmpty();
int benchEmpty() { return 0; }
