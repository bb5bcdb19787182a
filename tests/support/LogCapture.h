#pragma once

#include <regex>
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
    // The text with the line number of every log line masked (see Masked).
    std::string Lines() const;
    void Reset() { _text.clear(); }

private:
    std::string _text;
    tavrin::base::ostream_string _stream;
    tavrin::base::ostream* _previous;
};

// `text` with the line number after the source path of every log line
// ("path.cpp/42/func:") replaced by "#": tests compare what a line says, not
// where in the source its text is written.
inline std::string Masked(const std::string& text) {
    static const std::regex kLineNumber("(\\.(?:cpp|h))/[0-9]+/");
    return std::regex_replace(text, kLineNumber, "$1/#/");
}
inline std::string LogCapture::Lines() const { return Masked(_text); }

// One log line as the framework writes it, its line number masked.
inline std::string LogLine(const char* colour, const std::string& path, const std::string& function,
                           const std::string& message) {
    return colour + path + "/#/" + function + ":\t" + message + "\n\033[0m";
}
inline std::string RedLine(const std::string& path, const std::string& function,
                           const std::string& message) {
    return LogLine("\033[31m", path, function, message);
}
inline std::string CyanLine(const std::string& path, const std::string& function,
                            const std::string& message) {
    return LogLine("\033[36m", path, function, message);
}

}  // namespace tavrin::test
