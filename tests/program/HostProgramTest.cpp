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

TEST(HostProgram, RefusedDocumentsExitOneWithNothingOnStandardOutput) {
    const std::vector<std::tuple<const char*, const char*, const char*>> cases = {
        {"convert", "{\"a\":", "\033[31mplugin/json/JsonConvert.cpp/#/convertJsonToAttrSetString:\t!node.Deserialize(src)\n\033[0m"},
        {"parse", "[1,", "\033[31mplugin/json/Parser.cpp/#/ParseValue:\t can't detect json type,please check string format!\n\033[0m"},
        {"legacy", "{\"a\": 1.5}", ""}, {"legacy", "42", ""}, {"legacy", "", ""}, {"legacy", "{\"a\": \"it's\"}", ""},
    };
    for (const auto& [mode, document, lastLine] : cases) {
        const Outcome run = HostOn(mode, document);
        EXPECT_EQ(run.status, 1) << document;
        EXPECT_EQ(run.out, "");
        const std::string err = Masked(run.err);
        const std::string last = lastLine;
        EXPECT_EQ(err.substr(err.size() - std::min(err.size(), last.size())), last) << document;
        EXPECT_EQ(err.empty(), last.empty()) << document;
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

TEST(HostProgram, HelpDescribesTheModes) {
    const Outcome run = Host("--help");
    EXPECT_EQ(run.status, 0);
    for (const char* mode : {"\n  convert ", "\n  parse ", "\n  legacy "})
        EXPECT_NE(run.out.find(mode), std::string::npos) << mode;
    EXPECT_EQ(run.err, "");
}

}  // namespace
