// On a 256 KiB thread stack, a generated document of TAVRIN_STRESS_MB
// megabytes (4 by default, 100 under make stress) is read whole by each reader
// and written back to the same text, with allocation in proportion to its
// size. (Arbitrary bytes go to both readers in the fuzz runs.)
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <functional>
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

// A document of about `bytes` bytes of records that both writers give back
// unchanged: 32-bit integers, fractions, booleans, texts without escapes or
// outer blanks, nested arrays and objects, no decimals and no null.
std::string GeneratedDocument(std::size_t bytes) {
    std::string text = "[";
    text.reserve(bytes + 256);
    for (std::size_t i = 0; text.size() < bytes; ++i) {
        const std::string n = std::to_string(i % 2000000000);
        text += (i != 0 ? ",{\"id\":" : "{\"id\":") + n + ",\"name\":\"record " + n + " \xc3\xa9\",\"ok\":" +
                (i % 2 == 0 ? "true" : "false") + ",\"ratio\":" + std::to_string(i % 7) + "/3,\"tags\":[\"a\",\"b\",[" +
                std::to_string(-static_cast<long long>(i % 2000000000)) + "]],\"nested\":{\"x\":{\"y\":[]},\"z\":{}}}";
    }
    return text + "]";
}

// Bytes allocated per byte of text while `readAndWrite` gives the document of
// `bytes` bytes back on a small stack.
double AllocatedPerTextByte(std::size_t bytes, const std::function<std::string(const std::string&)>& readAndWrite) {
    const std::string text = GeneratedDocument(bytes);
    std::size_t allocated = 0;
    EXPECT_TRUE(RunOnStack(kSmallStack, [&] {
        const AllocationCounter counter;
        EXPECT_TRUE(readAndWrite(text) == text) << "the text written back differs";
        allocated = counter.Bytes();
    }));
    return static_cast<double>(allocated) / static_cast<double>(text.size());
}

TEST(LargeDocumentStress, BothReadersReadAndWriteAGeneratedDocumentInLinearMemory) {
    const char* megabytes = std::getenv("TAVRIN_STRESS_MB");
    const std::size_t bytes = (megabytes != nullptr && std::atoi(megabytes) > 0 ? std::atoi(megabytes) : 4) << 20;
    for (const auto& readAndWrite : {std::function<std::string(const std::string&)>([](const std::string& text) {
                                         Node document;
                                         EXPECT_TRUE(document.Deserialize(text.c_str()));
                                         return document.Serialize();
                                     }),
                                     std::function<std::string(const std::string&)>([](const std::string& text) {
                                         return json::Serialize(json::Deserialize(text));
                                     })}) {
        // Per byte of text, a document four times as large may cost at most
        // a quarter more.
        const double quarter = AllocatedPerTextByte(bytes / 4, readAndWrite);
        const double whole = AllocatedPerTextByte(bytes, readAndWrite);
        EXPECT_LT(whole, quarter * 1.25) << "bytes allocated per byte of text";
        std::printf("%zu bytes of text: %.1f bytes allocated per byte\n", bytes, whole);
    }
}

}  // namespace
}  // namespace tavrin::test
