#include "json/legacy/EntryIndex.h"

#include "base/Hash.h"
#include "json/legacy/Value.h"

namespace json {

std::size_t EntryIndex::SlotFor(Object::Table& entries, const std::string& key) {
    const std::uint32_t hash = tavrin::base::Hash(key, '\0');
    const std::size_t found = Find(entries, hash);
    if (found != entries.size()) return found;
    entries.emplace_back(hash, key, Value());
    Remember(entries);
    return entries.size() - 1;
}

// The table holds one entry per hash, so the map and a scan agree.
std::size_t EntryIndex::Find(const Object::Table& entries, std::uint32_t hash) const {
    if (mPositions.empty()) {
        for (std::size_t i = 0; i < entries.size(); ++i)
            if (entries[i].hash == hash) return i;
        return entries.size();
    }
    const auto it = mPositions.find(hash);
    return it == mPositions.end() ? entries.size() : it->second;
}

// Records the newest entry once the map is in use; starts the map with every
// entry when the table reaches kMapFrom entries.
void EntryIndex::Remember(const Object::Table& entries) {
    if (entries.size() < kMapFrom) return;
    if (!mPositions.empty()) {
        mPositions.emplace(entries.back().hash, entries.size() - 1);
        return;
    }
    mPositions.reserve(entries.size() * 2);
    for (std::size_t i = 0; i < entries.size(); ++i) mPositions.emplace(entries[i].hash, i);
}

}  // namespace json
