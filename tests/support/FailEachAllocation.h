#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <new>

#include "support/AllocationCounter.h"

namespace tavrin::test {

// Runs `action` with the n-th of its allocations failing, for n = 1, 2, ...
// until one runs through without reaching it. A run that reaches it must end
// in the std::bad_alloc, and no run may leave an allocation behind.
inline void FailEachAllocationInTurn(const std::function<void()>& action) {
    for (std::size_t n = 1;; ++n) {
        const AllocationCounter counter;
        bool threw = false, reached = false;
        {
            const FailingAllocation failing(n);
            try {
                action();
            } catch (const std::bad_alloc&) {
                threw = true;
            }
            reached = failing.Reached();
        }
        EXPECT_EQ(counter.Frees(), counter.Calls()) << "allocation " << n << " failing";
        EXPECT_EQ(threw, reached) << "allocation " << n << " failing";
        if (!reached) return;
    }
}

}  // namespace tavrin::test
