#include <gtest/gtest.h>

#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "base/AttrSet.h"

using tavrin::base::AttrSet;

namespace {

using Entries = std::vector<std::pair<std::string, std::string>>;

AttrSet Make(const Entries& entries) {
    AttrSet set;
    for (const auto& [key, value] : entries) set.Add(key.c_str(), value.c_str());
    return set;
}

Entries Read(const AttrSet& set) {
    Entries entries;
    for (int i = 0; i < static_cast<int>(set.Size()); ++i) entries.emplace_back(set.Key(i), set.Value(i));
    return entries;
}

// Random keys and values over the characters that mean something in the
// text form, blanks and a few plain ones; values are sometimes empty and
// sometimes the text form of a generated set, nested a few levels.
class EntryGenerator {
public:
    explicit EntryGenerator(unsigned seed) : _random(seed) {}

    std::string Text(std::size_t maxLength) {
        static const std::string kAlphabet = "{},=%\\\" \tab1+%{}";
        std::string text;
        const std::size_t length = Below(maxLength + 1);
        for (std::size_t i = 0; i < length; ++i) text += kAlphabet[Below(kAlphabet.size())];
        return text;
    }

    std::string Value(int depth) {
        const std::size_t choice = Below(6);
        if (choice == 0) return "";
        if (choice == 1 && depth > 0) return Make(Set(depth - 1)).ToString(false);
        return Text(12);
    }

    Entries Set(int depth) {
        Entries entries;
        std::set<std::string> keys;
        const std::size_t count = Below(6);
        for (std::size_t i = 0; i < count; ++i) {
            std::string key = Below(4) == 0 && depth > 0 ? Make(Set(depth - 1)).ToString(false) : Text(8);
            if (keys.insert(key).second) entries.emplace_back(std::move(key), Value(depth));
        }
        return entries;
    }

private:
    std::size_t Below(std::size_t bound) {
        return std::uniform_int_distribution<std::size_t>(0, bound - 1)(_random);
    }

    std::mt19937 _random;
};

}  // namespace

TEST(AttrSetText, NestedSetsAppearUnchanged) {
    const AttrSet inner = Make({{"a", "1"}, {"b", Make({{"c", "x"}}).ToString(false)}});
    const AttrSet outer = Make({{"root", inner.ToString(false)}, {"list", "1+2"}});
    EXPECT_EQ(outer.ToString(false), "{root={a=1,b={c=x}},list=1+2}");
    EXPECT_EQ(AttrSet().ToString(false), "{}");
}

TEST(AttrSetText, EscapesDelimitersAtTheOutermostLevel) {
    const AttrSet set = Make({{"k=1", "a,b%c"}, {"open", "}{"}, {"brace", "{"}, {"", ""}});
    EXPECT_EQ(set.ToString(false), "{k%3D1=a%2Cb%25c,open=%7D%7B,brace=%7B,=}");
    EXPECT_EQ(Read(AttrSet(set.ToString(false).c_str())), Read(set));
}

TEST(AttrSetText, KeepsBlanksQuotesAndBackslashes) {
    const AttrSet set = Make({{" k ", " \"v\\ "}});
    EXPECT_EQ(set.ToString(false), "{ k = \"v\\ }");
    EXPECT_STREQ(AttrSet(set.ToString(false).c_str()).Get(" k "), " \"v\\ ");
}

// "%XX" with hex digits of either case is decoded at the outermost level;
// anything else after "%" stays as written.
TEST(AttrSetText, DecodesPercentEscapesOfEitherCase) {
    const std::pair<const char*, Entries> cases[] = {
        {"{k=%41%5a%5A%7e%7E}", {{"k", "AZZ~~"}}},
        {"{k=%3d%3D%2c%2C%25}", {{"k", "==,,%"}}},
        {"{k=%fF%Ff%09%90%0A}", {{"k", "\xFF\xFF\t\x90\n"}}},
        {"{k=%4g%G1%/1%:1%@1%`1%4}", {{"k", "%4g%G1%/1%:1%@1%`1%4"}}},
        {"{%4B%65y=v,k={%41}}", {{"Key", "v"}, {"k", "{%41}"}}},
    };
    for (const auto& [text, entries] : cases) EXPECT_EQ(Read(AttrSet(text)), entries) << text;
}

TEST(AttrSetText, MalformedTextReadAsFarAsWellFormed) {
    EXPECT_EQ(Read(AttrSet("{a=1,b")), (Entries{{"a", "1"}}));
    EXPECT_EQ(AttrSet("a=1").Size(), 0u);
    EXPECT_EQ(AttrSet(static_cast<const char*>(nullptr)).Size(), 0u);
    EXPECT_EQ(Read(AttrSet("{a=1}tail")), (Entries{{"a", "1"}}));
}

TEST(AttrSetText, RoundTripOfGeneratedSets) {
    EntryGenerator generator(20261123);
    for (int round = 0; round < 3000; ++round) {
        const Entries entries = generator.Set(3);
        const AttrSet set = Make(entries);
        const std::string text = set.ToString(false);
        const AttrSet back(text.c_str());
        ASSERT_EQ(Read(back), entries) << text;
        ASSERT_EQ(back.ToString(false), text);
    }
}

TEST(AttrSetAccess, GetValueKeyAndAdd) {
    AttrSet set = Make({{"a", "1"}, {"b", "2"}});
    EXPECT_STREQ(set.Get("b"), "2");
    EXPECT_EQ(set.Get("B"), nullptr);
    EXPECT_EQ(set.Get(nullptr), nullptr);
    EXPECT_STREQ(set.Value(0), "1");
    EXPECT_EQ(set.Value(2), nullptr);
    EXPECT_EQ(set.Value(-1), nullptr);
    EXPECT_STREQ(set.Key(1), "b");
    EXPECT_TRUE(set.Add("a", "3"));
    EXPECT_TRUE(set.Add("c", nullptr));
    EXPECT_FALSE(set.Add(nullptr, "x"));
    EXPECT_EQ(Read(set), (Entries{{"a", "3"}, {"b", "2"}, {"c", ""}}));
    AttrSet copy(set);  // copies are independent
    copy.Add("a", "4");
    EXPECT_STREQ(set.Get("a"), "3");
    set = copy;
    EXPECT_STREQ(set.Get("a"), "4");
}
