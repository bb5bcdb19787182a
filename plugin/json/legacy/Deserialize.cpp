#include "json/legacy/Deserialize.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string_view>
#include <utility>

#include "base/Hash.h"
#include "json/common/Nesting.h"
#include "json/common/PositionIndex.h"
#include "json/legacy/internal/ClampedInt.h"
#include "json/legacy/internal/TextClass.h"
#include "json/legacy/internal/Unescape.h"
#include "json/legacy/internal/ValueAccess.h"

// A string-splitting reader: it trims, counts quotes and brackets, finds
// closing quotes and brackets by scanning, and descends by recursion. It
// works on views into the caller's text, so every step costs time in
// proportion to the part of the text it consumes (plus one scan of a nested
// container's span per level).

namespace json {

namespace {

constexpr std::size_t kNotFound = std::string_view::npos;
using tavrin::plugin::json::common::kMaxNesting;
using tavrin::plugin::json::common::PositionIndex;

// The depth stack of one Deserialize call, and how many containers deep the
// reader stands (the document itself is level 1).
struct ReadState {
    std::deque<StackDepthType> stack;
    int nesting = 1;

    void Push(StackDepthType marker) { stack.push_back(marker); }
    bool TopIs(StackDepthType marker) const { return !stack.empty() && stack.back() == marker; }
    void Pop() { stack.pop_back(); }
};

// The readers fill `out`, a fresh Value(), and leave it so on failure.
void DeserializeContainer(std::string_view text, ReadState& state, Value& out);
void DeserializeArray(std::string_view text, ReadState& state, Value& out);
void DeserializeValue(std::string_view& text, bool& error, ReadState& state, Value& out);

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

bool IsArraySplit(char c) { return c == '{' || c == '[' || c == ',' || c == ']'; }

bool Encloses(std::string_view text, char open, char close) {
    return text.size() >= 2 && text.front() == open && text.back() == close;
}

// tavrin::base::Hash(std::string(key), '\0') without making the string:
// the key up to its first NUL byte.
std::uint32_t KeyHash(std::string_view key) {
    std::uint32_t h = tavrin::base::detail::kFnvOffset;
    for (const char c : key) {
        if (c == '\0') break;
        h = tavrin::base::detail::HashStep(h, static_cast<unsigned char>(c));
    }
    return h;
}

// The position of the key's entry, found the way the table's operator[]
// finds it (first entry of the key's case-folded hash); a new entry holding
// Value() is appended when there is none. Out of line: the key's string is
// made here, not in the frames that recur once per nesting level.
[[gnu::noinline]] std::size_t EntryFor(Object::Table& entries, PositionIndex& index, std::string_view key) {
    const std::uint32_t hash = KeyHash(key);
    const std::size_t found = index.Find(entries, hash);
    if (found != entries.size()) return found;
    entries.emplace_back(hash, std::string(key), Value());
    index.Remember(entries);
    return found;
}

// The slot of a repeated key goes back to Value() before the new value is
// read into it, so it holds nothing of the old one.
[[gnu::noinline]] void Refresh(Value& slot) { ValueAccess::Replace(slot, Value()); }

// The members of an object between its braces. Whatever stands between a
// value and the next key's opening quote is passed over.
void DeserializeMembers(std::string_view body, ReadState& state, Value& out) {
    Object::Table entries;
    PositionIndex index;
    while (!body.empty()) {
        const std::size_t open = FindClosingQuote(body, 0);
        if (open == kNotFound) return;
        const std::size_t close = FindClosingQuote(body, open + 1);
        if (close == kNotFound) return;
        const std::size_t colon = body.find(':', close);
        if (colon == kNotFound || close == open + 1) return;
        const std::size_t count = entries.size();
        const std::size_t slot = EntryFor(entries, index, body.substr(open + 1, close - open - 1));
        if (slot < count) Refresh(entries[slot].value);
        body.remove_prefix(colon + 1);
        bool error = false;
        DeserializeValue(body, error, state, entries[slot].value);
        if (error) return;
    }
    ValueAccess::SetEntries(out, std::move(entries));
}

// A document, or a nested object: the quote and bracket counts must match.
void DeserializeContainer(std::string_view text, ReadState& state, Value& out) {
    const std::string_view s = TrimSpaces(text);
    if (!CountsMatch(s)) return;
    if (Encloses(s, '{', '}')) {
        state.Push(ObjectDepth);
        DeserializeMembers(s.substr(1, s.size() - 2), state, out);
        if (out.GetType() != NullVal && state.TopIs(ObjectDepth)) state.Pop();
    } else if (Encloses(s, '[', ']')) {
        state.Push(ArrayDepth);
        DeserializeArray(s, state, out);
        if (out.GetType() != NullVal && state.TopIs(ArrayDepth)) state.Pop();
    }
}

// Reads `text` through DeserializeValue into a new last element and keeps it
// unless it is NullVal. False on error.
bool AppendElement(std::string_view& text, Array::Elements& elements, ReadState& state) {
    bool error = false;
    elements.emplace_back();
    DeserializeValue(text, error, state, elements.back());
    if (error || elements.back().GetType() == NullVal) elements.pop_back();
    return !error;
}

// Splits the text between the brackets at commas (quotes are not honoured
// there); a nested container is read from where its piece began.
void DeserializeArray(std::string_view text, ReadState& state, Value& out) {
    std::string_view rest = TrimSpaces(text);
    if (!Encloses(rest, '[', ']')) return;
    rest = rest.substr(1, rest.size() - 2);
    Array::Elements elements;
    while (!rest.empty()) {
        std::size_t i = 0;
        while (i + 1 < rest.size() && !IsArraySplit(rest[i])) ++i;
        if (rest[i] == '{' || rest[i] == '[') {
            if (!AppendElement(rest, elements, state)) return;
            continue;
        }
        const bool separator = rest[i] == ',' || rest[i] == ']';
        std::string_view piece = rest.substr(0, separator ? i : i + 1);
        rest.remove_prefix(i + 1);
        if (!AppendElement(piece, elements, state)) return;
    }
    ValueAccess::SetElements(out, std::move(elements));
}

// A nested container at the front of `text`; `text` becomes what follows it.
void DeserializeNested(std::string_view& text, bool& error, ReadState& state, Value& out) {
    const bool isArray = text[0] == '[';
    state.Push(isArray ? ArrayDepth : ObjectDepth);
    const std::size_t close = FindMatchingBracket(text, state);
    if (close == kNotFound) {
        error = true;
        return;
    }
    const std::string_view span = text.substr(0, close + 1);
    text.remove_prefix(close + 1);
    if (state.nesting >= kMaxNesting) return;
    ++state.nesting;
    if (isArray)
        DeserializeArray(span, state, out);
    else
        DeserializeContainer(span, state, out);
    --state.nesting;
}

// A string at the front of `text`, unescaped and trimmed.
[[gnu::noinline]] void DeserializeText(std::string_view& text, bool& error, Value& out) {
    const std::size_t close = FindClosingQuote(text, 1);
    if (close == kNotFound) {
        error = true;
        return;
    }
    std::string unescaped = Unescape(text.substr(1, close - 1));
    TrimSpaces(unescaped);
    text.remove_prefix(close + 1);
    ValueAccess::SetText(out, std::move(unescaped));
}

std::string_view CText(const std::string& text) { return std::string_view(text.c_str()); }

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
        if (!EqualsFolded(CText(token), "fals") && !EqualsFolded(CText(token), "tru")) {
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

// The value of a finished token, read as a C text (up to a NUL byte, should
// the document hold one); false when it is none.
bool ScalarOf(const ScalarWalk& walk, Value& out) {
    const std::string_view word = CText(walk.token);
    if (EqualsFolded(word, "true")) {
        out = true;
    } else if (EqualsFolded(word, "false")) {
        out = false;
    } else if (walk.slash) {
        tavrin::base::Fraction fraction;
        fraction.From(walk.token.c_str());
        out = fraction;
    } else if (!EqualsFolded(word, "null")) {
        int number = 0;
        if (!ReadClampedInt(word, number)) return false;
        ValueAccess::SetInt(out, number);
    }
    return true;
}

// A literal or a number, up to the next comma (which stays in `text`). White
// space inside the token is skipped.
[[gnu::noinline]] void DeserializeScalar(std::string_view& text, bool& error, ReadState& state, Value& out) {
    ScalarWalk walk;
    std::size_t i = 0;
    for (; i < text.size() && text[i] != ','; ++i) {
        if (!walk.Take(text[i], state)) {
            error = true;
            return;
        }
    }
    text.remove_prefix(i);
    error = !ScalarOf(walk, out);
}

// The value at the front of `text`; `text` becomes what follows it. An empty
// text is NullVal without error.
void DeserializeValue(std::string_view& text, bool& error, ReadState& state, Value& out) {
    error = false;
    text = TrimSpaces(text);
    if (text.empty()) return;
    if (text[0] == '[' || text[0] == '{')
        DeserializeNested(text, error, state, out);
    else if (text[0] == '"')
        DeserializeText(text, error, out);
    else
        DeserializeScalar(text, error, state, out);
}

}  // namespace

Value Deserialize(const std::string& text) {
    ReadState state;
    Value document;
    DeserializeContainer(text, state, document);
    return document;
}

}  // namespace json
