// Loads libpluginjson.so at run time into a process that holds only the
// substitute framework: the load announces the registration entry once, and
// that entry registers both conversion functions.
#include <gtest/gtest.h>

#include <dlfcn.h>

#include <mutex>
#include <string>

#include "base/AttrSet.h"
#include "base/Factory.h"
#include "base/IFunc.h"
#include "host/ReflectLog.h"

namespace {

using Entry = void (*)(const char*);

// The library stays loaded to the end of the process: the registry keeps
// objects whose code lives in it.
void* LoadPlugin() {
    static void* handle = dlopen(TAVRIN_PLUGIN_LIBRARY, RTLD_NOW | RTLD_LOCAL);
    return handle;
}

int AnnouncementsOfPluginJson() {
    int count = 0;
    for (const auto& call : tavrin::host::ReflectCalls())
        if (call.name == "PluginJson") ++count;
    return count;
}

template <class F>
F* Registered(const char* name) {
    auto& factory = tavrin::stream::Factory::Globle();
    std::lock_guard<std::mutex> lock(factory.RegistryMutex());
    return dynamic_cast<F*>(factory.Registry().Find(name, true));
}

TEST(PluginLoad, LoadingAnnouncesTheEntryOnceAndRegistersNothing) {
    EXPECT_EQ(AnnouncementsOfPluginJson(), 0);
    ASSERT_NE(LoadPlugin(), nullptr) << dlerror();
    ASSERT_EQ(AnnouncementsOfPluginJson(), 1);
    const auto calls = tavrin::host::ReflectCalls();
    EXPECT_EQ(calls.back().flags, 0);
    EXPECT_EQ(reinterpret_cast<void*>(calls.back().entry),
              dlsym(LoadPlugin(), "_Z18RegisterPluginJsonPKc"));
    auto* exported = static_cast<std::uintptr_t*>(dlsym(LoadPlugin(), "__cb_register_PluginJson"));
    ASSERT_NE(exported, nullptr);
    EXPECT_EQ(*exported, calls.size());
    EXPECT_EQ(tavrin::stream::Factory::Globle().Registry().Size(), 0u);
}

TEST(PluginLoad, TheAnnouncedEntryRegistersBothFunctions) {
    ASSERT_NE(LoadPlugin(), nullptr) << dlerror();
    Entry entry = tavrin::host::FindReflected("PluginJson");
    ASSERT_NE(entry, nullptr);
    entry("PluginJson");
    using Command = tavrin::base::IFunc<bool, tavrin::base::AttrSet&>;
    using Convert = tavrin::base::IFunc<bool, const char*, std::string*>;
    ASSERT_NE(Registered<Convert>("convert_json_to_attrset_string"), nullptr);
    Command* command = Registered<Command>("cmd_json_to_attrset_string");
    ASSERT_NE(command, nullptr);
    tavrin::base::AttrSet args;
    EXPECT_FALSE((*command)(args));
    std::string out;
    EXPECT_TRUE((*Registered<Convert>("convert_json_to_attrset_string"))("[1,2]", &out));
    EXPECT_EQ(out, "1+2");
}

}  // namespace
