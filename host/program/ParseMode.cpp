#include "Input.h"
#include "Modes.h"
#include "json/JsonNode.h"

namespace tavrin::host::program {

int RunParse(const std::string& input) {
    tavrin::plugin::json::Node node;
    if (!node.Deserialize(input.c_str())) return kExitFailure;
    PrintLine(node.Serialize());
    return kExitSuccess;
}

}  // namespace tavrin::host::program
