#pragma once

#include <cstddef>

namespace tavrin::test {

// Counts the calls and bytes of the global operator new made by this thread
// while the object lives (the test binary replaces operator new to feed it).
// Tests use it to show that an operation allocates in proportion to the size
// of its input rather than to its square, without timing anything.
class AllocationCounter {
public:
    AllocationCounter();
    ~AllocationCounter();
    AllocationCounter(const AllocationCounter&) = delete;
    AllocationCounter& operator=(const AllocationCounter&) = delete;

    std::size_t Calls() const;
    std::size_t Bytes() const;

private:
    std::size_t _calls;
    std::size_t _bytes;
};

}  // namespace tavrin::test
