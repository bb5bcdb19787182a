#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "json/legacy/Deserialize.h"
#include "json/legacy/Serialize.h"
#include "support/LegacyReference.h"

namespace {

// Every value with its type and every text with its length, so that results
// the unescaped writer would print alike (one text holding "," or two texts)
// still differ.
std::string Outcome(const json::Value& v) {
    std::string text;
    switch (v.GetType()) {
        case json::NullVal: return "null";
        case json::StringVal: return "S" + std::to_string(v.ToString().size()) + ":" + v.ToString();
        case json::ArrayVal:
            for (const json::Value& element : v.ToArray()) text += Outcome(element) + ";";
            return "A" + std::to_string(v.size()) + "[" + text + "]";
        case json::ObjectVal:
            for (const auto& entry : v.ToObject())
                text += "K" + std::to_string(entry.key.size()) + ":" + entry.key + "=" + Outcome(entry.value) + ";";
            return "O" + std::to_string(v.size()) + "{" + text + "}";
        default: return std::to_string(v.GetType()) + ":" + SerializeValue(v);
    }
}

}  // namespace

// The reader gives what a literal, substring-copying reading of the same
// rules gives, on many small texts made to hit the corner cases: random
// pieces that exercise every rule of the reader (brackets, quotes, escapes,
// apostrophes, separators, literals, numbers, fractions and white space),
// most often wrapped as an object or an array so that they get past the
// first checks.
TEST(LegacyDifferential, ReaderAgreesWithTheStepByStepReading) {
    const std::vector<std::string> pieces = {
        "{", "}", "[", "]", "\"", "\"k\"", "\"K\"", "\"v w\"", ":", ",", " ", "\t", "'",
        "\\", "\\\"", "\\u00e9", "\\u1", "\\n", "\\q", "1", "-2", "+3", "12", "1/2", "/",
        ".", "e", "E", "true", "TRUE", "fals", "null", "x", "99999999999", "\"\"", "\v",
        std::string(1, '\0'), "\xA0", "{\"a\":1}", "[1,2]", "\"{\"", "\"]\"", "{}", "[]"};
    const std::vector<std::string> wrappers[] = {{"{", "}"}, {"[", "]"}, {"{\"k\":", "}"}, {"", ""}};
    std::mt19937 random(20261123);
    int documents = 0;
    for (int i = 0; i < 60000; ++i) {
        std::string body;
        for (int count = std::uniform_int_distribution<int>(0, 14)(random); count > 0; --count)
            body += pieces[std::uniform_int_distribution<std::size_t>(0, pieces.size() - 1)(random)];
        const auto& wrapper = wrappers[std::uniform_int_distribution<int>(0, 3)(random)];
        const std::string text = wrapper[0] + body + wrapper[1];
        const std::string expected = Outcome(tavrin::test::ReferenceDeserialize(text));
        ASSERT_EQ(Outcome(json::Deserialize(text)), expected) << "text: " << ::testing::PrintToString(text);
        documents += expected != "null";
    }
    // Enough of the texts must be documents for the comparison to mean much.
    EXPECT_GT(documents, 4000);
}
