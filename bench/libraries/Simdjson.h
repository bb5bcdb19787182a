#pragma once

#include <simdjson.h>

#include <string>

#include "support/Documents.h"

namespace tavrin::bench {

// simdjson's DOM parser, reused across documents as it is meant to be. It
// reads the text in place: Documents keep SIMDJSON_PADDING readable bytes
// after every text. The tree lives in the parser, so it holds one document at
// a time.
class SimdjsonLibrary {
public:
    static constexpr const char* kName = "simdjson";
    static_assert(kReadPadding >= simdjson::SIMDJSON_PADDING, "documents keep enough padding");
    using Tree = simdjson::dom::element;

    bool Parse(const std::string& text, Tree& tree) {
        return _parser.parse(text.data(), text.size(), false).get(tree) == simdjson::SUCCESS;
    }
    std::string Serialize(Tree& tree) { return simdjson::to_string(tree); }

private:
    simdjson::dom::parser _parser;
};

}  // namespace tavrin::bench
