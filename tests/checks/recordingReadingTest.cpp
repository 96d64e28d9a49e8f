// The check of recordings says something, more than a note, exactly where the reader of recordings leaves a line out:
// files, whole or damaged, are compared with a reading that knows the grammar of the lines, but no limit, order or axis of
// the reader. Each line that is left out has a finding of its own.
#include <rfUtils/trace/traceRssiBuffer.h>

#include <QDate>
#include <QRegularExpression>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

#include "readingTest.h"

#include "analysis/recordings/recordingCheck.h"
#include "analysis/recordings/sweepReader.h"

namespace rfu::test {
namespace {

// The other reading ------------------------------------------------------------------------------

/// A line with data, or with what may be meant as such.
struct Line {
    long long number;  // counted from 1
    std::string text;
};

std::string trimmedText(const std::string& text) {
    constexpr char kBlanks[] = " \t\r\n\v\f";
    const std::size_t begin = text.find_first_not_of(kBlanks);
    return begin == std::string::npos
               ? std::string()
               : text.substr(begin, text.find_last_not_of(kBlanks) + 1 - begin);
}

std::vector<std::string> fieldsOf(const std::string& line) {
    std::vector<std::string> fields(1);
    for (const char c : line) {
        if (c == ',') {
            fields.emplace_back();
        } else {
            fields.back() += c;
        }
    }
    for (std::string& field : fields) {
        field = trimmedText(field);
    }
    return fields;
}

/// Of a whole text of bytes, in any case.
QRegularExpression whole(const char* pattern) {
    return QRegularExpression(
        "\\A(?:" + QString(pattern) + ")\\z",
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::DotMatchesEverythingOption);
}

bool matches(const std::string& text, const QRegularExpression& pattern) {
    return pattern.match(QString::fromLatin1(text.data(), static_cast<int>(text.size())))
        .hasMatch();
}

/// A number, or the mark of a level that was not measured; nothing for any other text.
std::optional<double> levelOf(const std::string& field) {
    static const QRegularExpression kNone = whole("|[+-]?(nan|inf|infinity)");
    return matches(field, kNone)                   ? traceRssiBuffer::kNoMeasurement
           : field.find('\0') == std::string::npos ? numberOf(field, Tiny::IsNone)
                                                   : std::nullopt;
}

std::optional<std::vector<double>> levelsOf(const std::vector<std::string>& fields,
                                            std::size_t first) {
    std::vector<double> levels;
    for (std::size_t i = first; i < fields.size(); ++i) {
        const auto level = levelOf(fields[i]);
        if (!level) {
            return std::nullopt;
        }
        levels.push_back(*level);
    }
    return levels;
}

bool isHeader(const std::vector<std::string>& fields) {
    static const QRegularExpression kName = whole("\"?[A-Z].*");
    return matches(fields[0], kName) &&
           std::none_of(fields.begin(), fields.end(),
                        [](const std::string& field) { return levelOf(field).has_value(); });
}

/// All lines but blank ones, comments and a header before all others.
std::vector<Line> linesOf(const std::string& file) {
    std::vector<Line> lines;
    long long number = 0;
    bool isFirst = true;
    for (std::size_t at = file.substr(0, 3) == "\xEF\xBB\xBF" ? 3 : 0; at < file.size();) {
        const std::size_t end = std::min(file.find('\n', at), file.size());
        const std::string text = file.substr(at, end - at);
        at = end + 1;
        ++number;
        const std::string content = trimmedText(text);
        if (content.empty() || content[0] == '#') {
            continue;
        }
        if (!isFirst || !isHeader(fieldsOf(text))) {
            lines.push_back({number, content});
        }
        isFirst = false;
    }
    return lines;
}

struct HopAsWritten {
    std::string time;
    double low;
    double high;
    double step;
    std::vector<double> levels;  // below high
};

std::optional<HopAsWritten> hopOf(const std::string& line) {
    static const QRegularExpression kDate = whole("[0-9]{4}-[0-9]{2}-[0-9]{2}");
    static const QRegularExpression kTime =
        whole("([01][0-9]|2[0-3]):[0-5][0-9]:([0-5][0-9]|60)(\\.[0-9]+)?");
    const std::vector<std::string> fields = fieldsOf(line);
    if (fields.size() < 7 || !matches(fields[0], kDate) ||
        !QDate::fromString(QString::fromStdString(fields[0]), Qt::ISODate).isValid() ||
        !matches(fields[1], kTime)) {
        return std::nullopt;
    }
    std::vector<double> head;
    for (std::size_t i = 2; i < 6; ++i) {
        const auto number = fields[i].find('\0') == std::string::npos
                                ? numberOf(fields[i], Tiny::IsNone)
                                : std::nullopt;
        if (!number || std::isnan(*number) || std::isinf(*number)) {
            return std::nullopt;
        }
        head.push_back(*number);
    }
    auto levels = levelsOf(fields, 6);
    const double bins = std::round((head[1] - head[0]) / head[2]);
    if (!levels || !(head[2] > 0.0) || !(head[0] >= 0.0) || !(bins >= 1.0) ||
        !(bins <= static_cast<double>(levels->size()))) {
        return std::nullopt;
    }
    levels->resize(static_cast<std::size_t>(bins));
    return HopAsWritten{fields[0] + ' ' + fields[1], head[0], head[1], head[2], *levels};
}

bool areSame(const double* read, const std::vector<double>& written) {
    return std::equal(written.begin(), written.end(), read,
                      [](double a, double b) { return same(a, b); });
}

/// Whether a sweep holds just what its lines say. The axis is known.
bool holdsHops(const Sweep& sweep, const FrequencyAxis& axis) {
    std::size_t measured = 0;
    for (const SweepLine& line : sweep.lines) {
        const auto hop = hopOf(line.text);
        if (!hop || (&line == &sweep.lines.front() && sweep.time != hop->time)) {
            return false;
        }
        std::size_t first = 0;
        const auto place = std::find_if(axis.hops.begin(), axis.hops.end(), [&](const Hop& known) {
            const bool isIt =
                known.low == hop->low && known.high == hop->high && known.step == hop->step;
            first += isIt ? 0 : known.points();
            return isIt;
        });
        if (place == axis.hops.end() || !areSame(sweep.levels.data() + first, hop->levels)) {
            return false;
        }
        for (std::size_t i = 0; i < hop->levels.size(); ++i) {
            const double frequency = (hop->low + static_cast<double>(i) * hop->step) / 1e6;
            if (std::abs(axis.points[first + i] - frequency) > 1e-9 * frequency) {
                return false;
            }
        }
        measured += static_cast<std::size_t>(
            std::count_if(hop->levels.begin(), hop->levels.end(),
                          [](double level) { return level != traceRssiBuffer::kNoMeasurement; }));
    }
    return measured == static_cast<std::size_t>(std::count_if(
                           sweep.levels.begin(), sweep.levels.end(),
                           [](double level) { return level != traceRssiBuffer::kNoMeasurement; }));
}

bool holdsTrace(const Sweep& sweep, std::size_t points) {
    const auto levels = levelsOf(fieldsOf(sweep.lines.front().text), 0);
    return levels && levels->size() == points && sweep.levels.size() == points &&
           areSame(sweep.levels.data(), *levels);
}

// Files ------------------------------------------------------------------------------------------

std::string level(Samples& samples, const char* form) {
    static const std::vector<std::string> kNone = {"nan", "-inf", "", "-999.00"};
    if (samples.below(20) == 0) {
        return samples.oneOf(kNone);
    }
    const CLocale scope;
    char text[32];
    std::snprintf(text, sizeof text, form, samples.between(-120.0, 10.0));
    return text;
}

std::string stamp(std::uint64_t seconds, const std::string& comma, bool hasFraction) {
    const auto minute = static_cast<unsigned>(seconds / 60);
    const auto second = static_cast<unsigned>(seconds % 60);
    char text[64];
    std::snprintf(text, sizeof text, "2024-05-04%s21:%02u:%02u%s", comma.c_str(), minute, second,
                  hasFraction ? ".308551" : "");
    return text;
}

std::string beginning(Samples& samples) {
    static const std::vector<std::string> kBeginnings = {
        "", "", "", "# a receiver\n\n", "date,time,Hz low\n", "\xEF\xBB\xBF"};
    return samples.oneOf(kBeginnings);
}

/// As rtl_power and hackrf_sweep write them.
std::string hopFile(Samples& samples) {
    const std::string comma = samples.coin() ? ", " : ",";
    const std::string end = samples.below(4) == 0 ? "\r\n" : "\n";
    const char* const form = samples.coin() ? "%.2f" : "%.1f";
    const bool repeatsLast = samples.coin();
    const bool hasFraction = samples.coin();
    const std::uint64_t step = samples.oneOf(std::vector<std::uint64_t>{10, 39063, 1000000});
    const std::uint64_t bins = 1 + samples.below(5);
    const std::uint64_t gap = samples.below(3) * step;
    std::vector<std::uint64_t> hops;
    for (std::uint64_t i = 1 + samples.below(4); i > 0; --i) {
        hops.insert(samples.coin() ? hops.begin() : hops.end(), 88000000 + i * (bins * step + gap));
    }
    std::string text = beginning(samples);
    const std::uint64_t sweeps = 1 + samples.below(7);
    for (std::uint64_t sweep = 0; sweep < sweeps; ++sweep) {
        for (const std::uint64_t low : hops) {
            text += stamp(60 + 10 * sweep, comma, hasFraction);
            for (const std::uint64_t head : {low, low + bins * step, step, bins}) {
                text += comma + std::to_string(head);
            }
            std::string last;
            for (std::uint64_t bin = 0; bin < bins; ++bin) {
                last = comma + level(samples, form);
                text += last;
            }
            text += (repeatsLast ? last : "") + end;
        }
    }
    return text;
}

std::string traceFile(Samples& samples) {
    const std::uint64_t points = 1 + samples.below(6);
    const char* const form = samples.coin() ? "%.2f" : "%.1f";
    std::string text = beginning(samples);
    const std::uint64_t lines = 1 + samples.below(9);
    for (std::uint64_t line = 0; line < lines; ++line) {
        for (std::uint64_t point = 0; point < points; ++point) {
            const std::string field = level(samples, form);
            // A line of blanks would be none.
            text += (point > 0 ? "," : "") + (points == 1 && field.empty() ? "nan" : field);
        }
        text += "\n";
    }
    return text;
}

class RecordingReadingTest : public ReadingTest {
protected:
    void expectToSayWhatIsLeftOut(std::uint64_t seed, std::string (*make)(Samples&)) {
        forEachFile(seed, make, [this](const std::string& text) {
            const QString name = write("a.csv", text);
            const Findings findings = checkRecording(name);
            return expectToSay(findings, isReadWhole(name, linesOf(text), findings));
        });
    }

private:
    /// Whether all lines of a file are read as they are written. Lines that are left out need findings.
    static bool isReadWhole(const QString& name, const std::vector<Line>& lines,
                            const Findings& findings) {
        constexpr std::size_t kLearned = 4;
        bool isWhole = !lines.empty();
        const auto leaveOut = [&](const Line& line) {
            isWhole = false;
            expectFindingAt(findings, line.number, "the text");
        };
        SweepReader reader(name, kLearned, {}, [](const InputError&) {});
        reader.keepLines();
        std::optional<std::size_t> points;
        auto next = lines.begin();
        for (Sweep sweep; reader.next(sweep);) {
            points = points ? points : sweep.levels.size();
            isWhole = isWhole && (reader.hasFrequencies() ? holdsHops(sweep, reader.axis())
                                                          : holdsTrace(sweep, *points));
            for (const SweepLine& line : sweep.lines) {
                const auto found = std::find_if(next, lines.end(), [&line](const Line& other) {
                    return other.text == trimmedText(line.text);
                });
                if (found == lines.end()) {
                    ADD_FAILURE() << line.text << " is not in the file, or elsewhere";
                    return false;
                }
                std::for_each(next, found, leaveOut);
                next = std::next(found);
            }
        }
        std::for_each(next, lines.end(), leaveOut);
        return isWhole;
    }
};

TEST_F(RecordingReadingTest, OfHops) {
    expectToSayWhatIsLeftOut(20250306, hopFile);
}

TEST_F(RecordingReadingTest, OfTraces) {
    expectToSayWhatIsLeftOut(20250307, traceFile);
}

}  // namespace
}  // namespace rfu::test
