#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <new>

#include "support/AllocationCounter.h"

namespace tavrin::test {

// Runs `action` with the n-th of its allocations failing, for n = 1, 2, ...
// until one runs through without reaching it: each run must end in success
// or std::bad_alloc and leave no allocation behind.
inline void FailEachAllocationInTurn(const std::function<void()>& action) {
    for (std::size_t n = 1;; ++n) {
        const AllocationCounter counter;
        bool threw = false;
        {
            const FailingAllocation failing(n);
            try {
                action();
            } catch (const std::bad_alloc&) {
                threw = true;
            }
        }
        EXPECT_EQ(counter.Frees(), counter.Calls()) << "allocation " << n << " failing";
        if (!threw && counter.Calls() < n) return;
    }
}

}  // namespace tavrin::test
