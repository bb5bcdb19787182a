#pragma once

#include <string>

#include "base/AttrSet.h"
#include "base/IFunc.h"

namespace tavrin::bench {

// "cmd_json_to_attrset_string" as a framework caller reaches it: registered
// by the plug-in's own registration entry, found in the factory's registry
// and called through its IFunc base with "p0" (the JSON text) and "p1" (the
// hexadecimal address of the result string).
class RegisteredConvert {
public:
    // Registers the plug-in's functions (once per process) and finds the
    // command. Throws std::runtime_error when it is not registered.
    RegisteredConvert();

    // The command's arguments for `json`, writing into `result`, which must
    // outlive the set's use.
    static tavrin::base::AttrSet Arguments(const std::string& json, std::string& result);

    bool operator()(tavrin::base::AttrSet& arguments) { return (*_command)(arguments); }

private:
    tavrin::base::IFunc<bool, tavrin::base::AttrSet&>* _command;
};

}  // namespace tavrin::bench
