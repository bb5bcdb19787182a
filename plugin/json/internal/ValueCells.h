#pragma once
// Internal to the plug-in's sources: not part of the installed headers.

#include <cstddef>
#include <new>

namespace tavrin::plugin::json::detail {

struct CellChunk;

// Room for the values of a document being read. Each value sits in a cell:
// a header naming the chunk the cell was carved from, then the value. The
// arena carves cells from chunks of growing size, one after another, so a
// document's values lie together and cost no allocation each. A chunk is
// freed when the arena has moved on from it and its last cell is released,
// on whichever thread that happens; until then, every cell of it keeps the
// whole chunk.
class CellArena {
public:
    CellArena() = default;
    // Leaves the current chunk; cells carved from it stay valid.
    ~CellArena();
    CellArena(const CellArena&) = delete;
    CellArena& operator=(const CellArena&) = delete;

    // Room for a value of `size` bytes, aligned for any value a Node holds.
    // Throws std::bad_alloc when no chunk can be had.
    void* Allocate(std::size_t size) {
        const std::size_t bytes = CellBytes(size);
        if (static_cast<std::size_t>(_end - _next) < bytes) StartChunk(bytes);
        char* cell = _next;
        _next += bytes;
        ++_carved;
        return StartCell(cell, _chunk);
    }

    // Every value type of a Node is aligned to at most this; so is a cell's
    // header, which takes this much room.
    static constexpr std::size_t kAlign = 8;

    // The bytes of a cell for a value of `size` bytes.
    static std::size_t CellBytes(std::size_t size) { return kAlign + (size + kAlign - 1) / kAlign * kAlign; }

    // Writes the header of `cell`, naming `chunk` (null for a cell of its
    // own), and returns the value's room after it.
    static void* StartCell(char* cell, CellChunk* chunk) {
        new (cell) CellChunk*(chunk);
        return cell + kAlign;
    }

    // The chunk named in the header of the cell of `value` (null for a cell
    // of its own).
    static CellChunk* ChunkOf(void* value) {
        return *std::launder(reinterpret_cast<CellChunk**>(static_cast<char*>(value) - kAlign));
    }

private:
    void Leave() noexcept;
    void StartChunk(std::size_t cellBytes);

    CellChunk* _chunk = nullptr;
    char* _next = nullptr;
    char* _end = nullptr;
    std::size_t _carved = 0;
    std::size_t _nextChunkBytes = 0;
};

// Room for one value of `size` bytes in a cell of its own (header and all):
// for copies and default values of nodes whose values live in cells. Throws
// std::bad_alloc.
void* AllocateCell(std::size_t size);

// Releases the cell of a value that has been destroyed, whether the cell was
// carved from a chunk or allocated on its own.
void ReleaseCell(void* value) noexcept;

// Releases cells as ReleaseCell does, but takes a run of cells of one chunk
// off its count at once, when the run ends or the object goes: for freeing
// the many values of a container.
class CellReleases {
public:
    CellReleases() = default;
    ~CellReleases() { EndRun(); }
    CellReleases(const CellReleases&) = delete;
    CellReleases& operator=(const CellReleases&) = delete;

    // Releases the cell of `value`, which has been destroyed.
    void Add(void* value) noexcept {
        CellChunk* chunk = CellArena::ChunkOf(value);
        if (chunk == nullptr || chunk != _chunk) {
            EndRun();
            if (chunk == nullptr) return ReleaseCell(value);
            _chunk = chunk;
        }
        ++_run;
    }

private:
    void EndRun() noexcept;

    CellChunk* _chunk = nullptr;
    std::size_t _run = 0;
};

}  // namespace tavrin::plugin::json::detail
