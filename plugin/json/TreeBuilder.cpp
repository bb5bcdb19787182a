#include "json/internal/TreeBuilder.h"

#include <algorithm>
#include <array>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <deque>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "base/Fraction.h"
#include "json/common/Nesting.h"
#include "json/common/PositionIndex.h"
#include "json/internal/CellNode.h"
#include "json/internal/CharClass.h"
#include "json/internal/DecimalToDouble.h"
#include "json/internal/Gathering.h"
#include "json/internal/KeyHashCache.h"
#include "json/internal/NumberRead.h"
#include "json/internal/PowersOfFive.h"
#include "json/internal/WordScan.h"

namespace tavrin::plugin::json::detail {

namespace {

using Array = Node::Array;
using Object = Node::Object;

int Code(char c) { return static_cast<unsigned char>(c); }
bool IsDigitChar(char c) { return IsDigit(Code(c)); }

// IsPlainStringChar as a table, for the hot loop of strings.
constexpr std::array<bool, 256> kPlainStringChars = [] {
    std::array<bool, 256> plain{};
    for (int c = 0; c < 256; ++c) plain[static_cast<std::size_t>(c)] = IsPlainStringChar(c);
    return plain;
}();

bool IsPlain(char c) { return kPlainStringChars[static_cast<std::size_t>(Code(c))]; }

// The state of each nesting level. Kept in a deque, which moves none of the
// levels being filled when it grows, and found through a list of pointers,
// which is quicker to index.
template <class Level>
struct Levels {
    std::deque<Level> storage;
    std::vector<Level*> byDepth;
};

// Where a value stands: how many containers are around it, and its shape,
// the hash of the key it is the value of or, for an item of an array, a mix
// of the array's own shape.
struct Place {
    int level;
    std::uint32_t shape;

    // The place of a container that is this value: one level deeper.
    Place Inside() const { return {level + 1, shape}; }
    // The place of the items of an array that is this value.
    Place Items() const { return {level, shape * 31 + 1}; }
};

// How many items the last container in each place had, by place, as a guess
// for the next container there: the values of one key, or the items of one
// array, tend to be alike.
class SizeGuesses {
public:
    SizeGuess& For(Place place) {
        const std::uint32_t mixed = (place.shape ^ static_cast<std::uint32_t>(place.level)) * 0x9E3779B1u;
        return _sizes[mixed >> (32 - kBits)];
    }

private:
    static constexpr unsigned kBits = 8;
    std::array<SizeGuess, std::size_t{1} << kBits> _sizes{};
};

class TreeBuilder {
public:
    explicit TreeBuilder(const char* text) : _text(text), _end(text + std::strlen(text)), _at(text) {}

    // The top-level rule: the first value is an object or an array. The
    // Parser reads a text as if it ended after INT_MAX characters; a
    // document that reaches that far is left to it.
    bool Document(Node& into) {
        SkipSpaces();
        const char first = *_at;
        const bool read = first == '{' ? ReadObject(into, {1, 0}) : first == '[' && ReadArray(into, {1, 0});
        return read && _at - _text <= INT_MAX;
    }

private:
    // Runs of blanks, as indentation makes them, go eight at a time, and
    // the blanks that end a run in one step.
    void SkipSpaces() {
        while (IsSpace(Code(*_at))) {
            ++_at;
            while (_end - _at >= 8) {
                const std::uint64_t others = LoadWord(_at) ^ kEightBlanks;
                if (others != 0) {
                    _at += FirstFlagged(others);
                    break;
                }
                _at += 8;
            }
        }
    }

    [[gnu::always_inline]] bool ReadValue(Node& into, Place place);
    template <class ReadItem>
    bool ReadItems(char closing, ReadItem readItem);
    bool ReadArray(Node& into, Place place);
    bool ReadObject(Node& into, Place place);
    bool ReadMember(MemberGathering& items, int level);
    [[gnu::noinline]] bool ReadNumber(Node& into);
    const char* SumDigits(const char* p, std::uint64_t& sum) const;
    const char* SumIntegerDigits(const char* p, std::uint64_t& sum) const;
    const char* SumFractionDigits(const char* p, std::uint64_t& sum) const;
    static bool ReadExponent(const char*& p, int& exponent);
    bool ReadFraction(Node& into, const char* slash);
    bool ReadWord(Node& into, const char* word, bool value);
    const char* StringEnd() const;
    const char* SkipPlainRun(const char* p) const;

    template <class Level>
    static Level& LevelOf(Levels<Level>& levels, int level) {
        const auto index = static_cast<std::size_t>(level - 1);
        while (levels.byDepth.size() <= index) levels.byDepth.push_back(&levels.storage.emplace_back());
        return *levels.byDepth[index];
    }

    const char* _text;
    const char* _end;  // the terminator
    const char* _at;   // the next character to read
    CellArena _cells;
    KeyHashCache _keyHashes;
    const Object::value_type _emptyMember{0, std::string(), Node()};
    SizeGuesses _sizeGuesses;
    Levels<ArrayLevel> _arrays;
    Levels<ObjectLevel> _objects;
};

// `place.level` counts the containers around the value. Numbers are tried
// first: the items of long arrays are mostly numbers.
inline bool TreeBuilder::ReadValue(Node& into, Place place) {
    const char c = *_at;
    if (c == '-' || IsDigitChar(c)) return ReadNumber(into);
    if (c == '{') return ReadObject(into, place.Inside());
    if (c == '[') return ReadArray(into, place.Inside());
    if (c == '"') {
        const char* end = StringEnd();
        if (end == nullptr) return false;
        PutInCell<std::string>(into, _cells, _at + 1, end);
        _at = end + 1;
        return true;
    }
    if (c == 't') return ReadWord(into, "true", true);
    if (c == 'f') return ReadWord(into, "false", false);
    return false;
}

// From `p`, past the blocks of sixteen characters (where the machine has
// them) and the words of eight that a string takes as they are; the
// character that ends the run is in the first block or word not skipped.
const char* TreeBuilder::SkipPlainRun(const char* p) const {
    if constexpr (kHasBlocks) {
        while (_end - p >= 16) {
            const int plain = FirstNotPlainOfBlock(p);
            p += plain;
            if (plain != 16) return p;
        }
    }
    while (_end - p >= 8) {
        const std::uint64_t special = NotPlainBytes(LoadWord(p));
        if (special != 0) return p + FirstFlagged(special);
        p += 8;
    }
    return p;
}

// The closing quote of the string whose opening quote is at _at, or null.
// Escape sequences are checked and kept as written.
const char* TreeBuilder::StringEnd() const {
    const char* p = _at + 1;
    for (;;) {
        p = SkipPlainRun(p);
        while (IsPlain(*p)) ++p;
        if (*p == '"') return p;
        if (*p != '\\') return nullptr;
        ++p;
        if (*p == 'u') {
            for (int i = 1; i <= 4; ++i)
                if (!IsHexDigit(Code(p[i]))) return nullptr;
            p += 5;
        } else if (IsSimpleEscape(Code(*p))) {
            ++p;
        } else {
            return nullptr;
        }
    }
}

bool TreeBuilder::ReadWord(Node& into, const char* word, bool value) {
    const char* p = _at;
    for (; *word != '\0'; ++word, ++p)
        if (*p != *word) return false;
    _at = p;
    PutInCell<bool>(into, _cells, value);
    return true;
}

// `sum` with the first `count` characters of `word` (1 to 7 digits) written
// after its digits (modulo 2^64).
std::uint64_t AppendDigits(std::uint64_t sum, std::uint64_t word, int count) {
    return sum * kPowersOfTen[static_cast<std::size_t>(count)] + LeadingDigitsValue(word, count);
}

// The digits from `p` on, added to `sum` (modulo 2^64); where they end.
const char* TreeBuilder::SumDigits(const char* p, std::uint64_t& sum) const {
    std::uint64_t s = sum;
    while (_end - p >= 8) {
        const std::uint64_t word = LoadWord(p);
        const int count = LeadingDigits(word);
        if (count == 8) {
            s = s * 100000000 + EightDigitsValue(word);
            p += 8;
            continue;
        }
        sum = count == 0 ? s : AppendDigits(s, word, count);
        return p + count;
    }
    for (; IsDigitChar(*p); ++p) s = s * 10 + static_cast<unsigned>(*p - '0');
    sum = s;
    return p;
}

// As SumDigits, from a sum of zero; integer parts of a few digits, as most
// numbers have, go digit by digit.
const char* TreeBuilder::SumIntegerDigits(const char* p, std::uint64_t& sum) const {
    std::uint64_t s = 0;
    for (const char* few = p + 4; p != few && IsDigitChar(*p); ++p) s = s * 10 + static_cast<unsigned>(*p - '0');
    sum = s;
    return IsDigitChar(*p) ? SumDigits(p, sum) : p;
}

// As SumDigits; fraction parts of 8 to 15 digits, as most doubles written
// in full have, go as two words whose values are found side by side.
const char* TreeBuilder::SumFractionDigits(const char* p, std::uint64_t& sum) const {
    if (_end - p >= 16) {
        const std::uint64_t first = LoadWord(p);
        const std::uint64_t second = LoadWord(p + 8);
        const int count = LeadingDigits(second);
        if (LeadingDigits(first) == 8 && count != 8) {
            const std::uint64_t eight = sum * 100000000 + EightDigitsValue(first);
            sum = count == 0 ? eight : AppendDigits(eight, second, count);
            return p + 8 + count;
        }
    }
    return SumDigits(p, sum);
}

// An integer part ("0", or a digit 1-9 and any digits, after an optional
// "-"), then a "/" and a denominator's digits, or a fraction part and an
// exponent for a double. A number that goes on in any other way leaves its
// container unable to continue, so the Parser's look-ahead would have taken
// it for the same kind. The digits are summed up on the way; where they are
// too many for the sum, the text is converted again.
bool TreeBuilder::ReadNumber(Node& into) {
    const char* start = _at;
    Decimal number{0, 0, *start == '-'};
    const char* integer = start + (number.negative ? 1 : 0);
    if (!IsDigitChar(*integer)) return false;
    const char* p = *integer == '0' ? integer + 1 : SumIntegerDigits(integer, number.digits);
    if (IsDigitChar(*p)) return false;
    if (*p == '/') return ReadFraction(into, p);
    std::ptrdiff_t digitCount = p - integer;
    bool real = false;
    if (*p == '.') {
        const char* fraction = ++p;
        if (!IsDigitChar(*p)) return false;
        p = SumFractionDigits(p, number.digits);
        number.exponent = -static_cast<int>(p - fraction);
        digitCount += p - fraction;
        real = true;
    }
    if (*p == 'e' || *p == 'E') {
        if (!ReadExponent(++p, number.exponent)) return false;
        real = true;
    }
    _at = p;
    const bool summed = digitCount <= kMostSignificantDigits;
    if (real) {
        double value = 0.0;
        if (!summed || !DecimalToDouble(number, value)) value = ReadDouble(start, p);
        PutInCell<double>(into, _cells, value);
    } else {
        const auto sum = static_cast<long long>(number.digits);
        PutInCell<long long>(into, _cells,
                       digitCount < kMostSignificantDigits ? (number.negative ? -sum : sum) : ReadInt64(start, p));
    }
    return true;
}

// An exponent's optional sign and digits from `p` on, added to `exponent`;
// `p` is left after them. Beyond any double's range the value read stops
// growing.
bool TreeBuilder::ReadExponent(const char*& p, int& exponent) {
    const bool negative = *p == '-';
    if (*p == '+' || *p == '-') ++p;
    if (!IsDigitChar(*p)) return false;
    int value = 0;
    for (; IsDigitChar(*p); ++p)
        if (value < 100000) value = value * 10 + (*p - '0');
    exponent += negative ? -value : value;
    return true;
}

// _at is on the number's first character, `slash` on the "/" after its
// integer part.
bool TreeBuilder::ReadFraction(Node& into, const char* slash) {
    const char* denominator = slash + 1;
    if (!IsDigitChar(*denominator)) return false;
    const char* end = denominator;
    while (IsDigitChar(*end)) ++end;
    tavrin::base::Fraction fraction;
    fraction.From(ReadInt64(_at, slash), ReadInt64(denominator, end));
    _at = end;
    PutInCell<tavrin::base::Fraction>(into, _cells, fraction);
    return true;
}

// The items of the container whose opening bracket is at _at, separated by
// commas, up to `closing`; `readItem` reads one, from its first character.
template <class ReadItem>
bool TreeBuilder::ReadItems(char closing, ReadItem readItem) {
    ++_at;
    SkipSpaces();
    if (*_at != closing) {
        for (;;) {
            if (!readItem()) return false;
            SkipSpaces();
            if (*_at == closing) break;
            if (*_at++ != ',') return false;
            SkipSpaces();
        }
    }
    ++_at;
    return true;
}

// `place.level` is the array's own nesting level.
bool TreeBuilder::ReadArray(Node& into, Place place) {
    if (place.level > common::kMaxNesting) return false;
    ItemGathering items(LevelOf(_arrays, place.level), _sizeGuesses.For(place));
    const Place itemPlace = place.Items();
    const bool read =
        ReadItems(']', [&] { return items.Add([&](Node& item) { return ReadValue(item, itemPlace); }); });
    if (read) items.HandTo(into, _cells);
    return read;
}

bool TreeBuilder::ReadObject(Node& into, Place place) {
    if (place.level > common::kMaxNesting) return false;
    MemberGathering items(LevelOf(_objects, place.level), _sizeGuesses.For(place));
    const bool read = ReadItems('}', [&] { return ReadMember(items, place.level); });
    if (read) items.HandTo(into, _cells);
    return read;
}

// A repeated key (by the table's case-folded hash) overwrites the value of
// its first entry, which keeps its place and key text. The colon follows the
// key's closing quote directly.
bool TreeBuilder::ReadMember(MemberGathering& items, int level) {
    common::PositionIndex& index = items.Index();
    const char* end = *_at == '"' ? StringEnd() : nullptr;
    if (end == nullptr || end[1] != ':') return false;
    const char* key = _at + 1;
    const std::uint32_t hash = _keyHashes.Hash(key, end, _end);
    _at = end + 2;
    SkipSpaces();
    Object& members = items.Items();
    const std::size_t found = index.Find(members, hash);
    // A copy of an empty member costs one call of Node's; making the value
    // and moving it in, three. Appending a length to the empty key takes the
    // string's shortest path.
    members.push_back(_emptyMember);
    members.back().hash = hash;
    members.back().key.append(key, static_cast<std::size_t>(end - key));
    if (!ReadValue(members.back().value, {level, hash})) return false;
    if (found < members.size() - 1) {
        members[found].value = std::move(members.back().value);
        members.pop_back();
    } else {
        index.Remember(members);
    }
    return true;
}

}  // namespace

bool BuildTree(const char* text, Node& into) {
    Node tree;
    if (!TreeBuilder(text).Document(tree)) return false;
    into = std::move(tree);
    return true;
}

}  // namespace tavrin::plugin::json::detail
