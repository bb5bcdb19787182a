#pragma once

#include <cstdint>
#include <string>

namespace tavrin::base {

namespace detail {
constexpr std::uint32_t kFnvOffset = 2166136261u;
constexpr std::uint32_t kFnvPrime = 16777619u;

// One FNV-1a step over a byte with 'A'..'Z' folded to 'a'..'z'.
inline std::uint32_t HashStep(std::uint32_t h, unsigned char byte) {
    if (byte >= 'A' && byte <= 'Z') byte = static_cast<unsigned char>(byte + 32);
    return (h ^ byte) * kFnvPrime;
}
}  // namespace detail

// Case-folding 32-bit FNV-1a of a string, read as a NUL-terminated text, up to
// (not including) the first byte equal to `stop`. With stop 0 the whole text.
inline std::uint32_t Hash(const std::string& s, char stop) {
    std::uint32_t h = detail::kFnvOffset;
    const auto stopByte = static_cast<unsigned char>(stop);
    for (const char* p = s.c_str(); *p != '\0'; ++p) {
        const auto byte = static_cast<unsigned char>(*p);
        if (byte == stopByte) break;
        h = detail::HashStep(h, byte);
    }
    return h;
}

// Case-folding 32-bit FNV-1a of the bytes from `first` up to `last`. Named
// apart from Hash: as an overload it would take Hash(text, 0), meant for the
// string form with stop character 0, as a range ending at a null pointer.
inline std::uint32_t HashBytes(const char* first, const char* last) {
    std::uint32_t h = detail::kFnvOffset;
    for (; first != last; ++first) h = detail::HashStep(h, static_cast<unsigned char>(*first));
    return h;
}

// Case-folding 32-bit FNV-1a of a NUL-terminated text; 0 for a null pointer.
inline std::uint32_t Hash(const char* s) {
    if (s == nullptr) return 0;
    std::uint32_t h = detail::kFnvOffset;
    for (; *s != '\0'; ++s) h = detail::HashStep(h, static_cast<unsigned char>(*s));
    return h;
}

}  // namespace tavrin::base
