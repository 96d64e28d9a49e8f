// The main() of a fuzz target without libFuzzer: runs the empty input, files, the files of folders, and random inputs,
// which are the same in every run.
//
// usage: fuzz_NAME [--random COUNT] [FILE|FOLDER...]
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string_view>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

namespace fs = std::filesystem;

void run(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    const std::vector<char> bytes{std::istreambuf_iterator<char>(stream), {}};
    std::printf("%s: %zu bytes\n", file.c_str(), bytes.size());
    std::fflush(stdout);  // shows which input ends the process
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

int runRandom(int count) {
    std::mt19937 random(1);
    for (int i = 0; i < count; ++i) {
        std::vector<std::uint8_t> bytes(random() % 4096);
        std::generate(bytes.begin(), bytes.end(),
                      [&] { return static_cast<std::uint8_t>(random()); });
        LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
    }
    return count;
}

int runAll(const fs::path& path) {
    if (!fs::is_directory(path)) {
        run(path);
        return 1;
    }
    int count = 0;
    for (const auto& entry : fs::directory_iterator(path)) {
        if (entry.is_regular_file()) {
            run(entry.path());
            ++count;
        }
    }
    return count;
}

}  // namespace

int main(int argc, char** argv) {
    const std::uint8_t nothing = 0;
    LLVMFuzzerTestOneInput(&nothing, 0);
    int count = 0;
    for (int i = 1; i < argc; ++i) {
        const bool isRandom = std::string_view(argv[i]) == "--random" && i + 1 < argc;
        count += isRandom ? runRandom(std::atoi(argv[++i])) : runAll(argv[i]);
    }
    std::printf("%d inputs\n", count);
    return count > 0 ? 0 : 1;
}
