// Module entry points of the plug-in.
#include "json/PluginJson.h"

#include <string>

#include "base/AttrSet.h"
#include "base/Factory.h"
#include "base/Reflect.h"
#include "json/internal/JsonConvert.h"

namespace {

using Callback = void (*)(const char*);

Callback gPluginJsonCallback = nullptr;
Callback gJsonRpcHandlerCallback = nullptr;

Callback ExchangeIfSet(Callback& slot, Callback callback) {
    if (callback != nullptr) slot = callback;
    return slot;
}

}  // namespace

const char* __MODULE_string = "pluginjson@version:1.0.1.*.6872";

// The load-time initialiser: announce the registration entry to the host.
std::uintptr_t __cb_register_PluginJson = ReflectAdd(RegisterPluginJson, 0, "PluginJson");

void RegisterPluginJson(const char* /*text*/) { RegisterJsonConvert(nullptr); }

void RegisterJsonConvert(const char* /*text*/) {
    using tavrin::plugin::json::cmdConvertJsonToAttrSetString;
    using tavrin::plugin::json::convertJsonToAttrSetString;
    tavrin::stream::addFunc("convert_json_to_attrset_string", convertJsonToAttrSetString);
    tavrin::stream::addFunc("cmd_json_to_attrset_string", cmdConvertJsonToAttrSetString);
}

Callback GetCbRegisterPluginJson(Callback callback) {
    return ExchangeIfSet(gPluginJsonCallback, callback);
}

Callback GetCbRegisterJsonRpcHandler(Callback callback) {
    return ExchangeIfSet(gJsonRpcHandlerCallback, callback);
}

void RegisterOptPluginJson(const char* text) {
    if (Callback callback = GetCbRegisterPluginJson(nullptr)) callback(text);
}

void RegisterOptJsonRpcHandler(const char* text) {
    if (Callback callback = GetCbRegisterJsonRpcHandler(nullptr)) callback(text);
}
