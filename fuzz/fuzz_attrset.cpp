// Property: any text read by AttrSet(const char*) and written again with
// ToString(false) reads back to the same set (same keys and values in the
// same order), and writing that set gives the same text once more.
#include <cstdint>
#include <string>

#include "FuzzCheck.h"
#include "base/AttrSet.h"
#include "support/DiscardLog.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    tavrin::test::DiscardLog();
    const std::string text(reinterpret_cast<const char*>(data), size);
    const tavrin::base::AttrSet read(text.c_str());
    const std::string written = read.ToString(false);
    const tavrin::base::AttrSet reread(written.c_str());
    TAVRIN_FUZZ_CHECK(read.Size() == reread.Size());
    for (int i = 0; i < static_cast<int>(read.Size()); ++i)
        TAVRIN_FUZZ_CHECK(std::string(read.Key(i)) == reread.Key(i) && std::string(read.Value(i)) == reread.Value(i));
    TAVRIN_FUZZ_CHECK(reread.ToString(false) == written);
    return 0;
}
