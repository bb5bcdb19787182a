// The conversion as the framework's callers reach it: the function object
// registered as "cmd_json_to_attrset_string", called through its IFunc base
// with the JSON text in "p0" and the address of the result string in "p1".
// Properties: a refused document leaves the result string untouched; the
// result of a document whose top level is an object is an attribute-set
// text that reads back and writes as the same text.
#include <cstdint>
#include <cstdio>
#include <string>

#include "FuzzCheck.h"
#include "base/AttrSet.h"
#include "base/Factory.h"
#include "base/IFunc.h"
#include "json/PluginJson.h"
#include "support/DiscardLog.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using Command = tavrin::base::IFunc<bool, tavrin::base::AttrSet&>;
    tavrin::test::DiscardLog();
    static Command* command = [] {
        RegisterPluginJson(nullptr);
        auto* found = dynamic_cast<Command*>(
            tavrin::stream::Factory::Globle().Registry().Find("cmd_json_to_attrset_string", true));
        TAVRIN_FUZZ_CHECK(found != nullptr);
        return found;
    }();
    const std::string text(reinterpret_cast<const char*>(data), size);
    std::string result = "untouched";
    char address[2 * sizeof(void*) + 3];
    std::snprintf(address, sizeof address, "%p", static_cast<void*>(&result));
    tavrin::base::AttrSet arguments;
    arguments.Add("p0", text.c_str());
    arguments.Add("p1", address);
    if (!(*command)(arguments)) {
        TAVRIN_FUZZ_CHECK(result == "untouched");
    } else if (const std::size_t first = text.find_first_not_of(" \t\r\n");
               first != std::string::npos && text[first] == '{') {
        TAVRIN_FUZZ_CHECK(tavrin::base::AttrSet(result.c_str()).ToString(false) == result);
    }
    return 0;
}
