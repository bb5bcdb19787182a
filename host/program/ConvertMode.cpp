#include <charconv>
#include <cstdint>
#include <cstdio>
#include <mutex>

#include "Input.h"
#include "Modes.h"
#include "base/AttrSet.h"
#include "base/Factory.h"
#include "base/IFunc.h"
#include "host/ReflectLog.h"

namespace tavrin::host::program {

namespace {

using Command = tavrin::base::IFunc<bool, tavrin::base::AttrSet&>;

// Runs the registration entry the plug-in announced when it was loaded.
bool RegisterPlugin() {
    ReflectCall::Entry entry = FindReflected("PluginJson");
    if (entry == nullptr) return false;
    entry("PluginJson");
    return true;
}

Command* FindCommand(const char* name) {
    auto& factory = tavrin::stream::Factory::Globle();
    std::lock_guard<std::mutex> lock(factory.RegistryMutex());
    return dynamic_cast<Command*>(factory.Registry().Find(name, true));
}

// "0x" and the address in hexadecimal.
std::string HexAddress(const void* address) {
    char digits[2 * sizeof(std::uintptr_t) + 1];
    const auto value = reinterpret_cast<std::uintptr_t>(address);
    const auto end = std::to_chars(digits, digits + sizeof digits, value, 16).ptr;
    return "0x" + std::string(digits, end);
}

}  // namespace

int RunConvert(const std::string& input) {
    if (!RegisterPlugin()) {
        std::fprintf(stderr, "tavrin-host: the plug-in announced no \"PluginJson\" entry\n");
        return kExitFailure;
    }
    Command* command = FindCommand("cmd_json_to_attrset_string");
    if (command == nullptr) {
        std::fprintf(stderr, "tavrin-host: \"cmd_json_to_attrset_string\" is not registered\n");
        return kExitFailure;
    }
    std::string result;
    tavrin::base::AttrSet arguments;
    arguments.Add("p0", input.c_str());
    arguments.Add("p1", HexAddress(&result).c_str());
    if (!(*command)(arguments)) return kExitFailure;
    PrintLine(result);
    return kExitSuccess;
}

}  // namespace tavrin::host::program
