#include "support/WarmHeap.h"

#include <malloc.h>

namespace tavrin::bench {

void KeepFreedMemory() {
    // The largest threshold the C library accepts on 64-bit systems; the
    // largest tree block of the benchmarks stays below it.
    mallopt(M_MMAP_THRESHOLD, 32 * 1024 * 1024);
    mallopt(M_TRIM_THRESHOLD, 1024 * 1024 * 1024);
}

}  // namespace tavrin::bench
