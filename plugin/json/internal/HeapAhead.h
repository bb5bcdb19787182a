#pragma once
// Internal to the plug-in's sources: not part of the installed headers.
//
// Hints to the processor about heap memory the reader, the writer and the
// sweep are about to touch. The C library carves blocks asked for one after
// another from one run of free memory, so a tree's blocks lie in the order the
// reader allocated them, which is also the order the writer reads them in; the
// sweep frees them in the opposite order. The lines just past the block at
// hand (for the sweep, some way before it) are thus most likely those of the
// next blocks. A tree of many small arrays runs ahead of the processor's own
// prefetching, and waiting on memory can then take longer than the work:
// fetched early, those lines are there when needed. Only hints: the addresses
// are never dereferenced, whatever memory lies there.

#include <cstddef>
#include <cstdint>

namespace tavrin::plugin::json::detail {

// The cache line of the processors the plug-in is built for.
inline constexpr std::size_t kCacheLine = 64;

// What the lines asked for are for.
enum class Use { kRead = 0, kWrite = 1 };

// Asks for `Lines` cache lines from `Offset` bytes past `at` on (before it,
// when `Offset` is negative).
template <std::ptrdiff_t Offset, int Lines, Use For>
[[gnu::always_inline]] inline void PrefetchFrom(const void* at) {
    const std::uintptr_t from = reinterpret_cast<std::uintptr_t>(at) + static_cast<std::uintptr_t>(Offset);
#pragma GCC unroll 16
    for (int line = 0; line < Lines; ++line)
        __builtin_prefetch(reinterpret_cast<const void*>(from + kCacheLine * static_cast<std::uintptr_t>(line)),
                           static_cast<int>(For));
}

}  // namespace tavrin::plugin::json::detail
