// Node::Deserialize on arbitrary bytes (made NUL-terminated; an embedded NUL
// ends the text). Property: for every accepted input the serialized text
// reads back, and the tree read from it serializes to the same text again.

#include <cstddef>
#include <cstdint>
#include <string>

#include "support/DiscardLog.h"
#include "FuzzCheck.h"
#include "json/JsonNode.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using tavrin::plugin::json::Node;
    tavrin::test::DiscardLog();
    const std::string text(reinterpret_cast<const char*>(data), size);
    Node node;
    if (!node.Deserialize(text.c_str())) {
        TAVRIN_FUZZ_CHECK(node.IsEmpty());
        return 0;
    }
    const std::string written = node.Serialize();
    Node reread;
    TAVRIN_FUZZ_CHECK(reread.Deserialize(written.c_str()));
    TAVRIN_FUZZ_CHECK(reread.Serialize() == written);
    return 0;
}
