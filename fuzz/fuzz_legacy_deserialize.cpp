// json::Deserialize on arbitrary bytes and json::Serialize of the result:
// no crash, no leak, no undefined behaviour. A document that the reader
// refuses is a NullVal, which the writer turns into an empty text.

#include <cstddef>
#include <cstdint>
#include <string>

#include "support/DiscardLog.h"
#include "FuzzCheck.h"
#include "json/legacy/Deserialize.h"
#include "json/legacy/Serialize.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    tavrin::test::DiscardLog();
    const std::string text(reinterpret_cast<const char*>(data), size);
    const json::Value value = json::Deserialize(text);
    const std::string written = json::Serialize(value);
    if (value.GetType() == json::NullVal) TAVRIN_FUZZ_CHECK(written.empty());
    return 0;
}
