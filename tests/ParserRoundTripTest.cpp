// Text written by Node::Serialize reads back to the same tree, and reading
// real documents works: generated trees of every kind, the benchmark corpus,
// and (for robustness only) public test files of standard JSON.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <random>
#include <string>

#include "json/JsonNode.h"
#include "support/LogCapture.h"
#include "support/SmallStack.h"

namespace {

using tavrin::plugin::json::Node;
using namespace tavrin::test;  // log capture, small stack

// Random node trees built only of what the text form carries back
// unchanged: int64, finite doubles, booleans, fractions with a non-negative
// denominator, strings in escaped form (escapes, plain ASCII and bytes
// 128-255), arrays and objects.
class RandomTree {
public:
    explicit RandomTree(unsigned seed) : _random(seed) {}

    // An array or an object whose containers nest at most `depth` levels and
    // hold at most `width` items each.
    Node Container(bool array, int depth, int width) {
        Node node;
        const int count = static_cast<int>(Below(static_cast<unsigned>(width) + 1));
        array ? node.Init<Node::Array>(nullptr) : node.Init<Node::Object>(nullptr);
        for (int i = 0; i < count; ++i) {
            Node value = depth > 1 && Below(4) == 0 ? Container(Below(2) == 0, depth - 1, width) : Scalar();
            if (array) node.As<Node::Array>().push_back(std::move(value));
            else node.As<Node::Object>()[EscapedText(6)] = std::move(value);
        }
        return node;
    }

private:
    Node Scalar() {
        switch (Below(5)) {
            case 0: return Node(Below(2) == 0);
            case 1: {
                const long long extremes[] = {0, -1, INT64_MAX, INT64_MIN};
                if (Below(8) == 0) return Node(extremes[Below(4)]);
                const auto wide = static_cast<long long>(Bits());
                return Node(Below(2) == 0 ? wide : wide % 1000);
            }
            case 2: {
                double value;
                do {
                    const std::uint64_t bits = Bits();
                    std::memcpy(&value, &bits, sizeof value);
                } while (!std::isfinite(value));
                return Node(Below(3) == 0 ? std::round(value) : value);
            }
            case 3: {
                tavrin::base::Fraction fraction;
                fraction.From(static_cast<std::int32_t>(_random()), static_cast<std::int32_t>(_random() & 0x7FFFFFFFu));
                return Node(fraction);
            }
            default: return Node(EscapedText(12));
        }
    }

    // A string value in its escaped form, without the quotes.
    std::string EscapedText(int maxLength) {
        std::string text;
        for (unsigned i = Below(static_cast<unsigned>(maxLength) + 1); i > 0; --i) {
            const unsigned pick = Below(10);
            if (pick == 0) {
                text += std::string("\\") + "\"\\/bfnrt"[Below(8)];
            } else if (pick == 1) {
                text += "\\u";
                for (int digit = 0; digit < 4; ++digit) text += "0123456789abcdefABCDEF"[Below(22)];
            } else if (pick == 2) {
                text += static_cast<char>(128 + Below(128));
            } else {
                char c;
                do c = static_cast<char>(32 + Below(95));
                while (c == '"' || c == '\\');
                text += c;
            }
        }
        return text;
    }

    std::uint64_t Bits() { return (std::uint64_t{_random()} << 32) | _random(); }
    unsigned Below(unsigned bound) { return static_cast<unsigned>(_random() % bound); }

    std::mt19937 _random;
};

// Writes `tree`, reads the text back, and checks the new tree writes the same
// text (each kind writes a text of its own, doubles in a form that reads back
// bit for bit, so equal texts mean equal trees). Nothing may be logged.
void ExpectRoundTrip(const Node& tree) {
    LogCapture log;
    const std::string text = Node(tree).Serialize();
    Node read;
    ASSERT_TRUE(read.Deserialize(text)) << text.substr(0, 200);
    EXPECT_EQ(read.Serialize(), text);
    EXPECT_EQ(log.Text(), "");
}

TEST(ParserRoundTrip, GeneratedDocumentsReadBackEqual) {
    RandomTree random(20261123);
    for (int round = 0; round < 1000; ++round) ExpectRoundTrip(random.Container(round % 2 == 0, 1 + round % 8, 1 + round % 12));
}

const std::string kData = TAVRIN_DATA_DIR;

TEST(ParserRoundTrip, BenchmarkCorpusParsesAndReadsBackEqual) {
    for (const char* name : {"canada.json", "citm_catalog.json", "twitter.json"}) {
        const std::string text = ReadFile(kData + "/corpus/" + name);
        ASSERT_GT(text.size(), 100000u) << name;
        Node document;
        ASSERT_TRUE(document.Deserialize(text)) << name;
        EXPECT_TRUE(document.Is<Node::Object>());
        ExpectRoundTrip(document);
    }
}

// Their verdicts are for standard JSON, not this dialect: every file must
// either parse (and then read back equal) or fail with a red line, without
// crashing, on a small stack.
TEST(ParserRoundTrip, PublicTestFilesParseOrFailWithARedLine) {
    int files = 0, parsed = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(kData + "/testdata")) {
        if (!entry.is_regular_file() || entry.path().extension() != ".json") continue;
        SCOPED_TRACE(entry.path().string());
        const std::string text = ReadFile(entry.path().string());
        LogCapture log;
        Node document;
        bool ok = false;
        ++files;
        ASSERT_TRUE(RunOnStack(256 * 1024, [&] { ok = document.Deserialize(text); }));
        if (ok) ExpectRoundTrip(document);
        EXPECT_EQ(log.Text().find("\033[31m") != std::string::npos, !ok);
        parsed += ok;
    }
    EXPECT_GT(files, 300);
    EXPECT_GT(parsed, 50);
}

}  // namespace
