// The framework object classes: IParam defaults, naming and keywords,
// attribute text, object_func calls, clones and sized release.
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "base/Hash.h"
#include "base/ObjectFunc.h"
#include "host/ObjectStats.h"

namespace {

using tavrin::base::AttrSet;
using tavrin::base::Hash;
using tavrin::base::IFunc;
using tavrin::base::object;
using tavrin::base::object_func;

std::vector<std::uint32_t> KeywordsOf(const object& obj) {
    return {obj.Keywords().begin(), obj.Keywords().end()};
}

// Records what reaches set().
struct SetProbe : object {
    SetProbe() : object("probe") {}
    bool set(unsigned int id, void* value, const std::type_info* type) override {
        calls.push_back({id, value, type});
        return id == 7;
    }
    struct Call {
        unsigned int id;
        void* value;
        const std::type_info* type;
    };
    std::vector<Call> calls;
};

TEST(IParam, DefaultsReportNoProperty) {
    object obj("plain");
    tavrin::base::IParam& param = obj;
    int value = 0;
    std::string text = "kept";
    EXPECT_EQ(param.getPropertyNameList(), nullptr);
    EXPECT_FALSE(param.hasProperty(1));
    EXPECT_FALSE(param.set(1, &value, &typeid(int)));
    EXPECT_FALSE(param.get(1, &value, &typeid(int)));
    EXPECT_EQ(param.getChild(3), &param);
    EXPECT_FALSE(param.setoradd("x", 1, &value, &typeid(int)));
    EXPECT_FALSE(param.getString(1, text));
    EXPECT_FALSE(param.setString(1, "v"));
    EXPECT_EQ(text, "kept");
}

TEST(IParam, SetoraddCallsTheOverriddenSetWithoutTheName) {
    SetProbe probe;
    int value = 5;
    tavrin::base::IParam& param = probe;
    EXPECT_TRUE(param.setoradd("ignored", 7, &value, &typeid(int)));
    EXPECT_FALSE(param.setoradd(nullptr, 8, nullptr, nullptr));
    ASSERT_EQ(probe.calls.size(), 2u);
    EXPECT_EQ(probe.calls[0].id, 7u);
    EXPECT_EQ(probe.calls[0].value, &value);
    EXPECT_EQ(probe.calls[0].type, &typeid(int));
    EXPECT_EQ(probe.calls[1].id, 8u);
}

TEST(ObjectKeywords, KeywordsAreTheHashesOfTheDashSeparatedParts) {
    object obj("usb-Cam--01-");
    EXPECT_EQ(obj.GetName(), "usb-Cam--01-");
    EXPECT_EQ(obj.ID(), Hash("usb-cam--01-"));
    EXPECT_EQ(KeywordsOf(obj), (std::vector<std::uint32_t>{Hash("usb"), Hash("cam"), Hash("01")}));
    EXPECT_TRUE(obj.Name("a-b"));
    EXPECT_EQ(KeywordsOf(obj), (std::vector<std::uint32_t>{Hash("a"), Hash("b")}));
    EXPECT_EQ(obj.Order(), obj.ID());
    EXPECT_TRUE(obj.Name(nullptr));  // changes nothing
    EXPECT_EQ(obj.GetName(), "a-b");
    EXPECT_EQ(KeywordsOf(obj), (std::vector<std::uint32_t>{Hash("a"), Hash("b")}));
}

TEST(ObjectKeywords, MoreKeywordsThanTheInlineBufferHolds) {
    object obj("a-b-c-d-e-f-g-h-i-j");
    const std::vector<std::uint32_t> expected{Hash("a"), Hash("b"), Hash("c"), Hash("d"),
                                              Hash("e"), Hash("f"), Hash("g"), Hash("h"),
                                              Hash("i"), Hash("j")};
    EXPECT_EQ(KeywordsOf(obj), expected);
}

TEST(Arr32, UniqueAddSkipsValuesPresent) {
    std::uint32_t storage[2];
    tavrin::base::Arr32 values(storage, 2, true);
    EXPECT_TRUE(values.Add(5u, true));
    EXPECT_FALSE(values.Add(5u, true));
    EXPECT_TRUE(values.Add(5u, false));
    EXPECT_TRUE(values.Add(6u, false));
    EXPECT_EQ(std::vector<std::uint32_t>(values.begin(), values.end()),
              (std::vector<std::uint32_t>{5, 5, 6}));
    EXPECT_EQ(values.Add(nullptr, '-'), 0);
    values.Clear();
    EXPECT_EQ(values.begin(), values.end());

    std::uint32_t none[1] = {77};
    tavrin::base::Arr32 full(none, 0, true);  // no room in the given storage
    EXPECT_TRUE(full.Add(5u, false));
    EXPECT_EQ(none[0], 77u);
    EXPECT_EQ(*full.begin(), 5u);

    tavrin::base::Arr32 unbacked(nullptr, 4, false);  // no storage: grows on the first add
    EXPECT_EQ(unbacked.Add("x-y", '-'), 2);
    EXPECT_EQ(std::vector<std::uint32_t>(unbacked.begin(), unbacked.end()),
              (std::vector<std::uint32_t>{Hash("x"), Hash("y")}));
}

// toAttrSet reports failure after adding an entry.
struct FailingAttributes : object {
    FailingAttributes() : object("failing") {}
    bool toAttrSet(AttrSet& set) const override {
        set.Add("x", "1");
        return false;
    }
};

TEST(IAttributes, FromStringNamesTheObjectToStringWritesTheName) {
    object obj("before");
    EXPECT_TRUE(obj.fromString("{name=after-it}"));
    EXPECT_TRUE(obj.fromString("{other=x}"));  // no name: kept
    std::string text;
    EXPECT_TRUE(obj.toString(text));
    EXPECT_EQ(text, "{name=after-it}");
}

TEST(IAttributes, ToStringSucceedsWhateverToAttrSetSays) {
    FailingAttributes obj;
    std::string text = "old";
    EXPECT_TRUE(obj.toString(text));
    EXPECT_EQ(text, "{x=1}");
}

int Twice(int v) { return 2 * v; }

using IntFunc = object_func<int, int>;

// A class derived from an object_func that does not provide its own Clone.
struct DerivedFunc : IntFunc {
    DerivedFunc() : IntFunc("derived", Twice) {}
};

TEST(ObjectFunc, CloneCopiesNameIdKeywordsFlagAndCallable) {
    std::unique_ptr<IntFunc> func(new IntFunc("twice-fast", Twice));
    func->Enable(false);
    std::unique_ptr<object> clone(func->Clone());
    ASSERT_NE(clone, nullptr);
    EXPECT_EQ(clone->GetName(), "twice-fast");
    EXPECT_EQ(clone->ID(), func->ID());
    EXPECT_EQ(KeywordsOf(*clone), KeywordsOf(*func));
    // The copy's keywords live in its own inline buffer.
    const auto* keywords = reinterpret_cast<const char*>(clone->Keywords().begin());
    const auto* start = reinterpret_cast<const char*>(clone.get());
    EXPECT_TRUE(keywords >= start && keywords < start + sizeof(IntFunc));
    EXPECT_FALSE(clone->Enabled());
    auto* callable = dynamic_cast<IFunc<int, int>*>(clone.get());
    ASSERT_NE(callable, nullptr);
    EXPECT_EQ((*callable)(4), 8);
}

TEST(ObjectFunc, CloneOfADerivedClassIsNull) {
    DerivedFunc derived;
    EXPECT_EQ(derived.Clone(), nullptr);
}

TEST(ObjectFunc, ObjectsAreReleasedWithTheirOwnSize) {
    const long long before = tavrin::host::LiveObjectBytes();
    IFunc<int, int>* func = new IntFunc("sized", Twice);
    EXPECT_EQ(tavrin::host::LiveObjectBytes() - before, static_cast<long long>(sizeof(IntFunc)));
    object* clone = dynamic_cast<object*>(func)->Clone();
    delete func;
    delete clone;
    EXPECT_EQ(tavrin::host::LiveObjectBytes(), before);
}

}  // namespace
