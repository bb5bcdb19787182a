#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "json/legacy/Object.h"

namespace json {

// Finds entries of a table being filled by the reader the way the table's
// operator[] does (first entry of the key's case-folded hash, a new entry
// with Value() appended when none), without scanning the table each time:
// small tables are scanned, larger ones get an open-addressing index of
// positions keyed by the stored hashes, spread with a per-process random
// seed.
class EntryIndex {
public:
    // Position in `entries` of the key's entry, appended when absent.
    std::size_t SlotFor(Object::Table& entries, std::string_view key);

private:
    static constexpr std::size_t kIndexFrom = 8;

    std::size_t Find(const Object::Table& entries, std::uint32_t hash) const;
    void Remember(const Object::Table& entries);
    void Place(const Object::Table& entries, std::size_t position);

    // Slot value 0 is free; otherwise the entry's position plus one.
    std::vector<std::size_t> mSlots;
};

}  // namespace json
