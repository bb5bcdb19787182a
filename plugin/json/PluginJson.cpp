// Module entry points of the plug-in.
#include "json/PluginJson.h"

const char* __MODULE_string = "pluginjson@version:1.0.1.*.6872";
