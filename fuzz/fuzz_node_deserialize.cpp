// Node::Deserialize on arbitrary bytes (made NUL-terminated; an embedded NUL
// ends the text). Properties: it accepts a text exactly when the Parser does,
// with the same tree, and copies of either tree write it alike; for every
// accepted input the serialized text reads back, and the tree read from it
// serializes to the same text again.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "support/DiscardLog.h"
#include "FuzzCheck.h"
#include "json/JsonNode.h"
#include "json/Parser.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using tavrin::plugin::json::Node;
    using tavrin::plugin::json::Parser;
    tavrin::test::DiscardLog();
    const std::string text(reinterpret_cast<const char*>(data), size);
    Node node;
    const bool read = node.Deserialize(text.c_str());
    Parser parser(text.c_str());
    const std::unique_ptr<Node> parsed(parser.ParseValue());
    TAVRIN_FUZZ_CHECK(read == !parsed->IsEmpty());
    if (!read) {
        TAVRIN_FUZZ_CHECK(node.IsEmpty());
        return 0;
    }
    const std::string written = node.Serialize();
    TAVRIN_FUZZ_CHECK(parsed->Serialize() == written);
    Node copied(node), copiedParsed(*parsed);
    TAVRIN_FUZZ_CHECK(copied.Serialize() == written && copiedParsed.Serialize() == written);
    Node reread;
    TAVRIN_FUZZ_CHECK(reread.Deserialize(written.c_str()));
    TAVRIN_FUZZ_CHECK(reread.Serialize() == written);
    return 0;
}
