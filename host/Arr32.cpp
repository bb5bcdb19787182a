#include "base/Arr32.h"

#include <algorithm>
#include <string>

#include "base/Hash.h"

namespace tavrin::base {

Arr32::Arr32(std::uint32_t* storage, int capacity, bool borrowed)
    : _data(storage), _size(0), _capacity(storage != nullptr ? std::max(capacity, 0) : 0),
      _borrowed(borrowed) {}

void Arr32::Grow() {
    const int capacity = _capacity < 4 ? 8 : _capacity * 2;
    auto* data = new std::uint32_t[static_cast<std::size_t>(capacity)];
    std::copy(_data, _data + _size, data);
    if (!_borrowed) delete[] _data;
    _data = data;
    _capacity = capacity;
    _borrowed = false;
}

void Arr32::Clear() {
    if (!_borrowed) {
        delete[] _data;
        _data = nullptr;
        _capacity = 0;
    }
    _size = 0;
}

int Arr32::Size() const { return _size; }
const std::uint32_t* Arr32::begin() const { return _data; }
const std::uint32_t* Arr32::end() const { return _data + _size; }

bool Arr32::Add(std::uint32_t value, bool unique) {
    if (unique && std::find(begin(), end(), value) != end()) return false;
    if (_size == _capacity) Grow();
    _data[_size++] = value;
    return true;
}

int Arr32::Add(const char* text, char separator) {
    if (text == nullptr) return 0;
    int added = 0;
    std::string part;
    for (const char* p = text;; ++p) {
        if (*p != separator && *p != '\0') {
            part += *p;
            continue;
        }
        if (!part.empty()) {
            Add(Hash(part.c_str()), false);
            ++added;
            part.clear();
        }
        if (*p == '\0') return added;
    }
}

}  // namespace tavrin::base
