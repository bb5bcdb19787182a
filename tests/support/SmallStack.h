#pragma once

#include <pthread.h>

#include <cstddef>
#include <functional>

namespace tavrin::test {

// Runs `work` on a new thread whose stack is `bytes` long and waits for it.
// The sanitizers put red zones and shadow bookkeeping around every frame, so
// under AddressSanitizer or ThreadSanitizer the stack is four times as long.
// Returns false when such a thread could not be started. A stack overflow
// inside `work` crashes the test binary, which is what a test of bounded
// recursion wants to see fail.
inline bool RunOnStack(std::size_t bytes, const std::function<void()>& work) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    bytes *= 4;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
    bytes *= 4;
#endif
#endif
    pthread_attr_t attributes;
    pthread_t thread;
    if (pthread_attr_init(&attributes) != 0) return false;
    const auto run = [](void* job) -> void* {
        (*static_cast<const std::function<void()>*>(job))();
        return nullptr;
    };
    const bool started = pthread_attr_setstacksize(&attributes, bytes) == 0 &&
                         pthread_create(&thread, &attributes, run, const_cast<std::function<void()>*>(&work)) == 0;
    pthread_attr_destroy(&attributes);
    if (started) pthread_join(thread, nullptr);
    return started;
}

}  // namespace tavrin::test
