#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "json/legacy/Deserialize.h"
#include "json/legacy/Serialize.h"
#include "support/SourceLine.h"

namespace {

namespace fs = std::filesystem;

// What the legacy reader and writer make of a text: the written document, or
// "null" when the reader fails.
std::string ReadBack(const std::string& text) {
    const json::Value value = json::Deserialize(text);
    return value.GetType() == json::NullVal ? "null" : json::Serialize(value);
}

std::vector<fs::path> CaseInputs(const fs::path& dir) {
    std::vector<fs::path> inputs;
    for (const auto& entry : fs::directory_iterator(dir))
        if (entry.path().extension() == ".json") inputs.push_back(entry.path());
    std::sort(inputs.begin(), inputs.end());
    return inputs;
}

}  // namespace

// Every NAME.json under tests/conformance/legacy reads and writes back as
// NAME.expect says (its text up to a final line break).
TEST(LegacyConformance, EveryCaseReadsBackAsExpected) {
    const fs::path dir = fs::path(TAVRIN_SOURCE_DIR) / "tests" / "conformance" / "legacy";
    const std::vector<fs::path> inputs = CaseInputs(dir);
    ASSERT_GE(inputs.size(), 50u) << dir;
    for (const fs::path& input : inputs) {
        fs::path expectedPath = input;
        expectedPath.replace_extension(".expect");
        std::string expected = tavrin::test::ReadFile(expectedPath.string());
        ASSERT_FALSE(expected.empty()) << "no expected text for " << input.filename();
        if (expected.back() == '\n') expected.pop_back();
        EXPECT_EQ(ReadBack(tavrin::test::ReadFile(input.string())), expected) << input.filename();
    }
}
