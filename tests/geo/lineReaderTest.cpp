#include <rfUtils/geo/detail/lineReader.h>

#include <gtest/gtest.h>

#include <QBuffer>
#include <QByteArray>

#include <algorithm>
#include <cstddef>
#include <random>
#include <string>
#include <utility>
#include <vector>

using rfu::detail::LineReader;

namespace {

using Lines = std::vector<std::string>;

/// Gives at most a few bytes at a time.
class SlowDevice : public QIODevice {
public:
    SlowDevice(std::string bytes, qint64 step) : bytes_(std::move(bytes)), step_(step) {
        open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    }
    bool isSequential() const override { return true; }

protected:
    qint64 readData(char* data, qint64 most) override {
        const auto left = static_cast<qint64>(bytes_.size() - at_);
        const auto count = static_cast<std::size_t>(std::min({most, step_, left}));
        bytes_.copy(data, count, at_);
        at_ += count;
        return count > 0 ? static_cast<qint64>(count) : -1;
    }
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    std::string bytes_;
    qint64 step_;
    std::size_t at_ = 0;
};

Lines readAll(QIODevice& device, std::size_t limit) {
    LineReader reader(device, limit);
    Lines lines;
    while (char* const line = reader.next()) {
        const std::string whole(static_cast<const char*>(line), reader.lineEnd());
        EXPECT_LE(whole.size(), limit);
        EXPECT_EQ(*reader.lineEnd(), '\0');
        EXPECT_EQ(static_cast<std::size_t>(reader.number()), lines.size() + 1);
        lines.emplace_back(whole.c_str());        // up to a NUL
        line[0] = line[0] == '\0' ? '\0' : '\n';  // lines are writable
    }
    EXPECT_EQ(reader.next(), nullptr);
    return lines;
}

Lines readAll(const std::string& bytes, std::size_t limit) {
    QByteArray data(bytes.data(), static_cast<int>(bytes.size()));
    QBuffer buffer(&data);
    buffer.open(QIODevice::ReadOnly);
    return readAll(buffer, limit);
}

/// The lines by their definition, character by character.
Lines expectedLines(const std::string& bytes, std::size_t limit) {
    Lines lines;
    bool atStart = true;
    for (const char c : bytes) {
        if (atStart) {
            lines.emplace_back();
        }
        atStart = c == '\n';
        if (!atStart && lines.back().size() < limit) {
            lines.back() += c;
        }
    }
    for (std::string& line : lines) {
        line = line.c_str();  // up to a NUL
    }
    return lines;
}

TEST(LineReader, SplitsAtNewlinesOnly) {
    const struct {
        const char* why;
        std::string bytes;
        Lines expected;
    } kCases[] = {
        {"nothing", "", {}},
        {"one empty line", "\n", {""}},
        {"a newline at the end begins no line", "a\nb\n", {"a", "b"}},
        {"the last line counts without one", "a\nb", {"a", "b"}},
        {"empty lines count", "\n\na\n\n", {"", "", "a", ""}},
        {"carriage returns are characters", "a\r\nb\rc", {"a\r", "b\rc"}},
        {"text behind a NUL is ignored", std::string("a\0b\nc", 5), {"a", "c"}},
        {"a NUL first", std::string("\0b\nc", 4), {"", "c"}},
        {"exactly at the limit", "12345678\n1", {"12345678", "1"}},
        {"one more than the limit", "123456789\n1", {"12345678", "1"}},
        {"one more than the limit, at the end", "123456789", {"12345678"}},
        {"far more than the limit", "123456789abcdefghij\n\n1", {"12345678", "", "1"}},
    };
    for (const auto& row : kCases) {
        EXPECT_EQ(readAll(row.bytes, 8), row.expected) << row.why;
    }
}

TEST(LineReader, TellsWhichLinesItCut) {
    const std::string longLine(200000, 'x');
    QByteArray data =
        QByteArray::fromStdString("12345678\n123456789\n\n" + longLine + "\n1\n" + longLine);
    QBuffer buffer(&data);
    buffer.open(QIODevice::ReadOnly);
    LineReader reader(buffer, 8);
    for (const bool isCut : {false, true, false, true, false, true}) {
        ASSERT_NE(reader.next(), nullptr);
        EXPECT_EQ(reader.isCut(), isCut) << reader.number();
    }
    EXPECT_EQ(reader.next(), nullptr);
}

TEST(LineReader, DropsTheRestOfALineLongerThanItsMemory) {
    for (const std::size_t length : {65535U, 65536U, 65537U, 65538U, 131072U, 200000U, 1000000U}) {
        for (const std::size_t limit : {10U, 65534U, 65535U, 65536U, 65537U, 150000U}) {
            const std::string bytes =
                std::string(length, 'x') + "\nnext\n" + std::string(length, 'y') + "\n\nlast";
            EXPECT_EQ(readAll(bytes, limit), expectedLines(bytes, limit)) << length << ' ' << limit;
            const std::string open = std::string(length, 'x');
            EXPECT_EQ(readAll(open, limit), expectedLines(open, limit)) << length << ' ' << limit;
        }
    }
}

TEST(LineReader, ReadsAnyTextAsItsDefinitionSays) {
    std::mt19937 random(20240607);
    const auto below = [&random](unsigned bound) { return random() % bound; };
    for (int round = 0; round < 60; ++round) {
        std::string bytes;
        const unsigned longest = round % 2 == 0 ? 40 : 90000;
        while (bytes.size() < 300000) {
            bytes += std::string(below(longest), static_cast<char>('a' + below(26)));
            bytes += below(50) == 0 ? '\0' : '\n';
        }
        bytes.resize(bytes.size() - below(3));
        const std::size_t limit = below(2) == 0 ? below(30) + 1 : below(100000) + 1;
        EXPECT_EQ(readAll(bytes, limit), expectedLines(bytes, limit)) << round;
        if (round < 10) {
            SlowDevice slow(bytes, static_cast<qint64>(1 + below(5000)));
            EXPECT_EQ(readAll(slow, limit), expectedLines(bytes, limit)) << round;
        }
    }
}

}  // namespace
