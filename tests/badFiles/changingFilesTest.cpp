// Another thread shortens, replaces and overwrites a file as fast as it can while it is loaded
// again and again. Nothing is synchronised, and the system may return zeros between old and new
// bytes, so the results are not compared; the loads must do no harm. tests/faults changes files
// before each read in turn and compares the results.
#include "formats.h"

#include <support/deadline.h>
#include <support/samples.h>
#include <support/scopedCodec.h>
#include <support/tempFiles.h>

#include <atomic>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>
#include <thread>
#include <tuple>
#include <vector>

namespace {

constexpr std::size_t kPadding = 200000;  // many pages, so that changes fall between them

/// Result, message and content.
using Answer = std::tuple<bool, std::string, std::string>;

/// A good file whose two halves are separated by padding.
struct Changing {
    const Format& format;
    std::string secondHalfBegins;
    char padding;  // '\0' if the format allows none
};

const Changing kChanging[] = {
    {kHdr, "ULYMAP", '\n'},     {kAsc, "1 2 3", ' '},     {kBil, bytesOf({4}), '\0'},
    {kClr, "10 4", '\0'},       {kTab, "CoordSys", '\n'}, {kItems, "\"enum\"", ' '},
    {kSetups, "\"enum\"", ' '},
};

/// A text with padding between its halves.
std::string padded(const Changing& changing, std::string text) {
    if (changing.padding != '\0') {
        text.insert(changing.format.good.find(changing.secondHalfBegins), kPadding,
                    changing.padding);
    }
    return text;
}

class ChangingFile {
public:
    explicit ChangingFile(const Changing& changing) : changing_(changing) {
        std::string other = changing.format.good;  // other numbers, the same lines
        for (char& c : other) {
            c = c == '5' ? '7' : c == '3' ? '2' : c;
        }
        versions_ = {padded(changing, changing.format.good), padded(changing, other)};
        const std::size_t half = changing.format.good.find(changing.secondHalfBegins);
        lengths_ = {0, 10, half, versions_[0].size() - changing.format.good.size() + half};
        replace(versions_[0]);
    }

    std::string path() const { return files_.path(changing_.format.file); }

    Answer load() const {
        const auto subject = changing_.format.make();
        const bool done = subject->load(path());
        return {done, subject->said(), subject->holdsInUse()};
    }

    void replaceByGoodOne() const { replace(versions_[0]); }

    /// Replaces, shortens or completes the file. Two versions are never written over each other,
    /// which might mix them within a number.
    void change(unsigned number) {
        const std::string& version = versions_[number / 4 % 2];
        if (number % 4 == 0) {
            replace(version);
        } else if (number % 4 == 2) {
            std::ofstream(path(), std::ios::binary | std::ios::in) << version;
        } else {
            std::filesystem::resize_file(path(), lengths_[number / 2 % lengths_.size()]);
        }
    }

private:
    /// Atomic: no reader sees a part of it.
    void replace(const std::string& version) const {
        files_.write("next", version);
        std::filesystem::rename(files_.path("next"), path());
    }

    const Changing& changing_;
    TempFiles files_;
    std::vector<std::string> versions_;
    std::vector<std::size_t> lengths_;
};

TEST(ChangingFiles, AreLoadedWithoutHarm) {
    const Deadline deadline(600);
    const ScopedCodec codec("ISO 8859-1");
    const int loads = rfu::test::isLongRun() ? 4000 : rfu::test::caseCount() / 250;
    for (const Changing& changing : kChanging) {
        ChangingFile file(changing);
        const Answer good = file.load();
        std::atomic<bool> stop = false;
        std::thread writer([&] {
            for (unsigned number = 0; !stop; ++number) {
                file.change(number);
            }
        });
        std::set<Answer> seen;
        for (int i = 0; i < loads || seen.size() < 2; ++i) {  // at least until it has changed
            seen.insert(file.load());
        }
        stop = true;
        writer.join();
        file.replaceByGoodOne();
        EXPECT_EQ(file.load(), good) << changing.format.file;
        EXPECT_TRUE(std::get<0>(good)) << changing.format.file;
    }
}

}  // namespace
