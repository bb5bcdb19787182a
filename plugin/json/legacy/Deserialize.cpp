#include "json/legacy/Deserialize.h"

#include <cstddef>
#include <deque>
#include <string_view>
#include <utility>

#include "json/Parser.h"
#include "json/legacy/ClampedInt.h"
#include "json/legacy/EntryIndex.h"
#include "json/legacy/TextClass.h"
#include "json/legacy/Unescape.h"
#include "json/legacy/ValueAccess.h"

// A string-splitting reader: it trims, counts quotes and brackets, finds
// closing quotes and brackets by scanning, and descends by recursion. It
// works on views into the caller's text, so every step costs time in
// proportion to the part of the text it consumes (plus one scan of a nested
// container's span per level).

namespace json {

namespace {

constexpr std::size_t kNotFound = std::string_view::npos;
constexpr int kMaxNesting = ::tavrin::plugin::json::Parser::kDefaultMaxDepth;

// The depth stack of one Deserialize call, and how many containers deep the
// reader stands (the document itself is level 1).
struct ReadState {
    std::deque<StackDepthType> stack;
    int nesting = 1;

    void Push(StackDepthType marker) { stack.push_back(marker); }
    bool TopIs(StackDepthType marker) const { return !stack.empty() && stack.back() == marker; }
    void Pop() { stack.pop_back(); }
};

Value DeserializeContainer(std::string_view text, ReadState& state);
Value DeserializeArray(std::string_view text, ReadState& state);
Value DeserializeValue(std::string_view& text, bool& error, ReadState& state);

std::string_view TrimSpaces(std::string_view text) {
    std::size_t begin = 0;
    std::size_t end = text.size();
    while (begin < end && IsSpace(text[begin])) ++begin;
    while (end > begin && IsSpace(text[end - 1])) --end;
    return text.substr(begin, end - begin);
}

void TrimSpaces(std::string& text) {
    const std::string_view trimmed = TrimSpaces(std::string_view(text));
    text.erase(static_cast<std::size_t>(trimmed.data() + trimmed.size() - text.data()));
    text.erase(0, static_cast<std::size_t>(trimmed.data() - text.data()));
}

// The first double quote at or after `start` that no backslash escapes.
std::size_t FindClosingQuote(std::string_view text, std::size_t start) {
    bool escaped = false;
    for (std::size_t i = start; i < text.size(); ++i) {
        if (!escaped && text[i] == '\\')
            escaped = true;
        else if (!escaped && text[i] == '"')
            return i;
        else
            escaped = false;
    }
    return kNotFound;
}

StackDepthType MarkerOf(char bracket) {
    return bracket == '[' || bracket == ']' ? ArrayDepth : ObjectDepth;
}

// The bracket that closes the container opening at index 0, whose marker the
// caller has pushed. Brackets inside strings are passed over.
std::size_t FindMatchingBracket(std::string_view text, ReadState& state) {
    const std::size_t base = state.stack.size();
    bool inString = false;
    for (std::size_t i = 1; i < text.size(); ++i) {
        const char c = text[i];
        if (c == '"' && text[i - 1] != '\\') inString = !inString;
        if (inString || c == '"') continue;
        if (c == '[' || c == '{') state.Push(MarkerOf(c));
        if (c != ']' && c != '}') continue;
        if (!state.TopIs(MarkerOf(c))) return kNotFound;
        const std::size_t depth = state.stack.size();
        state.Pop();
        if (depth == base) return i;
    }
    return kNotFound;
}

// Every brace, bracket, apostrophe and double quote counts, wherever it stands.
bool CountsMatch(std::string_view text) {
    std::size_t braces = 0, closingBraces = 0, brackets = 0, closingBrackets = 0;
    std::size_t apostrophes = 0, quotes = 0;
    for (const char c : text) {
        braces += c == '{';
        closingBraces += c == '}';
        brackets += c == '[';
        closingBrackets += c == ']';
        apostrophes += c == '\'';
        quotes += c == '"';
    }
    return braces == closingBraces && brackets == closingBrackets && apostrophes % 2 == 0 &&
           quotes % 2 == 0;
}

bool Encloses(std::string_view text, char open, char close) {
    return text.size() >= 2 && text.front() == open && text.back() == close;
}

// The members of an object between its braces. Whatever stands between a
// value and the next key's opening quote is passed over.
Value DeserializeMembers(std::string_view body, ReadState& state) {
    Object::Table entries;
    EntryIndex index;
    while (!body.empty()) {
        const std::size_t open = FindClosingQuote(body, 0);
        if (open == kNotFound) return Value();
        const std::size_t close = FindClosingQuote(body, open + 1);
        if (close == kNotFound) return Value();
        const std::size_t colon = body.find(':', close);
        if (colon == kNotFound || close == open + 1) return Value();
        const std::size_t slot = index.SlotFor(entries, std::string(body.substr(open + 1, close - open - 1)));
        body.remove_prefix(colon + 1);
        bool error = false;
        ValueAccess::Replace(entries[slot].value, DeserializeValue(body, error, state));
        if (error) return Value();
    }
    return ValueAccess::FromEntries(std::move(entries));
}

// A document, or a nested object: the quote and bracket counts must match.
Value DeserializeContainer(std::string_view text, ReadState& state) {
    const std::string_view s = TrimSpaces(text);
    if (!CountsMatch(s)) return Value();
    if (Encloses(s, '{', '}')) {
        state.Push(ObjectDepth);
        Value result = DeserializeMembers(s.substr(1, s.size() - 2), state);
        if (result.GetType() != NullVal && state.TopIs(ObjectDepth)) state.Pop();
        return result;
    }
    if (Encloses(s, '[', ']')) {
        state.Push(ArrayDepth);
        Value result = DeserializeArray(s, state);
        if (result.GetType() != NullVal && state.TopIs(ArrayDepth)) state.Pop();
        return result;
    }
    return Value();
}

// Reads `text` through DeserializeValue and keeps the value unless it is
// NullVal. False on error.
bool AppendElement(std::string_view& text, Array::Elements& elements, ReadState& state) {
    bool error = false;
    Value element = DeserializeValue(text, error, state);
    if (error) return false;
    if (element.GetType() != NullVal) elements.push_back(std::move(element));
    return true;
}

// Splits the text between the brackets at commas (quotes are not honoured
// there); a nested container is read from where its piece began.
Value DeserializeArray(std::string_view text, ReadState& state) {
    std::string_view rest = TrimSpaces(text);
    if (!Encloses(rest, '[', ']')) return Value();
    rest = rest.substr(1, rest.size() - 2);
    Array::Elements elements;
    while (!rest.empty()) {
        std::size_t i = 0;
        while (i + 1 < rest.size() && rest[i] != '{' && rest[i] != '[' && rest[i] != ',' && rest[i] != ']') ++i;
        const char c = rest[i];
        if (c == '{' || c == '[') {
            if (!AppendElement(rest, elements, state)) return Value();
            continue;
        }
        const bool separator = c == ',' || c == ']';
        std::string_view piece = rest.substr(0, separator ? i : i + 1);
        rest.remove_prefix(i + 1);
        if (!AppendElement(piece, elements, state)) return Value();
    }
    return ValueAccess::FromElements(std::move(elements));
}

// A nested container at the front of `text`; `text` becomes what follows it.
Value DeserializeNested(std::string_view& text, bool& error, ReadState& state) {
    const bool isArray = text[0] == '[';
    state.Push(isArray ? ArrayDepth : ObjectDepth);
    const std::size_t close = FindMatchingBracket(text, state);
    if (close == kNotFound) {
        error = true;
        return Value();
    }
    const std::string_view span = text.substr(0, close + 1);
    text.remove_prefix(close + 1);
    if (state.nesting >= kMaxNesting) return Value();
    ++state.nesting;
    Value value = isArray ? DeserializeArray(span, state) : DeserializeContainer(span, state);
    --state.nesting;
    return value;
}

// A string at the front of `text`, unescaped and trimmed.
Value DeserializeText(std::string_view& text, bool& error) {
    const std::size_t close = FindClosingQuote(text, 1);
    if (close == kNotFound) {
        error = true;
        return Value();
    }
    std::string unescaped = Unescape(text.substr(1, close - 1));
    TrimSpaces(unescaped);
    text.remove_prefix(close + 1);
    return ValueAccess::FromText(std::move(unescaped));
}

// What a scalar's token gathered so far: the flags of its walk.
struct ScalarWalk {
    std::string token;
    bool digit = false;
    bool slash = false;
    bool exponent = false;

    // False when the character makes the scalar an error.
    bool Take(char c, ReadState& state);
};

bool ScalarWalk::Take(char c, ReadState& state) {
    if (c == '/') {
        slash = true;
        if (!digit) return false;
    } else if (c == '.') {
        if (!digit) return false;
    } else if (c == 'e' || c == 'E') {
        if (!EqualsFolded(token, "fals") && !EqualsFolded(token, "tru")) {
            if (!digit || exponent) return false;
            exponent = true;
        }
    } else if (c == ']' || c == '}') {
        if (!state.TopIs(MarkerOf(c))) return false;
        state.Pop();
    } else if (c == '[' || c == '{') {
        return false;
    }
    if (!IsSpace(c)) {
        token += c;
        digit = digit || IsDigit(c);
    }
    return true;
}

Value ScalarOf(const ScalarWalk& walk, bool& error) {
    if (EqualsFolded(walk.token, "true")) return Value(true);
    if (EqualsFolded(walk.token, "false")) return Value(false);
    if (walk.slash) {
        tavrin::base::Fraction fraction;
        fraction.From(walk.token.c_str());
        return Value(fraction);
    }
    if (EqualsFolded(walk.token, "null")) return Value();
    int number = 0;
    if (ReadClampedInt(walk.token, number)) return Value(number);
    error = true;
    return Value();
}

// A literal or a number, up to the next comma (which stays in `text`). White
// space inside the token is skipped.
Value DeserializeScalar(std::string_view& text, bool& error, ReadState& state) {
    ScalarWalk walk;
    std::size_t i = 0;
    for (; i < text.size() && text[i] != ','; ++i) {
        if (!walk.Take(text[i], state)) {
            error = true;
            return Value();
        }
    }
    text.remove_prefix(i);
    return ScalarOf(walk, error);
}

// The value at the front of `text`; `text` becomes what follows it. An empty
// text is NullVal without error.
Value DeserializeValue(std::string_view& text, bool& error, ReadState& state) {
    error = false;
    text = TrimSpaces(text);
    if (text.empty()) return Value();
    if (text[0] == '[' || text[0] == '{') return DeserializeNested(text, error, state);
    if (text[0] == '"') return DeserializeText(text, error);
    return DeserializeScalar(text, error, state);
}

}  // namespace

Value Deserialize(const std::string& text) {
    ReadState state;
    return DeserializeContainer(text, state);
}

}  // namespace json
