// Registration of the conversion functions in the factory's registry and the
// module's entry points, callback slots and globals.
#include <gtest/gtest.h>

#include <atomic>
#include <cstring>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "base/Factory.h"
#include "host/ReflectLog.h"
#include "json/PluginJson.h"
#include "support/ConvertFixture.h"
#include "support/LockedLog.h"
#include "support/LogCapture.h"
#include "support/Registry.h"
#include "support/SourceLine.h"

namespace {

using tavrin::base::AttrSet;
using tavrin::base::object;
using tavrin::test::ClearRegistry;
using tavrin::test::CommandFunc;
using tavrin::test::FindFunc;

constexpr const char* kConvertName = "convert_json_to_attrset_string";
constexpr const char* kCommandName = "cmd_json_to_attrset_string";

std::string DuplicateLine() {
    return tavrin::test::RedLine(
        "base/base/Factory.h",
        tavrin::test::SourceLine("base/base/Factory.h", "\"ObjectList::Find(name)\""), "addFunc",
        "ObjectList::Find(name)");
}

std::vector<std::string> RegisteredNames() {
    auto& factory = tavrin::stream::Factory::Globle();
    std::lock_guard<std::mutex> lock(factory.RegistryMutex());
    std::vector<std::string> names;
    for (std::size_t i = 0; i < factory.Registry().Size(); ++i)
        names.push_back(factory.Registry().At(i)->GetName());
    return names;
}

class RegistrationTest : public ::testing::Test {
protected:
    void SetUp() override { ClearRegistry(); }
    void TearDown() override { ClearRegistry(); }
    tavrin::test::LogCapture _log;
};

TEST_F(RegistrationTest, FirstCallAddsBothInOrderSilently) {
    RegisterJsonConvert("ignored");
    EXPECT_EQ(RegisteredNames(), (std::vector<std::string>{kConvertName, kCommandName}));
    EXPECT_EQ(_log.Text(), "");
}

TEST_F(RegistrationTest, LaterCallsAddNothingAndLogOneLinePerName) {
    RegisterPluginJson(nullptr);
    object* first = tavrin::stream::Factory::Globle().Registry().Find(kConvertName, true);
    RegisterPluginJson("again");
    EXPECT_EQ(RegisteredNames(), (std::vector<std::string>{kConvertName, kCommandName}));
    EXPECT_EQ(tavrin::stream::Factory::Globle().Registry().Find(kConvertName, true), first);
    EXPECT_EQ(_log.Text(), DuplicateLine() + DuplicateLine());
}

TEST_F(RegistrationTest, ANamePreRegisteredBySomeoneElseIsLeftAlone) {
    auto& registry = tavrin::stream::Factory::Globle().Registry();
    auto* theirs = new object(kCommandName);
    registry.Add(theirs, false);
    RegisterJsonConvert(nullptr);
    EXPECT_EQ(RegisteredNames(), (std::vector<std::string>{kCommandName, kConvertName}));
    EXPECT_EQ(registry.Find(kCommandName, true), theirs);
    EXPECT_EQ(_log.Text(), DuplicateLine());
}

TEST_F(RegistrationTest, CommandRunsThroughItsCallableInterface) {
    RegisterJsonConvert(nullptr);
    CommandFunc* command = FindFunc<CommandFunc>(kCommandName);
    ASSERT_NE(command, nullptr);
    std::string out;
    AttrSet args;
    args.Add("p0", "[1,2]");
    args.Add("p1", tavrin::test::HexAddress(&out).c_str());
    EXPECT_TRUE((*command)(args));
    EXPECT_EQ(out, "1+2");
    AttrSet missing;
    EXPECT_FALSE((*command)(missing));
}

TEST_F(RegistrationTest, ARegisteredObjectClonesIntoAWorkingCopy) {
    RegisterJsonConvert(nullptr);
    object* registered = tavrin::stream::Factory::Globle().Registry().Find(kConvertName, true);
    ASSERT_NE(registered, nullptr);
    std::unique_ptr<object> clone(registered->Clone());
    ASSERT_NE(clone, nullptr);
    EXPECT_EQ(clone->GetName(), kConvertName);
    auto* convert = dynamic_cast<tavrin::test::ConvertFunc*>(clone.get());
    ASSERT_NE(convert, nullptr);
    std::string out;
    EXPECT_TRUE((*convert)("[\"x\"]", &out));
    EXPECT_EQ(out, "{{x}}");
}

TEST_F(RegistrationTest, ConcurrentRegistrationsAddEachNameOnce) {
    tavrin::test::LockedLog log;
    for (int round = 0; round < 50; ++round) {
        ClearRegistry();
        std::atomic<int> ready{0};
        auto registerWhenBothReady = [&ready] {
            ++ready;
            while (ready.load() < 2) std::this_thread::yield();
            RegisterJsonConvert(nullptr);
        };
        std::thread first(registerWhenBothReady);
        std::thread second(registerWhenBothReady);
        first.join();
        second.join();
        EXPECT_EQ(RegisteredNames(), (std::vector<std::string>{kConvertName, kCommandName}));
    }
    EXPECT_EQ(tavrin::test::CountOf(log.Text(), DuplicateLine()), 2 * 50);
}

TEST(ModuleTest, LoadAnnouncedTheRegistrationEntryOnce) {
    int announced = 0;
    std::uintptr_t position = 0;
    const auto calls = tavrin::host::ReflectCalls();
    for (std::size_t i = 0; i < calls.size(); ++i) {
        if (calls[i].name != "PluginJson") continue;
        ++announced;
        position = i + 1;
        EXPECT_EQ(calls[i].entry, &RegisterPluginJson);
        EXPECT_EQ(calls[i].flags, 0);
    }
    EXPECT_EQ(announced, 1);
    // The substitute's ReflectAdd returns the number of calls so far.
    EXPECT_EQ(__cb_register_PluginJson, position);
}

TEST(ModuleTest, VersionText) { EXPECT_STREQ(__MODULE_string, "pluginjson@version:1.0.1.*.6872"); }

std::vector<const char*> gCalls;
void RecordCall(const char* text) { gCalls.push_back(text); }
void OtherCall(const char* text) { gCalls.push_back(text); }

// Both slots in one test: they are process-wide and cannot be reset to null.
TEST(ModuleTest, CallbackSlotsAreIndependentAndOnlyReadWithNull) {
    const char* text = "text";
    RegisterOptPluginJson(text);
    RegisterOptJsonRpcHandler(text);
    EXPECT_TRUE(gCalls.empty());
    EXPECT_EQ(GetCbRegisterPluginJson(nullptr), nullptr);
    EXPECT_EQ(GetCbRegisterPluginJson(RecordCall), &RecordCall);
    EXPECT_EQ(GetCbRegisterPluginJson(nullptr), &RecordCall);
    EXPECT_EQ(GetCbRegisterJsonRpcHandler(nullptr), nullptr);
    RegisterOptPluginJson(text);
    ASSERT_EQ(gCalls.size(), 1u);
    EXPECT_EQ(gCalls[0], text);
    RegisterOptJsonRpcHandler(text);
    EXPECT_EQ(gCalls.size(), 1u);
    EXPECT_EQ(GetCbRegisterJsonRpcHandler(OtherCall), &OtherCall);
    EXPECT_EQ(GetCbRegisterPluginJson(nullptr), &RecordCall);
    EXPECT_EQ(GetCbRegisterPluginJson(OtherCall), &OtherCall);
    RegisterOptJsonRpcHandler(nullptr);
    ASSERT_EQ(gCalls.size(), 2u);
    EXPECT_EQ(gCalls[1], nullptr);
}

}  // namespace
