#pragma once

#include <string>

#include "json/legacy/Deserialize.h"
#include "json/legacy/Serialize.h"
#include "json/legacy/Value.h"

namespace tavrin::bench {

// The plug-in's older json:: library: json::Deserialize and json::Serialize.
// Its reader has no numbers with a fraction part or an exponent, refuses
// documents whose apostrophes or quotes do not pair up, and turns a nested
// container it cannot read into null. Only documents it reads whole count:
// Parse fails unless the tree holds as many values as the Node parser finds.
class LegacyLibrary {
public:
    static constexpr const char* kName = "tavrin-legacy";
    using Tree = json::Value;

    bool Parse(const std::string& text, Tree& tree);
    std::string Serialize(Tree& tree) { return json::Serialize(tree); }

private:
    // The document last checked and whether json:: reads it whole.
    const std::string* _checked = nullptr;
    bool _whole = false;
};

}  // namespace tavrin::bench
