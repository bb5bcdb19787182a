// Numbers read and written by the node side, against the C and C++
// libraries on random values: the parser reads what strtoll and strtod read,
// the writer's doubles are the shortest text that reads back to the same
// bits, as std::to_chars writes it, with ".0" after an integer; and the wide
// arithmetic both conversions rest on, at its carries and borrows.
#include <gtest/gtest.h>

#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "json/JsonNode.h"
#include "json/internal/DecimalToDouble.h"
#include "json/internal/PowersOfFive.h"
#include "json/internal/ShortestDecimal.h"

namespace {

using tavrin::plugin::json::Node;

// The single element of the array text "[text]", as T.
template <class T>
T ReadElement(const std::string& text) {
    Node array;
    if (!array.Deserialize("[" + text + "]") || array.Size() != 1 || !array[0].Is<T>()) {
        ADD_FAILURE() << text << " is not read as a single value of its kind";
        return T();
    }
    return array[0].As<T>();
}

bool SameBits(double a, double b) { return std::memcmp(&a, &b, sizeof a) == 0; }

std::string Digits(std::mt19937_64& random, std::size_t count) {
    std::string digits;
    for (std::size_t i = 0; i < count; ++i) digits += static_cast<char>('0' + random() % 10);
    return digits;
}

// A double of the dialect: up to 22 digits on either side of the point, the
// exponents of every double and beyond; mostly the 15 to 19 digits writers
// give a double.
std::string DoubleText(std::mt19937_64& random) {
    std::string text = random() % 2 ? "-" : "";
    text += random() % 5 ? std::to_string(1 + random() % 9) + Digits(random, random() % 8) : "0";
    const bool point = random() % 4 != 0;
    if (point) text += "." + Digits(random, 1 + random() % (random() % 2 ? 22 : 18));
    if (!point || random() % 3 == 0) {
        text += random() % 2 ? "e" : "E";
        text += random() % 3 == 0 ? "" : random() % 2 ? "+" : "-";
        text += std::to_string(random() % (random() % 4 ? 40 : 340));
    }
    return text;
}

TEST(NumberText, NumbersReadAreWhatTheCLibraryReads) {
    std::mt19937_64 random(20261124);
    for (int round = 0; round < 100000; ++round) {
        const std::string integer = (random() % 2 ? "-" : "") + std::to_string(1 + random() % 9) +
                                    Digits(random, random() % 21);
        ASSERT_EQ(ReadElement<long long>(integer), std::strtoll(integer.c_str(), nullptr, 10)) << integer;
        const std::string real = DoubleText(random);
        const double expected = std::strtod(real.c_str(), nullptr);
        ASSERT_TRUE(SameBits(ReadElement<double>(real), expected)) << real;
        // Followed by more text, as numbers in a document are, the reader
        // may take their digits by words.
        ASSERT_TRUE(SameBits(ReadElement<double>(real + std::string(16, ' ')), expected)) << real;
    }
}

TEST(NumberText, IntegersWrittenAreTheirDecimalText) {
    for (const long long value : {0LL, -1LL, 7LL, 10LL, -99999999LL, 100000000LL, 1234567890123456789LL,
                                  std::numeric_limits<long long>::max(), std::numeric_limits<long long>::min()})
        EXPECT_EQ(Node(value).Serialize(), std::to_string(value));
    std::mt19937_64 random(3);
    for (int round = 0; round < 100000; ++round) {
        const auto value = static_cast<long long>(random() >> (random() % 64));
        ASSERT_EQ(Node(round % 2 ? -value : value).Serialize(), std::to_string(round % 2 ? -value : value));
    }
}

std::string Expected(double value) {
    char text[64];
    std::string written(text, std::to_chars(text, text + sizeof text, value).ptr);
    if (written.find_first_of(".e") == std::string::npos) written += ".0";
    return written;
}

double FromBits(std::uint64_t bits) {
    double value = 0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

// Random bit patterns (every exponent, subnormals among them), every power
// of two, and the decimals documents hold, short and long, near the ends of
// the fixed notation and of the exact integers.
TEST(NumberText, DoublesWrittenAreTheShortestTextThatReadsBack) {
    std::mt19937_64 random(20261124);
    for (const double value : {0.0, -0.0, 1.0, 0.1, 1e22, 1e23, 123456.0, 1e16, 9007199254740993.0,
                               18014398509481984.0, 5e-324, 2.2250738585072014e-308, 1.7976931348623157e308,
                               0.001, 0.0001, 100000.0, 1000000.0, 1e21, 4.35e-5, -65.61361699999998,
                               // as long in fixed as in scientific notation, and one character apart
                               0.00015, 1.5e-5, 0.0001234, 1.234e-5, 12000.0, 120000.0, 1.2e+100, 1e-100})
        EXPECT_EQ(Node(value).Serialize(), Expected(value)) << value;
    // Every power of two: the next double below is nearer than the next above.
    for (int power = -1074; power <= 1023; ++power) {
        const double value = std::ldexp(1.0, power);
        ASSERT_EQ(Node(value).Serialize(), Expected(value)) << power;
    }
    for (int round = 0; round < 200000; ++round) {
        double value = FromBits(random());
        if (round % 2 == 1) {
            const double digits = static_cast<double>(random() % 1000000000000000000u);
            value = digits / std::pow(10.0, static_cast<int>(random() % 40) - 10);
        }
        if (std::isnan(value) || std::isinf(value)) continue;
        ASSERT_EQ(Node(value).Serialize(), Expected(value)) << std::hexfloat << value;
    }
}

// The quick conversions themselves (internal to the plug-in; this test
// builds its own copy): they must answer, not merely be right when they do,
// for the numbers documents hold, so that reading and writing stay quick.
TEST(NumberText, TheQuickConversionsAnswerForTheNumbersDocumentsHold) {
    using tavrin::plugin::json::Decimal;
    // Integers of 54 to 64 one bits round up to the next power of two.
    for (int bits = 54; bits <= 64; ++bits) {
        const Decimal ones{bits == 64 ? UINT64_MAX : (std::uint64_t{1} << bits) - 1, 0, false};
        double read = 0;
        ASSERT_TRUE(tavrin::plugin::json::DecimalToDouble(ones, read)) << bits;
        EXPECT_EQ(read, std::ldexp(1.0, bits)) << bits;
    }
    std::mt19937_64 random(7);
    int unansweredReads = 0, unansweredWrites = 0;
    for (int round = 0; round < 100000; ++round) {
        Decimal d{};
        d.digits = random() % 10000000000000000000u;
        d.exponent = static_cast<int>(random() % 201) - 100;
        d.negative = random() % 2 == 0;
        const std::string text = (d.negative ? "-" : "") + std::to_string(d.digits) + "e" + std::to_string(d.exponent);
        double read = 0;
        if (tavrin::plugin::json::DecimalToDouble(d, read))
            ASSERT_TRUE(SameBits(read, std::strtod(text.c_str(), nullptr))) << text;
        else
            ++unansweredReads;  // a decimal exactly halfway between two doubles
        // Between 2^-120 and 2^60, with a fraction: no power of two.
        const std::uint64_t exponent = 903 + random() % 180;
        const double value = FromBits(exponent << 52 | ((random() >> 12) | 1));
        Decimal shortest{};
        if (tavrin::plugin::json::ShortestDecimal(value, shortest)) {
            const std::string digits = std::to_string(shortest.digits) + "e" + std::to_string(shortest.exponent);
            ASSERT_TRUE(SameBits(std::strtod(digits.c_str(), nullptr), value)) << digits;
        } else {
            ++unansweredWrites;
        }
    }
    EXPECT_LT(unansweredReads, 20);
    EXPECT_EQ(unansweredWrites, 0);
}

// The wide arithmetic under the conversions, at the carries and borrows that
// cross every word (the 32-bit target multiplies without a 128-bit type).
TEST(NumberText, WideArithmeticCarriesAndBorrowsAcrossEveryWord) {
    using namespace tavrin::plugin::json;
    const auto words = [](Wide192 w) { return std::vector<std::uint64_t>(w.word, w.word + 3); };
    using Words = std::vector<std::uint64_t>;
    constexpr std::uint64_t kAll = UINT64_MAX;
    const Wide128 square = Multiply(kAll, kAll);
    EXPECT_EQ(square.high, kAll - 1);
    EXPECT_EQ(square.low, 1u);
    EXPECT_EQ(words(Multiply(kAll, Wide128{kAll, kAll})), (Words{kAll - 1, kAll, 1}));
    EXPECT_EQ(words(Multiply(kAll, Wide128{2, kAll})), (Words{2, kAll - 3, 1}));
    EXPECT_EQ(words(Add(Wide192{{0, kAll, kAll}}, std::uint64_t{1})), (Words{1, 0, 0}));
    EXPECT_EQ(words(Add(Wide192{{0, 5, kAll}}, std::uint64_t{2})), (Words{0, 6, 1}));
    EXPECT_EQ(words(Add(Wide192{{0, kAll, kAll}}, Wide128{0, 1})), (Words{1, 0, 0}));
    EXPECT_EQ(words(Add(Wide192{{0, kAll, 7}}, Wide128{1, 2})), (Words{1, 0, 9}));
    EXPECT_EQ(words(Subtract(Wide192{{1, 0, 0}}, Wide128{0, 1})), (Words{0, kAll, kAll}));
    EXPECT_EQ(words(Subtract(Wide192{{1, 0, 0}}, Wide128{kAll, kAll})), (Words{0, 0, 1}));
    EXPECT_EQ(words(Subtract(Wide192{{2, 5, 9}}, Wide128{5, 9})), (Words{2, 0, 0}));
    // The product by halves that the 32-bit target makes, against this machine's.
    const std::uint64_t edges[] = {0, 1, 0xFFFFFFFFu, kAll << 32, kAll};
    std::mt19937_64 random(20261128);
    for (int i = 0; i < 2000; ++i) {
        const std::uint64_t a = i < 25 ? edges[i / 5] : random(), b = i < 25 ? edges[i % 5] : random();
        const Wide128 halves = MultiplyByHalves(a, b), product = Multiply(a, b);
        ASSERT_TRUE(halves.high == product.high && halves.low == product.low) << a << " * " << b;
    }
}

// The table of powers of five against what 5^q * 5^-q = 1 says of it: both
// significands lie in [2^127, 2^128), each short of its exact value by less
// than one, so their product lies just below 2^(sum of the shifts), by less
// than 2^129; that sum is 255, as 5^q is no power of two.
TEST(NumberText, EachPowerOfFiveTimesItsInverseIsJustBelowAPowerOfTwo) {
    using namespace tavrin::plugin::json;
    constexpr std::uint64_t kAll = UINT64_MAX;
    for (int q = 1; q <= kGreatestPowerOfFive && -q >= kLeastPowerOfFive; ++q) {
        const PowerOfFive& up = PowerOfFiveAt(q);
        const PowerOfFive& down = PowerOfFiveAt(-q);
        ASSERT_EQ(up.shift + down.shift, 255) << q;
        // The 256-bit product: its top three words, then its last one.
        const Wide192 low = Multiply(up.significand.low, down.significand);
        const Wide192 top = Add(Multiply(up.significand.high, down.significand), Wide128{low.word[0], low.word[1]});
        // Above 2^255 - 2^129 = (2^63 - 1, 2^64 - 2, 0, 0) and below 2^255.
        const bool rest = top.word[2] != 0 || low.word[2] != 0;
        EXPECT_EQ(top.word[0], kAll >> 1) << q;
        EXPECT_TRUE(top.word[1] == kAll || (top.word[1] == kAll - 1 && rest)) << q;
    }
}

}  // namespace
