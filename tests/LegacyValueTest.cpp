#include <gtest/gtest.h>

#include <functional>
#include <tuple>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "json/legacy/Serialize.h"
#include "json/legacy/Value.h"
#include "support/LegacyProbe.h"

using tavrin::test::LegacyProbe;
using tavrin::test::MakeFraction;

namespace {

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

json::Value ObjectWith(const std::vector<std::string>& keys) {
    json::Value v{json::Object()};
    for (std::size_t i = 0; i < keys.size(); ++i) v[keys[i]] = static_cast<int>(i);
    return v;
}

json::Array ArrayOf(std::initializer_list<json::Value> values) {
    json::Array a;
    for (const json::Value& v : values) a.push_back(v);
    return a;
}

}  // namespace

TEST(LegacyValue, DefaultIsNullWithEmptyFields) {
    LegacyProbe p;
    EXPECT_EQ(p.GetType(), json::NullVal);
    EXPECT_EQ(std::make_tuple(p.mIntVal, p.mFloatVal, p.mDoubleVal, p.mBoolVal, p.mStringVal),
              std::make_tuple(0, 0.0f, 0.0, false, std::string()));
    EXPECT_EQ(p.mObjectVal.size() + p.mArrayVal.size(), 0u);
    EXPECT_EQ(std::make_pair(p.mFractionVal.num, p.mFractionVal.den), std::make_pair(0, 1));
    EXPECT_EQ(p.size(), 1u);
    EXPECT_TRUE(json::Value() == json::Value());
}

TEST(LegacyValue, TypedAssignmentSetsOnlyItsFieldAndType) {
    LegacyProbe p(3);
    p = 2.5f;
    EXPECT_EQ(p.GetType(), json::FloatVal);
    EXPECT_EQ(p.ToInt(), 3);  // the integer field is left as it was
    EXPECT_EQ(p.mDoubleVal, 3.0);
    p = 0.25;
    EXPECT_EQ(p.GetType(), json::DoubleVal);
    EXPECT_EQ(p.mFloatVal, 2.5f);
    p = ArrayOf({1});
    p = 9;
    EXPECT_EQ(p.GetType(), json::IntVal);
    EXPECT_EQ(p.mArrayVal.size(), 1u);  // the array storage stays
    EXPECT_EQ(p.mFloatVal, 2.5f);
    p = "s";
    p = std::string("t");
    p = false;
    p = MakeFraction(1, 3);
    EXPECT_EQ(p.GetType(), json::FractionVal);
    EXPECT_EQ(p.mStringVal, "t");
    EXPECT_EQ(p.mIntVal, 9);

    json::Value fresh;
    fresh = 2.5f;
    EXPECT_EQ(fresh.ToInt(), 0);
    json::Value other;
    other = 2.5f;
    EXPECT_TRUE(fresh == other);
}

TEST(LegacyValue, ClearResetsOnlyTheType) {
    LegacyProbe p("kept");
    p.Clear();
    EXPECT_EQ(p.GetType(), json::NullVal);
    EXPECT_EQ(RuntimeErrorOf([&] { (void)p.ToString(); }), "json mValueType==StringVal required");
    EXPECT_EQ(p.size(), 1u);
    EXPECT_EQ(p.mStringVal, "kept");
}

TEST(LegacyValue, EveryTypedAccessorThrowsItsMessageOnAnotherType) {
    const std::string numeric = "json mValueType==IsNumeric() required";
    const std::string boolean = "json mValueType==BoolVal required";
    const std::string text = "json mValueType==StringVal required";
    const std::string object = "json mValueType==ObjectVal required";
    const std::string array = "json mValueType==ArrayVal required";
    const std::string fraction = "json mValueType==FractionVal required";
    json::Value v("s");
    const json::Value& c = v;
    const char* keys[] = {"a"};
    const std::vector<std::pair<std::string, std::function<void()>>> cases = {
        {numeric, [&] { (void)c.ToInt(); }},
        {numeric, [&] { (void)static_cast<int>(c); }},
        {numeric, [&] { (void)v.IntRef(); }},
        {boolean, [&] { (void)c.ToBool(); }},
        {boolean, [&] { (void)static_cast<bool>(c); }},
        {boolean, [&] { (void)v.BoolRef(); }},
        {object, [&] { (void)c.ToObject(); }},
        {object, [&] { (void)static_cast<json::Object>(c); }},
        {object, [&] { (void)v.ObjectRef(); }},
        {object, [&] { (void)static_cast<json::Object&>(v); }},
        {object, [&] { (void)v[std::string("k")]; }},
        {object, [&] { (void)v["k"]; }},
        {object, [&] { (void)c[std::string("k")]; }},
        {object, [&] { (void)c["k"]; }},
        {object, [&] { (void)c.HasKey("k"); }},
        {object, [&] { (void)c.HasKeys(std::vector<std::string>{"k"}); }},
        {object, [&] { (void)c.HasKeys(keys, 1); }},
        {array, [&] { (void)c.ToArray(); }},
        {array, [&] { (void)static_cast<json::Array>(c); }},
        {array, [&] { (void)v.ArrayRef(); }},
        {array, [&] { (void)static_cast<json::Array&>(v); }},
        {array, [&] { (void)v[0u]; }},
        {array, [&] { (void)c[0u]; }},
        {fraction, [&] { (void)c.ToFraction(); }},
        {fraction, [&] { (void)static_cast<tavrin::base::Fraction>(c); }},
        {fraction, [&] { (void)v.FractionRef(); }},
        {fraction, [&] { (void)static_cast<tavrin::base::Fraction&>(v); }},
    };
    for (std::size_t i = 0; i < cases.size(); ++i) {
        EXPECT_EQ(RuntimeErrorOf(cases[i].second), cases[i].first) << "case " << i;
        EXPECT_EQ(v.GetType(), json::StringVal) << "case " << i;
    }
    json::Value number(1);
    EXPECT_EQ(RuntimeErrorOf([&] { (void)number.ToString(); }), text);
    EXPECT_EQ(RuntimeErrorOf([&] { (void)number.StringRef(); }), text);
    const json::Value& constNumber = number;
    EXPECT_EQ(RuntimeErrorOf([&] { (void)static_cast<std::string>(constNumber); }), text);
    EXPECT_EQ(RuntimeErrorOf([&] { (void)static_cast<std::string&>(number); }), text);
    EXPECT_EQ(number.GetType(), json::IntVal);
    EXPECT_EQ(number.ToInt(), 1);
    EXPECT_EQ(RuntimeErrorOf([&] { (void)number.FractionRef(); }), fraction);
    EXPECT_EQ(RuntimeErrorOf([&] { (void)json::Value(json::Object()).ArrayRef(); }), array);
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
    EXPECT_EQ(copy.GetType(), json::StringVal);
    EXPECT_EQ(copy.ToString(), "text");
    EXPECT_EQ(copy.mIntVal, 0);

    LegacyProbe target(9);
    target = static_cast<const json::Value&>(source);
    EXPECT_EQ(target.GetType(), json::StringVal);
    EXPECT_EQ(target.mIntVal, 9);  // fields of other types stay

    LegacyProbe numeric(2);
    numeric = 2.5f;
    LegacyProbe numericCopy(numeric);
    EXPECT_EQ(numericCopy.mIntVal, 2);
    EXPECT_EQ(numericCopy.mFloatVal, 2.5f);
    EXPECT_EQ(numericCopy.mDoubleVal, 2.0);

    LegacyProbe moved(std::move(source));
    EXPECT_EQ(moved.ToString(), "text");
    EXPECT_EQ(moved.mIntVal, 0);

    LegacyProbe nullSource("x");
    nullSource.Clear();
    LegacyProbe nullCopy(nullSource);
    EXPECT_EQ(nullCopy.GetType(), json::NullVal);
    EXPECT_TRUE(nullCopy.mStringVal.empty());
}

TEST(LegacyValue, CopiesOfEveryTypeCompareAndWriteLikeTheirSource) {
    json::Value floating;
    floating = 2.5f;
    json::Value dbl;
    dbl = 0.125;
    json::Value nested{json::Object()};
    nested["list"] = ArrayOf({1, json::Value("x")});
    nested["f"] = MakeFraction(2, 3);
    const std::vector<json::Value> sources = {
        json::Value(), json::Value(true), json::Value(-4), json::Value("s"), floating, dbl,
        json::Value(MakeFraction(1, 2)), json::Value(ArrayOf({1, 2})), nested};
    for (const json::Value& source : sources) {
        const json::Value copy(source);
        json::Value assigned(7);
        assigned = source;
        EXPECT_EQ(SerializeValue(copy), SerializeValue(source));
        EXPECT_EQ(SerializeValue(assigned), SerializeValue(source));
        EXPECT_EQ(copy.GetType(), source.GetType());
        json::Value changed(source);
        if (changed.GetType() == json::ObjectVal) changed["list"].ArrayRef().push_back(json::Value(9));
        EXPECT_EQ(SerializeValue(source), SerializeValue(copy)) << "copies are deep";
        if (source.GetType() != json::ObjectVal) {
            EXPECT_TRUE(copy == source) << SerializeValue(source);
            EXPECT_TRUE(assigned == source) << SerializeValue(source);
        }
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

TEST(LegacyObject, KeysDifferingInCaseNameOneEntryWithTheFirstKeyText) {
    json::Value v{json::Object()};
    v["Name"] = 1;
    EXPECT_TRUE(v.HasKey("name"));
    v["NAME"] = 2;
    ASSERT_EQ(v.size(), 1u);
    const json::Object& o = v.ToObject();
    EXPECT_EQ(o.begin()->key, "Name");
    EXPECT_EQ(o.begin()->value.ToInt(), 2);
    EXPECT_EQ(o.find("nAmE"), o.begin());
    EXPECT_EQ(o.find("other"), o.end());
}

TEST(LegacyObject, HasKeysGivesThePositionOfTheFirstMissingKey) {
    const json::Value v = ObjectWith({"a", "b"});
    EXPECT_EQ(v.HasKeys(std::vector<std::string>{"a", "zz", "b"}), 1);
    EXPECT_EQ(v.HasKeys(std::vector<std::string>{"B", "a"}), -1);
    EXPECT_EQ(v.HasKeys(std::vector<std::string>{}), -1);
    const char* keys[] = {"a", "b", "c"};
    EXPECT_EQ(v.HasKeys(keys, 3), 2);
    EXPECT_EQ(v.HasKeys(keys, 2), -1);
    EXPECT_EQ(v.HasKeys(keys, 0), -1);
    const char* withNull[] = {"a", nullptr};
    EXPECT_EQ(v.HasKeys(withNull, 2), 1);
}

TEST(LegacyObject, ConstLookupOfAMissingKeyThrowsOutOfRange) {
    const json::Value v = ObjectWith({"a"});
    EXPECT_EQ(v["A"].ToInt(), 0);
    EXPECT_THROW((void)v["b"], std::out_of_range);
    EXPECT_THROW((void)v.ToObject()[std::string("b")], std::out_of_range);
    EXPECT_EQ(v.size(), 1u);
}

TEST(LegacyObject, AssignmentReplacesAllEntriesAndClearEmpties) {
    json::Object target;
    target["old"] = 1;
    json::Object source;
    source["x"] = 2;
    source["y"] = 3;
    target = source;
    EXPECT_EQ(SerializeValue(json::Value(target)), "{\"x\":2,\"y\":3}");
    const json::Object& sameObject = target;
    target = sameObject;
    EXPECT_EQ(target.size(), 2u);
    target.Clear();
    EXPECT_EQ(target.size(), 0u);
    target = json::Object(source);
    EXPECT_EQ(SerializeValue(json::Value(target)), "{\"x\":2,\"y\":3}");
}

TEST(LegacyArray, InsertPushAndClear) {
    json::Array a = ArrayOf({1, 3});
    a.insert(1, json::Value(2));
    a.insert(3, json::Value(4));
    a.insert(0, json::Value(0));
    a.push_back(json::Value("end"));
    EXPECT_EQ(SerializeArray(a), "[0,1,2,3,4,\"end\"]");
    EXPECT_THROW(a.insert(7, json::Value(9)), std::out_of_range);
    EXPECT_THROW((void)json::Value(a)[6u], std::out_of_range);
    EXPECT_EQ(a.size(), 6u);
    a.insert(1, a[0]);
    EXPECT_EQ(SerializeArray(a), "[0,0,1,2,3,4,\"end\"]");
    a.Clear();
    EXPECT_EQ(a.size(), 0u);
    EXPECT_EQ(SerializeArray(a), "[]");
}

TEST(LegacyArray, FindUsesValueEquality) {
    json::Array a = ArrayOf({1, json::Value("x"), 3});
    EXPECT_EQ(a.find(json::Value("x")), a.begin() + 1);
    json::Value floatThree;
    floatThree = 3.0f;
    EXPECT_EQ(a.find(floatThree), a.begin() + 2);
    EXPECT_TRUE(a.HasValue(json::Value(1)));
    EXPECT_FALSE(a.HasValue(json::Value(2)));
    const json::Array& constant = a;
    EXPECT_EQ(constant.find(json::Value(7)), constant.end());
}

TEST(LegacyArray, FindsObjectsOnlyByIdentity) {
    json::Array a;
    a.push_back(json::Value(json::Object()));
    const json::Value copy(a[0u]);
    EXPECT_EQ(a.find(copy), a.end());
    EXPECT_EQ(a.find(a[0u]), a.begin());
}

TEST(LegacyArray, AssignmentReplacesAllElements) {
    json::Array target = ArrayOf({1, 2, 3});
    target = ArrayOf({json::Value("a")});
    EXPECT_EQ(SerializeArray(target), "[\"a\"]");
    const json::Array& sameArray = target;
    target = sameArray;
    EXPECT_EQ(SerializeArray(target), "[\"a\"]");
}
