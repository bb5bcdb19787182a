#include "json/internal/ValueCells.h"

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <new>

namespace tavrin::plugin::json::detail {

// The count of a chunk starts at kHold, for the arena that carves from it.
// Every released cell takes one off; the arena, when it moves on, takes off
// kHold less the cells it carved. Whoever takes the count to zero frees the
// chunk.
struct CellChunk {
    std::atomic<std::size_t> count;
};

namespace {

constexpr std::size_t kAlign = CellArena::kAlign;
constexpr std::size_t kHold = SIZE_MAX / 2;
constexpr std::size_t kChunkHeader = (sizeof(CellChunk) + kAlign - 1) / kAlign * kAlign;
// Chunks grow by doubling, from a size small documents fill to one that
// keeps the unused end of a large document's last chunk small.
constexpr std::size_t kFirstChunkBytes = 1024;
constexpr std::size_t kLargestChunkBytes = 64 * 1024;

static_assert(sizeof(CellChunk*) <= kAlign, "a cell header holds a chunk pointer");
static_assert(kAlign % alignof(long long) == 0 && kAlign % alignof(double) == 0 &&
                  kAlign % alignof(void*) == 0 && kAlign % alignof(std::size_t) == 0,
              "cells are aligned for every value a Node holds");

void TakeOff(CellChunk* chunk, std::size_t count) noexcept {
    if (chunk->count.fetch_sub(count, std::memory_order_acq_rel) == count) {
        chunk->~CellChunk();
        ::operator delete(chunk);
    }
}

}  // namespace

CellArena::~CellArena() { Leave(); }

// The arena's hold on its chunk goes; StartChunk sets a new one right after.
void CellArena::Leave() noexcept {
    if (_chunk != nullptr) TakeOff(_chunk, kHold - _carved);
}

void CellArena::StartChunk(std::size_t cellBytes) {
    _nextChunkBytes = std::min(std::max(_nextChunkBytes * 2, kFirstChunkBytes), kLargestChunkBytes);
    const std::size_t bytes = std::max(_nextChunkBytes, kChunkHeader + cellBytes);
    char* memory = static_cast<char*>(::operator new(bytes));
    Leave();
    _chunk = new (memory) CellChunk{kHold};
    _next = memory + kChunkHeader;
    _end = memory + bytes;
    _carved = 0;
}

void* AllocateCell(std::size_t size) {
    return CellArena::StartCell(static_cast<char*>(::operator new(CellArena::CellBytes(size))), nullptr);
}

void CellReleases::EndRun() noexcept {
    if (_run != 0) TakeOff(_chunk, _run);
    _chunk = nullptr;
    _run = 0;
}

void ReleaseCell(void* value) noexcept {
    CellChunk* chunk = CellArena::ChunkOf(value);
    if (chunk == nullptr)
        ::operator delete(static_cast<char*>(value) - kAlign);
    else
        TakeOff(chunk, 1);
}

}  // namespace tavrin::plugin::json::detail
