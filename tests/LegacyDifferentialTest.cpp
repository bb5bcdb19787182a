#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "json/legacy/Deserialize.h"
#include "json/legacy/Serialize.h"
#include "support/LegacyReference.h"

namespace {

std::string Outcome(const json::Value& v);

std::string ElementsOutcome(const json::Value& v) {
    std::string text = "A" + std::to_string(v.size()) + "[";
    for (const json::Value& element : v.ToArray()) text += Outcome(element) + ";";
    return text + "]";
}

std::string EntriesOutcome(const json::Value& v) {
    std::string text = "O" + std::to_string(v.size()) + "{";
    for (const auto& entry : v.ToObject())
        text += "K" + std::to_string(entry.key.size()) + ":" + entry.key + "=" + Outcome(entry.value) + ";";
    return text + "}";
}

// Every value with its type and every text with its length, so that results
// the unescaped writer would print alike (one text holding "," or two texts)
// still differ.
std::string Outcome(const json::Value& v) {
    switch (v.GetType()) {
        case json::NullVal: return "null";
        case json::StringVal: return "S" + std::to_string(v.ToString().size()) + ":" + v.ToString();
        case json::ArrayVal: return ElementsOutcome(v);
        case json::ObjectVal: return EntriesOutcome(v);
        default: return std::to_string(v.GetType()) + ":" + SerializeValue(v);
    }
}

// Pieces that exercise every rule of the reader: brackets, quotes, escapes,
// apostrophes, separators, literals, numbers, fractions and white space.
const std::vector<std::string> kPieces = {
    "{", "}", "[", "]", "\"", "\"k\"", "\"K\"", "\"v w\"", ":", ",", " ", "\t", "'",
    "\\", "\\\"", "\\u00e9", "\\u1", "\\n", "\\q", "1", "-2", "+3", "12", "1/2", "/",
    ".", "e", "E", "true", "TRUE", "fals", "null", "x", "99999999999", "\"\"", "\v",
    std::string(1, '\0'), "\xA0", "{\"a\":1}", "[1,2]", "\"{\"", "\"]\"", "{}", "[]"};

std::string RandomPieces(std::mt19937& random, int count) {
    std::uniform_int_distribution<std::size_t> pick(0, kPieces.size() - 1);
    std::string text;
    for (int i = 0; i < count; ++i) text += kPieces[pick(random)];
    return text;
}

// A random text, most often wrapped as an object or an array so that it gets
// past the first checks.
std::string RandomDocument(std::mt19937& random) {
    std::uniform_int_distribution<int> length(0, 14);
    std::uniform_int_distribution<int> shape(0, 3);
    const std::string body = RandomPieces(random, length(random));
    switch (shape(random)) {
        case 0: return "{" + body + "}";
        case 1: return "[" + body + "]";
        case 2: return "{\"k\":" + body + "}";
        default: return body;
    }
}

}  // namespace

// The reader gives what a literal, substring-copying reading of the same
// rules gives, on many small texts made to hit the corner cases.
TEST(LegacyDifferential, ReaderAgreesWithTheStepByStepReading) {
    std::mt19937 random(20261123);
    int documents = 0;
    for (int i = 0; i < 60000; ++i) {
        const std::string text = RandomDocument(random);
        const std::string expected = Outcome(tavrin::test::ReferenceDeserialize(text));
        ASSERT_EQ(Outcome(json::Deserialize(text)), expected) << "text: " << ::testing::PrintToString(text);
        documents += expected != "null";
    }
    // Enough of the texts must be documents for the comparison to mean much.
    EXPECT_GT(documents, 4000);
}
