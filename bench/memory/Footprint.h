#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include "memory/HeapCounter.h"

namespace tavrin::bench {

// Heap of one parsed document: what the tree holds once parsing is done,
// and the most that was in use while parsing, both above what was in use
// before. The tree object itself is put on the heap so that it counts for
// every library alike.
struct Footprint {
    bool read = false;
    std::size_t heldBytes = 0;
    std::size_t peakBytes = 0;
};

// Parses `text` with a fresh Library and hands the tree to `inspect` (a
// callable taking Library::Tree&) while it is still held.
template <class Library, class Inspect>
Footprint MeasureFootprint(const std::string& text, Inspect inspect) {
    Library library;
    Footprint footprint;
    const std::size_t before = HeapInUse();
    ResetHeapPeak();
    auto tree = std::make_unique<typename Library::Tree>();
    footprint.read = library.Parse(text, *tree);
    footprint.heldBytes = HeapInUse() - before;
    footprint.peakBytes = HeapPeak() - before;
    if (footprint.read) inspect(*tree);
    return footprint;
}

}  // namespace tavrin::bench
