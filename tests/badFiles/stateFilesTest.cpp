// What the reader of states says of bad files, and that it takes no harm.
#include <analysis/recordings/stateFile.h>
#include <analysis/statistics/sweepStore.h>
#include <analysis/support/inputError.h>
#include <support/deadline.h>
#include <support/tempFiles.h>

#include <QCryptographicHash>
#include <QString>

#include <gtest/gtest.h>

#include <cstddef>
#include <string>

namespace {

using namespace std::string_literals;

constexpr char kDamaged[] = "is damaged or cut";
const std::string kFirstLine = "rfutils state 1\n";

std::string checked(const std::string& bytes) {
    return bytes +
           QCryptographicHash::hash(QByteArray::fromStdString(bytes), QCryptographicHash::Sha256)
               .toStdString();
}

/// A file of statistics and a head, with all that goes around them.
std::string stateOf(const std::string& statistics, const std::string& head) {
    std::string place;
    for (std::size_t i = 0; i < 8; ++i) {
        place += static_cast<char>((kFirstLine.size() + statistics.size()) >> (8 * i) & 0xFFU);
    }
    return checked(kFirstLine + statistics + head + place);
}

// Two points without frequencies in one sweep: one level of 1 dBm (a double of 0x3FF0000000000000),
// and none.
const std::string kOne = "\0\0\0\0\0\0\xF0\x3F"s;
const std::string kStatistics = "\x01\0"s + kOne + kOne + kOne + "\0"s;
const std::string kHead = "\x05trace\0\x02\0\0\0\x01\0\0"s;
// Of a size that takes ten bytes.
const std::string kHuge = "\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\x01";

/// "1 of 2 points", or the problem.
std::string answer(const std::string& path) {
    const QString file = QString::fromStdString(path);
    try {
        const rfu::StateSet states({file});
        rfu::SweepStore sweeps(rfu::SweepStore::kAll, false, 0.0);
        states.forEach([&](rfu::StatePart& part) { sweeps.merge(part, states.head().points); });
        std::size_t measured = 0;
        for (const rfu::PointTally& tally : sweeps.tallies()) {
            measured += tally.statistics().count > 0 ? 1 : 0;
        }
        return std::to_string(measured) + " of " + std::to_string(states.head().points) + " points";
    } catch (const rfu::InputError& error) {
        EXPECT_EQ(error.file().toStdString(), path);
        return error.problem();
    }
}

}  // namespace

TEST(StateFiles, GiveTheStatedAnswer) {
    const Deadline deadline(300);
    const std::string noState = "is no state that rfutils wrote";
    const auto version = [](const char* text) {
        return "is a state of version \"" + std::string(text) + "\"; this rfutils reads 1";
    };
    const struct {
        const char* what;
        std::string bytes;
        std::string answer;
    } kRows[] = {
        {"good", stateOf(kStatistics, kHead), "1 of 2 points"},
        {"empty", "", noState},
        {"a recording", "2024-01-01, 10:00:00, 100000000, 101000000, 500000, 5, -1, -2\n", noState},
        {"10 MB of NUL bytes", std::string(10000000, '\0'), noState},
        {"the first word alone", "rfutils state ", noState},
        {"the first line alone", kFirstLine, kDamaged},
        {"version 2", "rfutils state 2\n", version("2")},
        {"version 01", "rfutils state 01\n", version("01")},
        {"no version", "rfutils state \n", version("")},
        {"CR LF", "rfutils state 1\r\n", version("1\r")},
        {"nothing but a checksum", checked(kFirstLine), kDamaged},
        {"no statistics", stateOf("", kHead), kDamaged},
        {"statistics that go on", stateOf(kStatistics + "\0"s, kHead), kDamaged},
        {"a head that goes on", stateOf(kStatistics, kHead + "\0"s), kDamaged},
        {"no head", stateOf(kStatistics, ""), kDamaged},
        {"more levels than sweeps", stateOf("\x02" + kStatistics.substr(1), kHead), kDamaged},
        {"more levels above than levels", stateOf("\x01\x02" + kStatistics.substr(2), kHead),
         kDamaged},
        {"a maximum below the minimum",
         stateOf("\x01\0"s + kOne + std::string(8, '\0') + kOne + "\0"s, kHead), kDamaged},
        {"a maximum that is none",
         stateOf("\x01\0"s + kOne + "\0\0\0\0\0\0\xF8\x7F"s + kOne + "\0"s, kHead), kDamaged},
        {"huge command", stateOf(kStatistics, kHuge + kHead.substr(1)), kDamaged},
        {"huge settings", stateOf(kStatistics, kHead.substr(0, 6) + kHuge), kDamaged},
        {"huge points", stateOf(kStatistics, kHead.substr(0, 7) + kHuge + kHead.substr(8)),
         kDamaged},
        {"points of 2 GB",
         stateOf(kStatistics, kHead.substr(0, 7) + "\xFF\xFF\xFF\x7F" + kHead.substr(8)), kDamaged},
        {"no points", stateOf("", "\x05trace\0\0\0\0\0\x01\0\0"s), kDamaged},
        {"huge axis", stateOf(kStatistics, kHead.substr(0, 8) + kHuge), kDamaged},
        {"huge bands", stateOf(kStatistics, kHead.substr(0, 9) + kHuge), kDamaged},
        {"huge hops", stateOf(kStatistics, kHead.substr(0, 10) + kHuge), kDamaged},
        {"no sweeps", stateOf(kStatistics, "\x05trace\0\x02\0\0\0\0\0\0"s), kDamaged},
        {"a time without frequencies", stateOf(kStatistics, "\x05trace\0\x02\0\0\0\x01\x01x\0"s),
         kDamaged},
    };
    const TempFiles files;
    for (const auto& row : kRows) {
        EXPECT_EQ(answer(files.write("state", row.bytes)), row.answer) << row.what;
    }
}

TEST(StateFiles, CutOrChangedAnywhereAreRefused) {
    const TempFiles files;
    const std::string good = stateOf(kStatistics, kHead);
    for (std::size_t place = 0; place < good.size(); ++place) {
        EXPECT_NE(answer(files.write("state", good.substr(0, place))), "1 of 2 points") << place;
        for (int bit = 0; bit < 8; ++bit) {
            std::string changed = good;
            changed[place] = static_cast<char>(changed[place] ^ (1 << bit));
            EXPECT_NE(answer(files.write("state", changed)), "1 of 2 points") << place;
        }
    }
}

TEST(StateFiles, ThatAreNoFilesAreRefused) {
    const Deadline deadline(60);
    const TempFiles files;
    EXPECT_EQ(answer(files.path("missing")), "No such file or directory");
    EXPECT_EQ(answer(files.makeFolder("folder")), "Is a directory");
    EXPECT_EQ(answer(files.makeFifo("fifo")), "is not a regular file");
    EXPECT_EQ(answer(files.makeLink("device", "/dev/zero")), "is not a regular file");
}
