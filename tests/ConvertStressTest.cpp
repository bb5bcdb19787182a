// Conversions on several threads at once, and the deepest document the
// parser admits converted on a small thread stack.
#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include "json/Parser.h"
#include "support/ConvertFixture.h"
#include "support/LockedLog.h"
#include "support/SmallStack.h"

namespace {

using tavrin::plugin::json::Parser;

class ConvertStressTest : public tavrin::test::ConvertFixture {};

// `depth` containers nested inside each other, innermost holding 1: arrays
// only, objects only, or the two alternating.
std::string Nested(int depth, const std::string& shape) {
    std::string open;
    std::string close;
    for (int level = 0; level < depth; ++level) {
        const bool array = shape == "array" || (shape == "mixed" && level % 2 == 1);
        open += array ? "[" : "{\"k\":";
        close.insert(0, array ? "]" : "}");
    }
    return open + "1" + close;
}

TEST_F(ConvertStressTest, DeepestAdmittedDocumentsConvertOnA256KiBStack) {
    for (const char* shape : {"array", "object", "mixed"}) {
        const std::string document = Nested(Parser::kDefaultMaxDepth, shape);
        bool converted = false;
        std::string out;
        ASSERT_TRUE(tavrin::test::RunOnStack(
            256 * 1024, [&] { converted = Convert(document.c_str(), out); }));
        EXPECT_TRUE(converted) << shape;
        EXPECT_FALSE(out.empty()) << shape;
        _log.Reset();
    }
    const std::string arrays = Nested(Parser::kDefaultMaxDepth, "array");
    std::string out;
    ASSERT_TRUE(Convert(arrays.c_str(), out));
    const std::size_t depth = static_cast<std::size_t>(Parser::kDefaultMaxDepth);
    EXPECT_EQ(out, std::string(depth, '{') + "1" + std::string(depth, '}'));
}

TEST_F(ConvertStressTest, DocumentsDeeperThanTheParserAdmitsNeverReachTheWalkers) {
    const std::string document = Nested(Parser::kDefaultMaxDepth + 1, "mixed");
    std::string out = "kept";
    bool converted = true;
    ASSERT_TRUE(tavrin::test::RunOnStack(
        256 * 1024, [&] { converted = Convert(document.c_str(), out); }));
    EXPECT_FALSE(converted);
    EXPECT_EQ(out, "kept");
    EXPECT_EQ(_log.Text().find("/convert:"), std::string::npos);
}

TEST_F(ConvertStressTest, ManyConversionsOnSeveralThreadsAtOnce) {
    tavrin::test::LockedLog log;
    constexpr int kThreads = 4;
    constexpr int kRounds = 200;
    std::atomic<int> wrong{0};
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t) {
        threads.emplace_back([this, t, &wrong] {
            for (int round = 0; round < kRounds; ++round) {
                const std::string id = std::to_string(t * kRounds + round);
                const std::string document = "{\"id\":" + id + ",\"tags\":[\"t" + id + "\",2]}";
                std::string out;
                tavrin::base::AttrSet args;
                args.Add("p0", document.c_str());
                args.Add("p1", tavrin::test::HexAddress(&out).c_str());
                tavrin::base::AttrSet expected;
                expected.Add("id", id.c_str());
                expected.Add("tags", ("{{t" + id + "}+2}").c_str());
                if (!Command(args) || out != expected.ToString(false)) ++wrong;
            }
        });
    }
    for (auto& thread : threads) thread.join();
    EXPECT_EQ(wrong.load(), 0);
    EXPECT_EQ(tavrin::test::CountOf(log.Text(), "src="), kThreads * kRounds);
}

}  // namespace
