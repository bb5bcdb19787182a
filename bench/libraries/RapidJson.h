#pragma once

#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <string>

namespace tavrin::bench {

// RapidJSON's DOM with its default allocator, and with its default flags
// (kName "rapidjson") or with full-precision number conversion, which gives
// every double as exactly as ours ("rapidjson-exact").
template <unsigned kParseFlags>
class RapidJsonDom {
public:
    static constexpr const char* kName =
        kParseFlags == rapidjson::kParseDefaultFlags ? "rapidjson" : "rapidjson-exact";
    using Tree = rapidjson::Document;

    bool Parse(const std::string& text, Tree& tree) {
        tree.Parse<kParseFlags>(text.c_str());
        return !tree.HasParseError();
    }
    std::string Serialize(Tree& tree) {
        rapidjson::StringBuffer buffer;
        rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
        tree.Accept(writer);
        return std::string(buffer.GetString(), buffer.GetSize());
    }
};

using RapidJsonLibrary = RapidJsonDom<rapidjson::kParseDefaultFlags>;
using RapidJsonExactLibrary = RapidJsonDom<rapidjson::kParseFullPrecisionFlag>;

}  // namespace tavrin::bench
