#include "json/legacy/Object.h"

#include <stdexcept>
#include <utility>

#include "json/legacy/Value.h"
#include "json/legacy/internal/Messages.h"

namespace json {

namespace {

const std::string& ExistingKeyError() {
    throw std::out_of_range(messages::kNoEntry);
}

}  // namespace

Object::Object() = default;

Object::Object(const Object& other) = default;

Object::Object(Object&& other) noexcept = default;

// Copy first, release afterwards: `other` may live inside one of our values.
Object& Object::operator=(const Object& other) {
    if (this != &other) {
        Table copy(other.mEntries);
        mEntries.swap(copy);
    }
    return *this;
}

Object& Object::operator=(Object&& other) noexcept {
    if (this != &other) {
        Table taken(std::move(other.mEntries));
        mEntries.swap(taken);
    }
    return *this;
}

Object::~Object() = default;

Object::iterator Object::begin() { return mEntries.begin(); }
Object::iterator Object::end() { return mEntries.end(); }
Object::const_iterator Object::begin() const { return mEntries.begin(); }
Object::const_iterator Object::end() const { return mEntries.end(); }
std::size_t Object::size() const { return mEntries.size(); }

Object::iterator Object::find(const std::string& key) { return mEntries.find(key); }

Object::const_iterator Object::find(const std::string& key) const { return mEntries.find(key); }

Value& Object::operator[](const std::string& key) { return mEntries[key]; }

Value& Object::operator[](const char* key) {
    if (key == nullptr) throw std::invalid_argument(messages::kNullKey);
    return mEntries[std::string(key)];
}

const Value& Object::operator[](const std::string& key) const {
    const auto it = find(key);
    if (it == end()) ExistingKeyError();
    return it->value;
}

const Value& Object::operator[](const char* key) const {
    if (key == nullptr) throw std::invalid_argument(messages::kNullKey);
    return (*this)[std::string(key)];
}

bool Object::HasKey(const std::string& key) const { return find(key) != end(); }

int Object::HasKeys(const std::vector<std::string>& keys) const {
    for (std::size_t i = 0; i < keys.size(); ++i)
        if (!HasKey(keys[i])) return static_cast<int>(i);
    return -1;
}

// A null key text is a key the object does not hold.
int Object::HasKeys(const char** keys, int count) const {
    if (keys == nullptr && count > 0) throw std::invalid_argument(messages::kNullKeyList);
    for (int i = 0; i < count; ++i)
        if (keys[i] == nullptr || !HasKey(keys[i])) return i;
    return -1;
}

void Object::Clear() { mEntries.clear(); }

}  // namespace json
