// Property: any text read by AttrSet(const char*) and written again with
// ToString(false) reads back to the same set (same keys and values in the
// same order), and writing that set gives the same text once more.

#include <cstddef>
#include <cstdint>
#include <string>

#include "support/DiscardLog.h"
#include "FuzzCheck.h"
#include "base/AttrSet.h"

namespace {

bool SameEntries(const tavrin::base::AttrSet& a, const tavrin::base::AttrSet& b) {
    if (a.Size() != b.Size()) return false;
    for (std::size_t i = 0; i < a.Size(); ++i) {
        const int index = static_cast<int>(i);
        if (std::string(a.Key(index)) != b.Key(index)) return false;
        if (std::string(a.Value(index)) != b.Value(index)) return false;
    }
    return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    tavrin::test::DiscardLog();
    const std::string text(reinterpret_cast<const char*>(data), size);
    const tavrin::base::AttrSet read(text.c_str());
    const std::string written = read.ToString(false);
    const tavrin::base::AttrSet reread(written.c_str());
    TAVRIN_FUZZ_CHECK(SameEntries(read, reread));
    TAVRIN_FUZZ_CHECK(reread.ToString(false) == written);
    return 0;
}
