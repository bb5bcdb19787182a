// Replaces the malloc family for the memory benchmark program only. Every
// block gets a small header in front of it that records the requested size
// and the block the C library handed out; the counters add and subtract the
// requested sizes. The C library documents this kind of replacement: its own
// functions (strdup, the C++ runtime's operator new) allocate through it too.
#include <atomic>
#include <cerrno>
#include <cstdint>
#include <cstring>

#include "memory/HeapCounter.h"

extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void* block);
}

namespace {

struct Header {
    std::size_t size;
    void* block;
};
constexpr std::size_t kHeaderRoom = 16;
static_assert(sizeof(Header) <= kHeaderRoom, "the header fits in front of a block");

std::atomic<std::size_t> gInUse{0};
std::atomic<std::size_t> gPeak{0};

Header* HeaderOf(void* user) { return reinterpret_cast<Header*>(static_cast<char*>(user) - kHeaderRoom); }

void* Track(void* block, std::size_t offset, std::size_t size) {
    if (block == nullptr) return nullptr;
    void* user = static_cast<char*>(block) + offset;
    *HeaderOf(user) = Header{size, block};
    const std::size_t now = gInUse.fetch_add(size, std::memory_order_relaxed) + size;
    std::size_t peak = gPeak.load(std::memory_order_relaxed);
    while (now > peak && !gPeak.compare_exchange_weak(peak, now, std::memory_order_relaxed)) {
    }
    return user;
}

bool Overflows(std::size_t count, std::size_t size) {
    return size != 0 && count > SIZE_MAX / size;
}

}  // namespace

namespace tavrin::bench {

std::size_t HeapInUse() { return gInUse.load(std::memory_order_relaxed); }
std::size_t HeapPeak() { return gPeak.load(std::memory_order_relaxed); }
void ResetHeapPeak() { gPeak.store(HeapInUse(), std::memory_order_relaxed); }

}  // namespace tavrin::bench

extern "C" {

void* malloc(std::size_t size) noexcept {
    if (size > SIZE_MAX - kHeaderRoom) return nullptr;
    return Track(__libc_malloc(size + kHeaderRoom), kHeaderRoom, size);
}

void free(void* user) noexcept {
    if (user == nullptr) return;
    const Header header = *HeaderOf(user);
    gInUse.fetch_sub(header.size, std::memory_order_relaxed);
    __libc_free(header.block);
}

void* calloc(std::size_t count, std::size_t size) noexcept {
    if (Overflows(count, size)) return nullptr;
    void* user = malloc(count * size);
    if (user != nullptr) std::memset(user, 0, count * size);
    return user;
}

void* realloc(void* user, std::size_t size) noexcept {
    if (user == nullptr) return malloc(size);
    if (size == 0) {
        free(user);
        return nullptr;
    }
    void* moved = malloc(size);
    if (moved == nullptr) return nullptr;
    const std::size_t old = HeaderOf(user)->size;
    std::memcpy(moved, user, old < size ? old : size);
    free(user);
    return moved;
}

void* reallocarray(void* user, std::size_t count, std::size_t size) noexcept {
    if (Overflows(count, size)) {
        errno = ENOMEM;
        return nullptr;
    }
    return realloc(user, count * size);
}

void* memalign(std::size_t alignment, std::size_t size) noexcept {
    if (alignment <= kHeaderRoom) return malloc(size);
    if (size > SIZE_MAX - alignment) return nullptr;
    return Track(__libc_memalign(alignment, size + alignment), alignment, size);
}

void* aligned_alloc(std::size_t alignment, std::size_t size) noexcept { return memalign(alignment, size); }

int posix_memalign(void** out, std::size_t alignment, std::size_t size) noexcept {
    void* user = memalign(alignment, size);
    if (user == nullptr) return ENOMEM;
    *out = user;
    return 0;
}

void* valloc(std::size_t size) noexcept { return memalign(4096, size); }

void* pvalloc(std::size_t size) noexcept { return memalign(4096, (size + 4095) / 4096 * 4096); }

std::size_t malloc_usable_size(void* user) noexcept { return user == nullptr ? 0 : HeaderOf(user)->size; }

}  // extern "C"
