#include "support/AllocationCounter.h"

#include <cstdlib>
#include <new>

namespace tavrin::test {
void CountAllocation(std::size_t size);
namespace {
thread_local std::size_t tCalls = 0;
thread_local std::size_t tBytes = 0;
}  // namespace

void CountAllocation(std::size_t size) {
    ++tCalls;
    tBytes += size;
}

AllocationCounter::AllocationCounter() : _calls(tCalls), _bytes(tBytes) {}
AllocationCounter::~AllocationCounter() = default;
std::size_t AllocationCounter::Calls() const { return tCalls - _calls; }
std::size_t AllocationCounter::Bytes() const { return tBytes - _bytes; }

}  // namespace tavrin::test

// The replaceable global allocation functions of the test binary. The array
// and nothrow forms of the standard library forward to these two.
void* operator new(std::size_t size) {
    tavrin::test::CountAllocation(size);
    if (void* p = std::malloc(size == 0 ? 1 : size)) return p;
    throw std::bad_alloc();
}
void operator delete(void* p) noexcept { std::free(p); }
void operator delete(void* p, std::size_t /*size*/) noexcept { std::free(p); }
