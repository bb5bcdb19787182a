#pragma once

#include <cstddef>
#include <functional>

namespace tavrin::test {

// The thread stack that every recursion of the library must fit in: the
// deepest tree the parser admits is copied, destroyed, serialized and
// converted on it.
inline constexpr std::size_t kSmallStack = 256 * 1024;

// Runs `work` on a new thread whose stack is `stackBytes` large and waits for
// it. An exception thrown by `work` is thrown again in the calling thread. A
// stack overflow crashes the process, which fails the test.
void RunOnStack(std::size_t stackBytes, const std::function<void()>& work);

// The same with kSmallStack, widened by the sanitizers' own stack use when
// the build carries one (their red zones make every frame larger).
void RunOnSmallStack(const std::function<void()>& work);

}  // namespace tavrin::test
