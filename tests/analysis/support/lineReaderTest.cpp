#include "analysis/support/lineReader.h"

#include <gtest/gtest.h>
#include <support/tempFiles.h>

#include <cerrno>
#include <chrono>
#include <cstring>
#include <thread>

#include "analysis/support/inputError.h"

#include <unistd.h>

using rfu::InputError;
using rfu::LineReader;
using rfu::Waiting;

namespace {

QString pathOf(const std::string& path) {
    return QString::fromStdString(path);
}

std::vector<std::string> linesOf(const std::string& bytes) {
    const TempFiles files;
    LineReader reader(pathOf(files.write("lines.csv", bytes)));
    std::vector<std::string> lines;
    std::string_view line;
    while (reader.next(line)) {
        lines.emplace_back(line);
        EXPECT_EQ(reader.number(), static_cast<long long>(lines.size()));
    }
    EXPECT_FALSE(reader.next(line));
    return lines;
}

std::string problemOf(const std::string& path) {
    try {
        LineReader reader(pathOf(path));
        std::string_view line;
        while (reader.next(line)) {
        }
    } catch (const InputError& error) {
        EXPECT_EQ(error.file(), pathOf(path));
        return std::to_string(error.line()) + ": " + error.problem();
    }
    return "none";
}

}  // namespace

TEST(LineReader, SplitsAtLineEnds) {
    using Lines = std::vector<std::string>;
    const struct {
        const char* name;
        std::string bytes;
        Lines lines;
    } kRows[] = {
        {"nothing", "", {}},
        {"an empty line", "\n", {""}},
        {"line feeds", "a\n\nb\n", {"a", "", "b"}},
        {"carriage returns", "a\r\n\r\nb\r\n", {"a", "", "b"}},
        {"a carriage return within a line", "a\rb\r\r\n", {"a\rb\r"}},
        {"no end of the last line", "a\nb", {"a", "b"}},
        {"a byte-order mark",
         "\xEF\xBB\xBF"
         "a\n\xEF\xBB\xBF"
         "b\n",
         {"a",
          "\xEF\xBB\xBF"
          "b"}},
        {"half a byte-order mark", "\xEF\xBB\n", {"\xEF\xBB"}},
        {"a NUL", std::string("a\0b\n", 4), {std::string("a\0b", 3)}},
        {"lines across the blocks that are read",
         std::string(65535, 'a') + "\nb\n" + std::string(200000, 'c') + "\nd",
         {std::string(65535, 'a'), "b", std::string(200000, 'c'), "d"}},
    };
    for (const auto& row : kRows) {
        EXPECT_EQ(linesOf(row.bytes), row.lines) << row.name;
    }
}

TEST(LineReader, TellsALineWithoutEnd) {
    const TempFiles files;
    LineReader reader(pathOf(files.write("lines.csv", "a\n\nb")));
    std::string_view line;
    std::string ends;
    while (reader.next(line)) {
        ends += reader.hasLineEnd() ? "yes " : "no ";
    }
    EXPECT_EQ(ends, "yes yes no ");
}

TEST(LineReader, BoundsTheLengthOfALine) {
    const TempFiles files;
    const std::string longest(LineReader::kMaxLine, 'a');
    EXPECT_EQ(problemOf(files.write("longest", longest + "\nb\n")), "none");
    EXPECT_EQ(problemOf(files.write("endless", "b\n" + longest + longest)),
              "2: the line is longer than 1 MiB");
}

TEST(LineReader, RefusesWhatItCannotRead) {
    const TempFiles files;
    EXPECT_EQ(problemOf(files.path("none")), "0: " + std::string(std::strerror(ENOENT)));
    EXPECT_EQ(problemOf(files.makeFolder("folder")), "0: " + std::string(std::strerror(EISDIR)));
}

TEST(LineReader, TellsBeforeItMayWait) {
    const TempFiles files;
    const QString file = pathOf(files.write("lines.csv", "a\nb\n"));
    std::string events;
    LineReader reader(file, {[&events] { events += "read "; }});
    std::string_view line;
    while (reader.next(line)) {
        events += std::string(line) + ' ';
    }
    EXPECT_EQ(events, "read a b read ") << "lines that are there come without waiting";
}

namespace {

/// A pipe whose reading end is a file of the reader, or what stops it.
struct Pipe {
    Pipe() { EXPECT_EQ(::pipe(ends), 0); }
    ~Pipe() {
        ::close(ends[0]);
        ::close(ends[1]);
    }
    void write(const std::string& bytes) const {
        EXPECT_EQ(::write(ends[1], bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
    }
    QString name() const { return pathOf("/dev/fd/" + std::to_string(ends[0])); }

    int ends[2] = {-1, -1};
};

}  // namespace

TEST(LineReader, StopsWhileItWaits) {
    const Pipe input;
    const Pipe stop;
    input.write("a\nb\nbegun");
    LineReader reader(input.name(), {{}, stop.ends[0]});
    std::string_view line;
    EXPECT_TRUE(reader.next(line) && line == "a");
    std::thread stopper([&stop] {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        stop.write("x");
    });
    EXPECT_TRUE(reader.next(line) && line == "b") << "what was read counts";
    EXPECT_FALSE(reader.next(line)) << "a line that has only begun does not";
    EXPECT_FALSE(reader.next(line));
    stopper.join();
}

TEST(LineReader, StopsBeforeItReads) {
    const TempFiles files;
    const Pipe stop;
    stop.write("x");
    LineReader reader(pathOf(files.write("lines.csv", "a\n")), {{}, stop.ends[0]});
    std::string_view line;
    EXPECT_FALSE(reader.next(line));
}

TEST(LineReader, ReadsADescriptorThatStaysOpen) {
    const Pipe input;
    input.write("a\n");
    Waiting waiting;
    waiting.input = input.ends[0];
    {
        LineReader reader(pathOf("recorder"), waiting);
        std::string_view line;
        EXPECT_TRUE(reader.next(line) && line == "a");
        EXPECT_EQ(reader.file(), pathOf("recorder"));
    }
    input.write("b\n");
    LineReader reader(pathOf("recorder"), waiting);
    std::string_view line;
    EXPECT_TRUE(reader.next(line) && line == "b");
}

TEST(LineReader, StopsWhileNobodyWritesToAFifo) {
    const TempFiles files;
    const QString fifo = pathOf(files.makeFifo("fifo"));
    const Pipe stop;
    LineReader stopped(fifo, {{}, stop.ends[0]});
    std::thread stopper([&stop] {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        stop.write("x");
    });
    std::string_view line;
    EXPECT_FALSE(stopped.next(line));
    EXPECT_TRUE(stopped.isStopped());
    stopper.join();
}

TEST(LineReader, WaitsForTheWriterOfAFifo) {
    const TempFiles files;
    const std::string fifo = files.makeFifo("fifo");
    const Pipe stop;
    LineReader reader(pathOf(fifo), {{}, stop.ends[0]});
    std::thread writer([&fifo] {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        std::ofstream(fifo) << "a\nb\n" << std::flush;
    });
    std::string_view line;
    EXPECT_TRUE(reader.next(line) && line == "a");
    EXPECT_TRUE(reader.next(line) && line == "b");
    EXPECT_FALSE(reader.next(line)) << "the writer has closed it";
    EXPECT_FALSE(reader.isStopped());
    writer.join();
}
