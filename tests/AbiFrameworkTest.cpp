// The framework classes' binary shape as compiled into the plug-in: base
// subobject order and virtual-table slot order. The host was built with the
// same shape, so a declaration moved in a framework header makes the plug-in
// call the wrong host function; these tests catch that on every target.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "base/Arr32.h"
#include "base/AttrSet.h"
#include "base/IFunc.h"
#include "base/IParam.h"
#include "base/Object.h"
#include "base/ObjectFunc.h"
#include "base/ostream.h"
#include "support/VirtualSlot.h"

namespace {

using tavrin::base::Arr32;
using tavrin::base::AttrSet;
using tavrin::base::IAttributes;
using tavrin::base::IFunc;
using tavrin::base::IMessageReceiver;
using tavrin::base::IParam;
using tavrin::base::object;
using tavrin::base::object_func;
using tavrin::base::object_keywords;
using tavrin::base::object_name;
using tavrin::base::ostream;
using tavrin::test::BaseOffset;
using tavrin::test::VirtualSlot;

// Itanium and ARM C++ ABIs: a virtual destructor takes two slots (complete
// and deleting).
constexpr std::ptrdiff_t kDestructorSlots = 2;

using Command = object_func<bool, AttrSet&>;

bool AcceptAll(AttrSet&) { return true; }

TEST(AbiFramework, IParamSlotsInDeclaredOrder) {
    EXPECT_EQ(VirtualSlot(&IParam::getPropertyNameList), 0);
    EXPECT_EQ(VirtualSlot(&IParam::hasProperty), 1);
    EXPECT_EQ(VirtualSlot(&IParam::getPropertyInfo), 2);
    EXPECT_EQ(VirtualSlot(&IParam::set), 3);
    EXPECT_EQ(VirtualSlot(&IParam::get), 4);
    EXPECT_EQ(VirtualSlot(&IParam::getChild), 5);
    EXPECT_EQ(VirtualSlot(&IParam::setoradd), 6);
    EXPECT_EQ(VirtualSlot(&IParam::getString), 7);
    EXPECT_EQ(VirtualSlot(&IParam::setString), 8);
}

TEST(AbiFramework, ObjectSlotsFollowIParamsNine) {
    constexpr std::ptrdiff_t first = 9 + kDestructorSlots;
    EXPECT_EQ(VirtualSlot(&object::operator>>), first);
    EXPECT_EQ(VirtualSlot(&object::getObject), first + 1);
    EXPECT_EQ(VirtualSlot(&object::setObject), first + 2);
    EXPECT_EQ(VirtualSlot(&object::fromAttrSet), first + 3);
    EXPECT_EQ(VirtualSlot(&object::toAttrSet), first + 4);
    EXPECT_EQ(VirtualSlot(&object::ReceiveMessage), first + 5);
    EXPECT_EQ(VirtualSlot(&object::Clone), first + 6);
    EXPECT_EQ(VirtualSlot(&object::configure), first + 7);
}

TEST(AbiFramework, InterfaceSlotsAfterTheirDestructors) {
    EXPECT_EQ(VirtualSlot(&IAttributes::toAttrSet), kDestructorSlots);
    EXPECT_EQ(VirtualSlot(&IAttributes::fromAttrSet), kDestructorSlots + 1);
    EXPECT_EQ(VirtualSlot(&IAttributes::toString), kDestructorSlots + 2);
    EXPECT_EQ(VirtualSlot(&IAttributes::fromString), kDestructorSlots + 3);
    EXPECT_EQ(VirtualSlot(&IMessageReceiver::ReceiveMessage), kDestructorSlots);
    EXPECT_EQ(VirtualSlot(&IFunc<bool, AttrSet&>::operator()), kDestructorSlots);
}

TEST(AbiFramework, NamingSlotsAfterTheDestructor) {
    EXPECT_EQ(VirtualSlot(&object_name::Name), kDestructorSlots);
    EXPECT_EQ(VirtualSlot(&object_name::ID), kDestructorSlots + 1);
    EXPECT_EQ(VirtualSlot(&object_name::Order), kDestructorSlots + 2);
    // The keyword form overrides the name's slot rather than adding one.
    EXPECT_EQ(VirtualSlot(&object_keywords::Name), kDestructorSlots);
}

TEST(AbiFramework, OstreamInsertionsCharFirstTextLast) {
    const auto slotChar = VirtualSlot(static_cast<ostream& (ostream::*)(char)>(&ostream::operator<<));
    const auto slotInt = VirtualSlot(static_cast<ostream& (ostream::*)(int)>(&ostream::operator<<));
    const auto slotLongLong =
        VirtualSlot(static_cast<ostream& (ostream::*)(long long)>(&ostream::operator<<));
    const auto slotCount =
        VirtualSlot(static_cast<ostream& (ostream::*)(std::uint32_t)>(&ostream::operator<<));
    const auto slotText =
        VirtualSlot(static_cast<ostream& (ostream::*)(const char*)>(&ostream::operator<<));
    EXPECT_GE(slotChar, 0);
    EXPECT_LT(slotChar, slotInt);
    EXPECT_LT(slotInt, slotLongLong);
    EXPECT_LT(slotLongLong, slotCount);
    EXPECT_LT(slotCount, slotText);
    // The string insertion is a header piece, not a slot.
    EXPECT_EQ(VirtualSlot(static_cast<ostream& (ostream::*)(const std::string&)>(&ostream::operator<<)),
              -1);
}

// Positions of the naming classes' members inside the object.
struct NamingProbe : object_keywords {
    std::ptrdiff_t Offset(const void* member) const {
        return static_cast<const char*>(member) - reinterpret_cast<const char*>(this);
    }
    std::ptrdiff_t NameAt() const { return Offset(&_name); }
    std::ptrdiff_t IdAt() const { return Offset(&_id); }
    std::ptrdiff_t KeywordsAt() const { return Offset(&_keywords); }
    std::ptrdiff_t StorageAt() const { return Offset(_keywordStorage); }
    std::size_t StorageBytes() const { return sizeof _keywordStorage; }
    const std::uint32_t* StorageStart() const { return _keywordStorage; }
};

TEST(AbiFramework, NamingMembersInDeclaredOrder) {
    NamingProbe probe;
    EXPECT_LT(probe.NameAt(), probe.IdAt());
    EXPECT_LT(probe.IdAt(), probe.KeywordsAt());
    // The keyword array is followed by its own eight-entry buffer.
    EXPECT_EQ(probe.StorageAt(), probe.KeywordsAt() + static_cast<std::ptrdiff_t>(sizeof(Arr32)));
    EXPECT_EQ(probe.StorageBytes(), 8 * sizeof(std::uint32_t));
    probe.Name("a-b");
    EXPECT_EQ(probe.Keywords().begin(), probe.StorageStart());
}

TEST(AbiFramework, ObjectBasesInDeclaredOrder) {
    Command* command = new Command("abi_probe", AcceptAll);
    object* asObject = command;
    const auto param = BaseOffset<IParam>(asObject);
    const auto attributes = BaseOffset<IAttributes>(asObject);
    const auto receiver = BaseOffset<IMessageReceiver>(asObject);
    const auto keywords = BaseOffset<object_keywords>(asObject);
    EXPECT_EQ(param, 0);
    EXPECT_LT(param, attributes);
    EXPECT_LT(attributes, receiver);
    EXPECT_LT(receiver, keywords);
    EXPECT_EQ(BaseOffset<object>(command), 0);
    EXPECT_LT(BaseOffset<object>(command), (BaseOffset<IFunc<bool, AttrSet&>>(command)));
    delete command;
}

TEST(AbiFramework, FunctionObjectOverridesRatherThanAddsClone) {
    EXPECT_EQ(VirtualSlot(&Command::Clone), VirtualSlot(&object::Clone));
    EXPECT_EQ(VirtualSlot(&Command::configure), VirtualSlot(&object::configure));
}

}  // namespace
