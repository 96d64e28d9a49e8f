// Runs a target over files, folders of files and the empty input: what every compiler can do, so
// that the seeds are tests like all others.
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

namespace fs = std::filesystem;

void run(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    const std::vector<char> bytes{std::istreambuf_iterator<char>(stream), {}};
    std::printf("%s: %zu bytes\n", file.c_str(), bytes.size());
    std::fflush(stdout);  // names the input that ends the process
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
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
        count += runAll(argv[i]);
    }
    std::printf("%d inputs\n", count);
    return count > 0 ? 0 : 1;
}
