// Numbers are read and written without regard to the process locale: both
// readers and writers under a decimal-comma locale. (What the parser makes
// of each number text is in the conformance corpus.)
#include <gtest/gtest.h>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>

#include "json/JsonNode.h"
#include "json/legacy/Deserialize.h"
#include "json/legacy/Serialize.h"

namespace {

// Sets the process locale to one whose decimal point is a comma for as long
// as it lives: an installed one, or else one made with localedef in a
// temporary folder (named through LOCPATH) that goes with it.
class DecimalCommaLocale {
public:
    DecimalCommaLocale() : _previous(std::setlocale(LC_ALL, nullptr)) {
        for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8", "fr_FR.utf8"})
            if (Use(name)) return;
        std::string folder = (std::filesystem::temp_directory_path() / "tavrin-locale-XXXXXX").string();
        if (mkdtemp(folder.data()) == nullptr) return;
        _folder = folder;
        std::ofstream(folder + "/comma.def") << "LC_NUMERIC\ndecimal_point \",\"\nthousands_sep \".\"\ngrouping 3\n"
                                                "END LC_NUMERIC\n";
        const std::string command = "localedef -c -i '" + folder + "/comma.def' -f ANSI_X3.4-1968 '" + folder +
                                    "/tavrin_comma' >/dev/null 2>&1";
        if (std::system(command.c_str()) >= 0 && setenv("LOCPATH", folder.c_str(), 1) == 0) Use("tavrin_comma");
    }
    ~DecimalCommaLocale() {
        std::setlocale(LC_ALL, _previous.c_str());
        if (!_folder.empty()) std::filesystem::remove_all(_folder);
    }
    DecimalCommaLocale(const DecimalCommaLocale&) = delete;
    DecimalCommaLocale& operator=(const DecimalCommaLocale&) = delete;

    bool Active() const { return _active; }

private:
    bool Use(const char* name) {
        _active = std::setlocale(LC_ALL, name) != nullptr && std::strcmp(std::localeconv()->decimal_point, ",") == 0;
        return _active;
    }

    std::string _previous;
    std::string _folder;
    bool _active = false;
};

}  // namespace

TEST(Locale, TheProcessLocaleChangesNothing) {
    DecimalCommaLocale comma;
    if (!comma.Active()) GTEST_SKIP() << "no locale with a decimal comma could be set";
    char written[32];
    std::snprintf(written, sizeof written, "%.1f", 2.5);
    ASSERT_STREQ(written, "2,5");  // the locale is in force

    tavrin::plugin::json::Node node;
    ASSERT_TRUE(node.Deserialize("[2.5,1e-3,-1.25e3,7,1/2,\"a b\",{\"k\":0.25},1e400,-1.5e400,2.5e-400]"));
    EXPECT_EQ(node.Serialize(), "[2.5,0.001,-1250.0,7,1/2,\"a b\",{\"k\":0.25},1e999,-1e999,0.0]");
    json::Value decimal;
    decimal = 2.5f;
    EXPECT_EQ(SerializeValue(decimal), "2.5");
    decimal = -0.125;
    EXPECT_EQ(SerializeValue(decimal), "-0.125");
    const std::string text = "{\"a\":[1,-2,1/2],\"b\":\" x \",\"c\":TRUE}";
    EXPECT_EQ(json::Serialize(json::Deserialize(text)), "{\"a\":[1,-2,1/2],\"b\":\"x\",\"c\":true}");
}
