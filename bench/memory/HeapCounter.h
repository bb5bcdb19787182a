#pragma once

#include <cstddef>

// Bytes requested from the heap and not yet released, counted by the
// allocator replacement in CountingHeap.cpp (the malloc family, which
// operator new, the C++ containers and every peer library end in). Sizes are
// the requested ones, without the allocator's rounding or bookkeeping.
namespace tavrin::bench {

std::size_t HeapInUse();
// The highest HeapInUse() since the last ResetHeapPeak().
std::size_t HeapPeak();
void ResetHeapPeak();

}  // namespace tavrin::bench
