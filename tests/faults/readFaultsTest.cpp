// Files that change, vanish or fail before each of their reads in turn. The result is that of a
// file of the bytes that were read.
#include "commandSubjects.h"
#include "readFaults.h"

#include <support/deadline.h>
#include <support/scopedCodec.h>
#include <support/tempFiles.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

/// The result, message and content of a new object's load.
struct Answer {
    bool done;
    std::string said;
    std::string holds;

    friend bool operator==(const Answer& a, const Answer& b) {
        return a.done == b.done && a.said == b.said && a.holds == b.holds;
    }
    friend std::ostream& operator<<(std::ostream& out, const Answer& answer) {
        return out << (answer.done ? "done" : "refused") << ", says \"" << answer.said
                   << "\", holds \"" << answer.holds << '"';
    }
};

bool isJson(const Format& format) {
    return &format == &kItems || &format == &kSetups || &format == &kJsonObject;
}

bool isOfCommand(const Format& format) {
    return &format == &kRecording || &format == &kJsonObject;
}

constexpr const char* kLatin1 = "ISO 8859-1";

/// Small enough for several reads of each good file.
constexpr std::size_t kPiece = 7;

class ReadFaultsTest : public testing::TestWithParam<const char*> {
protected:
    ReadFaultsTest() {
        for (const Format* format : formats()) {  // Qt's one-time initialisation reads files too
            answerTo(*format, format->good);
        }
    }

    /// Writes a file and removes all others: a grid's loader would read a colour table too.
    std::string write(const Format& format, const std::string& bytes) const {
        for (const Format* other : everyFormat()) {
            std::filesystem::remove(files_.path(other->file));
        }
        return files_.write(format.file, bytes);
    }

    Answer load(const Format& format, const std::string& path) const {
        const auto subject = format.make();
        const bool done = subject->load(path);
        return {done, subject->said(), subject->holdsInUse()};
    }

    /// The answer to an unchanging file.
    Answer answerTo(const Format& format, const std::string& bytes) const {
        return load(format, write(format, bytes));
    }

    /// The answer to a good file read in pieces, with a callback before each read.
    Answer answerWith(const Format& format, const std::function<int(int)>& beforeRead) const {
        const std::string path = write(format, format.good);
        ReadFaults faults;
        faults.maxBytes = kPiece;
        faults.beforeRead = beforeRead;
        return load(format, path);
    }

    /// The answer when `happens` changes the file before the read with this number.
    Answer answerWhen(const Format& format, int number,
                      const std::function<void(const std::string&)>& happens) const {
        return answerWith(format, [&](int read) {
            if (read == number) {
                happens(files_.path(format.file));
            }
            return 0;
        });
    }

    /// Number of reads of a good file in pieces.
    int reads(const Format& format) const {
        const std::string path = write(format, format.good);
        ReadFaults faults;
        faults.maxBytes = kPiece;
        load(format, path);
        EXPECT_GT(faults.reads(), static_cast<int>(format.good.size() / kPiece)) << format.file;
        return faults.reads();
    }

    /// Bytes read before the read with this number.
    static std::size_t bytesBefore(const Format& format, int number) {
        return std::min(format.good.size(), kPiece * static_cast<std::size_t>(number - 1));
    }

    /// Calls an action with each loader and the number of each of its reads.
    template <typename Action>
    void forEachRead(Action action) const {
        for (const Format* format : formats()) {
            const int last = reads(*format);
            for (int number = 1; number <= last; ++number) {
                SCOPED_TRACE(std::string(format->file) + ", read " + std::to_string(number));
                action(*format, number);
            }
        }
    }

    /// Under the second codec only the format that depends on it.
    static std::vector<const Format*> formats() {
        return GetParam() == kLatin1 ? everyFormat() : std::vector<const Format*>{&kBil};
    }

    TempFiles files_;

private:
    Deadline deadline_{300};
    ScopedCodec codec_{GetParam()};
};

TEST_P(ReadFaultsTest, PiecesAndInterruptionsChangeNothing) {
    for (const Format* format : formats()) {
        const Answer whole = answerTo(*format, format->good);
        EXPECT_TRUE(whole.done) << format->file;
        for (const unsigned piece : {1U, 2U, 7U, 64U}) {
            const std::string path = write(*format, format->good);
            ReadFaults faults;
            faults.maxBytes = piece;
            faults.beforeRead = [](int number) { return number % 2 == 1 ? EINTR : 0; };
            EXPECT_EQ(load(*format, path), whole) << format->file << " by " << piece;
            EXPECT_GT(faults.reads(), 1);
        }
    }
}

TEST_P(ReadFaultsTest, AnInterruptedOpeningIsTriedAgain) {
    for (const Format* format : formats()) {
        const Answer whole = answerTo(*format, format->good);
        const std::string path = write(*format, format->good);
        int opened = 0;
        ReadFaults faults;
        faults.beforeOpen = [&](int number) {
            opened = number;
            return number <= 2 ? EINTR : 0;
        };
        EXPECT_EQ(load(*format, path), whole) << format->file;
        EXPECT_GE(opened, 3) << format->file;
    }
}

/// A read error ends a map; JSON files and recordings are refused with the reason.
TEST_P(ReadFaultsTest, AReadErrorThatStaysEndsAMapAndRefusesOtherFiles) {
    const std::string reason = qt_error_string(EIO).toStdString();
    forEachRead([&](const Format& format, int number) {
        const Answer answer =
            answerWith(format, [&](int read) { return read >= number ? EIO : 0; });
        if (isOfCommand(format)) {
            EXPECT_FALSE(answer.done);
            EXPECT_EQ(answer.said, ": " + reason);
        } else if (isJson(format)) {
            const std::string said = &format == &kSetups ? '"' + reason + '"' : "";
            EXPECT_EQ(answer, (Answer{false, said, ""}));
        } else {
            const std::size_t came = bytesBefore(format, number);
            EXPECT_EQ(answer, answerTo(format, format.good.substr(0, came)));
        }
    });
}

TEST_P(ReadFaultsTest, AReadErrorThatPassesGivesAWholeOrACutFile) {
    forEachRead([&](const Format& format, int number) {
        const Answer answer =
            answerWith(format, [&](int read) { return read == number ? EIO : 0; });
        if (&format == &kRecording) {
            EXPECT_EQ(answer.said, ": " + qt_error_string(EIO).toStdString());
            return;
        }
        const std::size_t came = bytesBefore(format, number);
        const bool refused = isJson(format) && !answer.done && answer.holds.empty();
        EXPECT_TRUE(refused || answer == answerTo(format, format.good) ||
                    answer == answerTo(format, format.good.substr(0, came)))
            << answer;
    });
}

/// Rows and reads do not coincide: no row may get the cells of another.
TEST_P(ReadFaultsTest, AReadErrorThatPassesMovesNoCells) {
    constexpr int kColumns = 1000;
    constexpr int kRows = 10;
    constexpr float kNothing = -9.0F;
    std::vector<float> cells(static_cast<std::size_t>(kColumns) * kRows);
    for (std::size_t i = 0; i < cells.size(); ++i) {  // all different, all bytes ASCII
        const auto bits = static_cast<std::uint32_t>(0x3A000000U + i / 128 * 256 + i % 128);
        std::memcpy(&cells[i], &bits, sizeof bits);
    }
    const std::string path = files_.write("wide.bil", bytesOf(cells));
    const auto map = std::make_unique<veltaGEO>();
    map->nCols = kColumns;
    map->nRows = kRows;
    map->isFloat = 1;
    map->noData = kNothing;
    bool failed = true;
    for (int number = 1; failed; ++number) {
        failed = false;
        ReadFaults faults;
        faults.maxBytes = 1000;
        faults.beforeRead = [&](int read) {
            failed = failed || read == number;
            return read == number ? EIO : 0;
        };
        ASSERT_TRUE(map->loadBILFile(QString::fromStdString(path)));
        bool covered = true;
        for (std::size_t i = 0; i < cells.size(); ++i) {
            const float cell = map->grid[i / kColumns][i % kColumns];
            covered = covered && cell != kNothing;
            ASSERT_EQ(cell, covered ? cells[i] : kNothing) << "read " << number << ", cell " << i;
        }
    }
}

TEST_P(ReadFaultsTest, AFileThatIsShortenedIsACutFile) {
    forEachRead([&](const Format& format, int number) {
        const std::size_t came = bytesBefore(format, number);
        for (const std::size_t left : {std::size_t{0}, std::size_t{1}, format.good.size() / 2}) {
            const Answer answer = answerWhen(format, number, [&](const std::string& path) {
                std::filesystem::resize_file(path, left);
            });
            EXPECT_EQ(answer, answerTo(format, format.good.substr(0, std::max(came, left))))
                << "cut to " << left;
        }
    });
}

TEST_P(ReadFaultsTest, AFileThatIsReplacedOrRemovedIsReadToItsEnd) {
    forEachRead([&](const Format& format, int number) {
        const Answer whole = answerTo(format, format.good);
        EXPECT_EQ(whole, answerWhen(format, number, [&](const std::string& path) {
                      std::filesystem::rename(files_.write("other", "0 1 2\n"), path);
                  }));
        EXPECT_EQ(whole, answerWhen(format, number, [](const std::string& path) {
                      std::filesystem::remove(path);
                  }));
        EXPECT_EQ(whole, answerWhen(format, number, [](const std::string& path) {
                      std::filesystem::remove(path);
                      mkfifo(path.c_str(), 0600);
                  }));
    });
}

TEST_P(ReadFaultsTest, AFileThatIsWrittenOverIsAMixtureOfBoth) {
    forEachRead([&](const Format& format, int number) {
        // other digits change the numbers, not the lines
        std::string other = format.good;
        std::replace(other.begin(), other.end(), '5', '7');
        std::replace(other.begin(), other.end(), '3', '2');
        const std::size_t came = bytesBefore(format, number);
        const Answer answer = answerWhen(format, number, [&](const std::string&) {
            std::ofstream(files_.path(format.file)) << other;  // the same inode
        });
        EXPECT_EQ(answer, answerTo(format, format.good.substr(0, came) + other.substr(came)));
    });
}

/// Added bytes may be read or not; JSON files keep the length that they had when opened.
TEST_P(ReadFaultsTest, AFileThatGrowsIsReadWithOrWithoutWhatIsAdded) {
    for (const Format* format : formats()) {
        const std::string more = isJson(*format) ? "x" : format->good;
        const Answer grown = answerTo(*format, format->good + more);
        const Answer whole = answerTo(*format, format->good);
        const int last = reads(*format);
        for (int number = 1; number <= last; ++number) {
            const Answer answer = answerWhen(*format, number, [&](const std::string& path) {
                std::ofstream(path, std::ios::binary | std::ios::app) << more;
            });
            EXPECT_TRUE(answer == whole || (answer == grown && !isJson(*format)))
                << format->file << ", read " << number << ": " << answer;
        }
    }
}

/// Replaces the file between the check of its type and the opening.
struct Swap {
    const char* what;
    std::function<void(const std::string&)> make;
    std::string setupsSay;
    std::string commandSays;
};

TEST_P(ReadFaultsTest, WhatTakesTheFilesPlaceBeforeItIsOpenedIsRefusedWithoutWaiting) {
    const std::string gone = qt_error_string(ENOENT).toStdString();
    const std::vector<Swap> swaps = {
        {"FIFO", [](const std::string& path) { mkfifo(path.c_str(), 0600); },
         "\"not a regular file\"", ": is not a regular file"},
        {"folder", [](const std::string& path) { mkdir(path.c_str(), 0700); },
         "\"not a regular file\"", ": Is a directory"},
        {"device",
         [](const std::string& path) { std::filesystem::create_symlink("/dev/zero", path); },
         "\"not a regular file\"", ": is not a regular file"},
        {"nothing", [](const std::string&) {}, '"' + gone + '"', ": " + gone},
    };
    for (const Format* format : formats()) {
        if (format == &kRecording) {
            continue;  // may be a FIFO
        }
        for (const Swap& swap : swaps) {
            const std::string what = std::string(format->file) + ": " + swap.what;
            const std::string path = write(*format, format->good);
            const auto subject = format->make();
            EXPECT_TRUE(subject->load(path)) << what;
            const std::string held = subject->holds();
            {
                ReadFaults faults;
                faults.beforeOpen = [&](int) {
                    std::filesystem::remove(path);
                    swap.make(path);
                    return 0;
                };
                EXPECT_FALSE(subject->load(path)) << what;
                EXPECT_EQ(faults.reads(), 0) << what;
            }
            EXPECT_EQ(subject->said(), format == &kSetups       ? swap.setupsSay
                                       : format == &kJsonObject ? swap.commandSays
                                                                : format->missing)
                << what;
            // the content of a BIL file depends on the codec
            EXPECT_EQ(subject->holds(), format == &kBil ? held : format->missingHolds) << what;
            EXPECT_TRUE(subject->load(write(*format, format->good))) << what;
            EXPECT_EQ(subject->holds(), held) << what;
        }
    }
}

TEST_P(ReadFaultsTest, AFileThatTakesTheFilesPlaceBeforeItIsOpenedIsTheOneThatIsRead) {
    for (const Format* format : formats()) {
        const std::string half = format->good.substr(0, format->good.size() / 2);
        const Answer expected = answerTo(*format, half);
        const std::string path = write(*format, format->good);
        ReadFaults faults;
        faults.beforeOpen = [&](int number) {
            if (number == 1) {
                std::filesystem::rename(files_.write("other", half), path);
            }
            return 0;
        };
        EXPECT_EQ(load(*format, path), expected) << format->file;
    }
}

/// In a program without standard input the file gets the descriptor 0.
TEST_P(ReadFaultsTest, TheDescriptorZeroIsOneLikeTheOthers) {
    for (const Format* format : formats()) {
        const Answer whole = answerTo(*format, format->good);
        const std::string path = write(*format, format->good);
        const int standardInput = dup(STDIN_FILENO);
        close(STDIN_FILENO);
        errno = EINTR;  // of an earlier call
        const Answer answer = load(*format, path);
        const bool isClosed = fcntl(STDIN_FILENO, F_GETFD) < 0;
        dup2(standardInput, STDIN_FILENO);
        close(standardInput);
        EXPECT_EQ(answer, whole) << format->file;
        // the command takes descriptor 0 for its standard input and leaves it open
        EXPECT_TRUE(isClosed || format == &kRecording) << format->file;
    }
}

INSTANTIATE_TEST_SUITE_P(UnderCodec, ReadFaultsTest, testing::Values(kLatin1, "UTF-8"),
                         [](const auto& codec) {
                             return std::string(codec.param == kLatin1 ? "Latin1" : "Utf8");
                         });

}  // namespace
