#include "analysis/maps/clrCheck.h"

#include <rfUtils/detail/numberPrefix.h>
#include <rfUtils/geo/veltaGEO.h>
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "analysis/maps/mapLines.h"
#include "analysis/maps/mapRules.h"
#include "analysis/support/singles.h"

namespace rfu {

namespace {

constexpr Rule kClrRules[] = {
    map_rules::kLineCut,
    map_rules::kTextAfterNul,
    map_rules::kTokenCut,
    map_rules::kNoNumber,
    map_rules::kNoWholeNumber,
    map_rules::kNumberInfinite,
    map_rules::kLineSkipped,
    {"colors-cut", Severity::Warning,
     "A colour table has 64 lines, that is 32 entries, at most. Lines behind them are not read, "
     "and values above the "
     "last entry take its colour.",
     "a table of 76 lines", "Join neighbouring entries until there are 32."},
    {"no-color", Severity::Error,
     "Two lines make an entry, whatever stands in them: a comment, a blank line or a line with a "
     "fifth number is the end "
     "of an entry too. That end keeps its former value and colour, and the colours behind it "
     "belong to other values.",
     "0 0 0 255\n# up to 100\n100 0 255 0",
     "Delete the line, or make it value, red, green and blue. Comments have no place in a colour "
     "table."},
    {"color-unpaired", Severity::Warning,
     "Two lines make an entry. The last line of an odd number has no partner, and its colour is "
     "not shown.",
     "0 0 0 255\n100 0 255 0\n200 255 0 0",
     "Add the upper end of the entry. Where ranges meet, each border is written twice: as the "
     "upper end of one and the "
     "lower end of the next."},
    {"color-range", Severity::Note,
     "Red, green and blue are kept as they are written, also beyond 0 to 255. What the display "
     "makes of them is its own "
     "affair.",
     "100 0 300 0", "Write numbers from 0 to 255."},
    {"range-descends", Severity::Note,
     "The two ends of an entry are kept in the order of their lines, also where the upper one is "
     "below the lower one. What the display makes of them is its own affair.",
     "100 0 0 255\n0 0 255 0", "Write the line of the lower value first."},
    {"colors-none", Severity::Error,
     "A table of fewer than two lines counts as none: there is one entry from -9999 to 9999 with a "
     "black lower end.",
     "0 0 0 255", "Write two lines for each entry, or remove the file."}};

constexpr std::size_t kMaxLines = 2 * std::extent_v<decltype(veltaGEO::lowValue)>;
constexpr std::size_t kColorTokens = 4;
constexpr const char* kComponents[] = {"red", "green", "blue"};

/// "upper end of entry 3", of lines and entries counted from 1
std::string endAt(std::size_t line) {
    return std::string(line % 2 == 1 ? "lower" : "upper") + " end of entry " +
           std::to_string((line + 1) / 2);
}

/// The lines of a colour table, in the order in which the loader reads them.
class ClrWalk {
public:
    explicit ClrWalk(const QString& file)
        : findings_(file, kClrRules), lines_(findings_, detail::kMaxClrLine) {}

    Findings run() {
        while (const char* const line = lines_.next()) {
            const std::vector<MapToken> tokens = tokensOf(line, kColorTokens + 1);
            if (counted_.size() < kMaxLines) {
                lines_.checkLength();
                lines_.checkNul();
                counted_.push_back({tokens.size(), tokens.empty() ? 0 : columnOf(tokens)});
                takeColor(tokens);
                takeEnd(tokens);
            } else {
                takeCut(tokens);
            }
        }
        checkWhole();
        findings_.sort();
        return std::move(findings_);
    }

private:
    /// A line that the loader counts.
    struct Line {
        std::size_t tokens;
        long long column;  // of the first token

        bool isColor() const { return tokens == kColorTokens; }
    };

    long long columnOf(const std::vector<MapToken>& tokens) const {
        return lines_.columnOf(tokens.front().raw.begin);
    }

    void takeColor(const std::vector<MapToken>& tokens) {
        if (tokens.size() != kColorTokens) {
            return;
        }
        if (!isInfinityOrNan(writtenText(tokens[0].raw))) {
            lines_.checkSingle(tokens[0].raw);
        }
        for (std::size_t i = 0; i < std::size(kComponents); ++i) {
            takeComponent(kComponents[i], tokens[i + 1]);
        }
    }

    /// Compares the two ends of an entry where both are colours.
    void takeEnd(const std::vector<MapToken>& tokens) {
        const bool isLower = counted_.size() % 2 == 1;
        const std::optional<float> value =
            tokens.size() == kColorTokens ? std::optional(singleOf(tokens[0].raw)) : std::nullopt;
        if (isLower) {
            lower_ = value;
        } else if (value && lower_ && *lower_ > *value) {
            lines_.report("range-descends", tokens[0].raw.begin,
                          "kept as written: the " + endAt(counted_.size()) + " is " +
                              textOf(*value) + ", below its lower end, " + textOf(*lower_));
        }
    }

    /// Takes a line behind those that count.
    void takeCut(const std::vector<MapToken>& tokens) {
        if (tokens.empty()) {
            lines_.checkNul();
        } else if (tokens.size() == kColorTokens) {
            cutLine_ = cut_ == 0 ? lines_.number() : cutLine_;
            ++cut_;
        } else {
            reportSkipped(lines_.number(), columnOf(tokens));
        }
    }

    void reportSkipped(long long line, long long column) {
        findings_.add("line-skipped", line, column, "a line that is no colour");
    }

    void takeComponent(const char* name, const MapToken& token) {
        const std::int32_t value = lines_.checkInteger(token);
        if (value < 0 || value > 255) {
            lines_.report(
                "color-range", token.raw.begin,
                std::string(name) + " is kept as " + std::to_string(value) + ", beyond 0 to 255");
        }
    }

    void checkWhole() {
        if (counted_.size() < 2) {
            findings_.add("colors-none",
                          "has no two lines for an entry: one is shown from -9999 to 9999, with a "
                          "black lower end");
            return;
        }
        for (std::size_t i = 0; i < counted_.size() / 2 * 2; ++i) {
            if (!counted_[i].isColor()) {
                reportNoColor(i);
            }
        }
        if (counted_.size() % 2 == 1) {
            checkUnpaired(counted_.size() - 1);
        }
        if (cut_ > 0) {
            const auto colors = std::count_if(counted_.begin(), counted_.end(),
                                              [](const Line& line) { return line.isColor(); });
            findings_.add("colors-cut", cutLine_, 0,
                          "cut after " + std::to_string(kMaxLines) +
                              " lines: " + std::to_string(cut_) + " of " +
                              std::to_string(colors + cut_) + " colours are not read");
        }
    }

    void reportNoColor(std::size_t index) {
        const Line& line = counted_[index];
        const std::string what = line.tokens == 0 ? "a blank line"
                                 : line.tokens > kColorTokens
                                     ? "a line of more than four words"
                                     : "a line of " + std::to_string(line.tokens) +
                                           (line.tokens == 1 ? " word" : " words");
        findings_.add("no-color", static_cast<long long>(index) + 1, line.column,
                      what + " is no colour, but counts as the " + endAt(index + 1) +
                          ", which stays as it was before");
    }

    void checkUnpaired(std::size_t index) {
        const Line& line = counted_[index];
        const auto number = static_cast<long long>(index) + 1;
        if (line.isColor()) {
            findings_.add("color-unpaired", number, line.column,
                          "the " + endAt(index + 1) + " has no upper end: the entry is not shown");
        } else if (line.tokens > 0) {
            reportSkipped(number, line.column);
        }
    }

    Findings findings_;
    MapLines lines_;
    std::vector<Line> counted_;
    std::optional<float> lower_;  // end of the entry that the last line began
    long long cut_ = 0;           // colours behind the lines that count
    long long cutLine_ = 0;       // of the first of them
};

}  // namespace

RuleTable clrRules() {
    return kClrRules;
}

Findings checkClr(const QString& file) {
    return ClrWalk(file).run();
}

}  // namespace rfu
