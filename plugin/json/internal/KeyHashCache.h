#pragma once
// Internal to the plug-in's sources: not part of the installed headers.

#include <array>
#include <cstddef>
#include <cstdint>

#include "base/Hash.h"
#include "json/internal/WordScan.h"

namespace tavrin::plugin::json::detail {

// The table hash (tavrin::base::Hash) of object keys, remembered for the keys
// of up to 16 bytes seen last. Documents repeat their keys in every object
// of a kind, and looking one up costs a fraction of hashing it byte by byte.
// A key's bytes, as two words with zeros after its end, tell it from every
// other: keys hold no NUL byte.
class KeyHashCache {
public:
    // The hash of the key from `first` to `last`; at least 16 bytes must be
    // readable from `first` for a key to be looked up, otherwise it is hashed.
    std::uint32_t Hash(const char* first, const char* last, const char* readableEnd) {
        const auto length = static_cast<std::size_t>(last - first);
        if (length > kLongest || readableEnd - first < static_cast<std::ptrdiff_t>(kLongest))
            return tavrin::base::Hash(first, last);
        const std::uint64_t head = Masked(LoadWord(first), length);
        const std::uint64_t tail = length > 8 ? Masked(LoadWord(first + 8), length - 8) : 0;
        Entry& entry = _entries[Slot(head, length)];
        if (entry.head != head || entry.tail != tail) entry = {head, tail, tavrin::base::Hash(first, last)};
        return entry.hash;
    }

private:
    static constexpr std::size_t kLongest = 16;
    static constexpr unsigned kSlotBits = 7;

    // Every entry starts as the empty key.
    struct Entry {
        std::uint64_t head = 0;
        std::uint64_t tail = 0;
        std::uint32_t hash = tavrin::base::Hash("");
    };

    // The first `count` bytes of `word` (all of them from 8 on), zeros above.
    static std::uint64_t Masked(std::uint64_t word, std::size_t count) {
        return count >= 8 ? word : word & ((std::uint64_t{1} << (8 * count)) - 1);
    }

    // Keys of one length that begin alike share a slot.
    static std::size_t Slot(std::uint64_t head, std::size_t length) {
        const std::uint64_t mixed = (head ^ length) * 0x9E3779B97F4A7C15u;
        return static_cast<std::size_t>(mixed >> (64 - kSlotBits));
    }

    std::array<Entry, std::size_t{1} << kSlotBits> _entries;
};

}  // namespace tavrin::plugin::json::detail
