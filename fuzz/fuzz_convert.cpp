// The conversion as the framework's callers reach it: the function object
// registered as "cmd_json_to_attrset_string", called through its IFunc base
// with the JSON text in "p0" and the address of the result string in "p1".
// Properties: a refused document leaves the result string untouched; the
// result of a document whose top level is an object is an attribute-set
// text that reads back and writes as the same text.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>

#include "support/DiscardLog.h"
#include "FuzzCheck.h"
#include "base/AttrSet.h"
#include "base/Factory.h"
#include "base/IFunc.h"
#include "json/PluginJson.h"

namespace {

using Command = tavrin::base::IFunc<bool, tavrin::base::AttrSet&>;

Command& RegisteredCommand() {
    static Command* command = [] {
        RegisterPluginJson(nullptr);
        auto& factory = tavrin::stream::Factory::Globle();
        auto* found = dynamic_cast<Command*>(factory.Registry().Find("cmd_json_to_attrset_string", true));
        TAVRIN_FUZZ_CHECK(found != nullptr);
        return found;
    }();
    return *command;
}

std::string HexAddress(const void* address) {
    char text[2 * sizeof(void*) + 3];
    std::snprintf(text, sizeof text, "%p", address);
    return text;
}

bool FirstNonBlankIs(const std::string& text, char wanted) {
    const std::size_t first = text.find_first_not_of(" \t\r\n");
    return first != std::string::npos && text[first] == wanted;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    tavrin::test::DiscardLog();
    Command& command = RegisteredCommand();
    const std::string text(reinterpret_cast<const char*>(data), size);
    const std::string untouched = "untouched";
    std::string result = untouched;
    tavrin::base::AttrSet arguments;
    arguments.Add("p0", text.c_str());
    arguments.Add("p1", HexAddress(&result).c_str());
    if (!command(arguments)) {
        TAVRIN_FUZZ_CHECK(result == untouched);
        return 0;
    }
    if (FirstNonBlankIs(text, '{')) {
        const tavrin::base::AttrSet reread(result.c_str());
        TAVRIN_FUZZ_CHECK(reread.ToString(false) == result);
    }
    return 0;
}
