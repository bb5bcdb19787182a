// tavrin-host run as a program: exit codes, standard output and standard
// error of each mode and of bad command lines.
#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <regex>
#include <string>
#include <vector>

#include "support/LogCapture.h"

namespace {

using tavrin::test::CyanLine;
using tavrin::test::Masked;
using tavrin::test::ReadFile;
using tavrin::test::RedLine;

// A file of this run beside the test program (in the build tree), removed
// when the object goes, whether the test passed or failed.
struct TempFile {
    explicit TempFile(const std::string& what, const std::string& text = "")
        : path((std::filesystem::read_symlink("/proc/self/exe").parent_path() /
                ("host-program-test-" + std::to_string(getpid()) + "-" + what)).string()) {
        std::ofstream(path, std::ios::binary) << text;
    }
    ~TempFile() { std::remove(path.c_str()); }
    TempFile(const TempFile&) = delete;
    TempFile& operator=(const TempFile&) = delete;
    const std::string path;
};

struct Outcome {
    int status;
    std::string out, err;
};

// Runs `tavrin-host ARGS` with standard input from `stdinPath`, or standard
// output to `stdoutPath` when given.
Outcome Host(const std::string& args, const std::string& stdinPath = "/dev/null", const char* stdoutPath = nullptr) {
    const TempFile out("out"), err("err");
    const std::string command = std::string("'") + TAVRIN_HOST_PROGRAM + "' " + args + " <'" + stdinPath + "' >'" +
                                (stdoutPath ? stdoutPath : out.path) + "' 2>'" + err.path + "'";
    const int status = std::system(command.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, ReadFile(out.path), ReadFile(err.path)};
}
Outcome HostOn(const std::string& mode, const std::string& document) {
    const TempFile input("input.json", document);
    return Host(mode + " '" + input.path + "'");
}

// The last `length` characters of `text` (all of it when shorter).
std::string Ending(const std::string& text, std::size_t length) {
    return text.substr(text.size() - std::min(text.size(), length));
}

// What tavrin-host adds after the plug-in's lines when a document breaks.
std::string Diagnostic(const std::string& where, const std::string& source, const std::string& indent) {
    return where + ": error: the document stops being valid here\n" + source + "\n" + indent + "^\n";
}

TEST(HostProgram, EachModePrintsItsReadingAndPassesTheLogLinesUnchanged) {
    const char* convert = "plugin/json/JsonConvert.cpp";
    const std::string outer = "convertJsonToAttrSetString", red = RedLine(convert, "convert", "");
    const std::vector<std::tuple<const char*, const char*, const char*, std::string>> cases = {
        {"convert", "{\"k\":[1,2.5]}", "{k=1+}\n",
         CyanLine(convert, outer, "src={\"k\":[1,2.5]}") + CyanLine(convert, outer, "") + red + red +
             CyanLine(convert, "convert", "1+") + CyanLine(convert, "convert", "1+") +
             CyanLine(convert, "convert", "{k=1+}") + CyanLine(convert, "convert", "{k=1+}") +
             CyanLine(convert, outer, "")},
        {"parse", " {\"a\": [ 1 , true ] } ", "{\"a\":[1,true]}\n", ""},
        {"legacy", " {\"a\": [1, null, TRUE], \"A\": 1/2, \"s\": \" x \"} ", "{\"a\":1/2,\"s\":\"x\"}\n", ""},
    };
    for (const auto& [mode, document, printed, log] : cases) {
        const Outcome run = HostOn(mode, document);
        EXPECT_EQ(run.status, 0) << document;
        EXPECT_EQ(run.out, printed);
        EXPECT_EQ(Masked(run.err), log);
    }
    const TempFile input("input.json", "[1,2]");
    for (const char* args : {"convert -", "convert"}) {
        const Outcome piped = Host(args, input.path);
        EXPECT_EQ(std::make_pair(piped.status, piped.out), std::make_pair(0, std::string("1+2\n"))) << args;
    }
}

TEST(HostProgram, RefusedDocumentsExitOneWithNothingOnStandardOutputAndAreDiagnosed) {
    const TempFile broken("input.json", "[1 2]");
    const Outcome parse = Host("parse '" + broken.path + "'");
    EXPECT_EQ(std::make_pair(parse.status, parse.out), std::make_pair(1, std::string()));
    EXPECT_EQ(Masked(parse.err),
              RedLine("plugin/json/Parser.cpp", "ParseArray", "can't find \"]\", Array format error:[1 2]") +
                  Diagnostic(broken.path + ":1:4", "[1 2]", "   "));
    for (const char* text : {"{\"a\": 1.5}", "42", "", "{\"a\": \"it's\"}"}) {
        const Outcome run = HostOn("legacy", text);
        EXPECT_EQ(std::make_pair(run.status, run.out + run.err), std::make_pair(1, std::string())) << text;
    }
    // The caret stands under the column: tabs repeated, a UTF-8 sequence counted once.
    const std::vector<std::tuple<const char*, const char*, const char*, const char*>> cases = {
        {"{\n\t\"n\xC3\xA4me\": 1 \"b\": 2}\n", "2:13", "\t\"n\xC3\xA4me\": 1 \"b\": 2}", "\t          "},
        {"{\"a\":1,\n", "2:1", "", ""},
        {"\n  5\n", "2:3", "  5", "  "},
        {"null", "1:1", "null", ""},
        {"[\"a\", \"b]\n[", "1:10", "[\"a\", \"b]", "         "},
    };
    for (const auto& [document, where, source, indent] : cases) {
        const TempFile input("input.json", document);
        const std::string expected = Diagnostic(input.path + ":" + where, source, indent);
        EXPECT_EQ(Ending(Host("parse '" + input.path + "'").err, expected.size()), expected) << document;
    }
    const TempFile input("input.json", "[1,\n x]");
    for (const std::string mode : {"parse", "convert"}) {
        for (const std::string& file : {"'" + input.path + "'", std::string("-"), std::string()}) {
            const Outcome run = Host(mode + " " + file, input.path);
            const std::string expected = Diagnostic((file.size() > 1 ? input.path : "<stdin>") + ":2:2", " x]", " ");
            EXPECT_EQ(std::make_pair(run.status, run.out), std::make_pair(1, std::string())) << mode << file;
            // Right after the plug-in's last line, which ends in the colour reset "...m".
            EXPECT_EQ(Ending(run.err, expected.size() + 1), "m" + expected) << mode << file;
        }
    }
}

TEST(HostProgram, OnlyATerminalWithoutNoColorGetsColours) {
    const TempFile input("input.json", "[1 2]"), out("shell");
    const std::string run = std::string("'") + TAVRIN_HOST_PROGRAM + "' parse '" + input.path + "'";
    const std::string onTerminal = "script -qec \"" + run + " >/dev/null\" /dev/null </dev/null";
    const std::string plain = Diagnostic(input.path + ":1:4", "[1 2]", "   ");
    const std::string coloured = "\033[1m" + input.path + ":1:4: \033[31merror:\033[0m the document "
                                 "stops being valid here\n[1 2]\n   \033[1;32m^\033[0m\n";
    for (const auto& [command, expected] : std::vector<std::pair<std::string, std::string>>{
             {"env -u NO_COLOR " + onTerminal, coloured}, {"NO_COLOR=1 " + onTerminal, plain},
             {"env -u NO_COLOR " + run + " 2>&1 >/dev/null | cat", plain}}) {
        std::system((command + " >'" + out.path + "'").c_str());
        const std::string text = std::regex_replace(ReadFile(out.path), std::regex("\r\n"), "\n");
        EXPECT_EQ(Ending(text, expected.size() + 1), "m" + expected) << command;
    }
}

TEST(HostProgram, BadCommandLinesAndFilesExitTwoWithOneLineHelpAndVersionZero) {
    const TempFile input("input.json", "[1,2]");
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"", ""}, {"frobnicate", "unknown mode 'frobnicate'"}, {"convert a b", ""},
        {"convert /nonexistent/doc.json", "/nonexistent/doc.json"}, {"legacy /nonexistent/doc.json", ""}};
    for (const auto& [args, named] : cases) {
        const Outcome run = Host(args);
        EXPECT_EQ(std::make_tuple(run.status, run.out, std::count(run.err.begin(), run.err.end(), '\n')),
                  std::make_tuple(2, std::string(), 1)) << args;
        EXPECT_NE(run.err.find(named), std::string::npos) << args;
    }
    const Outcome full = Host("parse '" + input.path + "'", "/dev/null", "/dev/full");
    EXPECT_EQ(std::make_pair(full.status, full.err),
              std::make_pair(2, std::string("tavrin-host: cannot write standard output\n")));
    const Outcome help = Host("--help");
    EXPECT_EQ(std::make_pair(help.status, help.err), std::make_pair(0, std::string()));
    EXPECT_EQ(Host("-h").out, help.out);
    // The three modes, one line each, and nothing else between the heading and the exit statuses.
    const std::size_t list = help.out.find("\nmodes:\n"), listEnd = help.out.find("\n\nexit status:");
    ASSERT_LT(list, listEnd) << help.out;
    const std::string modes = help.out.substr(list, listEnd - list);
    EXPECT_EQ(std::count(modes.begin(), modes.end(), '\n'), 4) << modes;
    for (const char* mode : {"\n  convert ", "\n  parse ", "\n  legacy "})
        EXPECT_NE(modes.find(mode), std::string::npos) << mode;
    const Outcome version = Host("--version");
    EXPECT_EQ(std::make_tuple(version.status, version.out, version.err),
              std::make_tuple(0, "tavrin-host " TAVRIN_VERSION "\nplug-in pluginjson@version:1.0.1.*.6872\n", ""));
}

// A document is read whole, from a file or from standard input, however its
// length falls on the program's reads (of 64 KiB): here one byte past one.
TEST(HostProgram, DocumentsAreReadWholeWhateverTheirLength) {
    const TempFile input("long.json", "[" + std::string(65534, ' ') + "1]");
    for (const std::string& args : {"parse '" + input.path + "'", std::string("parse -")}) {
        const Outcome run = Host(args, input.path);
        EXPECT_EQ(std::make_tuple(run.status, run.out, run.err), std::make_tuple(0, "[1]\n", "")) << args;
    }
}

}  // namespace
