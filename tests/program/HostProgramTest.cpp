// tavrin-host run as a program: exit codes, standard output and standard
// error of each mode and of bad command lines.
#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <regex>
#include <sstream>
#include <string>

namespace {

struct Outcome {
    int status;
    std::string out;
    std::string err;
};

std::string Slurp(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

std::string TempPath(const char* what) {
    return "/tmp/tavrin-host-test-" + std::to_string(getpid()) + "-" + what;
}

// The one input file of this process, removed when the tests end.
struct InputFile {
    const std::string path = TempPath("input.json");
    ~InputFile() { std::remove(path.c_str()); }
};

std::string WriteTemp(const std::string& text) {
    static const InputFile input;
    std::ofstream(input.path, std::ios::binary) << text;
    return input.path;
}

// Runs `tavrin-host ARGS`, with standard input from `stdinPath` when given.
Outcome Host(const std::string& args, const std::string& stdinPath = "/dev/null") {
    const std::string out = TempPath("out");
    const std::string err = TempPath("err");
    const std::string command = std::string("'") + TAVRIN_HOST_PROGRAM + "' " + args + " <'" +
                                stdinPath + "' >'" + out + "' 2>'" + err + "'";
    const int status = std::system(command.c_str());
    Outcome run{WIFEXITED(status) ? WEXITSTATUS(status) : -1, Slurp(out), Slurp(err)};
    std::remove(out.c_str());
    std::remove(err.c_str());
    return run;
}

int Lines(const std::string& text) {
    int lines = 0;
    for (char c : text) lines += c == '\n';
    return lines;
}

const std::string kCamera = std::string(TAVRIN_SOURCE_DIR) + "/examples/camera.json";

// `text` with the source line number of every log line replaced by "N".
std::string WithoutLineNumbers(const std::string& text) {
    static const std::regex kLine("(\\.cpp)/[0-9]+/");
    return std::regex_replace(text, kLine, "$1/N/");
}

// One log line of JsonConvert.cpp as it reaches standard error, line number "N".
std::string ConvertLine(bool red, const std::string& function, const std::string& message) {
    return std::string(red ? "\033[31m" : "\033[36m") + "plugin/json/JsonConvert.cpp/N/" +
           function + ":\t" + message + "\n\033[0m";
}

TEST(HostProgramTest, ConvertPrintsTheResultAndPassesTheLogLinesUnchanged) {
    const std::string input = WriteTemp("{\"k\":[1,2.5]}");
    const Outcome run = Host("convert '" + input + "'");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "{k=1+}\n");
    const std::string outer = "convertJsonToAttrSetString";
    EXPECT_EQ(WithoutLineNumbers(run.err),
              ConvertLine(false, outer, "src={\"k\":[1,2.5]}") + ConvertLine(false, outer, "") +
                  ConvertLine(true, "convert", "") + ConvertLine(true, "convert", "") +
                  ConvertLine(false, "convert", "1+") + ConvertLine(false, "convert", "1+") +
                  ConvertLine(false, "convert", "{k=1+}") +
                  ConvertLine(false, "convert", "{k=1+}") + ConvertLine(false, outer, ""));
}

TEST(HostProgramTest, ConvertReadsStandardInputWithDashOrNoFile) {
    const std::string input = WriteTemp("[1,2]");
    for (const char* args : {"convert -", "convert"}) {
        const Outcome run = Host(args, input);
        EXPECT_EQ(run.status, 0) << args;
        EXPECT_EQ(run.out, "1+2\n") << args;
    }
}

TEST(HostProgramTest, ConvertOfTheCameraSample) {
    const Outcome run = Host("convert '" + kCamera + "'");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out,
              "{device=front-door,model=TC-2040,enabled=true,streams={{{name=main,codec=h265,"
              "resolution={width=2560,height=1440},bitrate_kbps=6144,gop=60,profiles={{main}+{"
              "main10}}}}+{{name=sub,codec=h264,resolution={width=640,height=360},bitrate_kbps="
              "512,gop=30,profiles={{baseline}}}}},image={mirror=false,flip=false,exposure={mode="
              "auto,max_shutter_us=33333}},osd={show_time=true,position=16+16,labels={{Front "
              "door}+{Cam 1}}},privacy_masks={{0+0+320+180}+{1920+0+640+360}}}\n");
}

TEST(HostProgramTest, ConvertFailureExitsOneWithNothingOnStandardOutput) {
    const std::string input = WriteTemp("{\"a\":");
    const Outcome run = Host("convert '" + input + "'");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.out, "");
    EXPECT_NE(run.err.find("convertJsonToAttrSetString:\t!node.Deserialize(src)"), std::string::npos);
}

TEST(HostProgramTest, ParsePrintsTheDocumentReserialized) {
    const std::string input = WriteTemp(" {\"a\": [ 1 , true ] } ");
    const Outcome run = Host("parse '" + input + "'");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "{\"a\":[1,true]}\n");
    const Outcome failed = Host("parse -", WriteTemp("[1,"));
    EXPECT_EQ(failed.status, 1);
    EXPECT_EQ(failed.out, "");
    EXPECT_EQ(failed.err.rfind("\033[31mplugin/json/Parser.cpp/", 0), 0u) << failed.err;
}

TEST(HostProgramTest, UnreadableFileExitsTwoWithOneLine) {
    const Outcome run = Host("convert /nonexistent/doc.json");
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(Lines(run.err), 1);
    EXPECT_NE(run.err.find("/nonexistent/doc.json"), std::string::npos);
}

TEST(HostProgramTest, UnwritableOutputExitsTwoWithOneLine) {
    const std::string err = TempPath("err");
    const std::string command = std::string("'") + TAVRIN_HOST_PROGRAM + "' parse '" +
                                WriteTemp("[1,2]") + "' >/dev/full 2>'" + err + "'";
    const int status = std::system(command.c_str());
    EXPECT_EQ(WIFEXITED(status) ? WEXITSTATUS(status) : -1, 2);
    EXPECT_EQ(Slurp(err), "tavrin-host: cannot write standard output\n");
    std::remove(err.c_str());
}

TEST(HostProgramTest, BadCommandLinesExitTwoWithOneLine) {
    for (const char* args : {"", "frobnicate", "convert a b"}) {
        const Outcome run = Host(args);
        EXPECT_EQ(run.status, 2) << args;
        EXPECT_EQ(run.out, "") << args;
        EXPECT_EQ(Lines(run.err), 1) << args;
    }
    EXPECT_NE(Host("frobnicate").err.find("unknown mode 'frobnicate'"), std::string::npos);
}

TEST(HostProgramTest, HelpDescribesTheModes) {
    const Outcome run = Host("--help");
    EXPECT_EQ(run.status, 0);
    EXPECT_NE(run.out.find("\n  convert "), std::string::npos);
    EXPECT_NE(run.out.find("\n  parse "), std::string::npos);
    EXPECT_NE(run.out.find("\n  legacy "), std::string::npos);
    EXPECT_EQ(run.err, "");
}

TEST(HostProgramTest, LegacyPrintsTheLegacyReadingOfTheDocument) {
    const std::string input = WriteTemp(" {\"a\": [1, null, TRUE], \"A\": 1/2, \"s\": \" x \"} ");
    const Outcome run = Host("legacy '" + input + "'");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "{\"a\":1/2,\"s\":\"x\"}\n");
    EXPECT_EQ(run.err, "");
    const Outcome piped = Host("legacy -", WriteTemp("[1 2, \"\\u0041\"]"));
    EXPECT_EQ(piped.status, 0);
    EXPECT_EQ(piped.out, "[12,\"A\"]\n");
}

TEST(HostProgramTest, LegacyFailureExitsOneWithNothingOnStandardOutput) {
    for (const char* text : {"{\"a\": 1.5}", "42", "", "{\"a\": \"it's\"}"}) {
        const Outcome run = Host("legacy -", WriteTemp(text));
        EXPECT_EQ(run.status, 1) << text;
        EXPECT_EQ(run.out, "") << text;
        EXPECT_EQ(run.err, "") << text;
    }
    const Outcome missing = Host("legacy /nonexistent/doc.json");
    EXPECT_EQ(missing.status, 2);
    EXPECT_EQ(missing.out, "");
    EXPECT_EQ(Lines(missing.err), 1);
}

// The last `length` characters of `text` (all of it when shorter).
std::string Ending(const std::string& text, std::size_t length) {
    return text.substr(text.size() - std::min(text.size(), length));
}

// What tavrin-host adds after the plug-in's lines when a document breaks.
// Expected with the "m" before it, the end of the plug-in's last line, the
// program's line starts right after those lines.
std::string Diagnostic(const std::string& where, const std::string& source,
                       const std::string& indent) {
    return where + ": error: the document stops being valid here\n" + source + "\n" + indent +
           "^\n";
}

TEST(HostProgramTest, ParseFailureSaysWhereTheDocumentStops) {
    const std::string path = WriteTemp("[1 2]");
    const Outcome run = Host("parse '" + path + "'");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(WithoutLineNumbers(run.err),
              "\033[31mplugin/json/Parser.cpp/N/ParseArray:\tcan't find \"]\", Array format "
              "error:[1 2]\n\033[0m" +
                  Diagnostic(path + ":1:4", "[1 2]", "   "));
}

TEST(HostProgramTest, TheCaretStandsUnderTheColumnOfTheLine) {
    struct Case {
        const char* document;
        const char* where;  // LINE:COLUMN
        const char* source;
        const char* indent;
    };
    const Case cases[] = {
        {"{\n\t\"n\xC3\xA4me\": 1 \"b\": 2}\n", "2:13", "\t\"n\xC3\xA4me\": 1 \"b\": 2}",
         "\t          "},
        {"{\"a\":1,\n", "2:1", "", ""},
        {"\n  5\n", "2:3", "  5", "  "},
        {"[\"a\", \"b]\n[", "1:10", "[\"a\", \"b]", "         "},
    };
    for (const Case& c : cases) {
        const std::string path = WriteTemp(c.document);
        const Outcome run = Host("parse '" + path + "'");
        const std::string expected = Diagnostic(path + ":" + c.where, c.source, c.indent);
        EXPECT_EQ(Ending(run.err, expected.size()), expected) << c.document;
    }
}

TEST(HostProgramTest, ConvertAndStandardInputNameTheDocument) {
    const std::string path = WriteTemp("[1,\n x]");
    for (const std::string mode : {"parse", "convert"}) {
        for (const std::string& file : {"'" + path + "'", std::string("-"), std::string()}) {
            const Outcome run = Host(mode + " " + file, path);
            const std::string name = file.empty() || file == "-" ? "<stdin>" : path;
            const std::string expected = Diagnostic(name + ":2:2", " x]", " ");
            EXPECT_EQ(run.status, 1) << mode << file;
            EXPECT_EQ(Ending(run.err, expected.size() + 1), "m" + expected) << mode << file;
        }
    }
}

// Standard output of a shell command.
std::string Shell(const std::string& command) {
    const std::string out = TempPath("shell");
    std::system((command + " >'" + out + "'").c_str());
    const std::string text = Slurp(out);
    std::remove(out.c_str());
    return std::regex_replace(text, std::regex("\r\n"), "\n");
}

TEST(HostProgramTest, OnlyATerminalWithoutNoColorGetsColours) {
    const std::string path = WriteTemp("[1 2]");
    const std::string run = std::string("'") + TAVRIN_HOST_PROGRAM + "' parse '" + path + "'";
    const std::string onTerminal = "script -qec \"" + run + " >/dev/null\" /dev/null </dev/null";
    const std::string plain = Diagnostic(path + ":1:4", "[1 2]", "   ");
    const std::string coloured = "\033[1m" + path + ":1:4: \033[31merror:\033[0m the document "
                                 "stops being valid here\n[1 2]\n   \033[1;32m^\033[0m\n";
    const struct {
        std::string command;
        std::string expected;
    } cases[] = {
        {"env -u NO_COLOR " + onTerminal, coloured},
        {"NO_COLOR=1 " + onTerminal, plain},
        {"env -u NO_COLOR " + run + " 2>&1 >/dev/null | cat", plain},
    };
    for (const auto& c : cases)
        EXPECT_EQ(Ending(Shell(c.command), c.expected.size() + 1), "m" + c.expected) << c.command;
}

TEST(HostProgramTest, VersionNamesTheProgramAndThePlugin) {
    const Outcome run = Host("--version");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "tavrin-host " TAVRIN_VERSION "\nplug-in pluginjson@version:1.0.1.*.6872\n");
    EXPECT_EQ(run.err, "");
}

}  // namespace
