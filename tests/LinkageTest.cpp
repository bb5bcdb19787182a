#include <gtest/gtest.h>

#include <cstdio>
#include <sstream>
#include <string>
#include <vector>

namespace {

// The standard output of a command, or an empty text when it cannot run.
std::string Output(const std::string& command) {
    std::string text;
    if (FILE* pipe = popen(command.c_str(), "r")) {
        char chunk[4096];
        for (std::size_t n; (n = std::fread(chunk, 1, sizeof chunk, pipe)) > 0;) text.append(chunk, n);
        pclose(pipe);
    }
    return text;
}

std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) lines.push_back(line);
    return lines;
}

// The libraries named by the NEEDED entries of a shared object's dynamic
// section.
std::vector<std::string> NeededLibraries(const std::string& library) {
    std::vector<std::string> needed;
    for (const std::string& line : Lines(Output("readelf -d '" + library + "'"))) {
        if (line.find("(NEEDED)") == std::string::npos) continue;
        const auto open = line.find('[');
        const auto close = line.find(']', open);
        if (open != std::string::npos && close != std::string::npos)
            needed.push_back(line.substr(open + 1, close - open - 1));
    }
    return needed;
}

// The dynamic symbol table line of `symbol`, or an empty text.
std::string DynamicSymbol(const std::string& library, const std::string& symbol) {
    for (const std::string& line : Lines(Output("readelf -W --dyn-syms '" + library + "'")))
        if (line.size() > symbol.size() && line.compare(line.size() - symbol.size() - 1,
                                                        std::string::npos, " " + symbol) == 0)
            return line;
    return "";
}

const std::string kPlugin = TAVRIN_PLUGIN_LIBRARY;

}  // namespace

TEST(Linkage, PluginNeedsOnlyTheStandardRuntime) {
    const std::vector<std::string> needed = NeededLibraries(kPlugin);
    ASSERT_FALSE(needed.empty()) << "no NEEDED entries read from " << kPlugin;
    for (const std::string& library : needed) EXPECT_EQ(library.find("tavrin"), std::string::npos) << library;
}

TEST(Linkage, FrameworkSymbolsStayUndefinedInPlugin) {
    for (const char* symbol : {"__root_path_offset", "_ZN6tavrin4base4coutE"})
        EXPECT_NE(DynamicSymbol(kPlugin, symbol).find(" UND "), std::string::npos) << symbol;
    const std::string node = DynamicSymbol(kPlugin, "_ZN6tavrin6plugin4json4NodeC1Ev");
    ASSERT_FALSE(node.empty());
    EXPECT_EQ(node.find(" UND "), std::string::npos);
}
