#pragma once

#include <string>

namespace tavrin::host::program {

// Reads the whole of `path` ("-" or null: standard input) into `text`. On
// failure returns false and sets `error` to a one-line reason.
bool ReadInput(const char* path, std::string& text, std::string& error);

// Writes `text` and a newline to standard output.
void PrintLine(const std::string& text);

}  // namespace tavrin::host::program
