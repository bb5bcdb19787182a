#pragma once

#include <nlohmann/json.hpp>
#include <string>

namespace tavrin::bench {

// nlohmann/json: parse() without exceptions, compact dump().
class NlohmannLibrary {
public:
    static constexpr const char* kName = "nlohmann";
    using Tree = nlohmann::json;

    bool Parse(const std::string& text, Tree& tree) {
        tree = Tree::parse(text, nullptr, false);
        return !tree.is_discarded();
    }
    std::string Serialize(Tree& tree) { return tree.dump(); }
};

}  // namespace tavrin::bench
