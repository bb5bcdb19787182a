// The two readers and writers share no state: documents read and written on
// several threads at once come out as they would on one, and every refused
// document logs its own lines.

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include "json/JsonNode.h"
#include "json/legacy/Deserialize.h"
#include "json/legacy/Serialize.h"
#include "support/LockedLog.h"

namespace tavrin::test {
namespace {

using tavrin::plugin::json::Node;

constexpr int kThreads = 4;
constexpr int kRounds = 200;

// A document of its own for every thread and round, in the text both writers
// produce.
std::string DocumentFor(int id) {
    const std::string n = std::to_string(id);
    return "{\"id\":" + n + ",\"name\":\"doc" + n + "\",\"parts\":[" + n + ",{\"ok\":true},[1/" +
           std::to_string(id % 9 + 1) + "]]}";
}

// Reads and writes the document of `id` with both models; false when a text
// written back differs or a refused document was taken.
bool RoundTrips(int id) {
    const std::string text = DocumentFor(id);
    Node node;
    const bool nodeSame = node.Deserialize(text) && node.Serialize() == text;
    const bool legacySame = json::Serialize(json::Deserialize(text)) == text;
    Node refused(true);
    const bool refusedKept = !refused.Deserialize("[" + std::to_string(id) + ",]") && refused.Is<bool>();
    return nodeSame && legacySame && refusedKept;
}

TEST(ConcurrentReaders, DocumentsOnSeveralThreadsAtOnce) {
    LockedLog log;
    std::atomic<int> wrong{0};
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t) {
        threads.emplace_back([t, &wrong] {
            for (int round = 0; round < kRounds; ++round)
                if (!RoundTrips(t * kRounds + round)) ++wrong;
        });
    }
    for (auto& thread : threads) thread.join();
    EXPECT_EQ(wrong.load(), 0);
    EXPECT_EQ(CountOf(log.Text(), " can't detect json type,please check string format!"),
              kThreads * kRounds);
}

}  // namespace
}  // namespace tavrin::test
