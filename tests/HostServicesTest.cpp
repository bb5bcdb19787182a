// The substitute framework's services: streams and log lines, fractions,
// attribute sets, hashes and keyed tables, object classes, the registry and
// the modules' load-time announcements.
#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <limits>
#include <memory>
#include <set>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "base/AttrSet.h"
#include "base/Factory.h"
#include "base/Fraction.h"
#include "base/Hash.h"
#include "base/HashTable.h"
#include "base/Log.h"
#include "base/ObjectFunc.h"
#include "base/ObjectList.h"
#include "base/ToString.h"
#include "host/ObjectStats.h"
#include "host/ReflectLog.h"
#include "json/common/IndexHash.h"
#include "support/AllocationCounter.h"
#include "support/FailEachAllocation.h"
#include "support/LogCapture.h"

using namespace tavrin::base;
using tavrin::test::LogCapture;

namespace {

const char kThisFile[] = "tests/HostServicesTest.cpp";

void LogPieces() { TAVRIN_LOG_INFO("n=", 7, " big=", 5000000000LL, " count=", 3u, std::string("!")); }

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

TEST(HostStream, StringStreamAppendsToGivenString) {
    std::string target = "ab";
    ostream_string stream(target);
    static_cast<ostream&>(stream) << 'c' << -2147483647 - 1 << std::numeric_limits<long long>::min()
                                  << std::numeric_limits<std::uint32_t>::max() << "|" << std::string("s")
                                  << static_cast<const char*>(nullptr);
    EXPECT_EQ(target, "abc-2147483648-92233720368547758084294967295|s");
    EXPECT_EQ(&stream.str(), &target);
}

// Each piece of a line is an insertion of its own kind (the line number, an
// int, is masked: the parser's corpus checks line numbers).
TEST(HostLog, ALineIsAChainOfInsertionsOfTheirOwnKinds) {
    RecordingStream recorder;
    ostream* const previous = cout;
    cout = &recorder;
    LogPieces();
    cout = previous;
    ASSERT_GT(recorder.pieces.size(), 3u);
    recorder.pieces[3] = recorder.pieces[3].substr(0, 4) + "#";  // "int:" and the line number
    EXPECT_EQ(recorder.pieces,
              (std::vector<std::string>{"text:\033[36m", "text:" + std::string(kThisFile), "text:/",
                                        "int:#", "text:/", "text:LogPieces",
                                        "text::\t", "text:n=", "int:7", "text: big=", "long long:5000000000",
                                        "text: count=", "count:3", "text:!", "char:\n", "text:\033[0m"}));
    // A path shorter than the offset (a header from an installed copy) is shown whole.
    const int offset = __root_path_offset;
    const std::string inTree = std::string(static_cast<std::size_t>(offset), 'x') + "base/Factory.h";
    EXPECT_STREQ(LogPath(inTree.c_str()), "base/Factory.h");
    // One exactly as long is advanced to its end, as the framework advances every path.
    EXPECT_STREQ(LogPath(inTree.substr(0, static_cast<std::size_t>(offset)).c_str()), "");
    std::vector<std::string> shown;
    for (int other : {1000, 1, -5}) {  // a negative offset counts as none
        __root_path_offset = other;
        shown.emplace_back(LogPath("include/base/Factory.h"));
    }
    __root_path_offset = offset;
    EXPECT_EQ(shown, (std::vector<std::string>{"include/base/Factory.h", "nclude/base/Factory.h",
                                               "include/base/Factory.h"}));
}

// 32-bit parts are stored as given; wider ones reduced when that fits, else
// the nearest fraction whose parts fit. Text reads as [±]digits[/[±]digits]
// with blanks around the parts; anything else gives 0/1 and false.
TEST(HostFraction, FromPartsStoresReducesOrApproximatesFromTextReads) {
    EXPECT_EQ(static_cast<std::string>(Fraction()), "0/1");
    const long long min = std::numeric_limits<long long>::min();
    const std::tuple<long long, long long, const char*, bool> made[] = {
        {3, 4, "3/4", true}, {6, 8, "6/8", true}, {1, 0, "1/0", true}, {-2147483648LL, -1, "-2147483648/-1", true},
        {2147483647, 2147483647, "2147483647/2147483647", true},
        {3LL << 32, 4LL << 32, "3/4", true}, {-(6LL << 31), 4LL << 31, "-3/2", true},
        {6000000000LL, -4000000000LL, "-3/2", true}, {0, 5000000000LL, "0/1", true}, {5000000000LL, 0, "1/0", true},
        {1099511627783LL, 847288609443LL, "1295691269/998465524", false},
        {314159265358979LL, 100000000000000LL, "1434877259/456735617", false},
        {100000000000LL, -314159265358979LL, "-514292/1615695969", false},
        {-1000000000001LL, 700000000000LL, "-10/7", false},
        {5000000000LL, 1, "2147483647/1", false}, {min, 1, "-2147483647/1", false},
        {1, 3000000000LL, "1/2147483647", false}, {1, 5000000000LL, "0/1", false},
        // 1/1073741824.5: the semiconvergent at exactly half the partial
        // quotient is nearer here than the convergent 1/1073741824.
        {2, 2147483649LL, "1/1073741825", false}, {-2, 2147483649LL, "-1/1073741825", false},
        // At exactly half the partial quotient, a tie keeps the convergent
        // (the rest of the expansion mirrors the part before it, so both are
        // equally near); a rest whose continued fraction runs longer than the
        // previous convergent's decides by the parity of its length.
        {21474836351LL, 68719476320LL, "5/16", false}, {4294967293LL, 30064771058LL, "1/7", false},
        {97066260776LL, 485331303993LL, "429496729/2147483646", false},
        {16191885103LL, 34359729066LL, "1011992821/2147483071", false},
    };
    for (const auto& [numerator, denominator, text, exact] : made) {
        Fraction fraction;
        const bool result = fraction.From(numerator, denominator);
        EXPECT_EQ(std::make_pair(static_cast<std::string>(fraction), result), std::make_pair(std::string(text), exact))
            << numerator << "/" << denominator;
    }
    const std::tuple<const char*, const char*, bool> read[] = {
        {"3/4", "3/4", true}, {" -1 / 2 ", "-1/2", true}, {"+7", "7/1", true}, {"1/-2", "1/-2", true},
        {"6000000000/4000000000", "3/2", true}, {"-9223372036854775808", "-2147483647/1", false},
        {"", "0/1", false}, {" ", "0/1", false}, {"abc", "0/1", false}, {"1/", "0/1", false}, {"/2", "0/1", false},
        {"1/2x", "0/1", false}, {"1 2", "0/1", false}, {"--1", "0/1", false}, {"1/2/3", "0/1", false},
        {"1.5", "0/1", false}, {"9223372036854775808", "0/1", false}, {"-9223372036854775809", "0/1", false},
        {"1/99999999999999999999", "0/1", false},
        {"20000000000000000000/10000000000000000000", "0/1", false}, {nullptr, "0/1", false},
    };
    for (const auto& [text, stored, exact] : read) {
        Fraction fraction;
        fraction.From(5LL, 7LL);
        const bool ok = fraction.From(text);
        EXPECT_EQ(std::make_pair(static_cast<std::string>(fraction), ok), std::make_pair(std::string(stored), exact))
            << (text ? text : "(null)");
    }
}

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

TEST(AttrSetText, WritesEscapesAndReadsBack) {
    const AttrSet inner = Make({{"a", "1"}, {"b", Make({{"c", "x"}}).ToString(false)}});
    EXPECT_EQ(Make({{"root", inner.ToString(false)}, {"list", "1+2"}}).ToString(false),
              "{root={a=1,b={c=x}},list=1+2}");
    EXPECT_EQ(AttrSet().ToString(false), "{}");
    EXPECT_EQ(inner.ToString(true), "{a=1,\nb={c=x}}");
    // Past a pair of kept braces the text is at its outermost level again.
    const AttrSet set = Make({{"k=1", "a,b%c"}, {"open", "}{"}, {"brace", "{"}, {"", ""}, {" k ", " \"v\\ "},
                              {"{x,y}=1", "{a=1},b={c}%"}});
    EXPECT_EQ(set.ToString(false),
              "{k%3D1=a%2Cb%25c,open=%7D%7B,brace=%7B,=, k = \"v\\ ,{x,y}%3D1={a=1}%2Cb%3D{c}%25}");
    EXPECT_EQ(Read(AttrSet(set.ToString(false).c_str())), Read(set));
    // "%XX" with hex digits of either case is decoded at the outermost level;
    // anything else after "%" stays as written. Malformed text is read as far
    // as it is well formed.
    const std::pair<const char*, Entries> cases[] = {
        {"{k=%41%5a%5A%7e%7E}", {{"k", "AZZ~~"}}}, {"{k=%3d%3D%2c%2C%25}", {{"k", "==,,%"}}},
        {"{k=%fF%Ff%09%90%0A}", {{"k", "\xFF\xFF\t\x90\n"}}},
        {"{k=%4g%G1%/1%:1%@1%`1%4}", {{"k", "%4g%G1%/1%:1%@1%`1%4"}}},
        {"{%4B%65y=v,k={%41}}", {{"Key", "v"}, {"k", "{%41}"}}},
        {"{a=1,b", {{"a", "1"}}}, {"a=1", {}}, {nullptr, {}}, {"{a=1}tail", {{"a", "1"}}},
        {"{k=a=b,c=d}", {{"k", "a=b"}, {"c", "d"}}},  // only a key ends at "="
    };
    for (const auto& [text, entries] : cases) EXPECT_EQ(Read(AttrSet(text)), entries) << (text ? text : "(null)");
}

TEST(AttrSetAccess, GetValueKeyAndAdd) {
    AttrSet set = Make({{"a", "1"}, {"b", "2"}});
    EXPECT_EQ(std::make_tuple(std::string(set.Get("b")), set.Get("B"), set.Get(nullptr), std::string(set.Value(0)),
                              set.Value(2), set.Value(-1), std::string(set.Key(1)), set.Key(2), set.Key(-1)),
              std::make_tuple("2", nullptr, nullptr, "1", nullptr, nullptr, "b", nullptr, nullptr));
    EXPECT_TRUE(set.Add("a", "3"));
    EXPECT_TRUE(set.Add("c", nullptr));
    EXPECT_FALSE(set.Add(nullptr, "x"));
    EXPECT_EQ(Read(set), (Entries{{"a", "3"}, {"b", "2"}, {"c", ""}}));
    set = Make({{"x", "1"}});  // the room of the dropped entries stays: still no entry there
    EXPECT_EQ(std::make_tuple(set.Value(1), set.Key(1), set.Value(2), set.Key(2)),
              std::make_tuple(nullptr, nullptr, nullptr, nullptr));
}

TEST(Hash, CaseFoldedFnv1aUpToTheStopCharacterAndTableLookups) {
    EXPECT_EQ(std::make_tuple(Hash(std::string(), '\0'), Hash(std::string("a"), '\0'), Hash(std::string("A"), '\0'),
                              Hash(std::string("foobar"), '\0'), Hash("FooBar"), Hash(nullptr)),
              std::make_tuple(2166136261u, 3826002220u, 3826002220u, 3214735720u, 3214735720u, 0u));
    EXPECT_EQ(Hash(std::string("ab-cd"), '-'), Hash("ab"));
    EXPECT_EQ(Hash(std::string("aBc"), 'b'), Hash("abc"));  // the stop character is compared before folding
    EXPECT_EQ(Hash(std::string("ab\0cd", 5), '\0'), Hash("ab"));
    const char* text = "FooBar";
    EXPECT_EQ(Hash(text, 0), 3214735720u);  // a text and stop character 0: the string form
    EXPECT_NE(Hash("\xC0"), Hash("\xE0"));  // bytes above 127 are not folded
    ASSERT_EQ(Hash("costarring"), Hash("liquid"));
    HashTable<std::string, int> table;
    EXPECT_EQ(table.find("x"), table.end());
    table["Name"] = 1;
    table["costarring"] = 7;
    table["b"];
    EXPECT_EQ(std::make_tuple(table["NAME"], table["liquid"], table.size()), std::make_tuple(1, 7, 3u));
    EXPECT_EQ(std::make_tuple(table[0].key, table[1].key, table[2].key, table[2].value),
              std::make_tuple("Name", "costarring", "b", 0));
    EXPECT_EQ(table.find("liquid"), table.begin() + 1);
    table.emplace_back(Hash("K"), std::string("K"), 2);
    table.emplace_back(Hash("k"), std::string("k"), 3);
    EXPECT_EQ(std::make_pair(table["k"], table.find("k")->key), std::make_pair(2, std::string("K")));  // oldest wins
}

// Key hashes that differ only in a few bits, as keys crafted against an
// unseeded index would: wherever those bits are, the hashes must still spread
// over the slots of an index (4096 into 1024 slots leave about 19 empty).
TEST(IndexHash, HashesAlikeInMostBitsSpreadOverTheSlots) {
    for (const int shift : {0, 4, 10, 16, 20}) {
        std::set<std::size_t> used;
        for (std::uint32_t i = 0; i < 4096; ++i)
            used.insert(tavrin::plugin::json::common::SpreadHash(i << shift) & 1023);
        EXPECT_GT(used.size(), 1024u * 9 / 10) << "hashes i << " << shift;
    }
}

std::vector<std::uint32_t> KeywordsOf(const object& obj) { return {obj.Keywords().begin(), obj.Keywords().end()}; }

// Records what reaches set().
struct SetProbe : object {
    SetProbe() : object("probe") {}
    bool set(unsigned int id, void* value, const std::type_info* type) override {
        calls.emplace_back(id, value, type);
        return id == 7;
    }
    std::vector<std::tuple<unsigned int, void*, const std::type_info*>> calls;
};

TEST(Object, DefaultsReportNoPropertySetoraddCallsSetWithoutTheName) {
    SetProbe probe;
    IParam& param = probe;
    int value = 5;
    std::string text = "kept";
    EXPECT_EQ(param.getPropertyNameList(), nullptr);
    EXPECT_FALSE(param.hasProperty(1) || param.get(1, &value, &typeid(int)) || param.getString(1, text) ||
                 param.setString(1, "v"));
    EXPECT_FALSE(object("plain").set(1, &value, &typeid(int)));
    // AttrInfo is only declared; the default never reads it.
    EXPECT_FALSE(param.getPropertyInfo(1, *reinterpret_cast<AttrInfo*>(&value)));
    EXPECT_EQ(param.getChild(3), &param);
    AttrSet settings;
    EXPECT_EQ(std::make_tuple(probe.getObject(1), probe.setObject(1, &probe), probe.configure(settings)),
              std::make_tuple(static_cast<object*>(nullptr), false, true));
    EXPECT_EQ(text, "kept");
    // The framework declares no Message type; the default receiver never reads it.
    EXPECT_FALSE(probe.ReceiveMessage(*reinterpret_cast<Message*>(&value), nullptr));
    EXPECT_TRUE(param.setoradd("ignored", 7, &value, &typeid(int)));
    EXPECT_FALSE(param.setoradd(nullptr, 8, nullptr, nullptr));
    EXPECT_EQ(probe.calls, (std::vector<std::tuple<unsigned int, void*, const std::type_info*>>{
                               {7u, &value, &typeid(int)}, {8u, nullptr, nullptr}}));
}

TEST(Object, KeywordsAreTheHashesOfTheDashSeparatedParts) {
    object obj("usb-Cam--01-");
    EXPECT_TRUE(obj.Enabled());
    EXPECT_EQ(obj.GetName(), "usb-Cam--01-");
    EXPECT_EQ(obj.ID(), Hash("usb-cam--01-"));
    EXPECT_EQ(KeywordsOf(obj), (std::vector<std::uint32_t>{Hash("usb"), Hash("cam"), Hash("01")}));
    EXPECT_TRUE(obj.Name("a-b"));
    EXPECT_EQ(obj.Order(), obj.ID());
    EXPECT_TRUE(obj.Name(nullptr));  // changes nothing
    EXPECT_EQ(obj.GetName(), "a-b");
    EXPECT_EQ(KeywordsOf(obj), (std::vector<std::uint32_t>{Hash("a"), Hash("b")}));
    object plain("x");
    EXPECT_TRUE(plain.object_name::Name("Y-z"));  // the name and its id; the keywords stay
    EXPECT_EQ(std::make_tuple(plain.GetName(), plain.ID(), KeywordsOf(plain)),
              std::make_tuple(std::string("Y-z"), Hash("y-z"), std::vector<std::uint32_t>{Hash("x")}));
    std::vector<std::uint32_t> many;  // more than the inline buffer holds
    for (const char* part : {"a", "b", "c", "d", "e", "f", "g", "h", "i", "j"}) many.push_back(Hash(part));
    EXPECT_EQ(KeywordsOf(object("a-b-c-d-e-f-g-h-i-j")), many);
    const object unnamed(nullptr);  // the id of a null name, as Hash gives it
    EXPECT_EQ(std::make_tuple(unnamed.GetName(), unnamed.ID(), KeywordsOf(unnamed)),
              std::make_tuple(std::string(), 0u, std::vector<std::uint32_t>{}));
}

TEST(Arr32, UniqueAddSkipsValuesPresentStorageGrows) {
    std::uint32_t storage[2];
    Arr32 values(storage, 2, true);
    EXPECT_TRUE(values.Add(5u, true));
    EXPECT_FALSE(values.Add(5u, true));
    EXPECT_TRUE(values.Add(5u, false));
    EXPECT_TRUE(values.Add(6u, false));
    EXPECT_EQ(std::vector<std::uint32_t>(values.begin(), values.end()), (std::vector<std::uint32_t>{5, 5, 6}));
    EXPECT_EQ(values.Add(nullptr, '-'), 0);
    values.Clear();
    EXPECT_EQ(values.begin(), values.end());
    std::uint32_t none[1] = {77};
    Arr32 full(none, 0, true);  // no room in the given storage
    EXPECT_TRUE(full.Add(5u, false));
    EXPECT_EQ(std::make_pair(none[0], *full.begin()), std::make_pair(77u, 5u));
    Arr32 unbacked(nullptr, 4, false);  // no storage: grows on the first add
    EXPECT_EQ(unbacked.Add("x-y-x", '-'), 3);  // a text's parts are added even when repeated
    EXPECT_EQ(std::vector<std::uint32_t>(unbacked.begin(), unbacked.end()),
              (std::vector<std::uint32_t>{Hash("x"), Hash("y"), Hash("x")}));
}

// Storage outgrown many times keeps every value, and what the array
// allocated goes when it is cleared or goes itself, the given storage
// staying the caller's.
TEST(Arr32, OutgrownStorageKeepsEveryValueAndIsFreed) {
    std::vector<std::uint32_t> added;
    for (std::uint32_t v = 0; v < 7000; v += 7) added.push_back(v);
    const tavrin::test::AllocationCounter counter;
    {
        std::uint32_t two[2];
        Arr32 values(two, 2, true);
        for (const std::uint32_t v : added) values.Add(v, false);
        EXPECT_EQ(std::vector<std::uint32_t>(values.begin(), values.end()), added);
        values.Clear();
        EXPECT_EQ(std::make_pair(counter.Frees(), values.begin()), std::make_pair(counter.Calls(), values.end()));
        values.Add(5u, false);
        EXPECT_EQ(std::vector<std::uint32_t>(values.begin(), values.end()), std::vector<std::uint32_t>{5u});
    }
    EXPECT_EQ(counter.Frees(), counter.Calls());
}

// toAttrSet reports failure after adding two entries.
struct FailingAttributes : object {
    FailingAttributes() : object("failing") {}
    bool toAttrSet(AttrSet& set) const override { return set.Add("x", "1") && set.Add("y", "2") && false; }
};

TEST(Object, FromStringNamesTheObjectToStringWritesWhateverToAttrSetSays) {
    object obj("before");
    EXPECT_TRUE(obj.fromString("{name=after-it}"));
    EXPECT_TRUE(obj.fromString("{other=x}"));  // no name: kept
    std::string text;
    EXPECT_TRUE(obj.toString(text));
    EXPECT_EQ(text, "{name=after-it}");
    EXPECT_TRUE(FailingAttributes().toString(text));
    EXPECT_EQ(text, "{x=1,y=2}");  // on one line
}

int Twice(int v) { return 2 * v; }
using IntFunc = object_func<int, int>;
struct DerivedFunc : IntFunc {  // does not provide its own Clone
    DerivedFunc() : IntFunc("derived", Twice) {}
};

TEST(ObjectFunc, CloneCopiesNameIdKeywordsRepeatsIncludedFlagAndCallableObjectsAreReleasedWithTheirOwnSize) {
    const long long before = tavrin::host::LiveObjectBytes();
    {
        std::unique_ptr<IntFunc> func(new IntFunc("twice-fast-twice", Twice));
        EXPECT_EQ(tavrin::host::LiveObjectBytes() - before, static_cast<long long>(sizeof(IntFunc)));
        func->Enable(false);
        std::unique_ptr<object> clone(func->Clone());
        ASSERT_NE(clone, nullptr);
        EXPECT_EQ(std::make_tuple(clone->GetName(), clone->ID(), KeywordsOf(*clone), clone->Enabled()),
                  std::make_tuple(std::string("twice-fast-twice"), func->ID(), KeywordsOf(*func), false));
        // The copy's keywords live in its own inline buffer.
        const auto* keywords = reinterpret_cast<const char*>(clone->Keywords().begin());
        const auto* start = reinterpret_cast<const char*>(clone.get());
        EXPECT_TRUE(keywords >= start && keywords < start + sizeof(IntFunc));
        auto* callable = dynamic_cast<IFunc<int, int>*>(clone.get());
        ASSERT_NE(callable, nullptr);
        EXPECT_EQ((*callable)(4), 8);
        EXPECT_EQ(DerivedFunc().Clone(), nullptr);
        IntFunc empty("empty", nullptr);
        const std::unique_ptr<object> emptyClone(empty.Clone());
        EXPECT_THROW(empty(1), std::bad_function_call);
        EXPECT_THROW(dynamic_cast<IntFunc&>(*emptyClone)(1), std::bad_function_call);
        EXPECT_EQ(FailingAttributes().Clone(), nullptr);  // a class of its own clones only by its own Clone
        const std::unique_ptr<object> plain(object("plain-one").Clone());
        EXPECT_EQ(plain != nullptr ? plain->GetName() : "", "plain-one");
        delete static_cast<IFunc<int, int>*>(new IntFunc("through-the-interface", Twice));
    }
    EXPECT_EQ(tavrin::host::LiveObjectBytes(), before);
}

// A clone that runs out of memory part-way (its name, its keywords beyond the
// eight inline ones) gives back all it took, the object's own bytes included.
TEST(ObjectFunc, CloneRunningOutOfMemoryAtAnyAllocationLeavesNothingBehind) {
    const IntFunc func("a-b-c-d-e-f-g-h-i-j-k-l-m-n-o-p-q-r", Twice);
    const long long before = tavrin::host::LiveObjectBytes();
    tavrin::test::FailEachAllocationInTurn([&] { std::unique_ptr<object>(func.Clone()); });
    EXPECT_EQ(tavrin::host::LiveObjectBytes(), before);
}

// Announced entries that say which of them ran.
std::string gAnnouncedRun;
template <int N>
void Announced(const char* name) { gAnnouncedRun = std::to_string(N) + " " + name; }

TEST(Reflect, KeepsEveryAnnouncementInOrderAndFindsTheLatestUnderAName) {
    using tavrin::host::FindReflected;
    const std::size_t before = tavrin::host::ReflectCalls().size();
    EXPECT_EQ(ReflectAdd(Announced<1>, 0, "test-a"), before + 1);
    EXPECT_EQ(ReflectAdd(Announced<2>, 2, "test-b"), before + 2);
    EXPECT_EQ(ReflectAdd(Announced<3>, 0, "test-a"), before + 3);
    EXPECT_EQ(ReflectAdd(Announced<1>, 1, nullptr), before + 4);
    const auto calls = tavrin::host::ReflectCalls();
    ASSERT_EQ(calls.size(), before + 4);
    EXPECT_EQ(calls[before + 1].name, "test-b");
    EXPECT_EQ(calls[before + 1].flags, 2);
    EXPECT_EQ(calls[before + 3].name, "");
    for (const auto& [name, run] : {std::pair<const char*, const char*>{"test-b", "2 test-b"},
                                    {"test-a", "3 test-a"},
                                    {"", "1 "}}) {
        const auto entry = FindReflected(name);
        ASSERT_NE(entry, nullptr) << name;
        entry(name);
        EXPECT_EQ(gAnnouncedRun, run);
    }
    EXPECT_EQ(FindReflected("test-c"), nullptr);
}

TEST(ObjectList, FindsByIdOrExactTextKeepsOneObjectOfAnIdReleasesWhatItHolds) {
    const long long before = tavrin::host::LiveObjectBytes();
    {
        ObjectList list;
        object* cam = new object("Cam-Front");
        ASSERT_TRUE(list.Add(cam, false));
        EXPECT_EQ(list.Find("cam-front", true), cam);
        EXPECT_EQ(list.Find("cam-front", false), nullptr);
        EXPECT_EQ(list.Find("Cam-Front", false), cam);
        EXPECT_EQ(list.Find("cam-back", true), nullptr);
        EXPECT_EQ(list.Find(nullptr, true), nullptr);
        EXPECT_FALSE(list.Add(new object("CAM-front"), false));
        EXPECT_EQ(list.Find("cam-front", true), cam);
        object* replacement = new object("Cam-front");
        EXPECT_TRUE(list.Add(replacement, true));
        EXPECT_EQ(list.Find("cam-front", true), replacement);
        EXPECT_EQ(list.Size(), 1u);
        EXPECT_EQ(std::make_pair(list.At(0), list.At(1)), std::make_pair(replacement, static_cast<object*>(nullptr)));
        EXPECT_FALSE(list.Add(nullptr, true));
        EXPECT_FALSE(list.Remove("cam-front") || list.Remove(nullptr));
        EXPECT_TRUE(list.Remove("Cam-front"));
        EXPECT_EQ(list.Size(), 0u);
        EXPECT_EQ(list.At(0), nullptr);  // its room may still hold the removed pointer
        list.Add(new object("kept-until-the-end"), false);
    }
    EXPECT_EQ(tavrin::host::LiveObjectBytes(), before);
    auto& factory = tavrin::stream::Factory::Globle();  // its registry comes first
    EXPECT_EQ(static_cast<void*>(&factory.Registry()), static_cast<void*>(&factory));
}

}  // namespace
