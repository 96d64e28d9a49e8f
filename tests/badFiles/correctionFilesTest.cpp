// What the reader of corrections says of bad files; the rows of masks show the rest of what they share.
#include <analysis/recordings/levelCorrection.h>
#include <analysis/support/inputError.h>
#include <analysis/support/numbers.h>
#include <support/deadline.h>
#include <support/tempFiles.h>

#include <QString>

#include <gtest/gtest.h>

#include <string>

namespace {

const std::string kGood = "frequencyMHz,dB\n88,1.5\n98,-2\n98,3\n108,1e15\n";

/// What it adds at 93 MHz, or line and problem.
std::string answer(const std::string& path) {
    try {
        const rfu::LevelCorrection correction(0.0, QString::fromStdString(path));
        return std::string(rfu::ShortestText(correction.at(93.0)).view());
    } catch (const rfu::InputError& error) {
        EXPECT_EQ(error.file().toStdString(), path);
        return std::to_string(error.line()) + ": " + error.problem();
    }
}

}  // namespace

TEST(CorrectionFiles, GiveTheStatedAnswer) {
    const Deadline deadline(300);
    const TempFiles files;
    const struct {
        const char* what;
        std::string path;
        std::string answer;
    } kRows[] = {
        {"good", files.write("good", kGood), "-0.25"},
        {"empty", files.write("empty", ""), "0: holds no line of a frequency and dB"},
        {"nothing but a header", files.write("header", "frequency,dB\n"),
         "0: holds no line of a frequency and dB"},
        {"no number", files.write("none", "88,1\n89,\n"), "2: the line has no dB"},
        {"no comma", files.write("bare", "88\n"), "1: the line has no dB"},
        {"a third column", files.write("third", "88,1,2\n"), "1: the line goes on behind dB"},
        {"a unit of the number", files.write("unit", "88,1dB\n"),
         "1: dB is \"1dB\" instead of a number"},
        {"not finite", files.write("nan", "88,nan\n"), "1: dB is \"nan\" instead of a number"},
        {"beyond what adds up", files.write("huge", "88,1.1e15\n"),
         "1: dB is \"1.1e15\" instead of a number"},
        {"descending", files.write("down", "89,1\n88,1\n"), "2: 88 MHz comes after 89 MHz"},
        {"line of 2 MB", files.write("long", "88,1" + std::string(2000000, ' ') + "\n"),
         "1: the line is longer than 1 MiB"},
        {"missing", files.path("missing"), "0: No such file or directory"},
        {"folder", files.makeFolder("folder"), "0: Is a directory"},
        {"FIFO", files.makeFifo("fifo"), "0: is not a regular file"},
        {"device", files.makeLink("device", "/dev/zero"), "0: is not a regular file"},
    };
    for (const auto& row : kRows) {
        EXPECT_EQ(answer(row.path), row.answer) << row.what;
    }
}

TEST(CorrectionFiles, CutAtAnyLengthDoNoHarm) {
    const TempFiles files;
    for (std::size_t length = 0; length <= kGood.size(); ++length) {
        EXPECT_NE(answer(files.write("cable.csv", kGood.substr(0, length))), "");
    }
}
