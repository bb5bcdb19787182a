#include "json/Parser.h"

#include <climits>
#include <cstdint>
#include <iterator>
#include <cstring>
#include <memory>
#include <utility>
#include <vector>

#include "base/Fraction.h"
#include "base/Hash.h"
#include "base/Log.h"
#include "json/internal/CharClass.h"
#include "json/common/Nesting.h"
#include "json/common/PositionIndex.h"
#include "json/internal/NumberRead.h"
#include "json/internal/ParserMessages.h"
#include "json/internal/TreeBuilder.h"

namespace tavrin::plugin::json {

namespace {

using Array = Node::Array;
using Object = Node::Object;
using NodePtr = std::unique_ptr<Node>;
namespace msg = messages::parser;

static_assert(Parser::kDefaultMaxDepth == common::kMaxNesting,
              "the node parser and the legacy reader admit the same nesting");

// The last position _pos can take; a longer text reads as if it ended there.
constexpr int kLastPosition = INT_MAX;

// Characters that end the look-ahead of a number: "," "]" "}" make an
// integer, "." "e" "E" a double, "/" a fraction.
constexpr bool IsNumberClassifier(char c) {
    return c == ',' || c == ']' || c == '}' || c == '.' || c == 'e' || c == 'E' || c == '/';
}

// The first classifying character from `s` on, or the terminating NUL. A
// plain loop rather than strpbrk: checking tools that intercept strpbrk
// measure the whole rest of the text on every call.
const char* FindNumberClassifier(const char* s) {
    while (*s != '\0' && !IsNumberClassifier(*s)) ++s;
    return s;
}

// Every failure yields a Node without a value.
Node* Failure() { return new Node(); }

// A new Node holding `items` (moved, not copied).
template <class Container>
Node* Holding(Container&& items) {
    NodePtr node(new Node());
    node->Init<Container>(nullptr);
    static_cast<Container*>(node->_buf)->swap(items);
    return node.release();
}

// The gathering container of the current nesting level, emptied (its
// storage stays for the next container of that level).
template <class Container>
Container& Scratch(std::deque<Container>& levels, int depth) {
    const auto level = static_cast<std::size_t>(depth - 1);
    if (levels.size() <= level) levels.resize(level + 1);
    Container& items = levels[level];
    items.clear();
    return items;
}

// A new Node holding a container of exactly the gathered items, moved.
template <class Container>
Node* Gathered(Container& items) {
    Container exact(std::make_move_iterator(items.begin()), std::make_move_iterator(items.end()));
    items.clear();
    return Holding(std::move(exact));
}

// Stores `value` (moved) under `key` (moved when a new entry is made) with
// the table's own semantics: a new key's entry is appended, a key whose hash
// is present already overwrites that entry's value in place and keeps its
// key text.
void Store(Object& members, common::PositionIndex& index, std::string&& key, Node&& value) {
    const std::uint32_t hash = tavrin::base::Hash(key, '\0');
    const std::size_t position = index.Find(members, hash);
    if (position < members.size()) {
        members[position].value = std::move(value);
        return;
    }
    members.emplace_back(hash, std::move(key), std::move(value));
    index.Remember(members);
}

// Counts one level of nesting for as long as it lives.
class DepthLevel {
public:
    explicit DepthLevel(int& depth) : _depth(depth) { ++_depth; }
    ~DepthLevel() { --_depth; }
    DepthLevel(const DepthLevel&) = delete;
    DepthLevel& operator=(const DepthLevel&) = delete;

private:
    int& _depth;
};

bool IsContainerKind(const std::type_info* kind) {
    return kind != nullptr && (*kind == typeid(Object) || *kind == typeid(Array));
}

// Appends the run of characters after the cursor that `accept` takes to the
// token buffer in one piece, and leaves the cursor on the last of them, as
// reading and concatenating them one at a time would. The terminator is
// never accepted.
template <class Accept>
void AppendRun(Parser& parser, Accept accept) {
    const int start = parser._pos + 1;
    int end = start;
    while (end < kLastPosition && accept(static_cast<unsigned char>(parser._text[end]))) ++end;
    if (end == start) return;
    parser._buffer.append(parser._text + start, static_cast<std::size_t>(end - start));
    parser._pos = end - 1;
    parser._token = parser._text[parser._pos];
}

}  // namespace

Parser::Parser() : Parser(" ") {}

Parser::Parser(const char* text)
    : _text(text),
      _pos(-1),
      _token(' '),
      _first(true),
      _failedAhead(false),
      _maxDepth(kDefaultMaxDepth),
      _depth(0),
      _classifiedText(nullptr),
      _classifiedFrom(0),
      _classifiedUpTo(-1),
      _classifier('\0') {}

Parser::Parser(const Parser& other) = default;
Parser& Parser::operator=(const Parser& other) = default;
Parser::~Parser() = default;

void Parser::SetMaxDepth(int depth) { _maxDepth = depth < 1 ? 1 : depth; }

// Every reader gives up as soon as a read fails, so the cursor still stands
// where the first failure left it.
int Parser::FailureOffset() const { return _failedAhead ? _pos + 1 : _pos; }

// ---- cursor ----------------------------------------------------------------

int Parser::GetNextChar() {
    if (_pos >= 0 && (_text[_pos] == '\0' || _pos == kLastPosition)) {
        _token = '\0';
        TAVRIN_LOG_ERROR(msg::kReadPastEnd);
        return 0;
    }
    ++_pos;
    _token = _pos == kLastPosition ? '\0' : _text[_pos];
    return static_cast<unsigned char>(_token);
}

void Parser::Retract() {
    --_pos;
    _token = ' ';
}

void Parser::Concat() { _buffer += _token; }

// Unlike Retract, the step back keeps _token: it still holds the first
// character that is not whitespace (0 at the end of the text). A run of
// whitespace is passed over in one scan, which ends as reading it character
// by character would; the reads at the end of the text stay with GetNextChar.
[[gnu::flatten]] void Parser::SkipSpaces() {
    if (_pos < 0 || (_text[_pos] != '\0' && _pos != kLastPosition)) {
        int pos = _pos + 1;
        while (pos < kLastPosition && IsSpace(static_cast<unsigned char>(_text[pos]))) ++pos;
        _pos = pos - 1;
        if (pos < kLastPosition && _text[pos] != '\0') {
            _token = _text[pos];
            return;
        }
    }
    while (IsSpace(GetNextChar())) {
    }
    --_pos;
}

[[gnu::flatten]] bool Parser::ParseSpecific(const char* word) {
    for (std::size_t i = 0, length = std::strlen(word); i < length; ++i) {
        if (GetNextChar() != static_cast<unsigned char>(word[i])) {
            TAVRIN_LOG_ERROR(msg::kWordMismatch);
            return false;
        }
    }
    return true;
}

bool Parser::EOL() const { return _token == '\0'; }

// ---- type detection --------------------------------------------------------

[[gnu::flatten]] const std::type_info* Parser::TypeDetect() {
    const int c = GetNextChar();
    const std::type_info* kind = nullptr;
    if (c == '{')
        kind = &typeid(Object);
    else if (c == '[')
        kind = &typeid(Array);
    else if (c == '"')
        kind = &typeid(std::string);
    else if (c == 't' || c == 'f')
        kind = &typeid(bool);
    else if (IsDigit(c) || c == '-')
        kind = NumberKind();
    else
        TAVRIN_LOG_ERROR(msg::kUnknownType, _text, msg::kUnknownTypeEnd);
    _failedAhead = kind == nullptr;
    Retract();
    return kind;
}

// The scan from the number's first character stops at the first classifying
// character. Every number that starts between the start of the last scan and
// the character it found meets that same character first, so a forward pass
// scans each stretch of text once.
const std::type_info* Parser::NumberKind() {
    if (_classifiedText != _text || _pos < _classifiedFrom || _pos > _classifiedUpTo) {
        const char* start = _text + _pos;
        const char* found = FindNumberClassifier(start);
        _classifiedText = _text;
        _classifiedFrom = _pos;
        _classifiedUpTo = found - _text;
        _classifier = *found;
    }
    switch (_classifier) {
        case '.':
        case 'e':
        case 'E':
            return &typeid(double);
        case '/':
            return &typeid(tavrin::base::Fraction);
        default:
            return &typeid(long long);
    }
}

// ---- scalars ---------------------------------------------------------------

[[gnu::flatten]] Parser::IntegerPart Parser::ReadIntegerPart() {
    _buffer.clear();
    int c = GetNextChar();
    if (c == '-') {
        Concat();
        c = GetNextChar();
    }
    if (!IsDigit(c)) return IntegerPart::kNoDigit;
    Concat();
    if (c != '0') {
        AppendRun(*this, IsDigit);
        GetNextChar();
        Retract();
    }
    return IsDigit(GetNextChar()) ? IntegerPart::kDigitAfterZero : IntegerPart::kRead;
}

Node* Parser::ParseInt64() {
    const IntegerPart part = ReadIntegerPart();
    if (part == IntegerPart::kNoDigit) {
        TAVRIN_LOG_ERROR(msg::kIntegerNoDigit);
        return Failure();
    }
    if (part == IntegerPart::kDigitAfterZero) {
        TAVRIN_LOG_ERROR(msg::kIntegerLeadingZero);
        return Failure();
    }
    Retract();
    return new Node(ReadInt64(_buffer));
}

[[gnu::flatten]] Node* Parser::ParseDouble() {
    const IntegerPart part = ReadIntegerPart();
    if (part == IntegerPart::kNoDigit) {
        TAVRIN_LOG_ERROR(msg::kDoubleNoDigit);
        return Failure();
    }
    if (part == IntegerPart::kDigitAfterZero) {
        TAVRIN_LOG_ERROR(msg::kDoubleLeadingZero);
        return Failure();
    }
    int c = static_cast<unsigned char>(_token);
    if (c == '.') {
        Concat();
        c = GetNextChar();
        if (!IsDigit(c)) {
            TAVRIN_LOG_ERROR(msg::kDoubleBadPart);
            return Failure();
        }
        Concat();
        AppendRun(*this, IsDigit);
        c = GetNextChar();
    }
    if (c == 'e' || c == 'E') {
        Concat();
        c = GetNextChar();
        if (c == '+' || c == '-') {
            Concat();
        } else if (!IsDigit(c)) {
            TAVRIN_LOG_ERROR(msg::kDoubleBadPart);
            return Failure();
        } else {
            Retract();
        }
        c = GetNextChar();
        if (!IsDigit(c)) {
            TAVRIN_LOG_ERROR(msg::kDoubleBadPart);
            return Failure();
        }
        Concat();
        AppendRun(*this, IsDigit);
        c = GetNextChar();
    }
    Retract();
    return new Node(ReadDouble(_buffer));
}

Node* Parser::ParseFraction() {
    const IntegerPart part = ReadIntegerPart();
    if (part == IntegerPart::kNoDigit) {
        TAVRIN_LOG_ERROR(msg::kFractionBadPart);
        return Failure();
    }
    if (part == IntegerPart::kDigitAfterZero) {
        TAVRIN_LOG_ERROR(msg::kFractionLeadingZero);
        return Failure();
    }
    int c = static_cast<unsigned char>(_token);
    // A missing "/" and a missing denominator are one error.
    const bool slash = c == '/';
    long long numerator = 0;
    if (slash) {
        numerator = ReadInt64(_buffer);
        _buffer.clear();
        c = GetNextChar();
    }
    if (!slash || !IsDigit(c)) {
        TAVRIN_LOG_ERROR(msg::kFractionBadPart);
        return Failure();
    }
    for (; IsDigit(c); c = GetNextChar()) Concat();
    Retract();
    tavrin::base::Fraction fraction;
    fraction.From(numerator, ReadInt64(_buffer));
    return new Node(fraction);
}

// Escape sequences are checked and kept as written, undecoded.
[[gnu::flatten]] Node* Parser::ParseString() {
    SkipSpaces();
    if (GetNextChar() != '"') {
        TAVRIN_LOG_ERROR(msg::kStringNoQuote);
        return Failure();
    }
    _buffer.clear();
    for (;;) {
        AppendRun(*this, IsPlainStringChar);
        int c = GetNextChar();
        if (c == '"') return new Node(_buffer);
        if (c == '\\') {
            Concat();
            c = GetNextChar();
            if (c == 'u') {
                Concat();
                for (int i = 0; i < 4; ++i) {
                    if (!IsHexDigit(GetNextChar())) {
                        TAVRIN_LOG_ERROR(msg::kStringBadUnicodeEscape);
                        return Failure();
                    }
                    Concat();
                }
            } else if (IsSimpleEscape(c)) {
                Concat();
            } else {
                TAVRIN_LOG_ERROR(msg::kStringBadCharacter);
                return Failure();
            }
        } else {
            // AppendRun has taken every plain character: what stops it is a
            // control character or the end of the text.
            TAVRIN_LOG_ERROR(msg::kStringBadCharacter);
            return Failure();
        }
    }
}

// Only the lowercase words: TypeDetect sends nothing else here. A failed
// match has been logged by ParseSpecific.
Node* Parser::ParseBool() {
    const int c = GetNextChar();
    Retract();
    if (c == 't' && ParseSpecific("true")) return new Node(true);
    if (c == 'f' && ParseSpecific("false")) return new Node(false);
    return Failure();
}

// ---- values and containers -------------------------------------------------

Node* Parser::ParseValue() {
    SkipSpaces();
    const std::type_info* kind = TypeDetect();
    if (_first && !IsContainerKind(kind)) {
        _failedAhead = true;
        TAVRIN_LOG_ERROR(msg::kTopLevelNotContainer);
        return Failure();
    }
    _first = false;
    // TypeDetect hands out the records of this file itself, so their
    // addresses tell the kinds apart without comparing type names.
    if (kind != nullptr) {
        if (kind == &typeid(bool)) return ParseBool();
        if (kind == &typeid(long long)) return ParseInt64();
        if (kind == &typeid(double)) return ParseDouble();
        if (kind == &typeid(tavrin::base::Fraction)) return ParseFraction();
        if (kind == &typeid(std::string)) return ParseString();
        if (kind == &typeid(Object)) return ParseObject();
        if (kind == &typeid(Array)) return ParseArray();
    }
    TAVRIN_LOG_ERROR(msg::kUnknownKind);
    return Failure();
}

// A failed element has logged its own line; the array adds none.
Node* Parser::ParseArray() {
    if (_depth >= _maxDepth) {
        _failedAhead = true;
        TAVRIN_LOG_ERROR(msg::kTooDeep, _maxDepth, msg::kTooDeepEnd);
        return Failure();
    }
    const DepthLevel level(_depth);
    Array& items = Scratch(_arrayScratch, _depth);
    if (GetNextChar() != '[') {
        TAVRIN_LOG_ERROR(msg::kArrayNoOpening, _text);
        return Failure();
    }
    SkipSpaces();
    if (GetNextChar() == ']') return Gathered(items);
    Retract();
    for (;;) {
        const NodePtr element(ParseValue());
        if (element->IsEmpty()) return Failure();
        items.emplace_back(std::move(*element));
        SkipSpaces();
        const int next = GetNextChar();
        if (next == ']') return Gathered(items);
        if (next != ',') {
            TAVRIN_LOG_ERROR(msg::kArrayNoClosing, _text);
            return Failure();
        }
    }
}

// The colon must follow the key's closing quote directly; a mismatch has been
// logged by ParseSpecific.
Node* Parser::ParseObject() {
    if (_depth >= _maxDepth) {
        _failedAhead = true;
        TAVRIN_LOG_ERROR(msg::kTooDeep, _maxDepth, msg::kTooDeepEnd);
        return Failure();
    }
    const DepthLevel level(_depth);
    Object& members = Scratch(_objectScratch, _depth);
    common::PositionIndex index;
    if (GetNextChar() != '{') {
        TAVRIN_LOG_ERROR(msg::kObjectNoOpening, _text);
        return Failure();
    }
    SkipSpaces();
    if (GetNextChar() == '}') return Gathered(members);
    Retract();
    for (;;) {
        const NodePtr key(ParseString());
        if (key->IsEmpty()) {
            TAVRIN_LOG_ERROR(msg::kKeyFailed, _text);
            return Failure();
        }
        std::string& keyText = key->As<std::string>();
        if (!ParseSpecific(":")) return Failure();
        const NodePtr value(ParseValue());
        if (value->IsEmpty()) {
            TAVRIN_LOG_ERROR(msg::kValueFailed, keyText);
            return Failure();
        }
        Store(members, index, std::move(keyText), std::move(*value));
        SkipSpaces();
        const int next = GetNextChar();
        if (next == '}') return Gathered(members);
        if (next != ',') {
            TAVRIN_LOG_ERROR(msg::kObjectNoClosing, _text);
            return Failure();
        }
    }
}

// ---- document entry --------------------------------------------------------

// A null text reads as an empty one (and fails like it). The quick builder
// reads a well-formed document; when it gives up, the parser reads the text
// again and logs why it fails.
bool Node::Deserialize(const char* text) {
    if (text == nullptr) text = "";
    if (detail::BuildTree(text, *this)) return true;
    Parser parser(text);
    const NodePtr result(parser.ParseValue());
    if (result->IsEmpty()) return false;
    *this = std::move(*result);
    return true;
}

bool Node::Deserialize(std::string text) { return Deserialize(text.c_str()); }

}  // namespace tavrin::plugin::json
