// tavrin-host run as a program: exit codes, standard output and standard
// error of each mode and of bad command lines.
#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

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

std::string WriteTemp(const std::string& text) {
    const std::string path = TempPath("input.json");
    std::ofstream(path, std::ios::binary) << text;
    return path;
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

}  // namespace
