#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "base/Export.h"

namespace tavrin::host {

// One call of ReflectAdd, as the substitute host recorded it.
struct ReflectCall {
    using Entry = void (*)(const char*);
    Entry entry;
    int flags;
    std::string name;
};

// Records one ReflectAdd call; the result is the number of calls so far.
std::uintptr_t RecordReflectAdd(ReflectCall::Entry entry, int flags, const char* name);

// Every ReflectAdd call so far, in order.
TAVRIN_HOST_API std::vector<ReflectCall> ReflectCalls();

// The entry most recently announced under `name`, or null.
TAVRIN_HOST_API ReflectCall::Entry FindReflected(const char* name);

}  // namespace tavrin::host
