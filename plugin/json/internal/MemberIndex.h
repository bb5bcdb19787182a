#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <unordered_map>

#include "json/JsonNode.h"
#include "json/internal/IndexHash.h"

namespace tavrin::plugin::json {

// Fills one object table in linear time with the table's own semantics: a
// new key's entry is appended, a key whose hash is already present
// overwrites that entry's value in place and leaves its key text as it was.
// Small tables are searched directly; past a few entries a hash-to-position
// index is built and kept up to date. Used while one object is being read;
// the table must change only through Store meanwhile.
class MemberIndex {
public:
    explicit MemberIndex(Node::Object& members) : _members(members) {}

    // Stores `value` (moved) under `key` (moved when a new entry is made).
    void Store(std::string&& key, Node&& value);

private:
    static constexpr std::size_t kDirectSearchLimit = 8;

    // The position of the entry with hash `hash`, or the table's size.
    std::size_t Find(std::uint32_t hash);

    Node::Object& _members;
    std::unordered_map<std::uint32_t, std::size_t, detail::SpreadHasher> _positions;
};

}  // namespace tavrin::plugin::json
