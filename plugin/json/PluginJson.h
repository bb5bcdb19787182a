#pragma once

#include <cstdint>

#include "base/Export.h"

// The module's version text, "pluginjson@version:1.0.1.*.6872".
extern TAVRIN_PLUGIN_API const char* __MODULE_string;
