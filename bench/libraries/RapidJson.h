#pragma once

#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <string>

namespace tavrin::bench {

// RapidJSON's DOM with its default flags and allocator.
class RapidJsonLibrary {
public:
    static constexpr const char* kName = "rapidjson";
    using Tree = rapidjson::Document;

    bool Parse(const std::string& text, Tree& tree) {
        tree.Parse(text.c_str());
        return !tree.HasParseError();
    }
    std::string Serialize(Tree& tree) {
        rapidjson::StringBuffer buffer;
        rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
        tree.Accept(writer);
        return std::string(buffer.GetString(), buffer.GetSize());
    }
};

}  // namespace tavrin::bench
