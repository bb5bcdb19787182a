#include "base/Reflect.h"

#include "host/ReflectLog.h"

#include <mutex>
#include <vector>

#ifndef TAVRIN_SOURCE_PREFIX
#define TAVRIN_SOURCE_PREFIX ""
#endif

// Log lines show source paths relative to the project: the compiler records
// absolute paths below the project's source directory, which this skips.
int __root_path_offset = static_cast<int>(sizeof(TAVRIN_SOURCE_PREFIX) - 1);

namespace tavrin::host {
namespace {
// Function-local statics: a module's load-time initialiser may call
// ReflectAdd before this library's own static objects are set up.
std::mutex& ReflectMutex() {
    static std::mutex mutex;
    return mutex;
}
std::vector<ReflectCall>& Calls() {
    static std::vector<ReflectCall> calls;
    return calls;
}
}  // namespace

std::vector<ReflectCall> ReflectCalls() {
    std::lock_guard<std::mutex> lock(ReflectMutex());
    return Calls();
}

std::uintptr_t RecordReflectAdd(ReflectCall::Entry entry, int flags, const char* name) {
    std::lock_guard<std::mutex> lock(ReflectMutex());
    Calls().push_back({entry, flags, name != nullptr ? name : ""});
    return static_cast<std::uintptr_t>(Calls().size());
}

ReflectCall::Entry FindReflected(const char* name) {
    std::lock_guard<std::mutex> lock(ReflectMutex());
    for (auto it = Calls().rbegin(); it != Calls().rend(); ++it)
        if (it->name == name) return it->entry;
    return nullptr;
}
}  // namespace tavrin::host

std::uintptr_t ReflectAdd(void (*entry)(const char*), int flags, const char* name) {
    return tavrin::host::RecordReflectAdd(entry, flags, name);
}
