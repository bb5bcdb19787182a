// Node::Deserialize reads a well-formed document on a quick path of its own
// and leaves everything else to the Parser: whatever the text, it must end
// exactly as the Parser does. And the values it builds live in shared cells
// that every copy, move and release must treat right.
#include <gtest/gtest.h>

#include <memory>
#include <ostream>
#include <random>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "json/JsonNode.h"
#include "json/Parser.h"
#include "support/AllocationCounter.h"
#include "support/GuardedText.h"
#include "support/LogCapture.h"

namespace {

using tavrin::plugin::json::Node;
using tavrin::plugin::json::Parser;
using tavrin::test::GuardedText;
using tavrin::test::LogCapture;

struct Outcome {
    bool ok;
    std::string written;
    std::string log;
    bool operator==(const Outcome& o) const { return ok == o.ok && written == o.written && log == o.log; }
};

void PrintTo(const Outcome& o, std::ostream* os) {
    *os << (o.ok ? "read, written " : "refused, written ") << testing::PrintToString(o.written) << ", logged "
        << testing::PrintToString(o.log);
}

Outcome ByDeserialize(const char* text) {
    LogCapture log;
    Node node;
    const bool ok = node.Deserialize(text);
    return {ok, ok ? node.Serialize() : "", log.Text()};
}

Outcome ByParser(const char* text) {
    LogCapture log;
    Parser parser(text);
    const std::unique_ptr<Node> node(parser.ParseValue());
    const std::string written = node->IsEmpty() ? "" : node->Serialize();
    return {!node->IsEmpty(), written, log.Text()};
}

// Documents with every kind, long runs of blanks, empty containers with a
// blank inside, and strings, keys and digits long enough to be read a word
// or a block at a time (keys of both lengths that the key hash cache keeps;
// a fraction of nine digits after seven integer digits, whose two words of
// digits must both come from the fraction).
const char* const kSeeds[] = {
    "{\"a\":[1,-0,2.5e-3,1E+2,\"x\\u00e9\\n\",true,false,3/04,{}],\"A\":{\"b\":[[],[[0]]]},\"c\":\"\"}",
    " [ {\"k\":  1 } , [ 1 , 2 ] , -12.50 , 1234567.123456789,1,2,3, \"s\" ]  tail",
    "{\"1\":1,\"2\":2,\"3\":3,\"4\":4,\"5\":5,\"6\":6,\"7\":7,\"8\":8,\"9\":9,\"4\":0,\"X\":1,\"x\":2}",
    "[123456789012345678901234,0.1234567890123456789012,9223372036854775808,-1e999,1/2]",
    "{\"a key long enough for words\":\"a string that is read eight characters at a time, \xc3\xa9 too\"}",
    "{\n        \"a\": [\n                1,\t\r\n   2\n        ],\n    \"b\":                 {}\n}",
    "[[1,2,3],[4],[5,6,7,8,9],[0],[[1],[2,3],[ ]],[6,7],[8,9,1,2,3,4],{ }]",
    "{\"ten bytes!\":123,\"a key of thirty-four bytes, or so.\":45678}"};

// The seeds changed a character or a few at a time: mostly near misses of
// the grammar, where the two paths could part.
TEST(TreeBuilder, EveryTextEndsAsTheParserEndsIt) {
    const std::string alphabet = "{}[]\",:-+./eE0123456789 \t\ntfrueals\\u\x01\x1f\x7f\xc3";
    std::mt19937 random(20261124);
    for (const std::string seed : kSeeds) {
        EXPECT_TRUE(ByDeserialize(seed.c_str()).ok) << seed;
        for (int round = 0; round < 3000; ++round) {
            std::string text = seed;
            for (int edits = 1 + static_cast<int>(random() % 3); edits > 0; --edits) {
                const std::size_t at = random() % (text.size() + 1);
                const char c = alphabet[random() % alphabet.size()];
                switch (random() % 4) {
                    case 0: text.insert(at, 1, c); break;
                    case 1: if (at < text.size()) text.erase(at, 1); break;
                    case 2: if (at < text.size()) text[at] = c; break;
                    default: text.resize(at); break;
                }
            }
            ASSERT_TRUE(ByDeserialize(text.c_str()) == ByParser(text.c_str())) << text;
        }
    }
}

// Strings, keys, digits and blanks are read a word or a block at a time,
// but never past the terminator: every cut of the seeds ends where one more
// byte read crashes, and ends as the Parser ends it.
TEST(TreeBuilder, NoReaderLooksPastTheTerminator) {
    for (const std::string seed : kSeeds) {
        for (std::size_t cut = 0; cut <= seed.size(); ++cut) {
            const GuardedText text(seed.substr(0, cut));
            ASSERT_EQ(ByDeserialize(text.c_str()), ByParser(text.c_str())) << text.c_str();
        }
    }
}

// The quick path builds values in place in cells carved from a few chunks;
// the Parser allocates at least two blocks for every value. So a document
// that makes about one allocation per container was read on the quick path,
// whatever construct it holds: every kind, escapes, exponents, blanks, long
// runs of digits, repeated keys and keys past the member index's threshold,
// numbers at the very end of the text.
TEST(TreeBuilder, WellFormedDocumentsAreReadWithoutAnAllocationPerValue) {
    const std::string record =
        "{\"i\": -12,\"z\":0,\"d\":-0.5e-3,\"D\":1E+2,\"l\":123456789012.25,\"c\":-65.613616999999977,\"w\":12345678901234567890123,"
        "\"f\":-3/04,\"t\":true,\"F\":false,\"s\":\"a\\u00e9\\n\\\"b\\\\\",\"e\":\"\",\"a\":[ ],\"o\":{ },"
        "\"n\":[ 1 ,\t2,\r\n3],\"k1\":1,\"k2\":2,\"k3\":3,\"K1\":4}";
    std::string text = "\t [";  // blanks before the document too
    for (int i = 0; i < 100; ++i) text += record + ",\n  ";
    text += "[1,2.5,3/4]]";
    Node tree;
    const auto callsToRead = [&tree](const std::string& document) {
        const tavrin::test::AllocationCounter counter;
        EXPECT_TRUE(tree.Deserialize(document.c_str()));
        return counter.Calls();
    };
    // Per record: its table, its member index, its array's items, its long
    // string and a share of the chunks, where the Parser's path takes some
    // ninety.
    EXPECT_LE(callsToRead(text), 100u * 6 + 40);
    EXPECT_EQ(tree.Size(), 101u);
    EXPECT_EQ(tree[0]["k1"].Serialize(), "4");  // "K1" is "k1" again
    // Containers of one level but of two shapes, each in its own place: one
    // allocation each, the room of the last container in the same place.
    std::string shapes = "[";
    for (int i = 0; i < 100; ++i)
        shapes += R"({"s":{"x":1},"l":{"a":1,"b":2,"c":3,"d":4,"e":5,"f":6,"g":7},"n":[[1,2],[3,4]]},)";
    shapes += "{}]";
    EXPECT_LE(callsToRead(shapes), 100u * 6 + 40);
    // Arrays in one place, each an item longer than the last: each misses
    // its guess, so its items wait as bare values and it takes only its room
    // of exactly its size.
    std::string growing = "[";
    for (int length = 1; length <= 100; ++length) {
        growing += "[1";
        for (int item = 1; item < length; ++item) growing += ",1";
        growing += "],";
    }
    growing += "[]]";
    EXPECT_LE(callsToRead(growing), 100u + 40);
    for (int length = 1; length <= 100; ++length) ASSERT_EQ(tree[length - 1].Size(), length);
    // Arrays in one place whose lengths keep changing: once one has missed
    // its guess, the next wait as bare values too, and each takes only its
    // room of exactly its size.
    std::string varying = "[";
    for (int i = 0; i < 100; ++i) varying += i % 2 == 0 ? "[1,2,3]," : "[4,5,6,7,8,9,10],";
    varying += "[]]";
    EXPECT_LE(callsToRead(varying), 100u + 40);
    EXPECT_EQ(tree.Serialize(), varying);
    // Objects likewise: members beyond the guessed room go on in room the
    // level keeps, so each object takes its guessed room and its exact one.
    std::string objects = "[";
    for (int i = 0; i < 100; ++i)
        objects += i % 2 == 0 ? R"({"a":1,"b":2},)" : R"({"a":1,"b":2,"c":3,"d":4,"e":5,"f":6,"g":7},)";
    objects += "{}]";
    EXPECT_LE(callsToRead(objects), 2u * 100 + 40);
    EXPECT_EQ(tree.Serialize(), objects);
    for (int i = 0; i < 100; ++i) ASSERT_EQ(tree[i].As<Node::Object>().capacity(), tree[i].Size()) << i;
    // So is an array's when it is shorter than the one before it, which met
    // its guess.
    ASSERT_TRUE(tree.Deserialize("[[1,2,3,4],[1,2,3,4],[1,2]]"));
    EXPECT_EQ(tree[2].As<Node::Array>().capacity(), 2u);
    // Nested to the bound: about two allocations a level, where the Parser
    // takes six to eight.
    for (const auto& [open, close, inner] : {std::make_tuple("[", "]", "[0]"), std::make_tuple("{\"a\":", "}", "{\"b\":0}")}) {
        std::string deep;
        for (int level = 0; level < tavrin::plugin::json::Parser::kDefaultMaxDepth - 1; ++level) deep += open;
        deep += inner;
        for (int level = 0; level < tavrin::plugin::json::Parser::kDefaultMaxDepth - 1; ++level) deep += close;
        tavrin::test::AllocationCounter nested;
        ASSERT_TRUE(tree.Deserialize(deep.c_str()));
        EXPECT_LE(nested.Calls(), 3u * tavrin::plugin::json::Parser::kDefaultMaxDepth) << open;
    }
}

// Strings go sixteen or eight characters at a time where the text allows.
// Whichever of those holds the character that ends a run of plain ones, and
// wherever that character stands in it, the string ends where the Parser
// ends it; the codes next to those that end a run are taken as they are.
TEST(TreeBuilder, StringsEndAtTheirFirstSpecialCharacterWhereverItStands) {
    const std::string plain = " ~\x80\xff" "abcdefghijklmnopqrstuvwxyz0123456789ABCDEFGHIJ";
    for (const char special : {'"', '\\', '\x01', '\x1f', '\x7f'}) {
        for (std::size_t at = 0; at <= plain.size(); ++at) {
            const std::string text = "[\"" + plain.substr(0, at) + special + (special == '"' ? "]" : "n\"]");
            const Outcome read = ByDeserialize(text.c_str());
            ASSERT_EQ(read, ByParser(text.c_str())) << text;
            const bool valid = special == '"' || special == '\\';
            ASSERT_EQ(read.ok, valid) << text;
            ASSERT_EQ(read.written, valid ? text : "");
        }
    }
}

// Runs of blanks go eight at a time too: a character in a run, wherever it
// stands, is taken as the Parser takes it, a blank other than the space as a
// blank and anything else as the end of the run.
TEST(TreeBuilder, RunsOfBlanksEndAtTheirFirstOtherCharacterWhereverItStands) {
    for (const char c : {'\t', '\n', '!', '\x01', 'x', '\xa0'}) {
        for (std::size_t at = 1; at <= 17; ++at) {
            const std::string text = "[1," + std::string(at, ' ') + c + std::string(12, ' ') + "2]";
            const Outcome read = ByDeserialize(text.c_str());
            ASSERT_EQ(read, ByParser(text.c_str())) << text;
            ASSERT_EQ(read.ok, c == '\t' || c == '\n') << text;
        }
    }
}

// Keys alike in their first and last bytes, in their length or but for
// letter case, short, long and longer than the key hash cache takes (the
// keys ending in "y" and "0" share a slot of it): each keeps its own hash,
// the second time around too.
TEST(TreeBuilder, KeysAlikeInPartStayApart) {
    // The members after "KEY", which folds into "key", read back as written.
    const std::string rest =
        R"("":11,"prefix__middle_A__suffix":12,"prefix__middle_B__suffix":13,)"
        R"("forty_bytes_of_key_text_0123456789abcdef":14,"forty_bytes_of_key_text_0123456789abcdefg":15,)"
        R"("key_12345678abcdefy":16,"key_12345678abcdef0":17,)"
        R"("forty_bytes_of_key_text_0123456789abcdef+X+the_end":18,"forty_bytes_of_key_text_0123456789abcdef+Y+the_end":19})";
    const std::string alike =
        R"("key_1234":2,"key_1235":3,"key_12345678abc":4,"key_12345678abd":5,)"
        R"("key_12345678abcd":6,"key_12345678abce":7,"key_12345678abcdefg":8,"key_12345678abcdefh":9,)";
    const std::string object = R"({"k":0,"key":1,)" + alike + R"("KEY":10,)" + rest;
    const std::string expected = R"({"k":0,"key":10,)" + alike + rest;
    const std::string text = "[" + object + "," + object + "]";
    EXPECT_EQ(ByDeserialize(text.c_str()), ByParser(text.c_str()));
    Node tree;
    ASSERT_TRUE(tree.Deserialize(text.c_str()));
    EXPECT_EQ(tree[1].Serialize(), expected);
    EXPECT_EQ(tree[1]["KEY_12345678ABCE"].Serialize(), "7");
    EXPECT_EQ(tree[0][""].Serialize(), "11");
    EXPECT_EQ(tree[1]["PREFIX__MIDDLE_b__SUFFIX"].Serialize(), "13");
}

// Keys alike but for one byte, wherever it stands, are told apart: short
// keys, long ones and ones longer than the key hash cache takes; so are many
// keys of one length alike but in their last bytes. (The cache takes a key
// only with room enough in the text after it: a last member gives it.)
TEST(TreeBuilder, KeysDifferingInOneByteStayApart) {
    const std::string last = ",\"" + std::string(48, 'z') + "\":3}";
    for (const std::size_t length : {1, 8, 9, 16, 17, 24, 33, 40, 41, 45}) {
        const std::string key(length, 'k');
        for (std::size_t at = 0; at < length; ++at) {
            std::string other = key;
            other[at] = 'x';
            const std::string text = "{\"" + key + "\":1,\"" + other + "\":2" + last;
            const Outcome read = ByDeserialize(text.c_str());
            ASSERT_EQ(read, ByParser(text.c_str()));
            ASSERT_EQ(read.written, text);
        }
    }
    // Many keys of one length (18, 27 and 36 bytes) alike but in their last
    // two or three: more than the cache has slots, so some meet in one, where
    // only their third, fourth or fifth word tells them apart. Each follows
    // the same 40 bytes of text, so only the key's own bytes differ.
    const std::string value = "\"" + std::string(38, 'v') + "\"";
    std::string many = "{";
    for (const std::size_t shared : {14, 23, 32})
        for (int i = 0; i < 300; ++i)
            many += "\"" + std::string(shared, 'k') + std::to_string(1000 + i) + "\":" + value + ",";
    many += "\"\":0}";
    const Outcome read = ByDeserialize(many.c_str());
    EXPECT_EQ(read, ByParser(many.c_str()));
    EXPECT_EQ(read.written, many);
}

// A tree read from text: values of every kind, strings on the heap too.
Node ReadTree() {
    Node tree;
    EXPECT_TRUE(tree.Deserialize(
        "{\"a\":[1,2.5,\"a text longer than any inline string\",true,3/4,{\"b\":[[7]],\"a key longer than inline text\":1}],\"c\":\"x\"}"));
    return tree;
}

const char kA[] = "[1,2.5,\"a text longer than any inline string\",true,3/4,{\"b\":[[7]],\"a key longer than inline text\":1}]";

// Trees mixing values read, copied and set by hand free every allocation.
TEST(TreeBuilder, ValuesOutliveTheirTreeWhenMovedOrCopied) {
    const tavrin::test::AllocationCounter counter;
    {
        Node moved;
        Node copied;
        {
            Node tree = ReadTree();
            moved = std::move(tree["a"]);
            copied = tree["c"];
            Node taken(&tree);  // the tree's own value, taken away and freed here
        }
        EXPECT_EQ(moved.Serialize(), kA);
        EXPECT_EQ(copied.Serialize(), "\"x\"");
        Node copy(moved);
        moved[1] = Node(2.5);
        Node heldText(&moved[2]);  // a value taken out of a tree that is freed first
        moved = Node();
        EXPECT_EQ(copy.Serialize(), kA);
        copy[5]["b"] = copy;  // a copy of a tree assigned inside that tree
        copy[0].Init<long long>(nullptr);
        copy[2] = Node(std::string("y"));
        EXPECT_EQ(copy.Serialize(), "[0,2.5,\"y\",true,3/4,{\"b\":" + std::string(kA) + ",\"a key longer than inline text\":1}]");
        EXPECT_EQ(heldText.Serialize(), "\"a text longer than any inline string\"");
    }
    EXPECT_EQ(counter.Frees(), counter.Calls());
}

// A document of many chunks gives every chunk back, whether the tree frees
// a chunk's last value or a value taken out of it outlives the tree.
TEST(TreeBuilder, EveryChunkOfALargeDocumentIsFreedByWhateverReleasesItLast) {
    constexpr int kItems = 20000;
    std::string text = "[";
    for (int i = 0; i < kItems; ++i) text += std::to_string(i) + ",";
    text.back() = ']';
    const tavrin::test::AllocationCounter counter;
    {
        std::vector<Node> kept;
        {
            Node tree;
            ASSERT_TRUE(tree.Deserialize(text.c_str()));
            ASSERT_LT(counter.Calls(), 100u);  // read on the quick path, in chunks
            for (int i = 0; i < kItems; i += kItems / 8) kept.push_back(std::move(tree[i]));
        }
        for (std::size_t k = 0; k < kept.size(); ++k)
            EXPECT_EQ(kept[k].Serialize(), std::to_string(k * kItems / 8));
    }
    EXPECT_EQ(counter.Frees(), counter.Calls());
}

// Items beyond an array's room wait as bare values until the array ends:
// a document that fails with such items pending, at two levels, frees every
// one of them and leaves the node as it was.
TEST(TreeBuilder, ItemsWaitingForTheirArrayAreFreedWhenTheDocumentFails) {
    const tavrin::test::AllocationCounter counter;
    {
        const LogCapture log;
        Node tree;
        ASSERT_TRUE(tree.Deserialize("[1]"));
        const std::string pending =
            R"([[1,2.5,"a text longer than any inline string",[3],{"k":4},true,1/2],[5,6,[7,8,)";
        EXPECT_FALSE(tree.Deserialize(pending.c_str()));
        EXPECT_EQ(tree.Serialize(), "[1]");
        // The level's room and node serve the next document as before.
        ASSERT_TRUE(tree.Deserialize((pending + "9]]]").c_str()));
        EXPECT_EQ(tree.Serialize(), pending + "9]]]");
    }
    EXPECT_EQ(counter.Frees(), counter.Calls());
}

}  // namespace
