// Registration of the conversion functions in the factory's registry and the
// module's callback slots (both registered objects are called through their
// interfaces by every conversion test; the load test checks the announced
// entry, the version is tavrin-host's); and the readers, writers and the
// conversion command on several threads at once.
#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include "json/JsonNode.h"
#include "json/legacy/Deserialize.h"
#include "json/legacy/Serialize.h"
#include "support/ConvertFixture.h"

namespace {

using tavrin::base::object;
using tavrin::plugin::json::Node;
using namespace tavrin::test;  // registry, log capture

constexpr const char* kConvertName = "convert_json_to_attrset_string";
constexpr const char* kCommandName = "cmd_json_to_attrset_string";
const std::vector<std::string> kBoth = {kConvertName, kCommandName};
const std::string kDuplicate = RedLine("base/base/Factory.h", "addFunc", "ObjectList::Find(name)");

auto& Registry() { return tavrin::stream::Factory::Globle().Registry(); }

std::vector<std::string> RegisteredNames() {
    std::vector<std::string> names;
    for (std::size_t i = 0; i < Registry().Size(); ++i) names.push_back(Registry().At(i)->GetName());
    return names;
}

// The fixture registers both; each test starts again from an empty registry.
using Registration = ConvertFixture;

TEST_F(Registration, FirstCallAddsBothInOrderLaterOnesLogOneLinePerName) {
    ClearRegistry();
    RegisterJsonConvert("ignored");
    EXPECT_EQ(RegisteredNames(), kBoth);
    EXPECT_EQ(_log.Text(), "");
    object* first = Registry().Find(kConvertName, true);
    RegisterPluginJson("again");
    EXPECT_EQ(RegisteredNames(), kBoth);
    EXPECT_EQ(Registry().Find(kConvertName, true), first);
    EXPECT_EQ(_log.Lines(), kDuplicate + kDuplicate);
    // A name that differs only in letter case is taken too.
    tavrin::stream::addFunc("CMD_JSON_TO_ATTRSET_STRING", +[](int x) { return x; });
    EXPECT_EQ(RegisteredNames(), kBoth);
    EXPECT_EQ(_log.Lines(), kDuplicate + kDuplicate + kDuplicate);
    // The first name taken beforehand: the second is still added, after it.
    ClearRegistry();
    tavrin::stream::addFunc(kConvertName, +[](int x) { return x; });
    object* theirs = Registry().Find(kConvertName, true);
    _log.Reset();
    RegisterJsonConvert(nullptr);
    EXPECT_EQ(RegisteredNames(), kBoth);
    EXPECT_EQ(Registry().Find(kConvertName, true), theirs);
    EXPECT_EQ(_log.Lines(), kDuplicate);
}

TEST_F(Registration, ConcurrentRegistrationsAddEachNameOnce) {
    for (int round = 0; round < 50; ++round) {
        ClearRegistry();
        std::atomic<int> ready{0};
        auto registerWhenBothReady = [&ready] {
            ++ready;
            while (ready.load() < 2) std::this_thread::yield();
            RegisterJsonConvert(nullptr);
        };
        std::thread first(registerWhenBothReady), second(registerWhenBothReady);
        first.join();
        second.join();
        EXPECT_EQ(RegisteredNames(), kBoth);
    }
    EXPECT_EQ(CountOf(_log.Lines(), kDuplicate), 2 * 50);
}

// Each thread reads, writes and converts documents of its own, and has one
// refused; every result is what one thread gives.
TEST_F(Registration, ReadersWritersAndConversionsOnSeveralThreadsAtOnce) {
    constexpr int kThreads = 4, kRounds = 200;
    std::atomic<int> wrong{0};
    const auto roundTrips = [this](const std::string& n) {
        const std::string text = "{\"id\":" + n + ",\"name\":\"doc" + n + "\",\"parts\":[" + n + ",{\"ok\":1/3}]}";
        Node node, refused(true);
        std::string out;
        tavrin::base::AttrSet args;
        args.Add("p0", ("{\"id\":" + n + ",\"tags\":[\"t" + n + "\",2]}").c_str());
        args.Add("p1", HexAddress(&out).c_str());
        return node.Deserialize(text) && node.Serialize() == text && json::Serialize(json::Deserialize(text)) == text &&
               !refused.Deserialize("[" + n + ",]") && refused.Is<bool>() && Command(args) &&
               out == SetText({{"id", n}, {"tags", "{{t" + n + "}+2}"}});
    };
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t)
        threads.emplace_back([&roundTrips, t, &wrong] {
            for (int round = 0; round < kRounds; ++round) wrong += !roundTrips(std::to_string(t * kRounds + round));
        });
    for (auto& thread : threads) thread.join();
    EXPECT_EQ(wrong.load(), 0);
    EXPECT_EQ(CountOf(_log.Text(), " can't detect json type,please check string format!"), kThreads * kRounds);
    EXPECT_EQ(CountOf(_log.Text(), "src="), kThreads * kRounds);
}

std::vector<const char*> gCalls;
void RecordCall(const char* text) { gCalls.push_back(text); }
void OtherCall(const char* text) { gCalls.push_back(text); }

// Both slots in one test: they are process-wide and cannot be reset to null.
TEST(Module, CallbackSlotsAreIndependentAndOnlyReadWithNull) {
    const char* text = "text";
    RegisterOptPluginJson(text);
    RegisterOptJsonRpcHandler(text);
    EXPECT_TRUE(gCalls.empty());
    EXPECT_EQ(GetCbRegisterPluginJson(nullptr), nullptr);
    EXPECT_EQ(GetCbRegisterPluginJson(RecordCall), &RecordCall);
    EXPECT_EQ(GetCbRegisterPluginJson(nullptr), &RecordCall);
    EXPECT_EQ(GetCbRegisterJsonRpcHandler(nullptr), nullptr);
    RegisterOptPluginJson(text);
    RegisterOptJsonRpcHandler(text);
    EXPECT_EQ(gCalls, (std::vector<const char*>{text}));
    EXPECT_EQ(GetCbRegisterJsonRpcHandler(OtherCall), &OtherCall);
    EXPECT_EQ(GetCbRegisterPluginJson(nullptr), &RecordCall);
    RegisterOptJsonRpcHandler(nullptr);
    EXPECT_EQ(gCalls, (std::vector<const char*>{text, nullptr}));
}

}  // namespace
