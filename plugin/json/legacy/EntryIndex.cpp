#include "json/legacy/internal/EntryIndex.h"

#include "base/Hash.h"
#include "json/internal/IndexHash.h"
#include "json/legacy/Value.h"

namespace json {

namespace {

using tavrin::plugin::json::detail::SpreadHash;

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

}  // namespace

std::size_t EntryIndex::SlotFor(Object::Table& entries, std::string_view key) {
    const std::uint32_t hash = KeyHash(key);
    const std::size_t found = Find(entries, hash);
    if (found != entries.size()) return found;
    entries.emplace_back(hash, std::string(key), Value());
    Remember(entries);
    return entries.size() - 1;
}

// The table holds one entry per hash, so the index and a scan agree.
std::size_t EntryIndex::Find(const Object::Table& entries, std::uint32_t hash) const {
    if (mSlots.empty()) {
        for (std::size_t i = 0; i < entries.size(); ++i)
            if (entries[i].hash == hash) return i;
        return entries.size();
    }
    const std::size_t mask = mSlots.size() - 1;
    for (std::size_t s = SpreadHash(hash) & mask; mSlots[s] != 0; s = (s + 1) & mask)
        if (entries[mSlots[s] - 1].hash == hash) return mSlots[s] - 1;
    return entries.size();
}

// Indexes the newest entry, rebuilding the index at twice the size whenever
// it would become more than half full.
void EntryIndex::Remember(const Object::Table& entries) {
    if (entries.size() < kIndexFrom) return;
    if (entries.size() * 2 <= mSlots.size()) {
        Place(entries, entries.size() - 1);
        return;
    }
    mSlots = std::vector<std::size_t>(mSlots.empty() ? kIndexFrom * 4 : mSlots.size() * 2);
    for (std::size_t i = 0; i < entries.size(); ++i) Place(entries, i);
}

void EntryIndex::Place(const Object::Table& entries, std::size_t position) {
    const std::size_t mask = mSlots.size() - 1;
    std::size_t s = SpreadHash(entries[position].hash) & mask;
    while (mSlots[s] != 0) s = (s + 1) & mask;
    mSlots[s] = position + 1;
}

}  // namespace json
