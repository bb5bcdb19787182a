// The json:: reader against a second reader, written step by step the slow
// way: it trims, cuts and copies substrings for every value, fills objects
// through their own operator[] and converts numbers with the C library, and
// has no nesting bound. Both read many small texts made to hit the corner
// cases, and must give the same values.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <climits>
#include <cstdlib>
#include <deque>
#include <random>
#include <string>
#include <strings.h>
#include <vector>

#include "json/legacy/Deserialize.h"
#include "json/legacy/Serialize.h"

namespace {

using Stack = std::deque<json::StackDepthType>;

json::Value ValueOf(std::string& text, bool& error, Stack& stack);

json::StackDepthType DepthOf(char bracket) {
    return bracket == '[' || bracket == ']' ? json::ArrayDepth : json::ObjectDepth;
}

bool Space(char c) { return std::isspace(static_cast<unsigned char>(c)) != 0; }

std::string Trim(const std::string& text) {
    std::size_t begin = 0, end = text.size();
    while (begin < end && Space(text[begin])) ++begin;
    while (end > begin && Space(text[end - 1])) --end;
    return text.substr(begin, end - begin);
}

// The position of the first quote at or after `start` that no backslash
// escapes, or -1.
int ClosingQuote(const std::string& text, std::size_t start) {
    bool escaped = false;
    for (std::size_t i = start; i < text.size(); ++i) {
        if (text[i] == '"' && !escaped) return static_cast<int>(i);
        escaped = text[i] == '\\' && !escaped;
    }
    return -1;
}

// The bracket that closes the one at text[0] (already on the stack), or -1.
int MatchingBracket(const std::string& text, Stack& stack) {
    const std::size_t base = stack.size();
    bool inString = false;
    for (std::size_t i = 1; i < text.size(); ++i) {
        const char c = text[i];
        if (c == '"' && text[i - 1] != '\\') {
            inString = !inString;
        } else if (!inString && (c == '[' || c == '{')) {
            stack.push_back(DepthOf(c));
        } else if (!inString && (c == ']' || c == '}')) {
            if (stack.back() != DepthOf(c)) return -1;
            stack.pop_back();
            if (stack.size() + 1 == base) return static_cast<int>(i);
        }
    }
    return -1;
}

bool Balanced(const std::string& s) {
    const auto n = [&s](char c) { return std::count(s.begin(), s.end(), c); };
    return n('{') == n('}') && n('[') == n(']') && n('\'') % 2 == 0 && n('"') % 2 == 0;
}

// The array or object spanning all of `s` (its brackets checked already).
json::Value ArrayOf(const std::string& s, Stack& stack) {
    json::Array array;
    for (std::string rest = s.substr(1, s.size() - 2); !rest.empty();) {
        std::string piece;
        for (std::size_t i = 0; i < rest.size(); ++i) {
            // A nested container is read from here; a scalar piece ends at
            // a comma, a bracket or the end of the text.
            const char c = rest[i];
            const bool nested = c == '{' || c == '[', ends = c == ',' || c == ']';
            if (!nested && !ends) piece += c;
            if (!nested && !ends && i + 1 < rest.size()) continue;
            bool error = false;
            const json::Value v = ValueOf(nested ? rest : piece, error, stack);
            if (error) return json::Value();
            if (v.GetType() != json::NullVal) array.push_back(v);
            if (!nested) rest = rest.substr(i + 1);
            break;
        }
    }
    return json::Value(array);
}

json::Value ObjectOf(const std::string& s, Stack& stack) {
    stack.push_back(json::ObjectDepth);
    json::Object object;
    for (std::string body = s.substr(1, s.size() - 2); !body.empty();) {
        const int open = ClosingQuote(body, 0);
        const int close = open < 0 ? -1 : ClosingQuote(body, static_cast<std::size_t>(open) + 1);
        const std::size_t colon = close < 0 ? std::string::npos : body.find(':', static_cast<std::size_t>(close));
        if (colon == std::string::npos || close == open + 1) return json::Value();
        json::Value& entry = object[body.substr(open + 1, close - open - 1)];
        body = body.substr(colon + 1);
        bool error = false;
        entry = ValueOf(body, error, stack);
        if (error) return json::Value();
    }
    if (!stack.empty() && stack.back() == json::ObjectDepth) stack.pop_back();
    return json::Value(object);
}

json::Value ContainerOf(const std::string& text, Stack& stack) {
    const std::string s = Trim(text);
    if (!Balanced(s) || s.size() < 2) return json::Value();
    if (s.front() == '{' && s.back() == '}') return ObjectOf(s, stack);
    if (s.front() != '[' || s.back() != ']') return json::Value();
    stack.push_back(json::ArrayDepth);
    json::Value result = ArrayOf(s, stack);
    if (result.GetType() != json::NullVal && !stack.empty() && stack.back() == json::ArrayDepth) stack.pop_back();
    return result;
}

std::string Unescaped(const std::string& inner) {
    std::string out;
    for (std::size_t i = 0; i < inner.size(); ++i) {
        if (inner[i] != '\\' || i + 1 == inner.size()) {
            out += inner[i];
        } else if (inner[i + 1] == 'u') {
            const std::string digits = i + 4 <= inner.size() ? inner.substr(i + 4, 2) : "";
            out += static_cast<char>(std::strtoul(digits.c_str(), nullptr, 16) & 0xFF);
            i += 5;
        } else {
            const std::size_t at = std::string("f/\"\\brnt").find(inner[++i]);
            if (at != std::string::npos) out += "\f/\"\\\b\r\n\t"[at];
        }
    }
    return Trim(out);
}

json::Value ScalarOf(std::string& text, bool& error, Stack& stack) {
    const auto fail = [&error] {
        error = true;
        return json::Value();
    };
    bool digit = false, slash = false, exponent = false;
    std::string token;
    std::size_t i = 0;
    for (; i < text.size() && text[i] != ','; ++i) {
        const char c = text[i];
        const bool word = strcasecmp(token.c_str(), "fals") == 0 || strcasecmp(token.c_str(), "tru") == 0;
        if ((c == '/' || c == '.') && !digit) return fail();
        if ((c == 'e' || c == 'E') && !word && (!digit || exponent)) return fail();
        if (c == '[' || c == '{') return fail();
        if (c == ']' || c == '}') {
            if (stack.empty() || stack.back() != DepthOf(c)) return fail();
            stack.pop_back();
        }
        slash = slash || c == '/';
        exponent = exponent || ((c == 'e' || c == 'E') && !word);
        digit = digit || std::isdigit(static_cast<unsigned char>(c));
        if (!Space(c)) token += c;
    }
    text = text.substr(i);
    if (strcasecmp(token.c_str(), "true") == 0) return json::Value(true);
    if (strcasecmp(token.c_str(), "false") == 0) return json::Value(false);
    if (slash) {
        tavrin::base::Fraction f;
        f.From(token.c_str());
        return json::Value(f);
    }
    if (strcasecmp(token.c_str(), "null") == 0) return json::Value();
    char* end = nullptr;
    const long number = std::strtol(token.c_str(), &end, 10);
    if (*end != '\0') return fail();
    return json::Value(static_cast<int>(std::clamp<long>(number, INT_MIN, INT_MAX)));
}

json::Value ValueOf(std::string& text, bool& error, Stack& stack) {
    error = false;
    text = Trim(text);
    if (text.empty()) return json::Value();
    if (text[0] == '"') {
        const int close = ClosingQuote(text, 1);
        if (close < 0) return error = true, json::Value();
        json::Value v(Unescaped(text.substr(1, close - 1)));
        text = text.substr(close + 1);
        return v;
    }
    if (text[0] != '[' && text[0] != '{') return ScalarOf(text, error, stack);
    stack.push_back(DepthOf(text[0]));
    const int close = MatchingBracket(text, stack);
    if (close < 0) return error = true, json::Value();
    const std::string span = text.substr(0, close + 1);
    text = text.substr(close + 1);
    return span[0] == '[' ? ArrayOf(span, stack) : ContainerOf(span, stack);
}

json::Value ReferenceDeserialize(const std::string& text) {
    Stack stack;
    return ContainerOf(text, stack);
}

// The fields a value's type does not show, which later assignments and the
// integer accessors of a float can bring back: those of every value read
// must be what the step-by-step reading leaves in them.
struct Fields : json::Value {
    static std::string Hidden(const json::Value& v) {
        const tavrin::base::Fraction& f = v.*&Fields::mFractionVal;
        return "|" + std::to_string(v.*&Fields::mIntVal) + "," + std::to_string(v.*&Fields::mFloatVal) + "," +
               std::to_string(v.*&Fields::mDoubleVal) + "," + v.*&Fields::mStringVal + "," +
               std::to_string((v.*&Fields::mObjectVal).size()) + "," + std::to_string((v.*&Fields::mArrayVal).size()) +
               "," + std::to_string(v.*&Fields::mBoolVal) + "," + std::to_string(f.num) + "/" + std::to_string(f.den);
    }
};

std::string Outcome(const json::Value& v);

// Every value with its type and every text with its length, so that results
// the unescaped writer would print alike (one text holding "," or two texts)
// still differ.
std::string Shown(const json::Value& v) {
    std::string text;
    switch (v.GetType()) {
        case json::NullVal: return "null";
        case json::StringVal: return "S" + std::to_string(v.ToString().size()) + ":" + v.ToString();
        case json::ArrayVal:
            for (const json::Value& element : v.ToArray()) text += Outcome(element) + ";";
            return "A" + std::to_string(v.size()) + "[" + text + "]";
        case json::ObjectVal:
            for (const auto& entry : v.ToObject())
                text += "K" + std::to_string(entry.key.size()) + ":" + entry.key + "=" + Outcome(entry.value) + ";";
            return "O" + std::to_string(v.size()) + "{" + text + "}";
        default: return std::to_string(v.GetType()) + ":" + SerializeValue(v);
    }
}

// Every value with all its fields, those its type shows and the others.
std::string Outcome(const json::Value& v) { return Shown(v) + Fields::Hidden(v); }

}  // namespace

// The reader gives what a literal, substring-copying reading of the same
// rules gives, on many small texts made to hit the corner cases: random
// pieces that exercise every rule of the reader (brackets, quotes, escapes,
// apostrophes, separators, literals, numbers, fractions and white space),
// most often wrapped as an object or an array so that they get past the
// first checks.
TEST(LegacyDifferential, ReaderAgreesWithTheStepByStepReading) {
    const std::vector<std::string> pieces = {
        "{", "}", "[", "]", "\"", "\"k\"", "\"K\"", "\"v w\"", ":", ",", " ", "\t", "'",
        "\\", "\\\"", "\\u00e9", "\\u1", "\\n", "\\q", "1", "-2", "+3", "12", "1/2", "/",
        ".", "e", "E", "true", "TRUE", "fals", "null", "x", "99999999999", "\"\"", "\v",
        std::string(1, '\0'), "\xA0", "{\"a\":1}", "[1,2]", "\"{\"", "\"]\"", "{}", "[]"};
    const std::vector<std::string> wrappers[] = {{"{", "}"}, {"[", "]"}, {"{\"k\":", "}"}, {"", ""}};
    std::mt19937 random(20261123);
    int documents = 0;
    for (int i = 0; i < 60000; ++i) {
        std::string body;
        for (int count = std::uniform_int_distribution<int>(0, 14)(random); count > 0; --count)
            body += pieces[std::uniform_int_distribution<std::size_t>(0, pieces.size() - 1)(random)];
        const auto& wrapper = wrappers[std::uniform_int_distribution<int>(0, 3)(random)];
        const std::string text = wrapper[0] + body + wrapper[1];
        const std::string expected = Outcome(ReferenceDeserialize(text));
        ASSERT_EQ(Outcome(json::Deserialize(text)), expected) << "text: " << ::testing::PrintToString(text);
        documents += expected.rfind("null", 0) != 0;
    }
    // Enough of the texts must be documents for the comparison to mean much.
    EXPECT_GT(documents, 4000);
}
