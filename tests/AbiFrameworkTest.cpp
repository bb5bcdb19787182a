// The framework classes' binary shape as compiled into the plug-in: base
// subobject order, virtual-table slot order and the data layouts the host and
// other modules rely on. The host was built with the same shape, so a
// declaration moved in a framework header makes the plug-in call the wrong
// host function; these checks catch that on every target (x86-64 and 32-bit
// ARM). A reordered or retyped member stops the build of the test program.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <initializer_list>
#include <string>
#include <type_traits>
#include <typeinfo>
#include <vector>

#include "base/Fraction.h"
#include "base/HashTable.h"
#include "base/ObjectFunc.h"
#include "json/JsonNode.h"
#include "json/Parser.h"
#include "json/legacy/Deserialize.h"
#include "json/legacy/Value.h"

// Parser and json::Value have members of more than one access level, so
// they are not standard-layout classes; GCC still gives exact offsets.
#pragma GCC diagnostic ignored "-Winvalid-offsetof"

namespace {

using namespace tavrin::base;
using tavrin::plugin::json::Node;
using tavrin::plugin::json::Parser;

// The virtual-table slot (0 = first function pointer after the address
// point) that a pointer to a virtual member function names, as the compiler
// encoded it; -1 for a pointer to a non-virtual member. Itanium C++ ABI: the
// pointer word holds 1 + the slot's byte offset. ARM C++ ABI: the pointer word
// holds the byte offset and the low bit of the adjustment word marks it
// virtual. The slot is relative to the virtual table of the class the member
// was declared in (for an inherited member, that base's table).
template <class MemberFunction>
std::ptrdiff_t VirtualSlot(MemberFunction member) {
    struct Representation {
        std::uintptr_t pointer;
        std::ptrdiff_t adjustment;
    };
    static_assert(sizeof(MemberFunction) == sizeof(Representation),
                  "pointer to member function of two words expected");
    Representation words;
    std::memcpy(&words, &member, sizeof words);
#if defined(__arm__) || defined(__aarch64__)
    if ((words.adjustment & 1) == 0) return -1;
    return static_cast<std::ptrdiff_t>(words.pointer / sizeof(void*));
#else
    if ((words.pointer & 1) == 0) return -1;
    return static_cast<std::ptrdiff_t>((words.pointer - 1) / sizeof(void*));
#endif
}

// Byte offset of the Base subobject inside the Derived object at `derived`.
template <class Base, class Derived>
std::ptrdiff_t BaseOffset(Derived* derived) {
    return reinterpret_cast<char*>(static_cast<Base*>(derived)) - reinterpret_cast<char*>(derived);
}

template <class Member, class Expected>
constexpr bool kIs = std::is_same_v<Member, Expected>;

// Whether the offsets rise from the first to the last.
constexpr bool Ascending(std::initializer_list<std::size_t> offsets) {
    for (auto it = offsets.begin(); it + 1 < offsets.end(); ++it)
        if (!(*it < *(it + 1))) return false;
    return true;
}

// Node: a type record, the value buffer, then the three handlers.
static_assert(kIs<decltype(Node::_type), const std::type_info*> && kIs<decltype(Node::_buf), void*>);
static_assert(kIs<decltype(Node::_destroy), std::function<void(Node*)>> &&
              kIs<decltype(Node::_create), std::function<void(Node*)>> &&
              kIs<decltype(Node::_copy), std::function<void(Node*, void*)>>);
static_assert(offsetof(Node, _type) == 0 && Ascending({offsetof(Node, _type), offsetof(Node, _buf),
                                                      offsetof(Node, _destroy), offsetof(Node, _create),
                                                      offsetof(Node, _copy)}));
static_assert(sizeof(Node) == 2 * sizeof(void*) + 3 * sizeof(std::function<void(Node*)>),
              "Node holds its five members and nothing else");
#if defined(__arm__)
static_assert(sizeof(Node) == 56, "Node is 56 bytes on 32-bit ARM");
#endif

// HashPair: hash, key, value.
using ObjectEntry = HashPair<std::string, Node>;
static_assert(kIs<decltype(ObjectEntry::hash), std::uint32_t> && kIs<decltype(ObjectEntry::key), std::string> &&
              kIs<decltype(ObjectEntry::value), Node>);
static_assert(offsetof(ObjectEntry, hash) == 0 &&
              Ascending({offsetof(ObjectEntry, hash), offsetof(ObjectEntry, key), offsetof(ObjectEntry, value)}));

// Fraction: two signed 32-bit integers, numerator then denominator.
static_assert(kIs<decltype(Fraction::num), std::int32_t> && kIs<decltype(Fraction::den), std::int32_t>);
static_assert(offsetof(Fraction, num) == 0 && offsetof(Fraction, den) == 4 && sizeof(Fraction) == 8);

// Parser: text, position, current character, token buffer, top-level flag,
// before anything the parser adds of its own.
static_assert(kIs<decltype(Parser::_text), const char*> && kIs<decltype(Parser::_pos), int> &&
              kIs<decltype(Parser::_token), char> && kIs<decltype(Parser::_buffer), std::string> &&
              kIs<decltype(Parser::_first), bool> && sizeof(int) == 4);
static_assert(offsetof(Parser, _text) == 0 && Ascending({offsetof(Parser, _text), offsetof(Parser, _pos),
                                                        offsetof(Parser, _token), offsetof(Parser, _buffer),
                                                        offsetof(Parser, _first)}));

// json::Value: one field per type, in the order of the type numbers, the
// fields protected (so they are read from a derived class).
struct ValueLayout : json::Value {
    // Never called: a member function body sees the class complete.
    static void Check() {
        static_assert(kIs<decltype(mValueType), json::ValueType> && sizeof(mValueType) == 1);
        static_assert(kIs<decltype(mIntVal), std::int32_t> && kIs<decltype(mFloatVal), float> &&
                      kIs<decltype(mDoubleVal), double> && kIs<decltype(mStringVal), std::string> &&
                      kIs<decltype(mObjectVal), json::Object> && kIs<decltype(mArrayVal), json::Array> &&
                      kIs<decltype(mBoolVal), bool> && kIs<decltype(mFractionVal), Fraction>);
        static_assert(offsetof(ValueLayout, mValueType) == 0 &&
                      Ascending({offsetof(ValueLayout, mValueType), offsetof(ValueLayout, mIntVal),
                                 offsetof(ValueLayout, mFloatVal), offsetof(ValueLayout, mDoubleVal),
                                 offsetof(ValueLayout, mStringVal), offsetof(ValueLayout, mObjectVal),
                                 offsetof(ValueLayout, mArrayVal), offsetof(ValueLayout, mBoolVal),
                                 offsetof(ValueLayout, mFractionVal)}));
    }
};
static_assert(sizeof(ValueLayout) == sizeof(json::Value));
// The type numbers callers compare GetType() with.
static_assert(json::NullVal == 0 && json::StringVal == 1 && json::IntVal == 2 && json::FloatVal == 3 &&
              json::DoubleVal == 4 && json::ObjectVal == 5 && json::ArrayVal == 6 && json::BoolVal == 7 &&
              json::FractionVal == 8);

// The legacy reader's depth markers: one byte, objects 0, arrays 1.
static_assert(sizeof(json::StackDepthType) == 1 && json::ObjectDepth == 0 && json::ArrayDepth == 1);

// Itanium and ARM C++ ABIs: a virtual destructor takes two slots (complete
// and deleting).
constexpr std::ptrdiff_t kD = 2;
using Command = object_func<bool, AttrSet&>;

TEST(AbiFramework, VirtualSlotsInDeclaredOrder) {
    using Slots = std::vector<std::ptrdiff_t>;
    EXPECT_EQ((Slots{VirtualSlot(&IParam::getPropertyNameList), VirtualSlot(&IParam::hasProperty),
                     VirtualSlot(&IParam::getPropertyInfo), VirtualSlot(&IParam::set), VirtualSlot(&IParam::get),
                     VirtualSlot(&IParam::getChild), VirtualSlot(&IParam::setoradd), VirtualSlot(&IParam::getString),
                     VirtualSlot(&IParam::setString)}),
              (Slots{0, 1, 2, 3, 4, 5, 6, 7, 8}));
    // object's own slots follow IParam's nine and its destructor.
    EXPECT_EQ((Slots{VirtualSlot(&object::operator>>), VirtualSlot(&object::getObject), VirtualSlot(&object::setObject),
                     VirtualSlot(&object::fromAttrSet), VirtualSlot(&object::toAttrSet),
                     VirtualSlot(&object::ReceiveMessage), VirtualSlot(&object::Clone),
                     VirtualSlot(&object::configure)}),
              (Slots{9 + kD, 10 + kD, 11 + kD, 12 + kD, 13 + kD, 14 + kD, 15 + kD, 16 + kD}));
    // Interfaces and the naming classes: after their destructors; the keyword
    // form overrides the name's slot, a function object Clone and configure.
    EXPECT_EQ((Slots{VirtualSlot(&IAttributes::toAttrSet), VirtualSlot(&IAttributes::fromAttrSet),
                     VirtualSlot(&IAttributes::toString), VirtualSlot(&IAttributes::fromString),
                     VirtualSlot(&IMessageReceiver::ReceiveMessage), VirtualSlot(&IFunc<bool, AttrSet&>::operator()),
                     VirtualSlot(&object_name::Name), VirtualSlot(&object_name::ID), VirtualSlot(&object_name::Order),
                     VirtualSlot(&object_keywords::Name), VirtualSlot(&Command::Clone),
                     VirtualSlot(&Command::configure)}),
              (Slots{kD, kD + 1, kD + 2, kD + 3, kD, kD, kD, kD + 1, kD + 2, kD, 15 + kD, 16 + kD}));
    // ostream: char first, text last; the string insertion is a header piece.
    EXPECT_EQ((Slots{VirtualSlot(static_cast<ostream& (ostream::*)(char)>(&ostream::operator<<)),
                     VirtualSlot(static_cast<ostream& (ostream::*)(int)>(&ostream::operator<<)),
                     VirtualSlot(static_cast<ostream& (ostream::*)(long long)>(&ostream::operator<<)),
                     VirtualSlot(static_cast<ostream& (ostream::*)(std::uint32_t)>(&ostream::operator<<)),
                     VirtualSlot(static_cast<ostream& (ostream::*)(const char*)>(&ostream::operator<<)),
                     VirtualSlot(static_cast<ostream& (ostream::*)(const std::string&)>(&ostream::operator<<))}),
              (Slots{0, 1, 2, 3, 4, -1}));
}

// The naming members' types; the interfaces and the allocation root add no
// data and no destructor slot of their own.
struct NamingTypes : object_name {
    static_assert(kIs<decltype(_name), std::string> && kIs<decltype(_id), std::uint32_t>);
};
static_assert(std::is_empty_v<object_base> && !std::has_virtual_destructor_v<IParam>);
// object: the four bases, then its one flag; object_func: object, the
// callable interface, then its one member, the std::function.
static_assert(sizeof(object) == sizeof(IParam) + sizeof(IAttributes) + sizeof(IMessageReceiver) +
                                    sizeof(object_keywords) + alignof(object));
static_assert(sizeof(object_func<bool, AttrSet&>) ==
              sizeof(object) + sizeof(IFunc<bool, AttrSet&>) + sizeof(std::function<bool(AttrSet&)>));

// Positions of the naming classes' members inside the object.
struct NamingProbe : object_keywords {
    std::ptrdiff_t Offset(const void* member) const {
        return static_cast<const char*>(member) - reinterpret_cast<const char*>(this);
    }
    std::vector<std::ptrdiff_t> Offsets() const {
        return {Offset(&_name), Offset(&_id), Offset(&_keywords), Offset(_keywordStorage),
                static_cast<std::ptrdiff_t>(sizeof _keywordStorage)};
    }
};

TEST(AbiFramework, MembersAndBasesInDeclaredOrder) {
    NamingProbe probe;
    const auto at = probe.Offsets();
    EXPECT_LT(at[0], at[1]);
    EXPECT_LT(at[1], at[2]);
    // The keyword array is followed by its own eight-entry buffer.
    EXPECT_EQ(at[3], at[2] + static_cast<std::ptrdiff_t>(sizeof(Arr32)));
    EXPECT_EQ(at[4], static_cast<std::ptrdiff_t>(8 * sizeof(std::uint32_t)));
    probe.Name("a-b");
    EXPECT_EQ(reinterpret_cast<const char*>(probe.Keywords().begin()) - reinterpret_cast<const char*>(&probe), at[3]);

    Command command("abi_probe", [](AttrSet&) { return true; });
    object* asObject = &command;
    EXPECT_EQ(BaseOffset<IParam>(asObject), 0);
    EXPECT_LT(0, BaseOffset<IAttributes>(asObject));
    EXPECT_LT(BaseOffset<IAttributes>(asObject), BaseOffset<IMessageReceiver>(asObject));
    EXPECT_LT(BaseOffset<IMessageReceiver>(asObject), BaseOffset<object_keywords>(asObject));
    EXPECT_EQ(BaseOffset<object>(&command), 0);
    EXPECT_LT(0, (BaseOffset<IFunc<bool, AttrSet&>>(&command)));
}

}  // namespace
