#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <unordered_map>

#include "json/legacy/Object.h"

namespace json {

// Finds entries of a table being filled by the reader the way the table's
// operator[] does (first entry of the key's case-folded hash, a new entry
// with Value() appended when none), without scanning the table: small
// tables are scanned, larger ones keep a hash-to-position map.
class EntryIndex {
public:
    // Position in `entries` of the key's entry, appended when absent.
    std::size_t SlotFor(Object::Table& entries, const std::string& key);

private:
    static constexpr std::size_t kMapFrom = 8;

    std::size_t Find(const Object::Table& entries, std::uint32_t hash) const;
    void Remember(const Object::Table& entries);

    std::unordered_map<std::uint32_t, std::size_t> mPositions;
};

}  // namespace json
