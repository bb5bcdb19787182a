// Compile-time checks of the data layouts the host and other modules rely
// on: member order, member types and sizes on every target the project
// builds for (x86-64 and 32-bit ARM). A reordered or retyped member stops the
// build of the test program.
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <type_traits>
#include <typeinfo>

#include "base/Fraction.h"
#include "base/HashTable.h"
#include "json/JsonNode.h"
#include "json/Parser.h"
#include "json/legacy/Deserialize.h"
#include "json/legacy/Value.h"

// Parser and json::Value have members of more than one access level, so
// they are not standard-layout classes; GCC still gives exact offsets.
#pragma GCC diagnostic ignored "-Winvalid-offsetof"

namespace {

using tavrin::base::Fraction;
using tavrin::base::HashPair;
using tavrin::plugin::json::Node;
using tavrin::plugin::json::Parser;

template <class Member, class Expected>
constexpr bool kIs = std::is_same_v<Member, Expected>;

// Node: a type record, the value buffer, then the three handlers.
static_assert(kIs<decltype(Node::_type), const std::type_info*>);
static_assert(kIs<decltype(Node::_buf), void*>);
static_assert(kIs<decltype(Node::_destroy), std::function<void(Node*)>>);
static_assert(kIs<decltype(Node::_create), std::function<void(Node*)>>);
static_assert(kIs<decltype(Node::_copy), std::function<void(Node*, void*)>>);
static_assert(offsetof(Node, _type) == 0);
static_assert(offsetof(Node, _type) < offsetof(Node, _buf));
static_assert(offsetof(Node, _buf) < offsetof(Node, _destroy));
static_assert(offsetof(Node, _destroy) < offsetof(Node, _create));
static_assert(offsetof(Node, _create) < offsetof(Node, _copy));
static_assert(sizeof(Node) == 2 * sizeof(void*) + 3 * sizeof(std::function<void(Node*)>),
              "Node holds its five members and nothing else");
#if defined(__arm__)
static_assert(sizeof(Node) == 56, "Node is 56 bytes on 32-bit ARM");
#endif

// HashPair: hash, key, value.
using ObjectEntry = HashPair<std::string, Node>;
static_assert(kIs<decltype(ObjectEntry::hash), std::uint32_t>);
static_assert(kIs<decltype(ObjectEntry::key), std::string>);
static_assert(kIs<decltype(ObjectEntry::value), Node>);
static_assert(offsetof(ObjectEntry, hash) == 0);
static_assert(offsetof(ObjectEntry, hash) < offsetof(ObjectEntry, key));
static_assert(offsetof(ObjectEntry, key) < offsetof(ObjectEntry, value));

// Fraction: two signed 32-bit integers, numerator then denominator.
static_assert(kIs<decltype(Fraction::num), std::int32_t>);
static_assert(kIs<decltype(Fraction::den), std::int32_t>);
static_assert(offsetof(Fraction, num) == 0);
static_assert(offsetof(Fraction, den) == 4);
static_assert(sizeof(Fraction) == 8);

// Parser: text, position, current character, token buffer, top-level flag,
// before anything the parser adds of its own.
static_assert(kIs<decltype(Parser::_text), const char*>);
static_assert(kIs<decltype(Parser::_pos), int>);
static_assert(kIs<decltype(Parser::_token), char>);
static_assert(kIs<decltype(Parser::_buffer), std::string>);
static_assert(kIs<decltype(Parser::_first), bool>);
static_assert(sizeof(int) == 4);
static_assert(offsetof(Parser, _text) == 0);
static_assert(offsetof(Parser, _text) < offsetof(Parser, _pos));
static_assert(offsetof(Parser, _pos) < offsetof(Parser, _token));
static_assert(offsetof(Parser, _token) < offsetof(Parser, _buffer));
static_assert(offsetof(Parser, _buffer) < offsetof(Parser, _first));

// json::Value: one field per type, in the order of the type numbers, the
// fields protected (so they are read from a derived class).
struct ValueLayout : json::Value {
    // Never called: a member function body sees the class complete.
    static void Check() {
        static_assert(kIs<decltype(mValueType), json::ValueType>);
        static_assert(sizeof(mValueType) == 1);
        static_assert(kIs<decltype(mIntVal), std::int32_t>);
        static_assert(kIs<decltype(mFloatVal), float>);
        static_assert(kIs<decltype(mDoubleVal), double>);
        static_assert(kIs<decltype(mStringVal), std::string>);
        static_assert(kIs<decltype(mObjectVal), json::Object>);
        static_assert(kIs<decltype(mArrayVal), json::Array>);
        static_assert(kIs<decltype(mBoolVal), bool>);
        static_assert(kIs<decltype(mFractionVal), Fraction>);
        static_assert(offsetof(ValueLayout, mValueType) == 0);
        static_assert(offsetof(ValueLayout, mValueType) < offsetof(ValueLayout, mIntVal));
        static_assert(offsetof(ValueLayout, mIntVal) < offsetof(ValueLayout, mFloatVal));
        static_assert(offsetof(ValueLayout, mFloatVal) < offsetof(ValueLayout, mDoubleVal));
        static_assert(offsetof(ValueLayout, mDoubleVal) < offsetof(ValueLayout, mStringVal));
        static_assert(offsetof(ValueLayout, mStringVal) < offsetof(ValueLayout, mObjectVal));
        static_assert(offsetof(ValueLayout, mObjectVal) < offsetof(ValueLayout, mArrayVal));
        static_assert(offsetof(ValueLayout, mArrayVal) < offsetof(ValueLayout, mBoolVal));
        static_assert(offsetof(ValueLayout, mBoolVal) < offsetof(ValueLayout, mFractionVal));
    }
};
static_assert(sizeof(ValueLayout) == sizeof(json::Value));

// The legacy reader's depth markers: one byte, objects 0, arrays 1.
static_assert(sizeof(json::StackDepthType) == 1);
static_assert(json::ObjectDepth == 0 && json::ArrayDepth == 1);

}  // namespace
