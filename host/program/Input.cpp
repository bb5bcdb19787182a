#include "Input.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace tavrin::host::program {

namespace {

bool ReadAll(std::FILE* file, std::string& text) {
    char chunk[65536];
    std::size_t got;
    while ((got = std::fread(chunk, 1, sizeof chunk, file)) > 0) text.append(chunk, got);
    return std::ferror(file) == 0;
}

}  // namespace

bool ReadInput(const char* path, std::string& text, std::string& error) {
    const bool useStdin = path == nullptr || std::strcmp(path, "-") == 0;
    const std::string name = useStdin ? "standard input" : path;
    std::FILE* file = useStdin ? stdin : std::fopen(path, "rb");
    bool read = file != nullptr && ReadAll(file, text);
    const int reason = errno;
    if (file != nullptr && !useStdin) std::fclose(file);
    if (!read) error = "cannot read " + name + ": " + std::strerror(reason);
    return read;
}

void PrintLine(const std::string& text) {
    std::fwrite(text.data(), 1, text.size(), stdout);
    std::fputc('\n', stdout);
    std::fflush(stdout);
}

}  // namespace tavrin::host::program
