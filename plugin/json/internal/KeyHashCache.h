#pragma once
// Internal to the plug-in's sources: not part of the installed headers.

#include <array>
#include <cstddef>
#include <cstdint>

#include "base/Hash.h"
#include "json/internal/WordScan.h"

namespace tavrin::plugin::json::detail {

// The table hash (tavrin::base::Hash) of object keys, remembered for the keys
// seen last: those of up to 16 bytes in one table, longer ones of up to 40
// bytes in another. Documents repeat their keys in every object of a kind,
// and looking one up costs a fraction of hashing it byte by byte.
class KeyHashCache {
public:
    // The hash of the key from `first` to `last`. A key is looked up only
    // when the words that its table compares are readable before
    // `readableEnd`; otherwise it is hashed.
    std::uint32_t Hash(const char* first, const char* last, const char* readableEnd) {
        const auto length = static_cast<std::size_t>(last - first);
        const auto readable = static_cast<std::size_t>(readableEnd - first);
        if (length <= kShortKeyBytes && readable >= kShortKeyBytes) return ShortKeyHash(first, last);
        if (length <= kLongKeyBytes && readable >= kLongKeyBytes) return LongKeyHash(first, last);
        return tavrin::base::HashBytes(first, last);
    }

private:
    static constexpr std::size_t kShortKeyBytes = 16;
    static constexpr std::size_t kLongWords = 5;
    static constexpr std::size_t kLongKeyBytes = 8 * kLongWords;

    // A key's bytes, as words with zeros after its end, tell it from every
    // other: keys hold no NUL byte. Every short entry starts as the empty
    // key.
    struct ShortEntry {
        std::uint64_t head = 0;
        std::uint64_t tail = 0;
        std::uint32_t hash = tavrin::base::Hash("");
    };

    // Every long entry starts as zeros, which no long key is.
    struct LongEntry {
        std::array<std::uint64_t, kLongWords> words{};
        std::uint32_t hash = 0;
    };

    // The first `count` bytes of `word` (all of them from 8 on), zeros above.
    static std::uint64_t Masked(std::uint64_t word, std::size_t count) {
        return count >= 8 ? word : word & ((std::uint64_t{1} << (8 * count)) - 1);
    }

    static std::size_t Slot(std::uint64_t mixed, unsigned bits) {
        return static_cast<std::size_t>((mixed * 0x9E3779B97F4A7C15u) >> (64 - bits));
    }

    std::uint32_t ShortKeyHash(const char* first, const char* last) {
        const auto length = static_cast<std::size_t>(last - first);
        const std::uint64_t head = Masked(LoadWord(first), length);
        const std::uint64_t tail = length > 8 ? Masked(LoadWord(first + 8), length - 8) : 0;
        // Keys of one length that begin alike share a slot.
        ShortEntry& entry = _short[Slot(head ^ length, kShortSlotBits)];
        if (entry.head != head || entry.tail != tail) entry = {head, tail, tavrin::base::HashBytes(first, last)};
        return entry.hash;
    }

    std::uint32_t LongKeyHash(const char* first, const char* last) {
        const auto length = static_cast<std::size_t>(last - first);
        std::array<std::uint64_t, kLongWords> words{};
        for (std::size_t i = 0; 8 * i < length; ++i) words[i] = Masked(LoadWord(first + 8 * i), length - 8 * i);
        // Long keys often share a beginning ("profile_..."): their last
        // eight bytes tell them apart.
        LongEntry& entry = _long[Slot(words[0] ^ LoadWord(last - 8) ^ length, kLongSlotBits)];
        if (entry.words != words) entry = {words, tavrin::base::HashBytes(first, last)};
        return entry.hash;
    }

    static constexpr unsigned kShortSlotBits = 7;
    static constexpr unsigned kLongSlotBits = 6;
    std::array<ShortEntry, std::size_t{1} << kShortSlotBits> _short;
    std::array<LongEntry, std::size_t{1} << kLongSlotBits> _long;
};

}  // namespace tavrin::plugin::json::detail
