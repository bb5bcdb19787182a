#pragma once

namespace tavrin::bench {

// Keeps the memory that a benchmark iteration frees inside the process:
// large blocks come from the heap instead of fresh mappings, and the heap is
// not given back to the system. Every library is then timed on a warm heap,
// as in a long-running host, instead of on the page faults of memory mapped
// anew for every iteration (slow on virtual machines, and growing with the
// size of a library's tree rather than with its work).
void KeepFreedMemory();

}  // namespace tavrin::bench
