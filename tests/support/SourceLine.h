#pragma once

#include <string>

namespace tavrin::test {

// The line number (1-based) of the `occurrence`-th line of a project source
// file (path relative to the project root) that contains `needle`; 0 when
// there is none. Tests use it to expect the line of a logging statement
// without hard-coding it.
int SourceLine(const std::string& path, const std::string& needle, int occurrence = 1);

// The whole content of a file, or an empty text when it cannot be read.
std::string ReadFile(const std::string& path);

}  // namespace tavrin::test
