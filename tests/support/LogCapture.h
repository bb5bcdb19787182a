#pragma once

#include <string>

#include "base/ostream.h"

namespace tavrin::test {

// Points the framework's log stream at a string for the lifetime of the
// object and restores the previous stream afterwards.
class LogCapture {
public:
    LogCapture() : _stream(_text), _previous(tavrin::base::cout) { tavrin::base::cout = &_stream; }
    ~LogCapture() { tavrin::base::cout = _previous; }
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    const std::string& Text() const { return _text; }
    void Reset() { _text.clear(); }

private:
    std::string _text;
    tavrin::base::ostream_string _stream;
    tavrin::base::ostream* _previous;
};

// The exact text of one log line as the framework writes it.
inline std::string RedLine(const std::string& path, int line, const std::string& function,
                           const std::string& message) {
    return "\033[31m" + path + "/" + std::to_string(line) + "/" + function + ":\t" + message +
           "\n\033[0m";
}
inline std::string CyanLine(const std::string& path, int line, const std::string& function,
                            const std::string& message) {
    return "\033[36m" + path + "/" + std::to_string(line) + "/" + function + ":\t" + message +
           "\n\033[0m";
}

}  // namespace tavrin::test
