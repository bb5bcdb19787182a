// The json:: value library: fields, typed access, copies, memory running
// out, objects, arrays, equality, the text the writer makes, and documents
// nested to the bound and beyond on a small stack.
#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <stdexcept>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "json/Parser.h"
#include "json/legacy/Deserialize.h"
#include "json/legacy/Serialize.h"
#include "json/legacy/Value.h"
#include "support/DeepDocuments.h"
#include "support/FailEachAllocation.h"
#include "support/SmallStack.h"

namespace {

// A json::Value whose fields a test can read, including those its typed
// accessors do not show.
struct LegacyProbe : json::Value {
    using json::Value::Value;
    using json::Value::operator=;
    using json::Value::mArrayVal, json::Value::mBoolVal, json::Value::mDoubleVal, json::Value::mFloatVal,
        json::Value::mFractionVal, json::Value::mIntVal, json::Value::mObjectVal, json::Value::mStringVal;
};

tavrin::base::Fraction MakeFraction(long long num, long long den) {
    tavrin::base::Fraction f;
    f.From(num, den);
    return f;
}
json::Value Fraction(long long num, long long den) { return json::Value(MakeFraction(num, den)); }
// Values of the two decimal types, which have no constructor of their own.
template <class T>
json::Value Decimal(T value) {
    json::Value v;
    v = value;
    return v;
}
json::Value Float(float f) { return Decimal(f); }
json::Value Double(double d) { return Decimal(d); }

json::Array ArrayOf(std::initializer_list<json::Value> values) {
    json::Array a;
    for (const json::Value& v : values) a.push_back(v);
    return a;
}
json::Value Array(std::initializer_list<json::Value> values) { return json::Value(ArrayOf(values)); }

json::Value ObjectWith(const std::vector<std::string>& keys) {
    json::Value v{json::Object()};
    for (std::size_t i = 0; i < keys.size(); ++i) v[keys[i]] = static_cast<int>(i);
    return v;
}

// The message of the std::runtime_error that `action` throws, or a note that
// it threw none.
std::string RuntimeErrorOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const std::runtime_error& e) {
        return e.what();
    }
    return "(nothing thrown)";
}

}  // namespace

TEST(LegacyValue, AssignmentAndReferencesSetOnlyTheirFieldClearOnlyTheType) {
    const LegacyProbe d;
    EXPECT_EQ(std::make_tuple(d.GetType(), d.mIntVal, d.mFloatVal, d.mDoubleVal, d.mBoolVal, d.mStringVal,
                              d.mObjectVal.size() + d.mArrayVal.size(), d.mFractionVal.num, d.mFractionVal.den,
                              d.size()),
              std::make_tuple(json::NullVal, 0, 0.0f, 0.0, false, std::string(), 0u, 0, 1, 1u));
    LegacyProbe p(3);
    EXPECT_EQ(std::make_tuple(p.GetType(), p.mIntVal, p.mFloatVal, p.mDoubleVal),
              std::make_tuple(json::IntVal, 3, 3.0f, 3.0));
    p = 2.5f;
    EXPECT_EQ(std::make_tuple(p.GetType(), p.ToInt(), p.mDoubleVal), std::make_tuple(json::FloatVal, 3, 3.0));
    p = 0.25;
    EXPECT_EQ(std::make_tuple(p.GetType(), p.mFloatVal), std::make_tuple(json::DoubleVal, 2.5f));
    p = ArrayOf({1, 2});
    EXPECT_EQ(p.size(), 2u);
    p = 9;
    EXPECT_EQ(std::make_tuple(p.GetType(), p.mArrayVal.size(), p.mFloatVal), std::make_tuple(json::IntVal, 2u, 2.5f));
    p = "s";
    p = false;
    p = std::string("t");
    EXPECT_EQ(p.GetType(), json::StringVal);
    p = MakeFraction(1, 3);
    EXPECT_EQ(std::make_tuple(p.GetType(), p.mStringVal, p.mIntVal), std::make_tuple(json::FractionVal, "t", 9));
    p = ObjectWith({"k", "l"}).ToObject();
    EXPECT_EQ(std::make_tuple(p.GetType(), p.size(), p.mStringVal), std::make_tuple(json::ObjectVal, 2u, "t"));
    p.Clear();
    EXPECT_EQ(std::make_tuple(p.GetType(), p.size(), p.mStringVal), std::make_tuple(json::NullVal, 1u, "t"));
    EXPECT_EQ(Float(2.5f).ToInt(), 0);
    json::Value number(1), decimal = Double(2.5), flag(true), text("a"), fraction = Fraction(1, 2);
    number.IntRef() = 7;
    decimal.IntRef() = 8;  // the int field of a decimal, which ToInt reads
    flag.BoolRef() = false;
    text.StringRef() += "b";
    static_cast<std::string&>(text) += "c";
    fraction.FractionRef().From(3, 4);
    EXPECT_EQ(std::make_tuple(number.ToInt(), decimal.GetType(), decimal.ToInt(), flag.ToBool(), text.ToString(),
                              fraction.ToFraction().num, fraction.ToFraction().den),
              std::make_tuple(7, json::DoubleVal, 8, false, "abc", 3, 4));
}

TEST(LegacyValue, EveryTypedAccessorThrowsItsMessageOnAnotherType) {
    const std::string numeric = "json mValueType==IsNumeric() required", boolean = "json mValueType==BoolVal required",
                      text = "json mValueType==StringVal required", object = "json mValueType==ObjectVal required",
                      array = "json mValueType==ArrayVal required", fraction = "json mValueType==FractionVal required";
    json::Value v("s"), number(1);
    const json::Value &c = v, &constNumber = number;
    const char* keys[] = {"a"};
    const std::vector<std::pair<std::string, std::function<void()>>> cases = {
        {numeric, [&] { (void)c.ToInt(); }}, {numeric, [&] { (void)static_cast<int>(c); }},
        {numeric, [&] { (void)v.IntRef(); }}, {boolean, [&] { (void)c.ToBool(); }},
        {boolean, [&] { (void)static_cast<bool>(c); }}, {boolean, [&] { (void)v.BoolRef(); }},
        {object, [&] { (void)c.ToObject(); }}, {object, [&] { (void)static_cast<json::Object>(c); }},
        {object, [&] { (void)v.ObjectRef(); }}, {object, [&] { (void)static_cast<json::Object&>(v); }},
        {object, [&] { (void)v[std::string("k")]; }}, {object, [&] { (void)v["k"]; }},
        {object, [&] { (void)c[std::string("k")]; }}, {object, [&] { (void)c["k"]; }},
        {object, [&] { (void)c.HasKey("k"); }}, {object, [&] { (void)c.HasKeys(std::vector<std::string>{"k"}); }},
        {object, [&] { (void)c.HasKeys(keys, 1); }}, {array, [&] { (void)c.ToArray(); }},
        {array, [&] { (void)static_cast<json::Array>(c); }}, {array, [&] { (void)v.ArrayRef(); }},
        {array, [&] { (void)static_cast<json::Array&>(v); }}, {array, [&] { (void)v[0u]; }},
        {array, [&] { (void)c[0u]; }}, {fraction, [&] { (void)c.ToFraction(); }},
        {fraction, [&] { (void)static_cast<tavrin::base::Fraction>(c); }}, {fraction, [&] { (void)v.FractionRef(); }},
        {fraction, [&] { (void)static_cast<tavrin::base::Fraction&>(v); }},
        {text, [&] { (void)number.ToString(); }}, {text, [&] { (void)number.StringRef(); }},
        {text, [&] { (void)static_cast<std::string>(constNumber); }},
        {text, [&] { (void)static_cast<std::string&>(number); }}, {fraction, [&] { (void)number.FractionRef(); }},
        {array, [&] { (void)json::Value(json::Object()).ArrayRef(); }}, {numeric, [] { (void)json::Value().ToInt(); }},
        {text, [] { json::Value cleared("x"); cleared.Clear(); (void)cleared.ToString(); }},
    };
    for (std::size_t i = 0; i < cases.size(); ++i) {
        EXPECT_EQ(RuntimeErrorOf(cases[i].second), cases[i].first) << "case " << i;
        EXPECT_EQ(std::make_pair(v.GetType(), number.ToInt()), std::make_pair(json::StringVal, 1)) << "case " << i;
    }
}

TEST(LegacyValue, NullTextPointersAreRejectedBeforeAnythingChanges) {
    const char* none = nullptr;
    EXPECT_THROW(json::Value{none}, std::invalid_argument);
    json::Value v(3);
    EXPECT_THROW(v = none, std::invalid_argument);
    EXPECT_EQ(v.ToInt(), 3);
    json::Value object{json::Object()};
    EXPECT_THROW((void)object[none], std::invalid_argument);
    EXPECT_THROW((void)static_cast<const json::Value&>(object)[none], std::invalid_argument);
    EXPECT_EQ(object.size(), 0u);
    EXPECT_THROW((void)object.HasKeys(static_cast<const char**>(nullptr), 1), std::invalid_argument);
    EXPECT_EQ(object.HasKeys(static_cast<const char**>(nullptr), 0), -1);
}

TEST(LegacyValue, CopiesTakeOnlyTheFieldsOfTheirType) {
    LegacyProbe source(5);
    source = "text";  // the integer field still holds 5
    LegacyProbe copy(source);
    EXPECT_EQ(std::make_tuple(copy.GetType(), copy.ToString(), copy.mIntVal),
              std::make_tuple(json::StringVal, "text", 0));
    LegacyProbe target(9);
    target = static_cast<const json::Value&>(source);
    EXPECT_EQ(std::make_pair(target.GetType(), target.mIntVal), std::make_pair(json::StringVal, 9));
    LegacyProbe numeric(2);
    numeric = 2.5f;
    LegacyProbe numericCopy(numeric);
    EXPECT_EQ(std::make_tuple(numericCopy.mIntVal, numericCopy.mFloatVal, numericCopy.mDoubleVal),
              std::make_tuple(2, 2.5f, 2.0));
    LegacyProbe moved(std::move(source));
    EXPECT_EQ(std::make_pair(moved.ToString(), moved.mIntVal), std::make_pair(std::string("text"), 0));
    LegacyProbe nullSource("x");
    nullSource.Clear();
    LegacyProbe nullCopy(nullSource);
    EXPECT_EQ(std::make_pair(nullCopy.GetType(), nullCopy.mStringVal), std::make_pair(json::NullVal, std::string()));
}

TEST(LegacyValue, CopiesOfEveryTypeCompareAndWriteLikeTheirSourceAndAreDeep) {
    json::Value nested{json::Object()};
    nested["list"] = ArrayOf({1, json::Value("x")});
    nested["f"] = MakeFraction(2, 3);
    for (const json::Value& source : {json::Value(), json::Value(true), json::Value(-4), json::Value("s"), Float(2.5f),
                                      Double(0.125), Fraction(1, 2), Array({1, 2}), nested}) {
        const json::Value copy(source);
        json::Value assigned(7);
        assigned = source;
        EXPECT_EQ(SerializeValue(copy), SerializeValue(source));
        EXPECT_EQ(SerializeValue(assigned), SerializeValue(source));
        EXPECT_EQ(copy.GetType(), source.GetType());
        const bool container = source.GetType() == json::ArrayVal || source.GetType() == json::ObjectVal;
        EXPECT_EQ(copy.size(), container ? 2u : 1u);  // a value of another type counts as one
        json::Value changed(source);
        if (changed.GetType() == json::ObjectVal) changed["list"].ArrayRef().push_back(json::Value(9));
        EXPECT_EQ(SerializeValue(source), SerializeValue(copy)) << "copies are deep";
        EXPECT_EQ(copy == source && assigned == source, source.GetType() != json::ObjectVal) << SerializeValue(source);
    }
}

TEST(LegacyValue, SelfAssignmentAndAssignmentFromInsideKeepTheValue) {
    json::Value v(ArrayOf({1, 2}));
    v = static_cast<const json::Value&>(v);
    EXPECT_EQ(SerializeValue(v), "[1,2]");
    json::Value parent{json::Object()};
    parent["child"] = ArrayOf({json::Value("deep"), 3});
    parent = static_cast<const json::Value&>(parent["child"]);
    EXPECT_EQ(SerializeValue(parent), "[\"deep\",3]");
    json::Value list(ArrayOf({ArrayOf({4, 5})}));
    list = list[0u].ToArray();
    EXPECT_EQ(SerializeValue(list), "[4,5]");
    json::Value holder{json::Object()};
    holder["o"] = json::Object();
    holder["o"]["x"] = 1;
    holder = std::move(holder["o"]);
    EXPECT_EQ(SerializeValue(holder), "{\"x\":1}");
}

// Memory running out at any allocation of reading, copying, assigning or
// writing a document loses nothing.
TEST(LegacyValue, MemoryRunningOutAtAnyAllocationLeavesNothingBehind) {
    const std::string text = R"({"a":[1,-2.5,"a text longer than inline ones",true,null,3/4,{"k":[[]]}],)"
                             R"("o":{"x":{"y":"z"}},"a":"again"})";
    const json::Value read = json::Deserialize(text);
    ASSERT_EQ(read.GetType(), json::ObjectVal);
    tavrin::test::FailEachAllocationInTurn([&] {
        const json::Value value = json::Deserialize(text);
        if (value.GetType() != json::NullVal) {
            EXPECT_EQ(SerializeValue(value), SerializeValue(read));
        }
    });
    tavrin::test::FailEachAllocationInTurn([&] { const json::Value copy(read); });
    tavrin::test::FailEachAllocationInTurn([&] {
        json::Value target(ArrayOf({1, json::Value("a text longer than inline ones")}));
        target = read;
    });
    tavrin::test::FailEachAllocationInTurn([&] { (void)json::Serialize(read); });
}

// A document holds copies of the values read (each container is copied into
// its value), so every value has only the fields of its type, an integer all
// three numeric ones: a repeated key's entry keeps nothing of its earlier
// value.
TEST(LegacyValue, ValuesReadHoldOnlyTheFieldsOfTheirTypeRepeatedKeysIncluded) {
    // Every key is there before the first repeat: no entry moves after it.
    const json::Value read = json::Deserialize(R"({"a":[1,2],"b":true,"c":"x","d":7,"e":{"f":1},)"
                                               R"("a":5,"b":"y","c":[3],"d":{b},"e":1/2,"e":{b}})");
    ASSERT_EQ(read.GetType(), json::ObjectVal);
    const json::Value &a = read["a"], &b = read["b"], &c = read["c"], &d = read["d"], &e = read["e"];
    EXPECT_EQ(std::make_tuple(a.GetType(), a.ToInt(), a.*&LegacyProbe::mFloatVal, a.*&LegacyProbe::mDoubleVal,
                              (a.*&LegacyProbe::mArrayVal).size()),
              std::make_tuple(json::IntVal, 5, 5.0f, 5.0, std::size_t{0}));
    EXPECT_EQ(std::make_tuple(b.GetType(), b.ToString(), b.*&LegacyProbe::mBoolVal),
              std::make_tuple(json::StringVal, "y", false));
    EXPECT_EQ(std::make_tuple(c.GetType(), SerializeValue(c), c.*&LegacyProbe::mStringVal),
              std::make_tuple(json::ArrayVal, "[3]", ""));
    EXPECT_EQ(std::make_tuple(d.GetType(), d.*&LegacyProbe::mIntVal, d.*&LegacyProbe::mFloatVal,
                              d.*&LegacyProbe::mDoubleVal),
              std::make_tuple(json::NullVal, 0, 0.0f, 0.0));
    const tavrin::base::Fraction& half = e.*&LegacyProbe::mFractionVal;  // 1/2, then the default again
    EXPECT_EQ(std::make_tuple(e.GetType(), (e.*&LegacyProbe::mObjectVal).size(), half.num, half.den),
              std::make_tuple(json::NullVal, 0u, 0, 1));
    json::Value reused = json::Deserialize(R"({"n": 5, "N": "x"})");  // seen through the integer accessor
    reused["n"] = 2.5f;
    EXPECT_EQ(reused["n"].ToInt(), 0);
}

TEST(LegacyObject, LookupsAssignmentAndClear) {
    const json::Value v = ObjectWith({"a", "b"});
    EXPECT_EQ(v.HasKeys(std::vector<std::string>{"a", "zz", "b"}), 1);
    EXPECT_EQ(v.HasKeys(std::vector<std::string>{"zz", "a"}), 0);
    EXPECT_EQ(v.HasKeys(std::vector<std::string>{"B", "a"}), -1);
    const char* keys[] = {"a", "b", "c"};
    const char* withNull[] = {"a", nullptr};
    const char* firstMissing[] = {"zz", "a"};
    EXPECT_EQ(std::make_tuple(v.HasKeys(keys, 3), v.HasKeys(keys, 2), v.HasKeys(keys, 0), v.HasKeys(withNull, 2),
                              v.HasKeys(firstMissing, 2)),
              std::make_tuple(2, -1, -1, 1, 0));
    EXPECT_EQ(v["A"].ToInt(), 0);
    EXPECT_THROW((void)v["c"], std::out_of_range);
    EXPECT_THROW((void)v.ToObject()[std::string("c")], std::out_of_range);
    EXPECT_EQ(v.ToObject().find("B"), v.ToObject().begin() + 1);
    json::Value named = ObjectWith({"Name"});
    named["NAME"] = 5;
    EXPECT_EQ(std::make_tuple(named.HasKey("name"), SerializeValue(named)), std::make_tuple(true, "{\"Name\":5}"));
    json::Object& entries = named.ObjectRef();
    EXPECT_EQ(std::make_pair(entries.find("NAME"), entries.find("zz")), std::make_pair(entries.begin(), entries.end()));

    json::Object target;
    target["old"] = 1;
    target = v.ToObject();
    const json::Object& same = target;
    target = same;
    EXPECT_EQ(SerializeValue(json::Value(target)), "{\"a\":0,\"b\":1}");
    target.Clear();
    EXPECT_EQ(target.size(), 0u);
    target = json::Object(v.ToObject());
    EXPECT_EQ(SerializeValue(json::Value(target)), "{\"a\":0,\"b\":1}");
}

TEST(LegacyArray, InsertPushFindAssignAndClear) {
    json::Array a = ArrayOf({1, 3});
    a.insert(1, json::Value(2));
    a.insert(3, json::Value(4));
    a.insert(0, json::Value(0));
    a.push_back(json::Value("end"));
    EXPECT_EQ(SerializeArray(a), "[0,1,2,3,4,\"end\"]");
    EXPECT_THROW(a.insert(7, json::Value(9)), std::out_of_range);
    EXPECT_THROW((void)json::Value(a)[6u], std::out_of_range);
    a.insert(1, a[0]);
    EXPECT_EQ(SerializeArray(a), "[0,0,1,2,3,4,\"end\"]");
    EXPECT_EQ(a.find(Float(3.0f)), a.begin() + 4);  // by value equality
    EXPECT_EQ(a.find(json::Value("end")), a.begin() + 6);
    EXPECT_TRUE(a.HasValue(json::Value(1)) && !a.HasValue(json::Value(7)));
    const json::Array& constant = a;
    EXPECT_EQ(constant.find(json::Value(7)), constant.end());
    EXPECT_THROW((void)constant[7u], std::out_of_range);
    EXPECT_EQ(constant[6u].ToString(), "end");
    a = constant;
    EXPECT_EQ(a.size(), 7u);
    a = ArrayOf({json::Value(json::Object())});
    EXPECT_EQ(a.find(json::Value(a[0u])), a.end());  // objects only by identity
    EXPECT_EQ(a.find(a[0u]), a.begin());
    a.Clear();
    EXPECT_EQ(SerializeArray(a), "[]");
}

// Equality must agree in both operand orders. Numbers compare in the wider
// kind (int with float in single precision, int with double in double
// precision); other types only with their own; fractions cross-multiply in
// 64 bits; arrays element by element; objects only to themselves.
TEST(LegacyEquality, PairsCompareAsTheirTypesSay) {
    json::Value floatOverInt(3), doubleOverInt(3), object{json::Object()};
    floatOverInt = 4.0f;  // equality reads the field of the value's type
    doubleOverInt = 4.0;
    object["k"] = 1;
    const json::Value nanF = Float(std::numeric_limits<float>::quiet_NaN());
    const json::Value nanD = Double(std::numeric_limits<double>::quiet_NaN());
    const std::tuple<json::Value, json::Value, bool> cases[] = {
        {json::Value(7), json::Value(7), true}, {json::Value(7), Float(7.0f), true},
        {json::Value(7), Double(7.0), true}, {json::Value(7), json::Value(8), false},
        {Float(0.1f), Double(0.1), false}, {Float(0.5f), Double(0.5), true},
        {Float(2.5f), Float(2.5f), true}, {Double(2.5), Double(2.25), false},
        // 16777217 is not a float.
        {json::Value(16777217), Float(16777216.0f), true}, {json::Value(16777217), Double(16777216.0), false},
        {Double(0.0), Double(-0.0), true}, {Float(0.0f), json::Value(0), true},
        {json::Value(), json::Value(0), false}, {json::Value(), json::Value(), true},
        {json::Value(true), json::Value(1), false}, {json::Value("1"), json::Value(1), false},
        {Fraction(1, 1), json::Value(1), false}, {Array({}), json::Value(), false},
        {json::Value("abc"), json::Value("abc"), true}, {json::Value("abc"), json::Value("abd"), false},
        {json::Value("abc"), json::Value("ABC"), false},
        {json::Value(std::string("a\0b", 3)), json::Value(std::string("a\0c", 3)), false},
        {json::Value(true), json::Value(true), true}, {json::Value(true), json::Value(false), false},
        {Fraction(1, 2), Fraction(2, 4), true}, {Fraction(-1, 2), Fraction(1, -2), true},
        {Fraction(1, 2), Fraction(1, 3), false}, {Fraction(0, 0), Fraction(0, 0), true},
        {Fraction(0, 0), Fraction(0, 5), false}, {Fraction(0, 0), Fraction(3, 0), false},
        {Fraction(1, 0), Fraction(2, 0), true}, {Fraction(1, 0), Fraction(0, 1), false},
        // 65536 x 65536 wraps to 0 in 32 bits.
        {Fraction(65536, 1), Fraction(0, 65536), false}, {Fraction(2147483647, 2), Fraction(2147483647, 2), true},
        {Array({1, 2}), Array({1, 2}), true}, {Array({1, 2}), Array({1, 2, 3}), false},
        {Array({1, 2}), Array({2, 1}), false}, {Array({1, Float(2.0f)}), Array({Double(1.0), 2}), true},
        {Array({Array({json::Value("x")})}), Array({Array({json::Value("x")})}), true}, {Array({}), Array({}), true},
        {nanF, nanF, false}, {nanD, nanD, false}, {nanF, nanD, false}, {nanF, json::Value(0), false},
        {floatOverInt, json::Value(4), true}, {floatOverInt, json::Value(3), false},
        {doubleOverInt, Float(4.0f), true}, {json::Value(7), json::Deserialize("[7]")[0u], true},
        {Float(7.0f), json::Deserialize("[7]")[0u], true}, {Double(7.0), json::Deserialize("[7]")[0u], true},
        {object, json::Value(object), false}, {Array({object}), Array({object}), false},
    };
    for (const auto& [a, b, equal] : cases) {
        EXPECT_EQ(a == b, equal) << SerializeValue(a) << " == " << SerializeValue(b);
        EXPECT_EQ(b == a, equal) << SerializeValue(b) << " == " << SerializeValue(a);
    }
    EXPECT_TRUE(object == object);
}

TEST(LegacySerialize, ValuesWriteTheirTextsOnlyObjectsAndArraysAreDocuments) {
    json::Value intOverFloat(7);
    intOverFloat = 2.5f;
    intOverFloat = 9;
    const std::pair<json::Value, const char*> cases[] = {
        {json::Value(true), "true"}, {json::Value(), "null"}, {json::Value(""), "\"\""}, {Fraction(-3, 0), "-3/0"},
        {json::Value(std::numeric_limits<int>::min()), "-2147483648"}, {intOverFloat, "9"},
        {Float(2.5f), "2.5"}, {Float(0.1f), "0.1"}, {Float(-3.0f), "-3"}, {Float(1e30f), "1e+30"},
        {Double(0.1), "0.1"}, {Double(1.0 / 3.0), "0.3333333333333333"}, {Double(-0.0), "-0"},
        {Double(1e-300), "1e-300"}, {Double(std::numeric_limits<double>::quiet_NaN()), "null"},
        {Double(-std::numeric_limits<double>::infinity()), "null"},
        {Float(std::numeric_limits<float>::infinity()), "null"},
        // Nothing is escaped.
        {Array({json::Value(), json::Value("a\"b"), json::Value("line\nbreak\t\x01")}),
         "[null,\"a\"b\",\"line\nbreak\t\x01\"]"},
    };
    for (const auto& [value, text] : cases) {
        EXPECT_EQ(SerializeValue(value), text);
        EXPECT_EQ(json::Serialize(value), value.GetType() == json::ArrayVal ? text : "");
    }
    EXPECT_EQ(json::Serialize(json::Value(json::Object())), "{}");
}

namespace {

using namespace tavrin::test;  // deep documents, small stack

constexpr std::size_t kDeepest = tavrin::plugin::json::Parser::kDefaultMaxDepth;

// Reads, copies, assigns, writes and destroys the document on a small stack;
// gives what the copy writes.
std::string ReadBackOnSmallStack(const std::string& text) {
    std::string written;
    EXPECT_TRUE(RunOnStack(128 * 1024, [&] {
        const json::Value value = json::Deserialize(text);
        json::Value copy(value);
        json::Value assigned(1);
        assigned = copy;
        written = assigned.GetType() == json::NullVal ? "null" : json::Serialize(assigned);
    }));
    return written;
}

// A container beyond the bound reads as null: an array drops it, an object
// keeps a null member, and the rest of the document still reads. Containers
// side by side count once, however many there are.
TEST(LegacyDepth, DeepestAdmittedDocumentsWorkOnASmallStackDeeperContainersReadAsNull) {
    for (const std::string& text : {NestedArrays(kDeepest, "1"), NestedObjects(kDeepest, "\"x\""),
                                    AlternatingNesting(kDeepest, "true")})
        EXPECT_EQ(ReadBackOnSmallStack(text), text);
    EXPECT_EQ(ReadBackOnSmallStack(NestedArrays(kDeepest + 1, "1")), NestedArrays(kDeepest, ""));
    EXPECT_EQ(ReadBackOnSmallStack(NestedObjects(kDeepest + 1, "1")), NestedObjects(kDeepest, "null"));
    EXPECT_EQ(ReadBackOnSmallStack("[" + NestedArrays(kDeepest, "1") + ",2]"),
              "[" + NestedArrays(kDeepest - 1, "") + ",2]");
    EXPECT_EQ(ReadBackOnSmallStack(NestedArrays(20000, "1")), NestedArrays(kDeepest, ""));
    std::string siblings = "[";  // side by side they are as deep as one
    for (std::size_t i = 0; i <= kDeepest; ++i) siblings += "[{\"k\":[1]}],";
    siblings.back() = ']';
    EXPECT_EQ(ReadBackOnSmallStack(siblings), siblings);
    EXPECT_EQ(ReadBackOnSmallStack(AlternatingNesting(20001, "1")), AlternatingNesting(kDeepest, "null"));
}

}  // namespace
