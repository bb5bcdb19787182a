#pragma once

#include <cstdint>

#include "base/Export.h"

// Number of leading characters of a compiled-in source path (__FILE__) that
// log lines skip, so that they show the project-relative path.
extern TAVRIN_HOST_API int __root_path_offset;

// The host's load-time registration call: a module announces its
// registration entry under a name. The result is the host's.
TAVRIN_HOST_API std::uintptr_t ReflectAdd(void (*entry)(const char*), int flags, const char* name);
