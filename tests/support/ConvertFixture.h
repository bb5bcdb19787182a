#pragma once

#include <gtest/gtest.h>

#include <cinttypes>
#include <cstdint>
#include <cstdio>
#include <mutex>
#include <string>

#include "base/AttrSet.h"
#include "base/Factory.h"
#include "base/IFunc.h"
#include "json/PluginJson.h"
#include "support/LogCapture.h"

namespace tavrin::test {

using ConvertFunc = tavrin::base::IFunc<bool, const char*, std::string*>;
using CommandFunc = tavrin::base::IFunc<bool, tavrin::base::AttrSet&>;

// Releases every object of the factory's registry.
inline void ClearRegistry() {
    auto& factory = tavrin::stream::Factory::Globle();
    std::lock_guard<std::mutex> lock(factory.RegistryMutex());
    factory.Registry().Clear();
}

// A fresh registry holding the plug-in's two conversion functions, each seen
// through its callable interface, and the log captured from there on.
class ConvertFixture : public ::testing::Test {
protected:
    void SetUp() override {
        ClearRegistry();
        RegisterJsonConvert(nullptr);
        auto& registry = tavrin::stream::Factory::Globle().Registry();
        _convert = dynamic_cast<ConvertFunc*>(registry.Find("convert_json_to_attrset_string", true));
        _command = dynamic_cast<CommandFunc*>(registry.Find("cmd_json_to_attrset_string", true));
        ASSERT_NE(_convert, nullptr);
        ASSERT_NE(_command, nullptr);
        _log.Reset();
    }
    void TearDown() override { ClearRegistry(); }

    bool Convert(const char* json, std::string& out) { return (*_convert)(json, &out); }
    bool Command(tavrin::base::AttrSet& args) { return (*_command)(args); }

    // A line logged by JsonConvert.cpp, its line number masked.
    static std::string Red(const char* function, const std::string& message) {
        return RedLine("plugin/json/JsonConvert.cpp", function, message);
    }
    static std::string Cyan(const char* function, const std::string& message) {
        return CyanLine("plugin/json/JsonConvert.cpp", function, message);
    }

    LogCapture _log;
    ConvertFunc* _convert = nullptr;
    CommandFunc* _command = nullptr;
};

// The substitute host's text of a set holding the given entries in order.
inline std::string SetText(std::initializer_list<std::pair<const char*, std::string>> entries) {
    tavrin::base::AttrSet set;
    for (const auto& [key, value] : entries) set.Add(key, value.c_str());
    return set.ToString(false);
}
inline std::string SetText(const char* key, const std::string& value) { return SetText({{key, value}}); }

// An address in hexadecimal after `prefix`, as "p1" carries it.
inline std::string HexAddress(const void* address, const char* prefix = "") {
    char text[40];
    std::snprintf(text, sizeof text, "%s%" PRIxPTR, prefix, reinterpret_cast<std::uintptr_t>(address));
    return text;
}

}  // namespace tavrin::test
