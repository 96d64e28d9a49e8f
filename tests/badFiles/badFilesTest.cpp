// The result, the message and the content of each loader after bad files, and that a good file
// loads afterwards.
#include "badFiles.h"

#include <support/deadline.h>
#include <support/scopedCodec.h>
#include <support/tempFiles.h>
#include <support/unprivileged.h>

#include <cstddef>
#include <string>
#include <vector>

#include <sys/stat.h>

namespace {

class BadFiles : public testing::Test {
protected:
    std::string write(const Format& format, const std::string& bytes) {
        return files.write(format.file, bytes);
    }

    void expectGoodLoad(Subject& subject, const Format& format, const std::string& after) {
        EXPECT_TRUE(subject.load(write(format, format.good))) << format.file << ' ' << after;
        EXPECT_EQ(subject.holdsInUse(), format.goodHolds) << format.file << ' ' << after;
    }

    Deadline deadline{300};
    ScopedCodec codec{"ISO 8859-1"};
    TempFiles files;
};

TEST_F(BadFiles, GiveTheStatedAnswerAndDoNoHarm) {
    for (const BadFile& row : badFiles()) {
        const std::string what = std::string(row.format.file) + ": " + row.what;
        const auto subject = row.format.make();
        EXPECT_EQ(subject->load(write(row.format, row.bytes)), row.done) << what;
        EXPECT_EQ(subject->said(), row.said) << what;
        EXPECT_EQ(subject->holds(), row.holds) << what;
        const bool adds = &row.format == &kItems;  // a catalogue keeps earlier choices
        if (!adds || row.holds.empty()) {
            expectGoodLoad(*subject, row.format, row.what);
        }
    }
}

TEST_F(BadFiles, CutAtAnyLengthDoNoHarm) {
    for (const Format* format : kFormats) {
        const auto subject = format->make();
        for (std::size_t length = 0; length < format->good.size(); ++length) {
            subject->load(write(*format, format->good.substr(0, length)));
            expectGoodLoad(*subject, *format, "cut to " + std::to_string(length));
        }
    }
}

TEST_F(BadFiles, WithoutPermissionLeaveWhatIsHeld) {
    ASSERT_EQ(chmod(files.path("").c_str(), 0755), 0);
    for (const Format* format : kFormats) {
        const auto subject = format->make();
        expectGoodLoad(*subject, *format, "new");
        const std::string path = write(*format, format->good);
        ASSERT_EQ(chmod(path.c_str(), 0), 0);
        {
            const Unprivileged unprivileged;
            if (!unprivileged.holds()) {
                GTEST_SKIP() << "root reads every file";
            }
            EXPECT_FALSE(subject->load(path)) << format->file;
        }
        EXPECT_EQ(subject->said(), format == &kSetups ? "\"Permission denied\"" : format->missing);
        EXPECT_EQ(subject->holds(), format->missingHolds) << format->file;
        expectGoodLoad(*subject, *format, "without permission");
    }
}

}  // namespace
