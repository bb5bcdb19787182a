// The parser's number conversions, seen through Node::Deserialize: the
// results of strtoll and of strtod in the C locale, whatever locale the
// process has set; and both writers under a decimal-comma locale.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string>
#include <typeinfo>

#include "json/JsonNode.h"
#include "json/legacy/Deserialize.h"
#include "json/legacy/Serialize.h"
#include "support/DecimalCommaLocale.h"

namespace {

using tavrin::plugin::json::Node;

// The single element of the array text "[text]", as T.
template <class T>
T ReadElement(const std::string& text) {
    Node array;
    EXPECT_TRUE(array.Deserialize("[" + text + "]")) << text;
    if (array.Size() != 1 || !array[0].Is<T>()) {
        ADD_FAILURE() << text << " is not read as a single " << typeid(T).name();
        return T();
    }
    return array[0].As<T>();
}

bool SameBits(double a, double b) { return std::memcmp(&a, &b, sizeof a) == 0; }

std::string Digits(std::mt19937& random, int count) {
    std::string digits;
    for (int i = 0; i < count; ++i) digits += static_cast<char>('0' + random() % 10);
    return digits;
}

TEST(NumberRead, IntegersAreWhatStrtollGives) {
    std::mt19937 random(7);
    for (const char* text : {"0", "-0", "9223372036854775807", "9223372036854775808", "-9223372036854775808",
                             "-9223372036854775809", "99999999999999999999999999", "-99999999999999999999999999"})
        EXPECT_EQ(ReadElement<long long>(text), std::strtoll(text, nullptr, 10)) << text;
    for (int round = 0; round < 20000; ++round) {
        const std::string text = (random() % 2 ? "-" : "") + std::to_string(1 + random() % 9) + Digits(random, random() % 22);
        ASSERT_EQ(ReadElement<long long>(text), std::strtoll(text.c_str(), nullptr, 10)) << text;
    }
}

// Random texts of the parser's double grammar have a random number of digits
// in each part and exponents reaching past the range of double.
TEST(NumberRead, DoublesAreWhatStrtodGivesInTheCLocale) {
    for (const char* text : {"1e400", "-1e400", "1e-400", "-1e-400", "4.9e-324", "2.4e-324", "2.4703282292062328e-324",
                             "2.2250738585072011e-308", "1.7976931348623157e308", "1.7976931348623159e308", "0.0",
                             "-0.0", "0.1000000000000000055511151231257827", "123456789012345678901234567890.0"})
        EXPECT_TRUE(SameBits(ReadElement<double>(text), std::strtod(text, nullptr))) << text;
    std::mt19937 random(11);
    for (int round = 0; round < 20000; ++round) {
        std::string text = random() % 2 ? "-" : "";
        text += random() % 4 ? std::to_string(1 + random() % 9) + Digits(random, random() % 20) : "0";
        const bool point = random() % 3 != 0;
        if (point) text += "." + Digits(random, 1 + random() % 25);
        if (!point || random() % 2)
            text += std::string(random() % 2 ? "e" : "E") + (random() % 3 == 0 ? "" : random() % 2 ? "+" : "-") +
                    std::to_string(random() % 340);
        ASSERT_TRUE(SameBits(ReadElement<double>(text), std::strtod(text.c_str(), nullptr))) << text;
    }
}

TEST(NumberRead, TheProcessLocaleChangesNothing) {
    tavrin::test::DecimalCommaLocale comma;
    if (!comma.Active()) GTEST_SKIP() << "no locale with a decimal comma could be set";
    char written[32];
    std::snprintf(written, sizeof written, "%.1f", 2.5);
    ASSERT_STREQ(written, "2,5");  // the locale is in force

    EXPECT_EQ(ReadElement<double>("-1.25e3"), -1250.0);
    Node node;
    ASSERT_TRUE(node.Deserialize("[2.5,1e-3,7,1/2,\"a b\",{\"k\":0.25}]"));
    EXPECT_EQ(node.Serialize(), "[2.5,0.001,7,1/2,\"a b\",{\"k\":0.25}]");
    json::Value decimal;
    decimal = 2.5f;
    EXPECT_EQ(SerializeValue(decimal), "2.5");
    decimal = -0.125;
    EXPECT_EQ(SerializeValue(decimal), "-0.125");
    const std::string text = "{\"a\":[1,-2,1/2],\"b\":\" x \",\"c\":TRUE}";
    EXPECT_EQ(json::Serialize(json::Deserialize(text)), "{\"a\":[1,-2,1/2],\"b\":\"x\",\"c\":true}");
}

}  // namespace
