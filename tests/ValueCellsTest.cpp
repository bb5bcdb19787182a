// The values of one document share chunks: released on several threads at
// once, each value is still freed once and no chunk before its last value.
#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "json/JsonNode.h"

namespace {

using tavrin::plugin::json::Node;

std::string Part(int i) {
    const std::string n = std::to_string(i);
    return "{\"n\":" + n + ",\"x\":" + n + ".5,\"s\":\"part " + n + " in a text longer than inline\",\"l\":[" +
           n + ",true,1/3,[\"" + n + "\"]]}";
}

TEST(ValueCells, ValuesOfOneDocumentAreReleasedOnSeveralThreadsAtOnce) {
    constexpr int kThreads = 4, kParts = 400;
    std::string text = "[";
    for (int i = 0; i < kParts; ++i) text += (i == 0 ? "" : ",") + Part(i);
    Node document;
    ASSERT_TRUE(document.Deserialize(text + "]"));
    // Every thread takes some parts away, keeps copies of others; the
    // document goes first.
    std::vector<std::vector<Node>> taken(kThreads);
    for (int i = 0; i < kParts; ++i) taken[i % kThreads].push_back(std::move(document[i]));
    document = Node();
    std::atomic<int> wrong{0};
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t)
        threads.emplace_back([t, &taken, &wrong] {
            std::vector<Node> copies(taken[t].begin(), taken[t].end());
            for (std::size_t k = 0; k < taken[t].size(); ++k) {
                wrong += taken[t][k].Serialize() != Part(static_cast<int>(k) * kThreads + t);
                taken[t][k] = Node();
            }
            for (std::size_t k = 0; k < copies.size(); ++k)
                wrong += copies[k].Serialize() != Part(static_cast<int>(k) * kThreads + t);
        });
    for (auto& thread : threads) thread.join();
    EXPECT_EQ(wrong.load(), 0);
}

}  // namespace
