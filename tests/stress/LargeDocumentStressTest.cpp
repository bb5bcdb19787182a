// A generated document of TAVRIN_STRESS_MB megabytes (4 by default, 100
// under make stress) is read whole by each reader on a 256 KiB thread stack
// and written back to the same text, with allocation in proportion to its
// size.

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "json/JsonNode.h"
#include "json/legacy/Deserialize.h"
#include "json/legacy/Serialize.h"
#include "support/AllocationCounter.h"
#include "support/SmallStack.h"

namespace tavrin::test {
namespace {

using tavrin::plugin::json::Node;

constexpr std::size_t kSmallStack = 256 * 1024;

// TAVRIN_STRESS_MB megabytes (make stress sets 100), 4 when it is not set.
std::size_t StressDocumentBytes() {
    const char* text = std::getenv("TAVRIN_STRESS_MB");
    const unsigned long megabytes = text != nullptr ? std::strtoul(text, nullptr, 10) : 0;
    return (megabytes != 0 ? megabytes : 4) * 1024 * 1024;
}

// Allocation per byte of text may grow by this factor from a document to
// one four times as large: reading and writing are linear in the text.
constexpr double kLinearSlack = 1.25;

// One record in Node's canonical text: every kind the node writer emits.
void AppendNodeRecord(std::string& text, std::size_t i) {
    const std::string n = std::to_string(i);
    const std::string negative = std::to_string(-static_cast<long long>(i));
    text += "{\"id\":" + n + ",\"name\":\"record " + n + " \\u00e9\\n\\\"q\\\"\",\"ok\":";
    text += i % 2 == 0 ? "true" : "false";
    text += ",\"ratio\":" + std::to_string(i % 7) + "/3,\"score\":" + n + ".5";
    text += ",\"tags\":[\"a\",\"b\",[" + negative + "]],\"nested\":{\"x\":{\"y\":[]},\"z\":{}}}";
}

// One record in the legacy writer's canonical text: 32-bit integers, texts
// without escapes or outer blanks, null, and no decimals.
void AppendLegacyRecord(std::string& text, std::size_t i) {
    const std::string n = std::to_string(i % 2000000000);
    const std::string negative = std::to_string(-static_cast<long long>(i % 2000000000));
    text += "{\"id\":" + n + ",\"name\":\"record " + n + " \xc3\xa9\",\"ok\":";
    text += i % 2 == 0 ? "true" : "false";
    text += ",\"ratio\":" + std::to_string(i % 7) + "/3,\"none\":null";
    text += ",\"tags\":[\"a\",\"b\",[" + negative + "]],\"nested\":{\"x\":{\"y\":[]},\"z\":{}}}";
}

template <class AppendRecord>
std::string GeneratedDocument(std::size_t bytes, AppendRecord append) {
    std::string text = "[";
    text.reserve(bytes + 256);
    for (std::size_t i = 0; text.size() < bytes; ++i) {
        if (i != 0) text += ',';
        append(text, i);
    }
    text += ']';
    return text;
}

// Reads and writes a document of `bytes` bytes made by `append` on a small
// stack, expecting the same text back; returns the bytes allocated per byte of
// text.
template <class AppendRecord, class ReadAndWrite>
double AllocatedPerTextByte(std::size_t bytes, AppendRecord append, ReadAndWrite readAndWrite) {
    const std::string text = GeneratedDocument(bytes, append);
    std::size_t allocated = 0;
    EXPECT_TRUE(RunOnStack(kSmallStack, [&] {
        const AllocationCounter counter;
        EXPECT_TRUE(readAndWrite(text) == text) << "the text written back differs";
        allocated = counter.Bytes();
    }));
    return static_cast<double>(allocated) / static_cast<double>(text.size());
}

template <class AppendRecord, class ReadAndWrite>
void ExpectLinear(AppendRecord append, ReadAndWrite readAndWrite) {
    const std::size_t bytes = StressDocumentBytes();
    const double quarter = AllocatedPerTextByte(bytes / 4, append, readAndWrite);
    const double whole = AllocatedPerTextByte(bytes, append, readAndWrite);
    EXPECT_LT(whole, quarter * kLinearSlack) << "bytes allocated per byte of text";
    std::printf("%zu bytes of text: %.1f bytes allocated per byte\n", bytes, whole);
}

TEST(LargeDocumentStress, BothReadersReadAndWriteAGeneratedDocumentInLinearMemory) {
    ExpectLinear(AppendNodeRecord, [](const std::string& text) {
        Node document;
        EXPECT_TRUE(document.Deserialize(text.c_str()));
        return document.Serialize();
    });
    ExpectLinear(AppendLegacyRecord, [](const std::string& text) { return json::Serialize(json::Deserialize(text)); });
}

}  // namespace
}  // namespace tavrin::test
