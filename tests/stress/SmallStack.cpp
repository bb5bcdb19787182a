#include "stress/SmallStack.h"

#include <pthread.h>

#include <exception>
#include <stdexcept>
#include <string>

namespace tavrin::test {

namespace {

struct Job {
    const std::function<void()>* work;
    std::exception_ptr failure;
};

void* RunJob(void* argument) {
    Job& job = *static_cast<Job*>(argument);
    try {
        (*job.work)();
    } catch (...) {
        job.failure = std::current_exception();
    }
    return nullptr;
}

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr std::size_t kSanitizerStackFactor = 4;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
constexpr std::size_t kSanitizerStackFactor = 4;
#else
constexpr std::size_t kSanitizerStackFactor = 1;
#endif
#else
constexpr std::size_t kSanitizerStackFactor = 1;
#endif

}  // namespace

void RunOnStack(std::size_t stackBytes, const std::function<void()>& work) {
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    const int sized = pthread_attr_setstacksize(&attributes, stackBytes);
    Job job{&work, nullptr};
    pthread_t thread;
    const int started = sized == 0 ? pthread_create(&thread, &attributes, RunJob, &job) : sized;
    pthread_attr_destroy(&attributes);
    if (started != 0)
        throw std::runtime_error("cannot start a thread with a stack of " +
                                 std::to_string(stackBytes) + " bytes");
    pthread_join(thread, nullptr);
    if (job.failure) std::rethrow_exception(job.failure);
}

void RunOnSmallStack(const std::function<void()>& work) {
    RunOnStack(kSmallStack * kSanitizerStackFactor, work);
}

}  // namespace tavrin::test
