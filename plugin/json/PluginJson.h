#pragma once

#include <cstdint>

#include "base/Export.h"

// The module's version text, "pluginjson@version:1.0.1.*.6872".
extern TAVRIN_PLUGIN_API const char* __MODULE_string;

// What the host's ReflectAdd returned when the library was loaded.
extern TAVRIN_PLUGIN_API std::uintptr_t __cb_register_PluginJson;

// The registration entry handed to the host at load time: registers the
// conversion functions (the text is ignored).
TAVRIN_PLUGIN_API void RegisterPluginJson(const char* text);

// Registers "convert_json_to_attrset_string" and "cmd_json_to_attrset_string"
// in the factory's registry; names registered already are left alone and
// logged. The text is ignored.
TAVRIN_PLUGIN_API void RegisterJsonConvert(const char* text);

// Callback slots. A non-null argument replaces the slot's callback; every
// call returns the slot's current callback (so null only reads).
TAVRIN_PLUGIN_API void (*GetCbRegisterPluginJson(void (*callback)(const char*)))(const char*);
TAVRIN_PLUGIN_API void (*GetCbRegisterJsonRpcHandler(void (*callback)(const char*)))(const char*);

// Call the slot's callback with `text` when one is set; otherwise nothing.
TAVRIN_PLUGIN_API void RegisterOptPluginJson(const char* text);
TAVRIN_PLUGIN_API void RegisterOptJsonRpcHandler(const char* text);
