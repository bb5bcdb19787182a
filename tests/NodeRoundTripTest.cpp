#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <random>
#include <set>
#include <string>

#include "base/Hash.h"
#include "json/JsonNode.h"
#include "support/LogCapture.h"
#include "support/NodeBuild.h"

using tavrin::base::Fraction;
using tavrin::plugin::json::Node;
using tavrin::test::Int;
using tavrin::test::MakeArray;
using tavrin::test::Real;

namespace {

// Random trees of every kind the writer and the reader agree on: integers,
// doubles, fractions with a non-negative denominator, booleans, strings in
// their escaped form, and nested arrays and objects (keys distinct after
// case folding).
class TreeGenerator {
public:
    explicit TreeGenerator(unsigned seed) : _random(seed) {}

    Node Document() { return Below(2) == 0 ? Array(3) : Object(3); }

private:
    Node Value(int depth) {
        switch (Below(depth > 0 ? 8 : 6)) {
            case 0: return Int(Integer());
            case 1: return Real(Double());
            case 2: return FractionNode();
            case 3: return Node(Below(2) == 0);
            case 4:
            case 5: return Node(EscapedText());
            case 6: return Array(depth - 1);
            default: return Object(depth - 1);
        }
    }

    Node Array(int depth) {
        Node array = MakeArray({});
        for (std::uint64_t i = Below(6); i > 0; --i) array.Insert(Value(depth));
        return array;
    }

    Node Object(int depth) {
        Node object;
        object.Init<Node::Object>(nullptr);
        std::set<std::uint32_t> hashes;
        for (std::uint64_t i = Below(6); i > 0; --i) {
            const std::string key = EscapedText();
            if (hashes.insert(tavrin::base::Hash(key, '\0')).second) object.Insert(key, Value(depth));
        }
        return object;
    }

    long long Integer() {
        static const long long kEdges[] = {0, -1, std::numeric_limits<long long>::min(),
                                           std::numeric_limits<long long>::max()};
        if (Below(4) == 0) return kEdges[Below(4)];
        return static_cast<long long>(_random());
    }

    double Double() {
        double value;
        do {
            const std::uint64_t bits = _random();
            std::memcpy(&value, &bits, sizeof value);
        } while (!std::isfinite(value));
        return Below(3) == 0 ? std::ldexp(static_cast<double>(Below(1000)), -3) : value;
    }

    Node FractionNode() {
        Fraction fraction;
        fraction.From(static_cast<std::int32_t>(_random()), static_cast<long long>(Below(1LL << 31)));
        return Node(fraction);
    }

    std::string EscapedText() {
        static const char* const kPieces[] = {"a", "Z", " ", "\\n", "\\\"", "\\\\", "\\/",
                                              "\\u00e9", "\xC3\xA9", "{", "]", ":", ","};
        std::string text;
        for (std::uint64_t i = Below(6); i > 0; --i) text += kPieces[Below(std::size(kPieces))];
        return text;
    }

    std::uint64_t Below(std::uint64_t bound) {
        return std::uniform_int_distribution<std::uint64_t>(0, bound - 1)(_random);
    }

    std::mt19937_64 _random;
};

// `text` read back into a tree and written again.
std::string Rewritten(const std::string& text) {
    Node back;
    EXPECT_TRUE(back.Deserialize(text.c_str())) << text;
    return back.Serialize();
}

}  // namespace

TEST(NodeRoundTrip, GeneratedDocumentsReadBackToTheSameTree) {
    tavrin::test::LogCapture log;
    TreeGenerator generator(20261123);
    for (int round = 0; round < 2000; ++round) {
        const std::string text = generator.Document().Serialize();
        ASSERT_EQ(Rewritten(text), text);
    }
    EXPECT_EQ(log.Text(), "");
}

TEST(NodeRoundTrip, InfinitiesReadBackAsInfinities) {
    tavrin::test::LogCapture log;
    const double inf = std::numeric_limits<double>::infinity();
    Node array = MakeArray({Real(inf), Real(-inf), Real(-0.0), Real(5e-324)});
    const std::string text = array.Serialize();
    EXPECT_EQ(text, "[1e999,-1e999,-0.0,5e-324]");
    Node back;
    ASSERT_TRUE(back.Deserialize(text.c_str()));
    EXPECT_EQ(back[0].As<double>(), inf);
    EXPECT_EQ(back[1].As<double>(), -inf);
    EXPECT_TRUE(std::signbit(back[2].As<double>()));
    EXPECT_EQ(back.Serialize(), text);
}
