// A plain main for the fuzz targets: feeds every file named on the command
// line, or found in a directory named there, to LLVMFuzzerTestOneInput once.
// Files whose names start with "." are skipped (they keep empty directories
// in version control). A target that finds a fault aborts, so the process
// fails; a path that does not exist fails as well.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int argc, char** argv) {
    namespace fs = std::filesystem;
    std::size_t replayed = 0;
    for (int i = 1; i < argc; ++i) {
        std::vector<fs::path> inputs{argv[i]};
        if (fs::is_directory(argv[i])) {
            inputs.clear();
            for (const auto& entry : fs::recursive_directory_iterator(argv[i]))
                if (entry.is_regular_file() && entry.path().filename().string().front() != '.')
                    inputs.push_back(entry.path());
            std::sort(inputs.begin(), inputs.end());
        }
        for (const fs::path& input : inputs) {
            std::ifstream file(input, std::ios::binary);
            if (!file) {
                std::fprintf(stderr, "cannot read %s\n", input.string().c_str());
                return 1;
            }
            // A copy of exactly the file's size, so that a read past its end
            // is caught by the sanitizers as it would be under libFuzzer.
            const std::vector<std::uint8_t> data((std::istreambuf_iterator<char>(file)),
                                                 std::istreambuf_iterator<char>());
            LLVMFuzzerTestOneInput(data.data(), data.size());
            ++replayed;
        }
    }
    std::printf("replayed %zu inputs\n", replayed);
    return 0;
}
