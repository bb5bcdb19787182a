#pragma once

#include <cstddef>
#include <vector>

#include "base/Export.h"

namespace json {

class Value;

// A sequence of json::Values held by value, in index order. Elements are
// copied in and out; a copy of the array copies every element.
class TAVRIN_PLUGIN_API Array {
public:
    using Elements = std::vector<Value>;
    using iterator = Elements::iterator;
    using const_iterator = Elements::const_iterator;

    Array();
    Array(const Array& other);
    Array(Array&& other) noexcept;
    // Replaces every element by a copy of the other array's elements.
    Array& operator=(const Array& other);
    Array& operator=(Array&& other) noexcept;
    ~Array();

    // The element at `index`; std::out_of_range when there is none.
    Value& operator[](unsigned int index);
    const Value& operator[](unsigned int index) const;

    iterator begin();
    iterator end();
    const_iterator begin() const;
    const_iterator end() const;
    std::size_t size() const;

    // The first element equal to `value` (json::operator==), or end().
    iterator find(const Value& value);
    const_iterator find(const Value& value) const;
    bool HasValue(const Value& value) const;

    // Inserts a copy before the element at `index` (index == size() appends);
    // std::out_of_range for a larger index.
    void insert(unsigned int index, const Value& value);
    void push_back(const Value& value);
    void push_back(Value&& value);
    void Clear();

private:
    friend struct ValueAccess;

    Elements mValues;
};

}  // namespace json

#include "json/legacy/Value.h"
