#include "json/legacy/Array.h"

#include <stdexcept>
#include <utility>

#include "json/legacy/Value.h"
#include "json/legacy/internal/Messages.h"

namespace json {

namespace {

void RequireBelow(std::size_t index, std::size_t limit) {
    if (index >= limit) throw std::out_of_range(messages::kIndexOutOfRange);
}

}  // namespace

Array::Array() = default;

Array::Array(const Array& other) = default;

Array::Array(Array&& other) noexcept = default;

// Copy first, release afterwards: `other` may live inside one of our elements.
Array& Array::operator=(const Array& other) {
    if (this != &other) {
        Elements copy(other.mValues);
        mValues.swap(copy);
    }
    return *this;
}

Array& Array::operator=(Array&& other) noexcept {
    if (this != &other) {
        Elements taken(std::move(other.mValues));
        mValues.swap(taken);
    }
    return *this;
}

Array::~Array() = default;

Value& Array::operator[](unsigned int index) {
    RequireBelow(index, mValues.size());
    return mValues[index];
}

const Value& Array::operator[](unsigned int index) const {
    RequireBelow(index, mValues.size());
    return mValues[index];
}

Array::iterator Array::begin() { return mValues.begin(); }
Array::iterator Array::end() { return mValues.end(); }
Array::const_iterator Array::begin() const { return mValues.begin(); }
Array::const_iterator Array::end() const { return mValues.end(); }
std::size_t Array::size() const { return mValues.size(); }

Array::iterator Array::find(const Value& value) {
    for (auto it = mValues.begin(); it != mValues.end(); ++it)
        if (*it == value) return it;
    return mValues.end();
}

Array::const_iterator Array::find(const Value& value) const {
    for (auto it = mValues.begin(); it != mValues.end(); ++it)
        if (*it == value) return it;
    return mValues.end();
}

bool Array::HasValue(const Value& value) const { return find(value) != end(); }

void Array::insert(unsigned int index, const Value& value) {
    RequireBelow(index, mValues.size() + 1);
    mValues.insert(mValues.begin() + static_cast<std::ptrdiff_t>(index), value);
}

void Array::push_back(const Value& value) { mValues.push_back(value); }

void Array::push_back(Value&& value) { mValues.push_back(std::move(value)); }

void Array::Clear() { mValues.clear(); }

}  // namespace json
