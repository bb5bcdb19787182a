#pragma once

#include <cstdint>

#include "base/Export.h"

namespace tavrin::base {

// A growable array of unsigned 32-bit values. It may start over storage its
// owner supplies; when it outgrows that storage it moves to a heap block of
// its own.
class TAVRIN_HOST_API Arr32 {
public:
    // An empty array over `storage` (room for `capacity` values). When
    // `borrowed` is true the storage stays the caller's and is never freed;
    // otherwise it must come from new[] and the array frees it.
    Arr32(std::uint32_t* storage, int capacity, bool borrowed);
    // Built into its callers: the array gives back what it owns through
    // Clear, so code that destroys arrays (the object classes' inline
    // destructors) takes no destructor from the host.
    ~Arr32() { Clear(); }
    Arr32(const Arr32&) = delete;
    Arr32& operator=(const Arr32&) = delete;

    // Appends `value`. With `unique` set, a value already present is not
    // added again (false is returned).
    bool Add(std::uint32_t value, bool unique);

    // Appends the case-folding hash (Hash) of each non-empty part of `text`
    // between `separator` characters, in order, duplicates included. A null
    // text adds nothing. Returns the number of values added.
    int Add(const char* text, char separator);

    // Host operations, called rather than built into their callers: only the
    // host knows its array's inner layout. Clear empties the array and frees
    // the storage it owns; borrowed storage stays in use, while an array that
    // has outgrown its borrowed storage is left with none and grows again.
    void Clear();
    int Size() const;
    const std::uint32_t* begin() const;
    const std::uint32_t* end() const;

private:
    void Grow();

    std::uint32_t* _data;
    int _size;
    int _capacity;
    bool _borrowed;
};

}  // namespace tavrin::base
