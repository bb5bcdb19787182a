#include "support/SmallStack.h"

#include <pthread.h>

namespace tavrin::test {
namespace {
void* RunWork(void* work) {
    (*static_cast<const std::function<void()>*>(work))();
    return nullptr;
}
}  // namespace

bool RunOnStack(std::size_t bytes, const std::function<void()>& work) {
    pthread_attr_t attributes;
    if (pthread_attr_init(&attributes) != 0) return false;
    pthread_t thread;
    const bool started = pthread_attr_setstacksize(&attributes, bytes) == 0 &&
                         pthread_create(&thread, &attributes, RunWork,
                                        const_cast<std::function<void()>*>(&work)) == 0;
    pthread_attr_destroy(&attributes);
    if (started) pthread_join(thread, nullptr);
    return started;
}

}  // namespace tavrin::test
