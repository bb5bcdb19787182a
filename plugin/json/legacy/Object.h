#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "base/Export.h"
#include "base/HashTable.h"

namespace json {

class Value;

// String keys to json::Values in insertion order, over the framework's keyed
// table: a key is found by its case-folded hash alone, so keys that differ
// only in ASCII letter case name one entry, which keeps the key text it was
// made with.
class TAVRIN_PLUGIN_API Object {
public:
    using Table = tavrin::base::HashTable<std::string, Value>;
    using iterator = Table::iterator;
    using const_iterator = Table::const_iterator;

    Object();
    Object(const Object& other);
    Object(Object&& other) noexcept;
    // Replaces every entry by a copy of the other object's entries, in order.
    Object& operator=(const Object& other);
    Object& operator=(Object&& other) noexcept;
    ~Object();

    iterator begin();
    iterator end();
    const_iterator begin() const;
    const_iterator end() const;
    std::size_t size() const;

    // The first entry whose hash equals the key's, or end().
    iterator find(const std::string& key);
    const_iterator find(const std::string& key) const;

    // The entry's value; a new entry holding Value() is appended when absent.
    Value& operator[](const std::string& key);
    Value& operator[](const char* key);
    // The existing entry's value; std::out_of_range when the key is absent.
    const Value& operator[](const std::string& key) const;
    const Value& operator[](const char* key) const;

    bool HasKey(const std::string& key) const;
    // Position of the first listed key that is absent, -1 when all are held.
    int HasKeys(const std::vector<std::string>& keys) const;
    int HasKeys(const char** keys, int count) const;
    void Clear();

private:
    friend struct ValueAccess;

    Table mEntries;
};

}  // namespace json

#include "json/legacy/Value.h"
