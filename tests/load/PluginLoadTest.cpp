// Loads libpluginjson.so at run time into a process that holds only the
// substitute framework: the load announces the registration entry once and
// registers nothing; that entry registers both conversion functions.
#include <gtest/gtest.h>

#include <dlfcn.h>

#include <string>

#include "base/AttrSet.h"
#include "base/Factory.h"
#include "base/IFunc.h"
#include "host/ReflectLog.h"

TEST(PluginLoad, LoadingAnnouncesTheEntryOnceWhichRegistersBothFunctions) {
    const auto announced = [] {
        int count = 0;
        for (const auto& call : tavrin::host::ReflectCalls()) count += call.name == "PluginJson";
        return count;
    };
    EXPECT_EQ(announced(), 0);
    // The library stays loaded to the end of the process: the registry keeps
    // objects whose code lives in it.
    void* plugin = dlopen(TAVRIN_PLUGIN_LIBRARY, RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(plugin, nullptr) << dlerror();
    ASSERT_EQ(announced(), 1);
    const auto calls = tavrin::host::ReflectCalls();
    EXPECT_EQ(calls.back().flags, 0);
    EXPECT_EQ(reinterpret_cast<void*>(calls.back().entry), dlsym(plugin, "_Z18RegisterPluginJsonPKc"));
    auto* exported = static_cast<std::uintptr_t*>(dlsym(plugin, "__cb_register_PluginJson"));
    ASSERT_NE(exported, nullptr);
    EXPECT_EQ(*exported, calls.size());
    auto& registry = tavrin::stream::Factory::Globle().Registry();
    EXPECT_EQ(registry.Size(), 0u);

    tavrin::host::FindReflected("PluginJson")("PluginJson");
    using Convert = tavrin::base::IFunc<bool, const char*, std::string*>;
    auto* convert = dynamic_cast<Convert*>(registry.Find("convert_json_to_attrset_string", true));
    auto* command = dynamic_cast<tavrin::base::IFunc<bool, tavrin::base::AttrSet&>*>(
        registry.Find("cmd_json_to_attrset_string", true));
    ASSERT_TRUE(convert != nullptr && command != nullptr);
    tavrin::base::AttrSet args;
    EXPECT_FALSE((*command)(args));
    std::string out;
    EXPECT_TRUE((*convert)("[1,2]", &out));
    EXPECT_EQ(out, "1+2");
}
