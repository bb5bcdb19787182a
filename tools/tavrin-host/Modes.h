#pragma once

#include <cstddef>
#include <string>

namespace tavrin::host_program {

// Exit codes of tavrin-host.
constexpr int kExitSuccess = 0;
constexpr int kExitFailure = 1;  // the mode ran and refused the document
constexpr int kExitUsage = 2;    // bad command line, unreadable input or unwritable output

// One mode of the program: `tavrin-host NAME [FILE|-]`. `run` gets the whole
// input text, writes its result to standard output and returns the exit code.
struct Mode {
    const char* name;
    const char* summary;
    int (*run)(const std::string& input);
};

// Every mode, in the order --help lists them.
extern const Mode kModes[];
extern const std::size_t kModeCount;

}  // namespace tavrin::host_program
