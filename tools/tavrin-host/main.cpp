// tavrin-host MODE [FILE|-]: runs one mode of the plug-in on a document read
// from FILE or standard input. Log lines go to standard error.
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string>

#include "Modes.h"
#include "json/PluginJson.h"

namespace program = tavrin::host_program;

namespace {

bool ReadAll(std::FILE* file, std::string& text) {
    char chunk[65536];
    std::size_t got;
    while ((got = std::fread(chunk, 1, sizeof chunk, file)) > 0) text.append(chunk, got);
    return std::ferror(file) == 0;
}

// Reads the whole of `path` ("-" or null: standard input, named "<stdin>")
// into `document`. On failure returns false and sets `error` to a one-line
// reason.
bool ReadInput(const char* path, program::Document& document, std::string& error) {
    const bool useStdin = path == nullptr || std::strcmp(path, "-") == 0;
    document.name = useStdin ? "<stdin>" : path;
    std::FILE* file = useStdin ? stdin : std::fopen(path, "rb");
    bool read = file != nullptr && ReadAll(file, document.text);
    const int reason = errno;
    if (file != nullptr && !useStdin) std::fclose(file);
    const std::string what = useStdin ? "standard input" : document.name;
    if (!read) error = "cannot read " + what + ": " + std::strerror(reason);
    return read;
}

const program::Mode* FindMode(const char* name) {
    for (std::size_t i = 0; i < program::kModeCount; ++i)
        if (std::strcmp(program::kModes[i].name, name) == 0) return &program::kModes[i];
    return nullptr;
}

void PrintHelp() {
    std::printf(
        "usage: tavrin-host MODE [FILE|-]\n"
        "Runs the JSON plug-in inside the substitute framework on one document, read\n"
        "from FILE or, when FILE is \"-\" or absent, from standard input. The plug-in's\n"
        "log lines go to standard error; when convert or parse refuses the document,\n"
        "a line FILE:LINE:COLUMN, the source line and a caret follow them (FILE is\n"
        "\"<stdin>\" for standard input; no colours off a terminal or with NO_COLOR).\n"
        "--version prints the program's version and the plug-in's.\n\nmodes:\n");
    for (std::size_t i = 0; i < program::kModeCount; ++i)
        std::printf("  %-9s %s\n", program::kModes[i].name, program::kModes[i].summary);
    std::printf(
        "\nexit status: 0 success (result on standard output), 1 the mode failed (nothing\n"
        "on standard output), 2 bad command line, unreadable input or unwritable output.\n");
}

void PrintVersion() {
    std::printf("tavrin-host %s\nplug-in %s\n", TAVRIN_HOST_VERSION, __MODULE_string);
}

int UsageError(const std::string& message) {
    std::fprintf(stderr, "tavrin-host: %s (see tavrin-host --help)\n", message.c_str());
    return program::kExitUsage;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc >= 2 && (std::strcmp(argv[1], "--help") == 0 || std::strcmp(argv[1], "-h") == 0)) {
        PrintHelp();
        return program::kExitSuccess;
    }
    if (argc == 2 && std::strcmp(argv[1], "--version") == 0) {
        PrintVersion();
        return program::kExitSuccess;
    }
    if (argc < 2 || argc > 3) return UsageError("expected MODE [FILE|-]");
    const program::Mode* mode = FindMode(argv[1]);
    if (mode == nullptr) return UsageError(std::string("unknown mode '") + argv[1] + "'");
    program::Document document;
    std::string error;
    if (!ReadInput(argc == 3 ? argv[2] : nullptr, document, error)) {
        std::fprintf(stderr, "tavrin-host: %s\n", error.c_str());
        return program::kExitUsage;
    }
    const int status = mode->run(document);
    if (std::fflush(stdout) != 0 || std::ferror(stdout)) {
        std::fprintf(stderr, "tavrin-host: cannot write standard output\n");
        return program::kExitUsage;
    }
    return status;
}
