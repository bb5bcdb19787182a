#pragma once
// Internal to the plug-in's sources: not part of the installed headers.
//
// Hints to the processor about heap memory the reader, the writer and the
// sweep are about to touch. The C library carves blocks asked for one after
// another from one run of free memory, so a tree's blocks lie in the order the
// reader allocated them, which is also the order the writer reads them and the
// sweep frees them in. The lines just past the block at hand are thus most
// likely those of the next blocks. A tree of many small arrays runs ahead of
// the processor's own prefetching, and waiting on memory can then take longer
// than the work: fetched early, those lines are there when needed. Only hints:
// the addresses are never dereferenced, whatever memory lies there.

#include <cstddef>
#include <cstdint>

namespace tavrin::plugin::json::detail {

// The cache line of the processors the plug-in is built for.
inline constexpr std::size_t kCacheLine = 64;

// What the lines asked for are for.
enum class Use { kRead = 0, kWrite = 1 };

// Asks for `Lines` cache lines from `Distance` bytes past `at` on.
template <std::size_t Distance, int Lines, Use For>
[[gnu::always_inline]] inline void PrefetchPast(const void* at) {
    const std::uintptr_t from = reinterpret_cast<std::uintptr_t>(at) + Distance;
#pragma GCC unroll 16
    for (int line = 0; line < Lines; ++line)
        __builtin_prefetch(reinterpret_cast<const void*>(from + kCacheLine * static_cast<std::uintptr_t>(line)),
                           static_cast<int>(For));
}

}  // namespace tavrin::plugin::json::detail
