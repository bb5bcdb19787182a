#include "support/AllocationCounter.h"

#include <cstdlib>
#include <new>

tavrin::test::AllocationTotals& tavrin::test::ThreadAllocations() {
    thread_local AllocationTotals totals{0, 0, 0, 0};
    return totals;
}

// The replaceable global allocation functions of the test binary. The array
// and nothrow forms of the standard library forward to these two.
void* operator new(std::size_t size) {
    auto& totals = tavrin::test::ThreadAllocations();
    if (totals.calls + 1 == totals.failingCall) {
        totals.failingCall = 0;
        throw std::bad_alloc();
    }
    ++totals.calls;
    totals.bytes += size;
    if (void* p = std::malloc(size == 0 ? 1 : size)) return p;
    throw std::bad_alloc();
}
void operator delete(void* p) noexcept {
    tavrin::test::ThreadAllocations().frees += p != nullptr;
    std::free(p);
}
void operator delete(void* p, std::size_t /*size*/) noexcept { operator delete(p); }
