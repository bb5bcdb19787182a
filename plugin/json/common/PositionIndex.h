#pragma once
// Private to the plug-in's sources (not installed): shared by both readers.

#include <cstddef>
#include <cstdint>
#include <vector>

#include "json/common/IndexHash.h"

namespace tavrin::plugin::json::common {

// Finds entries of a table being filled in order by the 32-bit key hash each
// entry stores (`entry.hash`), without scanning the table on every lookup.
// Small tables are scanned; from kIndexFrom entries on, an open-addressing
// index of positions keyed by the stored hashes, spread with SpreadHash,
// takes over. Either way the first entry of a hash is the one found. The
// table must hold one entry per hash and grow only by appending, each append
// followed by Remember.
class PositionIndex {
public:
    // The position of the entry whose hash is `hash`, or table.size().
    template <class Table>
    std::size_t Find(const Table& table, std::uint32_t hash) const {
        if (_slots.empty()) {
            for (std::size_t i = 0; i < table.size(); ++i)
                if (table[i].hash == hash) return i;
            return table.size();
        }
        const std::size_t mask = _slots.size() - 1;
        for (std::size_t s = SpreadHash(hash) & mask; _slots[s] != 0; s = (s + 1) & mask)
            if (table[_slots[s] - 1].hash == hash) return _slots[s] - 1;
        return table.size();
    }

    // Forgets every entry, keeping the index's room for the next table.
    void Clear() { _slots.clear(); }

    // Takes in the table's newest entry, rebuilding the index at twice the
    // size whenever it would become more than half full.
    template <class Table>
    void Remember(const Table& table) {
        if (table.size() < kIndexFrom) return;
        if (table.size() * 2 <= _slots.size()) {
            Place(table, table.size() - 1);
            return;
        }
        _slots.assign(_slots.empty() ? kIndexFrom * 4 : _slots.size() * 2, 0);
        for (std::size_t i = 0; i < table.size(); ++i) Place(table, i);
    }

private:
    static constexpr std::size_t kIndexFrom = 8;

    template <class Table>
    void Place(const Table& table, std::size_t position) {
        const std::size_t mask = _slots.size() - 1;
        std::size_t s = SpreadHash(table[position].hash) & mask;
        while (_slots[s] != 0) s = (s + 1) & mask;
        _slots[s] = position + 1;
    }

    // Slot value 0 is free; otherwise the entry's position plus one.
    std::vector<std::size_t> _slots;
};

}  // namespace tavrin::plugin::json::common
