#include "Input.h"
#include "Modes.h"
#include "json/legacy/Deserialize.h"
#include "json/legacy/Serialize.h"

namespace tavrin::host::program {

int RunLegacy(const std::string& input) {
    const json::Value document = json::Deserialize(input);
    if (document.GetType() == json::NullVal) return kExitFailure;
    PrintLine(json::Serialize(document));
    return kExitSuccess;
}

}  // namespace tavrin::host::program
