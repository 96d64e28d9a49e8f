// What the reader of masks says of bad files, and that it takes no harm.
#include <analysis/statistics/limitMask.h>
#include <analysis/support/inputError.h>
#include <support/deadline.h>
#include <support/tempFiles.h>

#include <QString>

#include <gtest/gtest.h>

#include <cstddef>
#include <string>

namespace {

using namespace std::string_literals;

const std::string kGood = "frequencyMHz,upper,lower\n88,-40,-90\n98,-40,\n98,-50,-80\n108,,-80\n";

std::string repeated(const std::string& text, std::size_t times) {
    std::string result;
    for (; times > 0; --times) {
        result += text;
    }
    return result;
}

/// "3 upper, 2 lower", or line and problem.
std::string answer(const std::string& path) {
    try {
        const rfu::LimitMask mask = rfu::readLimitMask(QString::fromStdString(path), false);
        return std::to_string(mask.upper.points().size()) + " upper, " +
               std::to_string(mask.lower.points().size()) + " lower";
    } catch (const rfu::InputError& error) {
        EXPECT_EQ(error.file().toStdString(), path);
        return std::to_string(error.line()) + ": " + error.problem();
    }
}

}  // namespace

TEST(MaskFiles, GiveTheStatedAnswer) {
    const Deadline deadline(300);
    constexpr char kNoRow[] = "0: holds no line of a frequency and upper or lower";
    const std::string notFrequency = " is not a frequency such as 88.1MHz or a number of MHz";
    const struct {
        const char* what;
        std::string bytes;
        std::string answer;
    } kRows[] = {
        {"empty", "", kNoRow},
        {"good", kGood, "3 upper, 3 lower"},
        {"line of 10 MB", "88,1" + std::string(10000000, ' ') + "\n",
         "1: the line is longer than 1 MiB"},
        {"10 MB without a line end", std::string(10000000, '8'),
         "1: the line is longer than 1 MiB"},
        {"half a million columns", "88" + repeated(",1", 500000) + "\n",
         "1: the line goes on behind lower"},
        {"half a million empty columns", "88,1" + repeated(",", 500000) + "\n", "1 upper, 0 lower"},
        {"half a million blank lines", repeated("\n", 500000) + "88,1\n", "1 upper, 0 lower"},
        {"NUL bytes", "88\0,1\n"s, "1: \"88\0\""s + notFrequency},
        {"nothing but NUL bytes", std::string(100, '\0'),
         "1: \"" + std::string(60, '\0') + "...\"" + notFrequency},
        {"CR LF", "88,1\r\n89,,2\r\n", "1 upper, 1 lower"},
        {"lone CR", "88,1\r89,1\r", "1: upper is \"1\r89\" instead of a number"},
        {"byte-order mark", "\xEF\xBB\xBF" + kGood, "3 upper, 3 lower"},
        {"UTF-16",
         "\xFF\xFE"
         "8\0,\0"
         "1\0"s,
         "1: \"\xFF\xFE"
         "8\0\""s +
             notFrequency},
        {"a decimal comma", "88,5;-40\n", "1: upper is \"5;-40\" instead of a number"},
    };
    const TempFiles files;
    for (const auto& row : kRows) {
        const std::string path = files.write("mask.csv", row.bytes);
        EXPECT_EQ(answer(path), row.answer) << row.what;
    }
}

TEST(MaskFiles, CutAtAnyLengthDoNoHarm) {
    const TempFiles files;
    for (std::size_t length = 0; length <= kGood.size(); ++length) {
        EXPECT_NE(answer(files.write("mask.csv", kGood.substr(0, length))), "");
    }
}

TEST(MaskFiles, ThatAreCompressedAndCutAreRefused) {
    const TempFiles files;
    // The reason depends on the libraries that the reader was built with.
    EXPECT_EQ(answer(files.write("mask.csv", "\x1F\x8B\x08")).rfind("0: ", 0), 0U);
}

TEST(MaskFiles, ThatAreNoFilesAreRefused) {
    const Deadline deadline(60);
    const TempFiles files;
    const struct {
        std::string path;
        const char* answer;
    } kRows[] = {
        {files.path("missing"), "0: No such file or directory"},
        {files.makeFolder("folder"), "0: Is a directory"},
        {files.makeFifo("fifo"), "0: is not a regular file"},
        {files.makeLink("dangling", "none"), "0: No such file or directory"},
        {files.makeLink("toFifo", files.path("fifo")), "0: is not a regular file"},
        {files.makeLink("device", "/dev/zero"), "0: is not a regular file"},
    };
    for (const auto& row : kRows) {
        EXPECT_EQ(answer(row.path), row.answer) << row.path;
    }
}

TEST(MaskFiles, OfManyPointsAreReadToTheLast) {
    const Deadline deadline(300);
    std::string bytes;
    for (int i = 0; i < 100000; ++i) {
        bytes += std::to_string(i) + ",-40,-90\n";
    }
    const TempFiles files;
    EXPECT_EQ(answer(files.write("mask.csv", bytes)), "100000 upper, 100000 lower");
}
