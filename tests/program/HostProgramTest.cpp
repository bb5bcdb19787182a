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
#include <sstream>
#include <string>
#include <vector>

namespace {

std::string Slurp(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

// A file of this run beside the test program (in the build tree), removed
// when the object goes, whether the test passed or failed.
class TempFile {
public:
    TempFile(const std::string& what, const std::string& text = "")
        : _path((std::filesystem::read_symlink("/proc/self/exe").parent_path() /
                 ("host-program-test-" + std::to_string(getpid()) + "-" + what))
                    .string()) {
        std::ofstream(_path, std::ios::binary) << text;
    }
    ~TempFile() { std::remove(_path.c_str()); }
    TempFile(const TempFile&) = delete;
    TempFile& operator=(const TempFile&) = delete;
    const std::string& Path() const { return _path; }

private:
    std::string _path;
};

struct Outcome {
    int status;
    std::string out;
    std::string err;
};

// Runs `tavrin-host ARGS` with standard input from `stdinPath`, or standard
// output to `stdoutPath` when given.
Outcome Host(const std::string& args, const std::string& stdinPath = "/dev/null", const char* stdoutPath = nullptr) {
    const TempFile out("out"), err("err");
    const std::string command = std::string("'") + TAVRIN_HOST_PROGRAM + "' " + args + " <'" + stdinPath +
                                "' >'" + (stdoutPath ? stdoutPath : out.Path()) + "' 2>'" + err.Path() + "'";
    const int status = std::system(command.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, Slurp(out.Path()), Slurp(err.Path())};
}
Outcome HostOn(const std::string& mode, const std::string& document) {
    const TempFile input("input.json", document);
    return Host(mode + " '" + input.Path() + "'");
}

int Lines(const std::string& text) { return static_cast<int>(std::count(text.begin(), text.end(), '\n')); }

// `text` with the source line number of every log line masked as "#".
std::string Masked(const std::string& text) {
    return std::regex_replace(text, std::regex("(\\.cpp)/[0-9]+/"), "$1/#/");
}

std::string ConvertLine(bool red, const std::string& function, const std::string& message) {
    return std::string(red ? "\033[31m" : "\033[36m") + "plugin/json/JsonConvert.cpp/#/" + function + ":\t" +
           message + "\n\033[0m";
}

TEST(HostProgram, ConvertPrintsTheResultAndPassesTheLogLinesUnchanged) {
    const Outcome run = HostOn("convert", "{\"k\":[1,2.5]}");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "{k=1+}\n");
    const std::string outer = "convertJsonToAttrSetString";
    EXPECT_EQ(Masked(run.err), ConvertLine(false, outer, "src={\"k\":[1,2.5]}") + ConvertLine(false, outer, "") +
                                   ConvertLine(true, "convert", "") + ConvertLine(true, "convert", "") +
                                   ConvertLine(false, "convert", "1+") + ConvertLine(false, "convert", "1+") +
                                   ConvertLine(false, "convert", "{k=1+}") +
                                   ConvertLine(false, "convert", "{k=1+}") + ConvertLine(false, outer, ""));
    const TempFile input("input.json", "[1,2]");
    for (const char* args : {"convert -", "convert"}) {
        const Outcome piped = Host(args, input.Path());
        EXPECT_EQ(piped.status, 0) << args;
        EXPECT_EQ(piped.out, "1+2\n") << args;
    }
}

TEST(HostProgram, ConvertOfTheCameraSample) {
    const Outcome run = Host("convert '" + std::string(TAVRIN_SOURCE_DIR) + "/examples/camera.json'");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out,
              "{device=front-door,model=TC-2040,enabled=true,streams={{{name=main,codec=h265,"
              "resolution={width=2560,height=1440},bitrate_kbps=6144,gop=60,profiles={{main}+{"
              "main10}}}}+{{name=sub,codec=h264,resolution={width=640,height=360},bitrate_kbps="
              "512,gop=30,profiles={{baseline}}}}},image={mirror=false,flip=false,exposure={mode="
              "auto,max_shutter_us=33333}},osd={show_time=true,position=16+16,labels={{Front "
              "door}+{Cam 1}}},privacy_masks={{0+0+320+180}+{1920+0+640+360}}}\n");
}

TEST(HostProgram, ParseAndLegacyPrintTheirReadingOfTheDocument) {
    const std::vector<std::tuple<const char*, const char*, const char*>> cases = {
        {"parse", " {\"a\": [ 1 , true ] } ", "{\"a\":[1,true]}\n"},
        {"legacy", " {\"a\": [1, null, TRUE], \"A\": 1/2, \"s\": \" x \"} ", "{\"a\":1/2,\"s\":\"x\"}\n"},
        {"legacy", "[1 2, \"\\u0041\"]", "[12,\"A\"]\n"},
    };
    for (const auto& [mode, document, printed] : cases) {
        const Outcome run = HostOn(mode, document);
        EXPECT_EQ(run.status, 0) << document;
        EXPECT_EQ(run.out, printed);
        EXPECT_EQ(run.err, "");
    }
}

// The last `length` characters of `text` (all of it when shorter).
std::string Ending(const std::string& text, std::size_t length) {
    return text.substr(text.size() - std::min(text.size(), length));
}

// What tavrin-host adds after the plug-in's lines when a document breaks.
std::string Diagnostic(const std::string& where, const std::string& source, const std::string& indent) {
    return where + ": error: the document stops being valid here\n" + source + "\n" + indent + "^\n";
}

TEST(HostProgram, RefusedDocumentsExitOneWithNothingOnStandardOutput) {
    const TempFile input("input.json", "[1 2]");
    const Outcome parse = Host("parse '" + input.Path() + "'");
    EXPECT_EQ(parse.status, 1);
    EXPECT_EQ(parse.out, "");
    EXPECT_EQ(Masked(parse.err), "\033[31mplugin/json/Parser.cpp/#/ParseArray:\tcan't find \"]\", Array format "
                                  "error:[1 2]\n\033[0m" + Diagnostic(input.Path() + ":1:4", "[1 2]", "   "));
    for (const char* text : {"{\"a\": 1.5}", "42", "", "{\"a\": \"it's\"}"}) {
        const Outcome run = HostOn("legacy", text);
        EXPECT_EQ(run.status, 1) << text;
        EXPECT_EQ(run.out + run.err, "") << text;
    }
}

TEST(HostProgram, TheDiagnosticNamesTheDocumentAndPutsTheCaretUnderItsColumn) {
    const std::vector<std::tuple<const char*, const char*, const char*, const char*>> cases = {
        {"{\n\t\"n\xC3\xA4me\": 1 \"b\": 2}\n", "2:13", "\t\"n\xC3\xA4me\": 1 \"b\": 2}", "\t          "},
        {"{\"a\":1,\n", "2:1", "", ""},
        {"\n  5\n", "2:3", "  5", "  "},
        {"[\"a\", \"b]\n[", "1:10", "[\"a\", \"b]", "         "},
    };
    for (const auto& [document, where, source, indent] : cases) {
        const TempFile input("input.json", document);
        const std::string expected = Diagnostic(input.Path() + ":" + where, source, indent);
        EXPECT_EQ(Ending(Host("parse '" + input.Path() + "'").err, expected.size()), expected) << document;
    }
    const TempFile input("input.json", "[1,\n x]");
    for (const std::string mode : {"parse", "convert"}) {
        for (const std::string& file : {"'" + input.Path() + "'", std::string("-"), std::string()}) {
            const Outcome run = Host(mode + " " + file, input.Path());
            const std::string name = file.empty() || file == "-" ? "<stdin>" : input.Path();
            const std::string expected = Diagnostic(name + ":2:2", " x]", " ");
            EXPECT_EQ(run.status, 1) << mode << file;
            EXPECT_EQ(run.out, "") << mode << file;
            // Right after the plug-in's last line, which ends in the colour reset "...m".
            EXPECT_EQ(Ending(run.err, expected.size() + 1), "m" + expected) << mode << file;
        }
    }
}

TEST(HostProgram, OnlyATerminalWithoutNoColorGetsColours) {
    const TempFile input("input.json", "[1 2]"), out("shell");
    const std::string run = std::string("'") + TAVRIN_HOST_PROGRAM + "' parse '" + input.Path() + "'";
    const std::string onTerminal = "script -qec \"" + run + " >/dev/null\" /dev/null </dev/null";
    const std::string plain = Diagnostic(input.Path() + ":1:4", "[1 2]", "   ");
    const std::string coloured = "\033[1m" + input.Path() + ":1:4: \033[31merror:\033[0m the document "
                                 "stops being valid here\n[1 2]\n   \033[1;32m^\033[0m\n";
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"env -u NO_COLOR " + onTerminal, coloured},
        {"NO_COLOR=1 " + onTerminal, plain},
        {"env -u NO_COLOR " + run + " 2>&1 >/dev/null | cat", plain},
    };
    for (const auto& [command, expected] : cases) {
        std::system((command + " >'" + out.Path() + "'").c_str());
        const std::string text = std::regex_replace(Slurp(out.Path()), std::regex("\r\n"), "\n");
        EXPECT_EQ(Ending(text, expected.size() + 1), "m" + expected) << command;
    }
}

TEST(HostProgram, BadCommandLinesAndFilesExitTwoWithOneLine) {
    for (const char* args : {"", "frobnicate", "convert a b", "convert /nonexistent/doc.json",
                             "legacy /nonexistent/doc.json"}) {
        const Outcome run = Host(args);
        EXPECT_EQ(run.status, 2) << args;
        EXPECT_EQ(run.out, "") << args;
        EXPECT_EQ(Lines(run.err), 1) << args;
    }
    EXPECT_NE(Host("frobnicate").err.find("unknown mode 'frobnicate'"), std::string::npos);
    EXPECT_NE(Host("convert /nonexistent/doc.json").err.find("/nonexistent/doc.json"), std::string::npos);
    const TempFile input("input.json", "[1,2]");
    const Outcome full = Host("parse '" + input.Path() + "'", "/dev/null", "/dev/full");
    EXPECT_EQ(full.status, 2);
    EXPECT_EQ(full.err, "tavrin-host: cannot write standard output\n");
}

TEST(HostProgram, HelpAndVersion) {
    const Outcome help = Host("--help");
    EXPECT_EQ(help.status, 0);
    for (const char* mode : {"\n  convert ", "\n  parse ", "\n  legacy "})
        EXPECT_NE(help.out.find(mode), std::string::npos) << mode;
    EXPECT_EQ(help.err, "");
    const Outcome version = Host("--version");
    EXPECT_EQ(version.status, 0);
    EXPECT_EQ(version.out, "tavrin-host " TAVRIN_VERSION "\nplug-in pluginjson@version:1.0.1.*.6872\n");
    EXPECT_EQ(version.err, "");
}

}  // namespace
