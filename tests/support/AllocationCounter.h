#pragma once

#include <cstddef>

namespace tavrin::test {

// Calls and bytes of the global operator new, and calls of operator delete,
// made so far by this thread (the test binary replaces both to count them,
// AllocationCounter.cpp).
struct AllocationTotals {
    std::size_t calls, bytes, frees;
    std::size_t failingCall;  // the number of the call that throws std::bad_alloc (0: none)
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

// Makes the `n`-th allocation of this thread from now on (1: the next one)
// throw std::bad_alloc, once, unless the object has gone first.
class FailingAllocation {
public:
    explicit FailingAllocation(std::size_t n) { ThreadAllocations().failingCall = ThreadAllocations().calls + n; }
    ~FailingAllocation() { ThreadAllocations().failingCall = 0; }
    // Whether the failing allocation has happened.
    bool Reached() const { return ThreadAllocations().failingCall == 0; }
    FailingAllocation(const FailingAllocation&) = delete;
    FailingAllocation& operator=(const FailingAllocation&) = delete;
};

}  // namespace tavrin::test
