#pragma once

#include <cstddef>

namespace tavrin::test {

// Calls and bytes of the global operator new, and calls of operator delete,
// made so far by this thread (the test binary replaces both to count them,
// AllocationCounter.cpp).
struct AllocationTotals {
    std::size_t calls, bytes, frees;
};
AllocationTotals& ThreadAllocations();

// Counts the allocations of this thread while the object lives. Tests use it
// to show that an operation allocates in proportion to the size of its input
// rather than to its square, without timing anything.
class AllocationCounter {
public:
    std::size_t Calls() const { return ThreadAllocations().calls - _start.calls; }
    std::size_t Bytes() const { return ThreadAllocations().bytes - _start.bytes; }
    std::size_t Frees() const { return ThreadAllocations().frees - _start.frees; }

private:
    const AllocationTotals _start = ThreadAllocations();
};

}  // namespace tavrin::test
