#pragma once

#include <cstddef>

#include "base/Export.h"

namespace tavrin::base {

// Root of every framework object: objects are allocated and released only
// through the host's class-level operators, and the release is always told
// the object's size. (Only the operators are the host's: the class itself
// has no run-time type record of its own to share.)
class object_base {
public:
    TAVRIN_HOST_API static void* operator new(std::size_t size);
    TAVRIN_HOST_API static void operator delete(void* memory, std::size_t size);
};

}  // namespace tavrin::base
