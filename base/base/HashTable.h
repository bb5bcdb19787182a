#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "base/Hash.h"

namespace tavrin::base {

// One entry of a HashTable: the key's hash (computed once), the key text as
// given when the entry was made, and the value the entry owns.
template <class K, class V>
struct HashPair {
    std::uint32_t hash;
    K key;
    V value;

    HashPair(std::uint32_t h, const K& k, const V& v) : hash(h), key(k), value(v) {}
    HashPair(std::uint32_t h, K&& k, V&& v) : hash(h), key(std::move(k)), value(std::move(v)) {}
    HashPair(const HashPair& other) = default;
    // Relocation inside the vector moves the value too, so growing a table of
    // containers never deep-copies their subtrees.
    HashPair(HashPair&& other) noexcept
        : hash(other.hash), key(std::move(other.key)), value(std::move(other.value)) {}
    HashPair& operator=(const HashPair& other) = default;
    HashPair& operator=(HashPair&& other) noexcept {
        hash = other.hash;
        key = std::move(other.key);
        value = std::move(other.value);
        return *this;
    }
    ~HashPair() = default;
};

// The framework's keyed table: entries in insertion order, looked up by a
// linear scan that compares only the 32-bit case-folded hash of the key, so
// keys that differ only in ASCII letter case name one entry and the oldest
// entry of a hash wins.
template <class K, class V>
class HashTable : public std::vector<HashPair<K, V>> {
    using Base = std::vector<HashPair<K, V>>;

public:
    using Base::Base;
    using Base::operator[];
    using iterator = typename Base::iterator;
    using const_iterator = typename Base::const_iterator;

    iterator find(const K& key) { return findHash(Hash(key, '\0')); }
    const_iterator find(const K& key) const { return findHash(Hash(key, '\0')); }

    iterator findHash(std::uint32_t h) {
        for (auto it = this->begin(); it != this->end(); ++it)
            if (it->hash == h) return it;
        return this->end();
    }
    const_iterator findHash(std::uint32_t h) const {
        for (auto it = this->begin(); it != this->end(); ++it)
            if (it->hash == h) return it;
        return this->end();
    }

    // The value of the key's entry; a new entry with a default value is
    // appended at the end when there is none.
    V& operator[](const K& key) {
        const std::uint32_t h = Hash(key, '\0');
        auto it = findHash(h);
        if (it != this->end()) return it->value;
        this->emplace_back(h, key, V());
        return this->back().value;
    }
};

}  // namespace tavrin::base
