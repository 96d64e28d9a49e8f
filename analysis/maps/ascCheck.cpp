#include "analysis/maps/ascCheck.h"

#include <rfUtils/geo/detail/plainDecimal.h>
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "analysis/maps/headerCheck.h"
#include "analysis/maps/mapLines.h"
#include "analysis/maps/mapRules.h"
#include "analysis/support/inputError.h"
#include "analysis/support/numbers.h"
#include "analysis/support/words.h"

namespace rfu {

namespace {

constexpr Rule kAscRules[] = {
    map_rules::kLineCut,
    map_rules::kTextAfterNul,
    map_rules::kTokenCut,
    map_rules::kNoNumber,
    map_rules::kNoWholeNumber,
    map_rules::kNumberInfinite,
    map_rules::kKeyCase,
    {"key-not-read", Severity::Error,
     "The place of a grid is given by xllcorner, yllcorner and cellsize. xllcenter, yllcenter, dx "
     "and dy, which other "
     "programs write too, are ignored: the map lies at 0, 0 or has cells of size 0.",
     "xllcenter 500015",
     "Give xllcorner and yllcorner, half a cell less than xllcenter and yllcenter, and cellsize in "
     "place of equal dx "
     "and dy."},
    map_rules::kKeyNeedsOneValue,
    map_rules::kKeyUnknown,
    map_rules::kKeyRepeated,
    map_rules::kSizeRefused,
    map_rules::kSizeUnusable,
    map_rules::kCellSize,
    {"size-changed", Severity::Error,
     "The rows before a line that changes ncols were read with another number of columns.",
     "ncols 4\n1 2 3 4\nncols 5\n1 2 3 4 5", "Put the header lines in front of the rows."},
    {"columns-too-few", Severity::Error,
     "A line of fewer than three cells is no row to the loader: grids of one or two columns have "
     "no cells.",
     "ncols 2", "Add columns of the no-data value, so that there are three."},
    {"nodata-missing", Severity::Error,
     "The loader counts rows from the line after NODATA_value. Without that line it counts from "
     "the first line of the "
     "file: behind a header of five lines the first row becomes row 5.",
     "ncols 3\nnrows 1\ncellsize 30\n1 2 3",
     "Add NODATA_value as the last header line: NODATA_value -9999."},
    {"row-width", Severity::Error,
     "A row has more or fewer cells than ncols. Missing cells become 0, and those beyond ncols are "
     "not read. Rows that "
     "are wrapped over several lines become several rows, and numbers with a decimal comma become "
     "two cells each.",
     "ncols 4\n1,5 2,5 3,5 4,5",
     "Write each row in one line, its cells separated by blanks, with decimal points."},
    {"row-misplaced", Severity::Error,
     "The loader places a row by the number of its line, counted from the line after NODATA_value. "
     "A header line or a "
     "blank line behind it leaves a row of the map unset and moves the others down.",
     "NODATA_value -9999\ncellsize 30\n1 2 3",
     "Make NODATA_value the last header line, and delete blank lines between rows."},
    {"row-beyond-grid", Severity::Error,
     "There are more rows than nrows. Those beyond it are not shown.",
     "nrows 1\nNODATA_value -9999\n1 2 3\n4 5 6", "Correct nrows, or delete the rows."},
    {"rows-missing", Severity::Error,
     "There are fewer rows than nrows. The missing ones keep what the map held before, at first 0.",
     "nrows 3\nNODATA_value -9999\n1 2 3",
     "Correct nrows, or complete the rows. A file that ends early was often copied while it was "
     "written."},
    map_rules::kLineSkipped};

constexpr std::size_t kMinRowTokens = 3;  // with fewer a line is no row to the loader

/// Keys that change the map for other readers.
bool isMeaningful(std::string_view key) {
    static constexpr std::string_view kKeys[] = {"xllcenter", "yllcenter", "dx", "dy"};
    return std::any_of(std::begin(kKeys), std::end(kKeys),
                       [key](std::string_view known) { return isSameWord(known, key); });
}

/// Whether a line has enough tokens for a row.
bool isRow(const char* line) {
    std::size_t tokens = 0;
    while (tokens < kMinRowTokens && !detail::nextRawToken(line).atLineEnd()) {
        ++tokens;
    }
    return tokens == kMinRowTokens;
}

/// The lines of a grid, in the order in which the loader reads them.
class AscWalk {
public:
    explicit AscWalk(const QString& file)
        : findings_(file, kAscRules),
          lines_(findings_, detail::kMaxAscLine),
          header_(lines_, detail::kAscHeader, "keys are in lower case, except NODATA_value") {}

    AscCheck run() {
        while (!header_.isRefused()) {
            const char* const line = lines_.next();
            if (line == nullptr) {
                break;
            }
            lines_.checkLength();
            lines_.checkNul();
            if (isRow(line)) {
                takeRow(line);
            } else {
                takeShortLine(tokensOf(line, kMinRowTokens - 1));
            }
        }
        header_.checkSize(findings_);
        checkRowCount();
        findings_.sort();
        return {std::move(findings_), header_.hasNoData(), header_.missingPlaces()};
    }

private:
    void takeRow(const char* line) {
        const MapToken first = tokensOf(line, 1).front();
        const bool hasKey = header_.isKey(first.text) || isMeaningful(first.text);
        if (hasKey) {
            lines_.report("key-needs-one-value", first.raw.begin,
                          first.text +
                              " is not read: a line of more than two words is a row of cells" +
                              aboutDecimalComma(tokensOf(line, kMinRowTokens)));
        }
        ++rows_;
        const long long row = lines_.number() - headerLines_ - 1;
        const bool isMisplaced = header_.columns() > 0 && row != nextRow_;
        if (placed_.size() < kMaxPlaced && !isMisplaced) {
            placed_.push_back({lines_.number(), row});
        }
        if (header_.columns() <= 0) {
            if (unread_.size() < Findings::kMaxKept) {
                unread_.push_back(lines_.number());
            }
            return;
        }
        if (isMisplaced && headerLines_ == 0) {
            lines_.report(
                "nodata-missing", nullptr,
                hasKey ? "a row of cells to the library, which counts rows from NODATA_value; "
                         "none stands before this line: leave a key and one value in it"
                       : "no NODATA_value line stands before the rows, which are counted from "
                         "it: add one as the last header line, such as NODATA_value -9999");
        } else if (isMisplaced) {
            lines_.report("row-misplaced", nullptr,
                          "its rows are not placed from row 0 on without a gap: NODATA_value has "
                          "to be the last header line, and no line between rows may be blank");
        }
        nextRow_ = row + 1;
        const long long cells = checkCells(line);
        if (cells != header_.columns()) {
            reportWidth(cells);
        }
    }

    void reportWidth(long long cells) {
        const int columns = header_.columns();
        const bool isSeveral = cells % columns == 0;
        lines_.report(
            "row-width", nullptr,
            "a row of " + std::to_string(cells) + " cells in a grid of " + std::to_string(columns) +
                " columns: " +
                (cells < columns ? "the missing ones are read as 0" : "those beyond are not read") +
                (isSeveral ? "; each row needs a line of its own" : ""));
    }

    /// @return how many cells there are
    long long checkCells(const char* line) {
        for (long long cells = 0;; ++cells) {
            line = detail::skipSeparators(line);
            const detail::PlainDecimal number = detail::plainDecimal(line, lines_.lineEnd());
            if (number.end != nullptr) {
                line = number.end;
                continue;
            }
            const detail::RawToken token = detail::nextRawToken(line);
            if (token.atLineEnd()) {
                return cells;
            }
            if (!isInfinityOrNan(writtenText(token))) {
                lines_.checkSingle(token);
            }
        }
    }

    void takeShortLine(const std::vector<MapToken>& tokens) {
        if (tokens.size() == 2) {
            takeHeaderLine(tokens[0], tokens[1]);
        } else if (tokens.size() == 1 && header_.isKey(tokens[0].text)) {
            lines_.report("key-needs-one-value", tokens[0].raw.begin,
                          tokens[0].text + " is not read without a value");
        } else if (tokens.size() == 1) {
            lines_.report("line-skipped", tokens[0].raw.begin, "a line of one token is not read");
        }
    }

    void takeHeaderLine(const MapToken& key, const MapToken& value) {
        const int columns = header_.columns();
        if (header_.take(key, value)) {
            if (rows_ > 0 && header_.columns() != columns) {
                lines_.report("size-changed", value.raw.begin,
                              "the rows before this line are read with " + std::to_string(columns) +
                                  " columns");
                for (const long long row : std::exchange(unread_, {})) {
                    findings_.add("size-changed", row, 0,
                                  "not read: the number of columns stands behind it, in line " +
                                      std::to_string(lines_.number()));
                }
            }
            if (key.text == detail::kAscLastKey) {
                headerLines_ = lines_.number();
            }
        } else if (isMeaningful(key.text)) {
            lines_.report("key-not-read", key.raw.begin,
                          key.text +
                              " is not read: the place of a map is given by xllcorner, yllcorner "
                              "and cellsize");
        } else if (parseNumber(key.text)) {
            lines_.report("line-skipped", key.raw.begin, "a line of two numbers is not read");
        } else {
            header_.reportIgnored(key, header_.isKey(key.text));
        }
    }

    void checkRowCount() {
        if (header_.isRefused() || header_.columns() <= 0 || header_.rows() <= 0) {
            return;
        }
        if (header_.columns() < static_cast<std::int32_t>(kMinRowTokens)) {
            findings_.add("columns-too-few",
                          "a grid of " + std::to_string(header_.columns()) +
                              " columns is not read: a line of fewer than " +
                              std::to_string(kMinRowTokens) +
                              " cells is no row to the library; add columns of no-data");
            return;
        }
        const std::string announced = std::to_string(header_.rows());
        if (rows_ < header_.rows()) {
            findings_.add("rows-missing",
                          "only " + std::to_string(rows_) + " of " + announced +
                              " rows: the others keep what the map held before, at first 0");
        }
        for (const PlacedRow& row : placed_) {
            if (row.row >= header_.rows()) {
                findings_.add("row-beyond-grid", row.line, 0,
                              "not shown: it becomes row " + std::to_string(row.row + 1) +
                                  " of a grid of " + announced);
            }
        }
    }

    /// A row, and where the loader places it.
    struct PlacedRow {
        long long line;
        long long row;
    };
    static constexpr std::size_t kMaxPlaced = detail::kMaxRows + Findings::kMaxKept;

    Findings findings_;
    MapLines lines_;
    HeaderCheck header_;
    long long headerLines_ = 0;
    long long rows_ = 0;
    std::vector<long long> unread_;  // lines of rows for which there are no columns yet
    long long nextRow_ = 0;          // the grid row that the loader fills next
    std::vector<PlacedRow> placed_;  // but for those of which something else is said
};

}  // namespace

RuleTable ascRules() {
    return kAscRules;
}

AscCheck checkAsc(const QString& file) {
    return AscWalk(file).run();
}

}  // namespace rfu
