// The readers, writers and the conversion command share no state: documents
// handled on several threads at once come out as they would on one, and every
// refused document logs its own lines.
#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include "json/JsonNode.h"
#include "json/legacy/Deserialize.h"
#include "json/legacy/Serialize.h"
#include "support/ConvertFixture.h"

namespace tavrin::test {
namespace {

using tavrin::plugin::json::Node;

class ConcurrentReaders : public ConvertFixture {
protected:
    // Reads, writes and converts a document of its own for `id`; false when
    // any result differs from what one thread gives.
    bool RoundTrips(int id) {
        const std::string n = std::to_string(id);
        const std::string text = "{\"id\":" + n + ",\"name\":\"doc" + n + "\",\"parts\":[" + n +
                                 ",{\"ok\":true},[1/" + std::to_string(id % 9 + 1) + "]]}";
        Node node;
        const bool nodeSame = node.Deserialize(text) && node.Serialize() == text;
        const bool legacySame = json::Serialize(json::Deserialize(text)) == text;
        Node refused(true);
        const bool refusedKept = !refused.Deserialize("[" + n + ",]") && refused.Is<bool>();
        std::string out;
        tavrin::base::AttrSet args;
        args.Add("p0", ("{\"id\":" + n + ",\"tags\":[\"t" + n + "\",2]}").c_str());
        args.Add("p1", HexAddress(&out).c_str());
        const bool converted = Command(args) && out == SetText({{"id", n}, {"tags", "{{t" + n + "}+2}"}});
        return nodeSame && legacySame && refusedKept && converted;
    }
};

TEST_F(ConcurrentReaders, DocumentsOnSeveralThreadsAtOnce) {
    constexpr int kThreads = 4, kRounds = 200;
    std::atomic<int> wrong{0};
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t)
        threads.emplace_back([this, t, &wrong] {
            for (int round = 0; round < kRounds; ++round) wrong += !RoundTrips(t * kRounds + round);
        });
    for (auto& thread : threads) thread.join();
    EXPECT_EQ(wrong.load(), 0);
    EXPECT_EQ(CountOf(_log.Text(), " can't detect json type,please check string format!"), kThreads * kRounds);
    EXPECT_EQ(CountOf(_log.Text(), "src="), kThreads * kRounds);
}

}  // namespace
}  // namespace tavrin::test
