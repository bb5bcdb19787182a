// Where a refused document stops being valid, told the way compilers tell it.
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

#include "Modes.h"
#include "base/ostream.h"
#include "json/JsonNode.h"
#include "json/Parser.h"

namespace tavrin::host_program {

namespace {

// Points the plug-in's log stream at a string that is thrown away, for the
// lifetime of the object.
class QuietLog {
public:
    QuietLog() : _stream(_discarded), _previous(tavrin::base::cout) { tavrin::base::cout = &_stream; }
    ~QuietLog() { tavrin::base::cout = _previous; }
    QuietLog(const QuietLog&) = delete;
    QuietLog& operator=(const QuietLog&) = delete;

private:
    std::string _discarded;
    tavrin::base::ostream_string _stream;
    tavrin::base::ostream* _previous;
};

// The offset where parsing `text` fails, or -1 when it parses.
int FailureOffset(const char* text) {
    const QuietLog quiet;
    tavrin::plugin::json::Parser parser(text);
    const std::unique_ptr<tavrin::plugin::json::Node> result(parser.ParseValue());
    return result->IsEmpty() ? parser.FailureOffset() : -1;
}

// An offset as line and column (1-based, the column in bytes) and the text
// of its line, without the line feed.
struct Location {
    std::size_t line;
    std::size_t column;
    std::string_view source;
};

Location Locate(std::string_view text, std::size_t offset) {
    std::size_t start = 0;
    std::size_t line = 1;
    for (std::size_t i = 0; i < offset; ++i) {
        if (text[i] != '\n') continue;
        start = i + 1;
        ++line;
    }
    const std::size_t end = text.find('\n', start);
    const std::size_t length = (end == std::string_view::npos ? text.size() : end) - start;
    return {line, offset - start + 1, text.substr(start, length)};
}

// Blanks up to the column of a caret under `source`: tabs stay tabs, so the
// caret lines up with what a terminal shows, and so do UTF-8 characters,
// which take one blank (their continuation bytes none).
std::string CaretIndent(std::string_view source, std::size_t column) {
    std::string indent;
    for (const char c : source.substr(0, column - 1)) {
        if (c == '\t')
            indent += '\t';
        else if ((static_cast<unsigned char>(c) & 0xC0) != 0x80)
            indent += ' ';
    }
    return indent;
}

// Colours only for a terminal, and not when NO_COLOR is set to anything but
// an empty text (no-color.org).
bool ColourStandardError() {
    const char* noColour = std::getenv("NO_COLOR");
    return isatty(STDERR_FILENO) == 1 && (noColour == nullptr || *noColour == '\0');
}

}  // namespace

void ReportWhereParsingStops(const Document& document) {
    const char* text = document.text.c_str();
    const int offset = FailureOffset(text);
    if (offset < 0) return;
    const Location at = Locate(text, static_cast<std::size_t>(offset));
    const bool colour = ColourStandardError();
    std::fprintf(stderr, "%s%s:%zu:%zu: %serror:%s the document stops being valid here\n",
                 colour ? "\033[1m" : "", document.name.c_str(), at.line, at.column,
                 colour ? "\033[31m" : "", colour ? "\033[0m" : "");
    std::fwrite(at.source.data(), 1, at.source.size(), stderr);
    std::fprintf(stderr, "\n%s%s^%s\n", CaretIndent(at.source, at.column).c_str(),
                 colour ? "\033[1;32m" : "", colour ? "\033[0m" : "");
}

}  // namespace tavrin::host_program
