#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "base/Fraction.h"
#include "base/Log.h"
#include "base/ToString.h"
#include "base/ostream.h"
#include "support/LogCapture.h"

using tavrin::base::Fraction;
using tavrin::base::ostream;
using tavrin::base::ostream_string;
using tavrin::test::LogCapture;

namespace {

const char kThisFile[] = "tests/HostServicesTest.cpp";

// An ostream that records every insertion separately, tagged with its kind.
class RecordingStream final : public ostream {
public:
    std::vector<std::string> pieces;

    ostream& operator<<(char c) override { return Add("char:" + std::string(1, c)); }
    ostream& operator<<(int v) override { return Add("int:" + std::to_string(v)); }
    ostream& operator<<(long long v) override { return Add("long long:" + std::to_string(v)); }
    ostream& operator<<(std::uint32_t v) override { return Add("count:" + std::to_string(v)); }
    ostream& operator<<(const char* text) override { return Add("text:" + std::string(text)); }

private:
    ostream& Add(std::string piece) {
        pieces.push_back(std::move(piece));
        return *this;
    }
};

// The line of each logging statement, taken on that line.
void LogNothing() { TAVRIN_LOG_ERROR(); } constexpr int kLogNothingLine = __LINE__;
void LogPieces() { TAVRIN_LOG_INFO("n=", 7, " big=", 5000000000LL, " count=", std::uint32_t{3}, std::string("!")); } constexpr int kLogPiecesLine = __LINE__;

std::string Text(const Fraction& fraction) { return static_cast<std::string>(fraction); }

// The fraction From(numerator, denominator) stores, with its result.
std::pair<std::string, bool> Made(long long numerator, long long denominator) {
    Fraction fraction;
    const bool exact = fraction.From(numerator, denominator);
    return {Text(fraction), exact};
}

std::pair<std::string, bool> Read(const char* text) {
    Fraction fraction;
    fraction.From(5LL, 7LL);
    const bool ok = fraction.From(text);
    return {Text(fraction), ok};
}

}  // namespace

TEST(HostStream, StringStreamAppendsToGivenString) {
    std::string target = "ab";
    ostream_string stream(target);
    ostream& base = stream;
    base << 'c' << -2147483647 - 1 << std::numeric_limits<long long>::min()
         << std::numeric_limits<std::uint32_t>::max() << "|" << std::string("s");
    base << static_cast<const char*>(nullptr);
    EXPECT_EQ(target, "abc-2147483648-92233720368547758084294967295|s");
    EXPECT_EQ(&stream.str(), &target);
}

TEST(HostLog, EmptyMessageKeepsTabNewlineAndReset) {
    LogCapture log;
    LogNothing();
    EXPECT_EQ(log.Text(), "\033[31m" + std::string(kThisFile) + "/" + std::to_string(kLogNothingLine) +
                              "/LogNothing:\t\n\033[0m");
}

TEST(HostLog, PathShorterThanTheOffsetIsShownWhole) {
    const int offset = __root_path_offset;
    const std::string inTree = std::string(static_cast<std::size_t>(offset), 'x') + "base/Factory.h";
    EXPECT_STREQ(tavrin::base::LogPath(inTree.c_str()), "base/Factory.h");
    __root_path_offset = 1000;
    const std::string shown = tavrin::base::LogPath("include/base/Factory.h");
    __root_path_offset = offset;
    EXPECT_EQ(shown, "include/base/Factory.h");
}

TEST(HostLog, LineIsAChainOfSeparateInsertions) {
    RecordingStream recorder;
    ostream* const previous = tavrin::base::cout;
    tavrin::base::cout = &recorder;
    LogPieces();
    tavrin::base::cout = previous;
    EXPECT_EQ(recorder.pieces,
              (std::vector<std::string>{"text:\033[36m", "text:" + std::string(kThisFile), "text:/",
                                        "int:" + std::to_string(kLogPiecesLine), "text:/", "text:LogPieces",
                                        "text::\t", "text:n=", "int:7", "text: big=",
                                        "long long:5000000000", "text: count=", "count:3", "text:!",
                                        "char:\n", "text:\033[0m"}));
}

struct MadeCase {
    long long numerator, denominator;
    const char* text;
    bool exact;
};

// 32-bit parts are stored as given; wider ones reduced when that fits, else
// the nearest fraction whose parts fit.
TEST(HostFraction, FromPartsStoresReducesOrApproximates) {
    EXPECT_EQ(Text(Fraction()), "0/1");
    const long long min = std::numeric_limits<long long>::min();
    const MadeCase cases[] = {
        {3, 4, "3/4", true}, {6, 8, "6/8", true}, {1, 0, "1/0", true},
        {-2147483648LL, -1, "-2147483648/-1", true},
        {3LL << 32, 4LL << 32, "3/4", true}, {-(6LL << 31), 4LL << 31, "-3/2", true},
        {6000000000LL, -4000000000LL, "-3/2", true}, {0, 5000000000LL, "0/1", true},
        {5000000000LL, 0, "1/0", true},
        {1099511627783LL, 847288609443LL, "1295691269/998465524", false},
        {314159265358979LL, 100000000000000LL, "1434877259/456735617", false},
        {100000000000LL, -314159265358979LL, "-514292/1615695969", false},
        {-1000000000001LL, 700000000000LL, "-10/7", false},
        {5000000000LL, 1, "2147483647/1", false}, {min, 1, "-2147483647/1", false},
        {1, 3000000000LL, "1/2147483647", false}, {1, 5000000000LL, "0/1", false},
        // 1/1073741824.5: the semiconvergent at exactly half the partial
        // quotient is nearer here than the convergent 1/1073741824.
        {2, 2147483649LL, "1/1073741825", false}, {-2, 2147483649LL, "-1/1073741825", false},
        // At exactly half the partial quotient, a tie keeps the convergent;
        // a rest whose continued fraction runs longer than the previous
        // convergent's decides by the parity of its length.
        {97066260776LL, 485331303993LL, "429496729/2147483646", false},
        {16191885103LL, 34359729066LL, "1011992821/2147483071", false},
    };
    for (const MadeCase& c : cases)
        EXPECT_EQ(Made(c.numerator, c.denominator), std::make_pair(std::string(c.text), c.exact))
            << c.numerator << "/" << c.denominator;
}

TEST(HostFraction, ReadsText) {
    EXPECT_EQ(Read("3/4"), std::make_pair(std::string("3/4"), true));
    EXPECT_EQ(Read(" -1 / 2 "), std::make_pair(std::string("-1/2"), true));
    EXPECT_EQ(Read("+7"), std::make_pair(std::string("7/1"), true));
    EXPECT_EQ(Read("1/-2"), std::make_pair(std::string("1/-2"), true));
    EXPECT_EQ(Read("6000000000/4000000000"), std::make_pair(std::string("3/2"), true));
    EXPECT_EQ(Read("-9223372036854775808"), std::make_pair(std::string("-2147483647/1"), false));
}

TEST(HostFraction, MalformedOrOutOfRangeTextGivesZeroOverOne) {
    for (const char* text : {"", " ", "abc", "1/", "/2", "1/2x", "1 2", "--1", "1/2/3", "1.5",
                             "9223372036854775808", "20000000000000000000/10000000000000000000",
                             "1/99999999999999999999"})
        EXPECT_EQ(Read(text), std::make_pair(std::string("0/1"), false)) << text;
    EXPECT_EQ(Read(nullptr), std::make_pair(std::string("0/1"), false));
}
