#pragma once

#include <cstddef>
#include <functional>

namespace tavrin::test {

// Runs `work` on a new thread whose stack is `bytes` long and waits for it.
// Returns false when such a thread could not be started. A stack overflow
// inside `work` crashes the test binary, which is what a test of bounded
// recursion wants to see fail.
bool RunOnStack(std::size_t bytes, const std::function<void()>& work);

}  // namespace tavrin::test
