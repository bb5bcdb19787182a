#pragma once

#include <cstring>

#include "base/Reflect.h"
#include "base/ostream.h"

namespace tavrin::base {

inline constexpr const char* kLogRed = "\033[31m";
inline constexpr const char* kLogCyan = "\033[36m";
inline constexpr const char* kLogReset = "\033[0m";

// The source path as log lines show it: advanced by __root_path_offset.
// A path shorter than the offset is shown whole instead of being overrun; a
// longer one from another tree (an installed copy of a header) loses as
// many leading characters as any other.
inline const char* LogPath(const char* file) {
    const std::size_t offset = __root_path_offset > 0 ? static_cast<std::size_t>(__root_path_offset) : 0;
    return std::strlen(file) >= offset ? file + offset : file;
}

// A message piece worked out only when the line reaches it, as a value in a
// chain of insertions is: whatever working it out writes to the log (a line
// of its own) stands between the pieces before it and those after it.
template <class Make>
struct WorkedOutPiece {
    Make make;
};

template <class Make>
WorkedOutPiece<Make> WhenReached(Make make) {
    return {make};
}

template <class Make>
ostream& operator<<(ostream& os, const WorkedOutPiece<Make>& piece) {
    return os << piece.make();
}

// Writes one log line to *cout as separate insertions: colour, source path
// (LogPath), "/", line, "/", function word, ":\t", the message pieces, '\n',
// colour reset. Kept out of line, so that the functions that log stay small
// enough for their callers to inline.
template <class... Message>
[[gnu::noinline]] void LogLine(const char* colour, const char* file, int line, const char* function,
             const Message&... message) {
    ostream& os = *cout;
    os << colour << LogPath(file) << "/" << line << "/" << function << ":\t";
    (void)(os << ... << message);
    os << '\n' << kLogReset;
}

// Where a log line comes from; Write sends the line with its message pieces.
// The macros below name the site and pass their arguments to Write, so a
// line with no message at all needs no comma trickery.
struct LogSite {
    const char* colour;
    const char* file;
    int line;
    const char* function;

    template <class... Message>
    void Write(const Message&... message) const {
        LogLine(colour, file, line, function, message...);
    }
};

}  // namespace tavrin::base

// Every log line of the project goes through these two macros.
#define TAVRIN_LOG_ERROR(...) \
    ::tavrin::base::LogSite{::tavrin::base::kLogRed, __FILE__, __LINE__, __func__}.Write(__VA_ARGS__)
#define TAVRIN_LOG_INFO(...) \
    ::tavrin::base::LogSite{::tavrin::base::kLogCyan, __FILE__, __LINE__, __func__}.Write(__VA_ARGS__)
