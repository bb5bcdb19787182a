#include "support/RegisteredConvert.h"

#include <cstdint>
#include <cstdio>
#include <stdexcept>

#include "base/Factory.h"
#include "json/PluginJson.h"

namespace tavrin::bench {

namespace {

using Command = tavrin::base::IFunc<bool, tavrin::base::AttrSet&>;

Command* FindCommand() {
    static const bool registered = (RegisterPluginJson(nullptr), true);
    (void)registered;
    tavrin::stream::Factory& factory = tavrin::stream::Factory::Globle();
    tavrin::base::object* found = factory.Registry().Find("cmd_json_to_attrset_string", true);
    auto* command = dynamic_cast<Command*>(found);
    if (command == nullptr) throw std::runtime_error("cmd_json_to_attrset_string is not registered");
    return command;
}

}  // namespace

RegisteredConvert::RegisteredConvert() : _command(FindCommand()) {}

tavrin::base::AttrSet RegisteredConvert::Arguments(const std::string& json, std::string& result) {
    char address[2 * sizeof(std::uintptr_t) + 3];
    std::snprintf(address, sizeof address, "0x%llx",
                  static_cast<unsigned long long>(reinterpret_cast<std::uintptr_t>(&result)));
    tavrin::base::AttrSet arguments;
    arguments.Add("p0", json.c_str());
    arguments.Add("p1", address);
    return arguments;
}

}  // namespace tavrin::bench
