#pragma once

#include <cstddef>
#include <string>

namespace tavrin::host_program {

// Exit codes of tavrin-host.
constexpr int kExitSuccess = 0;
constexpr int kExitFailure = 1;  // the mode ran and refused the document
constexpr int kExitUsage = 2;    // bad command line, unreadable input or unwritable output

// The input of a run: its name in messages (the path given, or "<stdin>")
// and its whole text.
struct Document {
    std::string name;
    std::string text;
};

// One mode of the program: `tavrin-host NAME [FILE|-]`. `run` gets the
// document, writes its result to standard output and returns the exit code.
struct Mode {
    const char* name;
    const char* summary;
    int (*run)(const Document& document);
};

// Every mode, in the order --help lists them.
extern const Mode kModes[];
extern const std::size_t kModeCount;

// Called after the plug-in refused `document`. Parses its text again as
// Node::Deserialize does, with the plug-in's log silenced, and when that
// fails writes to standard error where: "NAME:LINE:COLUMN: error: the
// document stops being valid here", the source line and a caret under the
// column (Parser::FailureOffset; LINE and COLUMN 1-based, COLUMN in bytes).
// Writes nothing when the text parses, as when a conversion failed later.
void ReportWhereParsingStops(const Document& document);

}  // namespace tavrin::host_program
