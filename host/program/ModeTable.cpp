#include "Modes.h"

namespace tavrin::host::program {

const Mode kModes[] = {
    {"convert",
     "register the plug-in, call \"cmd_json_to_attrset_string\" on the JSON text and print the "
     "attribute-set text",
     RunConvert},
    {"parse", "parse the JSON text with Node::Deserialize and print it re-serialized", RunParse},
    {"legacy",
     "read the JSON text with the legacy json::Deserialize and print json::Serialize of it",
     RunLegacy},
};

const std::size_t kModeCount = sizeof kModes / sizeof kModes[0];

}  // namespace tavrin::host::program
