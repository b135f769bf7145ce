#pragma once

/// Marks what a peer's shared library exports; see `Zel/Api` for the library's own mark.
#define BENCH_PEER __attribute__((visibility("default")))
