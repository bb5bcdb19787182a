#pragma once

#include <json/json.h>

#include <memory>
#include <sstream>
#include <string>

namespace tavrin::bench {

// JsonCpp: one CharReader and one StreamWriter without indentation, made
// once and reused.
class JsonCppLibrary {
public:
    static constexpr const char* kName = "jsoncpp";
    using Tree = Json::Value;

    JsonCppLibrary() {
        _reader.reset(Json::CharReaderBuilder().newCharReader());
        Json::StreamWriterBuilder writer;
        writer["indentation"] = "";
        _writer.reset(writer.newStreamWriter());
    }

    bool Parse(const std::string& text, Tree& tree) {
        return _reader->parse(text.data(), text.data() + text.size(), &tree, nullptr);
    }
    std::string Serialize(Tree& tree) {
        std::ostringstream out;
        _writer->write(tree, &out);
        return out.str();
    }

private:
    std::unique_ptr<Json::CharReader> _reader;
    std::unique_ptr<Json::StreamWriter> _writer;
};

}  // namespace tavrin::bench
