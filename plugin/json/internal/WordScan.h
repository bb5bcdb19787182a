#pragma once
// Internal to the plug-in's sources: not part of the installed headers.
//
// Eight characters at a time, read as one 64-bit word with the first
// character in its lowest byte, whatever the byte order; and sixteen at a
// time, as one vector, where the machine has such vectors.

#include <cstdint>
#include <cstring>

namespace tavrin::plugin::json::detail {

inline std::uint64_t LoadWord(const char* p) {
    std::uint64_t word;
    std::memcpy(&word, p, sizeof word);
    if constexpr (__BYTE_ORDER__ == __ORDER_BIG_ENDIAN__) word = __builtin_bswap64(word);
    return word;
}

// The position (0 to 7) of the first byte that `flags` marks with any bit,
// `flags` not zero.
inline int FirstFlagged(std::uint64_t flags) { return __builtin_ctzll(flags) / 8; }

// How many of the characters, from the first, are digits (0 to 8). A digit's
// byte has the high nibble 3, and still has after adding 6 (which carries
// out of "9" and above). A carry into the next byte comes only from a byte
// that is no digit, so it spoils no count.
inline int LeadingDigits(std::uint64_t word) {
    constexpr std::uint64_t kHigh = 0xF0F0F0F0F0F0F0F0u;
    const std::uint64_t other =
        ((word & kHigh) | (((word + 0x0606060606060606u) & kHigh) >> 4)) ^ 0x3333333333333333u;
    return other == 0 ? 8 : FirstFlagged(other);
}

// The value of eight digits. Each digit and the next make a pair (ten times
// the one plus the other); of the four pairs, those at even and at odd places
// are scaled by two products side by side, whose top halves add up to the
// whole: two steps of multiplying where one after the other would take three.
inline std::uint64_t EightDigitsValue(std::uint64_t word) {
    constexpr std::uint64_t kTwoPairs = 0x000000FF000000FFu;
    word -= 0x3030303030303030u;
    word = word * 10 + (word >> 8);
    const std::uint64_t evenPairs = (word & kTwoPairs) * (100 + (std::uint64_t{1000000} << 32));
    const std::uint64_t oddPairs = ((word >> 16) & kTwoPairs) * (1 + (std::uint64_t{10000} << 32));
    return (evenPairs + oddPairs) >> 32;
}

// The value of the first `count` characters (1 to 7), all digits: they move to
// the top of the word and zeros ("0" characters) fill in below.
inline std::uint64_t LeadingDigitsValue(std::uint64_t word, int count) {
    const unsigned fill = 8u * static_cast<unsigned>(8 - count);
    return EightDigitsValue((word << fill) | (0x3030303030303030u >> (64u - fill)));
}

// The high bit of every byte of `word` that is zero; bytes above the first
// such byte may be marked too (a borrow runs on from it), never below.
inline std::uint64_t ZeroBytes(std::uint64_t word) {
    return (word - 0x0101010101010101u) & ~word & 0x8080808080808080u;
}

// Marks, as ZeroBytes does, the bytes that a string does not take as they
// are: a quote, a backslash, codes below 32 and 127.
inline std::uint64_t NotPlainBytes(std::uint64_t word) {
    constexpr std::uint64_t kEach = 0x0101010101010101u;
    const std::uint64_t below32 = (word - 32 * kEach) & ~word & 0x8080808080808080u;
    return below32 | ZeroBytes(word ^ ('"' * kEach)) | ZeroBytes(word ^ ('\\' * kEach)) |
           ZeroBytes(word ^ (127 * kEach));
}

inline constexpr std::uint64_t kEightBlanks = 0x2020202020202020u;

// Whether the machine has 16-byte vectors; without them, a string is read a
// word at a time only.
#if defined(__SSE2__) || defined(__ARM_NEON)
inline constexpr bool kHasBlocks = true;
#else
inline constexpr bool kHasBlocks = false;
#endif

// The position (0 to 15) of the first of the sixteen characters from `p` on
// that a string does not take as they are (see NotPlainBytes), or 16.
inline int FirstNotPlainOfBlock(const char* p) {
    using Block = unsigned char __attribute__((vector_size(16)));
    Block block;
    std::memcpy(&block, p, sizeof block);
    const auto special = (block < 32) | (block == '"') | (block == '\\') | (block == 127);
    // Each mark is a whole byte, the first character's first in memory,
    // which LoadWord puts lowest.
    char marks[sizeof special];
    std::memcpy(marks, &special, sizeof marks);
    const std::uint64_t low = LoadWord(marks);
    if (low != 0) return FirstFlagged(low);
    const std::uint64_t high = LoadWord(marks + 8);
    return high != 0 ? 8 + FirstFlagged(high) : 16;
}

}  // namespace tavrin::plugin::json::detail
