#include "json/legacy/Serialize.h"

#include <charconv>
#include <cmath>
#include <system_error>

#include "json/legacy/internal/ValueAccess.h"

namespace {

// One output string for the whole document: each level appends to it, so
// writing costs time linear in the size of the text.
void AppendValue(std::string& out, const json::Value& value);

void AppendArray(std::string& out, const json::Array& array) {
    out += '[';
    bool first = true;
    for (const json::Value& element : array) {
        if (!first) out += ',';
        first = false;
        AppendValue(out, element);
    }
    out += ']';
}

void AppendObject(std::string& out, const json::Object& object) {
    out += '{';
    bool first = true;
    for (const auto& entry : object) {
        if (!first) out += ',';
        first = false;
        out += '"';
        out += entry.key;
        out += "\":";
        AppendValue(out, entry.value);
    }
    out += '}';
}

// Out of line, so that the frames of the recursion carry no buffer.
template <class Number>
[[gnu::noinline]] void AppendNumber(std::string& out, Number number) {
    char text[32];
    const auto result = std::to_chars(text, text + sizeof text, number);
    out.append(text, result.ptr);
}

// Shortest round-trip decimal, the same in every locale.
template <class Floating>
void AppendFloating(std::string& out, Floating number) {
    if (std::isfinite(number))
        AppendNumber(out, number);
    else
        out += "null";
}

void AppendValue(std::string& out, const json::Value& value) {
    switch (value.GetType()) {
        case json::NullVal: out += "null"; break;
        case json::StringVal:
            out += '"';
            out += value.ToString();
            out += '"';
            break;
        case json::IntVal: AppendNumber(out, value.ToInt()); break;
        case json::FloatVal: AppendFloating(out, json::ValueAccess::Float(value)); break;
        case json::DoubleVal: AppendFloating(out, json::ValueAccess::Double(value)); break;
        case json::ObjectVal: AppendObject(out, value.ToObject()); break;
        case json::ArrayVal: AppendArray(out, value.ToArray()); break;
        case json::BoolVal: out += value.ToBool() ? "true" : "false"; break;
        case json::FractionVal: out += std::string(value.ToFraction()); break;
    }
}

}  // namespace

namespace json {

std::string Serialize(const Value& value) {
    std::string out;
    if (value.GetType() == ObjectVal || value.GetType() == ArrayVal) AppendValue(out, value);
    return out;
}

}  // namespace json

std::string SerializeValue(const json::Value& value) {
    std::string out;
    AppendValue(out, value);
    return out;
}

std::string SerializeArray(const json::Array& array) {
    std::string out;
    AppendArray(out, array);
    return out;
}
