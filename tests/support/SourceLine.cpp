#include "support/SourceLine.h"

#include <fstream>
#include <sstream>

namespace tavrin::test {

int SourceLine(const std::string& path, const std::string& needle, int occurrence) {
    std::ifstream in(std::string(TAVRIN_SOURCE_DIR) + "/" + path);
    std::string line;
    for (int number = 1; std::getline(in, line); ++number)
        if (line.find(needle) != std::string::npos && --occurrence == 0) return number;
    return 0;
}

std::string ReadFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream content;
    content << in.rdbuf();
    return content.str();
}

}  // namespace tavrin::test
