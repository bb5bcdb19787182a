#pragma once

#include <mutex>
#include <string>

#include "base/ostream.h"

namespace tavrin::test {

// A log stream for tests with several threads: each insertion is appended
// under a lock (lines of different threads may still interleave). Installed
// as the framework's log stream for the lifetime of the object.
class LockedLog final : public tavrin::base::ostream {
public:
    LockedLog() : _previous(tavrin::base::cout) { tavrin::base::cout = this; }
    ~LockedLog() override { tavrin::base::cout = _previous; }
    LockedLog(const LockedLog&) = delete;
    LockedLog& operator=(const LockedLog&) = delete;

    using ostream::operator<<;
    ostream& operator<<(char c) override { return Append(std::string(1, c)); }
    ostream& operator<<(int v) override { return Append(std::to_string(v)); }
    ostream& operator<<(long long v) override { return Append(std::to_string(v)); }
    ostream& operator<<(std::uint32_t v) override { return Append(std::to_string(v)); }
    ostream& operator<<(const char* text) override { return Append(text != nullptr ? text : ""); }

    std::string Text() {
        std::lock_guard<std::mutex> lock(_mutex);
        return _text;
    }

private:
    ostream& Append(const std::string& piece) {
        std::lock_guard<std::mutex> lock(_mutex);
        _text += piece;
        return *this;
    }

    std::mutex _mutex;
    std::string _text;
    tavrin::base::ostream* _previous;
};

// Occurrences of `needle` in `text`.
inline int CountOf(const std::string& text, const std::string& needle) {
    int count = 0;
    for (auto at = text.find(needle); at != std::string::npos; at = text.find(needle, at + 1))
        ++count;
    return count;
}

}  // namespace tavrin::test
