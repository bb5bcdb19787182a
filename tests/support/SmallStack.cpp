#include "support/SmallStack.h"

#include <pthread.h>

#if defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define TAVRIN_SANITIZED_STACK 1
#endif
#endif
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define TAVRIN_SANITIZED_STACK 1
#endif

namespace tavrin::test {
namespace {

// The sanitizers put red zones and shadow bookkeeping around every frame, so
// a recursion that fits a stack in the ordinary build needs several times as
// much under them; the stack asked for is widened by this factor there.
#ifdef TAVRIN_SANITIZED_STACK
constexpr std::size_t kSanitizerStackFactor = 4;
#else
constexpr std::size_t kSanitizerStackFactor = 1;
#endif

void* RunWork(void* work) {
    (*static_cast<const std::function<void()>*>(work))();
    return nullptr;
}
}  // namespace

bool RunOnStack(std::size_t bytes, const std::function<void()>& work) {
    pthread_attr_t attributes;
    if (pthread_attr_init(&attributes) != 0) return false;
    pthread_t thread;
    const bool started = pthread_attr_setstacksize(&attributes, bytes * kSanitizerStackFactor) == 0 &&
                         pthread_create(&thread, &attributes, RunWork,
                                        const_cast<std::function<void()>*>(&work)) == 0;
    pthread_attr_destroy(&attributes);
    if (started) pthread_join(thread, nullptr);
    return started;
}

}  // namespace tavrin::test
