#pragma once
// Internal to the plug-in's sources: not part of the installed headers.

namespace tavrin::plugin::json::detail {

// Freeing a tree recurses through at most this many nested containers on
// one thread; below that, containers are freed level by level.
inline constexpr int kRecursiveReleaseLevels = 32;

// The containers of this thread being freed by recursion, one inside the
// other.
inline thread_local int tRecursiveReleases = 0;

// Counts `levels` more containers being freed by recursion for as long as it
// lives.
class ReleaseLevels {
public:
    explicit ReleaseLevels(int levels = 1) : _levels(levels) { tRecursiveReleases += levels; }
    ~ReleaseLevels() { tRecursiveReleases -= _levels; }
    ReleaseLevels(const ReleaseLevels&) = delete;
    ReleaseLevels& operator=(const ReleaseLevels&) = delete;

private:
    const int _levels;
};

}  // namespace tavrin::plugin::json::detail
