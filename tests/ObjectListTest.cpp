// The substitute registry: lookups by id and by text, adding over an
// existing name, and release of what it owns.
#include <gtest/gtest.h>

#include "base/Factory.h"
#include "base/ObjectList.h"
#include "host/ObjectStats.h"

namespace {

using tavrin::base::object;
using tavrin::base::ObjectList;

TEST(ObjectList, FindsByIdCaseInsensitivelyOrByExactText) {
    ObjectList list;
    object* cam = new object("Cam-Front");
    ASSERT_TRUE(list.Add(cam, false));
    EXPECT_EQ(list.Find("cam-front", true), cam);
    EXPECT_EQ(list.Find("cam-front", false), nullptr);
    EXPECT_EQ(list.Find("Cam-Front", false), cam);
    EXPECT_EQ(list.Find("cam-back", true), nullptr);
    EXPECT_EQ(list.Find(nullptr, true), nullptr);
}

TEST(ObjectList, AddingASecondObjectOfOneIdKeepsOneOfThem) {
    const long long before = tavrin::host::LiveObjectBytes();
    {
        ObjectList list;
        object* first = new object("cam");
        ASSERT_TRUE(list.Add(first, false));
        EXPECT_FALSE(list.Add(new object("CAM"), false));
        EXPECT_EQ(list.Find("cam", true), first);
        object* replacement = new object("Cam");
        EXPECT_TRUE(list.Add(replacement, true));
        EXPECT_EQ(list.Find("cam", true), replacement);
        EXPECT_EQ(list.Size(), 1u);
        EXPECT_FALSE(list.Add(nullptr, true));
        EXPECT_FALSE(list.Remove("cam"));
        EXPECT_TRUE(list.Remove("Cam"));
        EXPECT_EQ(list.Size(), 0u);
        list.Add(new object("kept-until-the-end"), false);
    }
    EXPECT_EQ(tavrin::host::LiveObjectBytes(), before);
}

TEST(Factory, RegistryComesFirst) {
    auto& factory = tavrin::stream::Factory::Globle();
    EXPECT_EQ(static_cast<void*>(&factory.Registry()), static_cast<void*>(&factory));
}

}  // namespace
