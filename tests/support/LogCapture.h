#pragma once

#include <fstream>
#include <mutex>
#include <regex>
#include <sstream>
#include <string>

#include "base/ostream.h"

namespace tavrin::test {

// `text` with the line number after the source path of every log line
// ("path.cpp/42/func:") replaced by "#": tests compare what a line says, not
// where in the source its text is written.
inline std::string Masked(const std::string& text) {
    static const std::regex kLineNumber("(\\.(?:cpp|h))/[0-9]+/");
    return std::regex_replace(text, kLineNumber, "$1/#/");
}

// Points the framework's log stream at a string for the lifetime of the
// object and restores the previous stream afterwards. Each insertion goes
// through the host's string stream under a lock, so threads may log at once
// (their lines may interleave).
class LogCapture final : public tavrin::base::ostream {
public:
    LogCapture() : _stream(_text), _previous(tavrin::base::cout) { tavrin::base::cout = this; }
    ~LogCapture() override { tavrin::base::cout = _previous; }
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    using ostream::operator<<;
    ostream& operator<<(char c) override { return Put(c); }
    ostream& operator<<(int v) override { return Put(v); }
    ostream& operator<<(long long v) override { return Put(v); }
    ostream& operator<<(std::uint32_t v) override { return Put(v); }
    ostream& operator<<(const char* text) override { return Put(text); }

    std::string Text() {
        std::lock_guard<std::mutex> lock(_mutex);
        return _text;
    }
    // The text with the line number of every log line masked.
    std::string Lines() { return Masked(Text()); }
    void Reset() {
        std::lock_guard<std::mutex> lock(_mutex);
        _text.clear();
    }

private:
    template <class T>
    ostream& Put(T piece) {
        std::lock_guard<std::mutex> lock(_mutex);
        _stream << piece;
        return *this;
    }

    std::mutex _mutex;
    std::string _text;
    tavrin::base::ostream_string _stream;
    tavrin::base::ostream* _previous;
};


// One red or cyan log line as the framework writes it, its line number
// masked.
inline std::string RedLine(const std::string& path, const std::string& function, const std::string& message) {
    return "\033[31m" + path + "/#/" + function + ":\t" + message + "\n\033[0m";
}
inline std::string CyanLine(const std::string& path, const std::string& function, const std::string& message) {
    return "\033[36m" + RedLine(path, function, message).substr(5);  // the red line, coloured cyan
}

// Occurrences of `needle` in `text`.
inline int CountOf(const std::string& text, const std::string& needle) {
    int count = 0;
    for (auto at = text.find(needle); at != std::string::npos; at = text.find(needle, at + 1)) ++count;
    return count;
}

// The whole content of a file, or an empty text when it cannot be read.
inline std::string ReadFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream content;
    content << in.rdbuf();
    return content.str();
}

}  // namespace tavrin::test
