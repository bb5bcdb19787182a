#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace tavrin::test {

// The virtual-table slot (0 = first function pointer after the address
// point) that a pointer to a virtual member function names, as the compiler
// encoded it; -1 for a pointer to a non-virtual member. Itanium C++ ABI: the
// pointer word holds 1 + the slot's byte offset. ARM C++ ABI: the pointer word
// holds the byte offset and the low bit of the adjustment word marks it
// virtual. The slot is relative to the virtual table of the class the member
// was declared in (for an inherited member, that base's table).
template <class MemberFunction>
std::ptrdiff_t VirtualSlot(MemberFunction member) {
    struct Representation {
        std::uintptr_t pointer;
        std::ptrdiff_t adjustment;
    };
    static_assert(sizeof(MemberFunction) == sizeof(Representation),
                  "pointer to member function of two words expected");
    Representation words;
    std::memcpy(&words, &member, sizeof words);
#if defined(__arm__) || defined(__aarch64__)
    if ((words.adjustment & 1) == 0) return -1;
    return static_cast<std::ptrdiff_t>(words.pointer / sizeof(void*));
#else
    if ((words.pointer & 1) == 0) return -1;
    return static_cast<std::ptrdiff_t>((words.pointer - 1) / sizeof(void*));
#endif
}

// Byte offset of the Base subobject inside a Derived object at `object`.
template <class Base, class Derived>
std::ptrdiff_t BaseOffset(Derived* object) {
    return reinterpret_cast<char*>(static_cast<Base*>(object)) - reinterpret_cast<char*>(object);
}

}  // namespace tavrin::test
