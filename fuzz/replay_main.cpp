// A plain main for the fuzz targets: feeds every file named on the command
// line, or found in a directory named there, to LLVMFuzzerTestOneInput once.
// Files whose names start with "." are skipped (they keep empty directories
// in version control). A target that finds a fault aborts, so the process
// fails; a path that does not exist fails as well.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

namespace fs = std::filesystem;

std::vector<fs::path> InputsOf(const fs::path& path) {
    std::vector<fs::path> inputs;
    if (fs::is_directory(path)) {
        for (const auto& entry : fs::recursive_directory_iterator(path))
            if (entry.is_regular_file() && entry.path().filename().string().front() != '.')
                inputs.push_back(entry.path());
        std::sort(inputs.begin(), inputs.end());
    } else {
        inputs.push_back(path);
    }
    return inputs;
}

bool Replay(const fs::path& input) {
    std::ifstream file(input, std::ios::binary);
    if (!file) {
        std::fprintf(stderr, "cannot read %s\n", input.string().c_str());
        return false;
    }
    const std::vector<char> bytes((std::istreambuf_iterator<char>(file)),
                                  std::istreambuf_iterator<char>());
    // A copy of exactly the file's size, so that a read past its end is
    // caught by the sanitizers as it would be under libFuzzer.
    std::vector<std::uint8_t> data(bytes.begin(), bytes.end());
    LLVMFuzzerTestOneInput(data.data(), data.size());
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    std::size_t replayed = 0;
    for (int i = 1; i < argc; ++i) {
        if (!fs::exists(argv[i])) {
            std::fprintf(stderr, "no such input: %s\n", argv[i]);
            return 1;
        }
        for (const fs::path& input : InputsOf(argv[i])) {
            if (!Replay(input)) return 1;
            ++replayed;
        }
    }
    std::printf("replayed %zu inputs\n", replayed);
    return 0;
}
