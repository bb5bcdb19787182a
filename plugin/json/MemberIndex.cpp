#include "json/internal/MemberIndex.h"

#include <utility>

#include "base/Hash.h"

namespace tavrin::plugin::json {

void MemberIndex::Store(std::string&& key, Node&& value) {
    const std::uint32_t hash = tavrin::base::Hash(key, '\0');
    const std::size_t position = Find(hash);
    if (position < _members.size()) {
        _members[position].value = std::move(value);
        return;
    }
    _members.emplace_back(hash, std::move(key), std::move(value));
    if (!_positions.empty()) _positions.emplace(hash, position);
}

std::size_t MemberIndex::Find(std::uint32_t hash) {
    if (_positions.empty() && _members.size() <= kDirectSearchLimit) {
        std::size_t position = 0;
        while (position < _members.size() && _members[position].hash != hash) ++position;
        return position;
    }
    if (_positions.empty())
        for (std::size_t i = 0; i < _members.size(); ++i) _positions.emplace(_members[i].hash, i);
    const auto found = _positions.find(hash);
    return found != _positions.end() ? found->second : _members.size();
}

}  // namespace tavrin::plugin::json
