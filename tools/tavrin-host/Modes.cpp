#include "Modes.h"

#include <charconv>
#include <cstdint>
#include <cstdio>
#include <mutex>

#include "base/AttrSet.h"
#include "base/Factory.h"
#include "base/IFunc.h"
#include "host/ReflectLog.h"
#include "json/JsonNode.h"
#include "json/legacy/Deserialize.h"
#include "json/legacy/Serialize.h"

namespace tavrin::host_program {

namespace {

using Command = tavrin::base::IFunc<bool, tavrin::base::AttrSet&>;

// Writes `text` and a newline to standard output.
void PrintLine(const std::string& text) {
    std::fwrite(text.data(), 1, text.size(), stdout);
    std::fputc('\n', stdout);
    std::fflush(stdout);
}

// Runs the registration entry the plug-in announced when it was loaded.
bool RegisterPlugin() {
    tavrin::host::ReflectCall::Entry entry = tavrin::host::FindReflected("PluginJson");
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

int RunConvert(const Document& document) {
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
    arguments.Add("p0", document.text.c_str());
    arguments.Add("p1", HexAddress(&result).c_str());
    if (!(*command)(arguments)) {
        ReportWhereParsingStops(document);
        return kExitFailure;
    }
    PrintLine(result);
    return kExitSuccess;
}

int RunParse(const Document& document) {
    tavrin::plugin::json::Node node;
    if (!node.Deserialize(document.text.c_str())) {
        ReportWhereParsingStops(document);
        return kExitFailure;
    }
    PrintLine(node.Serialize());
    return kExitSuccess;
}

int RunLegacy(const Document& document) {
    const json::Value value = json::Deserialize(document.text);
    if (value.GetType() == json::NullVal) return kExitFailure;
    PrintLine(json::Serialize(value));
    return kExitSuccess;
}

}  // namespace

const Mode kModes[] = {
    {"convert",
     "register the plug-in, call \"cmd_json_to_attrset_string\" on the JSON text and print the "
     "attribute-set text",
     RunConvert},
    {"parse", "parse the JSON text with Node::Deserialize and print it re-serialized", RunParse},
    {"legacy",
     "read the JSON text with the legacy json::Deserialize and print json::Serialize of it",
     RunLegacy},
};

const std::size_t kModeCount = sizeof kModes / sizeof kModes[0];

}  // namespace tavrin::host_program
