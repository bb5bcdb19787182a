// tavrin-host run as a program: exit codes, standard output and standard
// error of each mode and of bad command lines.
#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
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

TEST(HostProgramTest, ConvertPrintsTheAttributeSetText) {
    const std::string input = WriteTemp("{\"a\":1,\"b\":[\"x\",2]}");
    const Outcome run = Host("convert '" + input + "'");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "{a=1,b={{x}+2}}\n");
    EXPECT_NE(run.err.find("convertJsonToAttrSetString:\tsrc={\"a\":1"), std::string::npos);
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
    EXPECT_EQ(run.out.rfind("{device=front-door,model=TC-2040,enabled=true,streams={{{name=main,", 0),
              0u)
        << run.out;
    EXPECT_EQ(Lines(run.out), 1);
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
}

TEST(HostProgramTest, UnreadableFileExitsTwoWithOneLine) {
    const Outcome run = Host("convert /nonexistent/doc.json");
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(Lines(run.err), 1);
    EXPECT_NE(run.err.find("/nonexistent/doc.json"), std::string::npos);
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
