#include "analysis/maps/ascMend.h"

#include <rfUtils/detail/numberPrefix.h>
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "analysis/maps/mapLines.h"
#include "analysis/maps/mapWords.h"
#include "analysis/support/decimals.h"
#include "analysis/support/inputError.h"
#include "analysis/support/numbers.h"

namespace rfu {

namespace {

/// Those of the loader, and from CentreX on those of other programs.
enum Key : std::size_t {
    Columns,
    Rows,
    CornerX,
    CornerY,
    CellSize,
    NoData,
    CentreX,
    CentreY,
    Width,
    Height
};
constexpr std::size_t kKeyCount = 10;

const std::vector<std::string_view> kKeys = {
    "ncols",        "nrows",     "xllcorner", "yllcorner", "cellsize",
    "NODATA_value", "xllcenter", "yllcenter", "dx",        "dy"};

constexpr std::size_t kMinRowTokens = 3;  // with fewer a line is no row to the loader

/// A line of a key and a value.
struct HeaderLine {
    LineSpan line;
    MapToken key;
    const char* valueBegin;
    const char* valueEnd;
    std::optional<MeantKey> meant;
    bool hasComma;      // whether the value is one of a decimal comma, two tokens to the loader
    std::string word;   // the key as it is to be
    std::string value;  // likewise
    bool isRemoved = false;

    bool is(Key sought) const { return meant && meant->index == sought && !isRemoved; }
    bool isSpelled() const { return meant && word == kKeys[meant->index]; }
};

bool isNumber(const detail::RawToken& token) {
    const std::string_view text = writtenText(token);
    return parseNumber(text) || isInfinityOrNan(text);
}

/// Whether a comma stands between digits. @param at not the first character of its line
bool isDecimalComma(const char* at) {
    return *at == ',' && detail::isDigit(at[-1]) && detail::isDigit(at[1]);
}

std::size_t cellsAsRead(const char* row) {
    std::size_t cells = 0;
    while (!detail::nextRawToken(row).atLineEnd()) {
        ++cells;
    }
    return cells;
}

/// A row with points for its decimal commas.
std::string withPoints(const char* row) {
    std::string text = row;
    for (std::size_t i = 1; i < text.size(); ++i) {
        text[i] = isDecimalComma(row + i) ? '.' : text[i];
    }
    return text;
}

/// How many numbers a row has; nothing if something else is in it.
std::optional<std::size_t> numbersIn(const std::string& row) {
    const char* cursor = row.c_str();
    for (std::size_t numbers = 0;; ++numbers) {
        const detail::RawToken token = detail::nextRawToken(cursor);
        if (token.atLineEnd()) {
            return numbers;
        }
        if (!isNumber(token)) {
            return std::nullopt;
        }
    }
}

class AscMender {
public:
    AscMender(std::string_view file, const RuleNames& ignored) : lines_(file, ignored) {
        for (const LineSpan& line : lines_.lines()) {
            if (!takeHeaderLine(line)) {
                takeRow(line);
            }
        }
    }

    Mend run() {
        const bool hasCommas = mendCommas();
        mendKeys();
        mendCellSize();
        mendCentre(CentreX, CornerX);
        mendCentre(CentreY, CornerY);
        const HeaderLine* const misplaced = misplacedNoData();
        for (const HeaderLine& header : header_) {
            if (&header != misplaced) {
                write(header);
            }
        }
        if (misplaced != nullptr) {
            moveToRows(*misplaced);
        }
        if (!hasCommas) {
            shortenCells();
        }
        return lines_.take();
    }

private:
    std::optional<std::string> inFewerCharacters(const detail::RawToken& token) const {
        return lines_.mends("token-cut") ? shortened(token) : std::nullopt;
    }

    /// @return false for a line that is no key with a value
    bool takeHeaderLine(const LineSpan& line) {
        const std::vector<MapToken> tokens = tokensOf(lines_.text(line), kMinRowTokens + 1);
        if (tokens.size() < 2 || isNumber(tokens[0].raw)) {
            return false;
        }
        const char* const begin = tokens[1].raw.begin;
        const char* const end = tokens.back().raw.end;
        const auto meant = meantKey(tokens[0].text, kKeys);
        const bool hasComma = lines_.mends("row-width") && tokens.size() == kMinRowTokens &&
                              meant && parseNumber(withPoints(std::string(begin, end).c_str()));
        if (tokens.size() > 2 && !hasComma) {
            return false;
        }
        std::string value(begin, end);
        header_.push_back({line, tokens[0], begin, end, meant, hasComma, tokens[0].text,
                           hasComma ? value : inFewerCharacters(tokens[1].raw).value_or(value)});
        return true;
    }

    void takeRow(const LineSpan& line) {
        const std::vector<MapToken> tokens = tokensOf(lines_.text(line), kMinRowTokens);
        if (tokens.size() == kMinRowTokens) {
            rows_.push_back(line);
            areRowsNumbers_ = areRowsNumbers_ && isNumber(tokens[0].raw);
        }
    }

    /// The last line of a key, which counts; null if there is none, or none that can be mended.
    HeaderLine* find(Key key) {
        const auto found = std::find_if(header_.rbegin(), header_.rend(),
                                        [key](const HeaderLine& header) { return header.is(key); });
        return found != header_.rend() ? &*found : nullptr;
    }

    std::size_t count(Key key) const {
        return static_cast<std::size_t>(
            std::count_if(header_.begin(), header_.end(),
                          [key](const HeaderLine& header) { return header.is(key); }));
    }

    /// Whether every row has its cells with decimal commas, and none has them with commas that separate.
    bool rowsHaveCommas(std::size_t columns, const LineSpan*& doubtful) const {
        bool isCertain = true;
        bool hasCommas = false;
        for (const LineSpan& row : rows_) {
            const char* const text = lines_.text(row);
            const std::string points = withPoints(text);
            if (numbersIn(points) != columns) {
                return false;
            }
            const bool isSame = points == text;
            hasCommas = hasCommas || !isSame;
            if (cellsAsRead(text) == columns && isCertain) {
                isCertain = false;
                doubtful = &row;
            }
        }
        return hasCommas;
    }

    /// @return whether commas are decimal ones
    bool mendCommas() {
        if (!lines_.mends("row-width")) {
            return false;
        }
        const HeaderLine* const columns = find(Columns);
        const auto number = columns != nullptr ? parseInteger(columns->value) : std::nullopt;
        const LineSpan* doubtful = nullptr;
        const bool hasCommas =
            number && *number > 0 && rowsHaveCommas(static_cast<std::size_t>(*number), doubtful);
        if (hasCommas && doubtful != nullptr) {
            lines_.doubt(*doubtful,
                         "other rows have " + std::to_string(*number) +
                             " cells only if their commas are decimal points, and this one has as "
                             "many either way");
        }
        const bool isCertain = hasCommas && doubtful == nullptr;
        for (HeaderLine& header : header_) {
            if (header.hasComma && isCertain) {
                header.value = withPoints(header.value.c_str());
                const char* cursor = header.value.c_str();
                header.value =
                    inFewerCharacters(detail::nextRawToken(cursor)).value_or(header.value);
            } else if (header.hasComma) {
                lines_.doubt(header.line, rfu::quoted(header.value) +
                                              " may be a number with a decimal comma, but the rows "
                                              "do not show that commas are decimal points");
            }
        }
        for (const LineSpan& row : rows_) {
            if (isCertain) {
                writeRow(row);
            }
        }
        return isCertain;
    }

    void writeRow(const LineSpan& row) {
        const char* const text = lines_.text(row);
        const std::string points = withPoints(text);
        const char* cursor = points.c_str();
        for (;;) {
            const detail::RawToken token = detail::nextRawToken(cursor);
            if (token.atLineEnd()) {
                return;
            }
            const char* const begin = text + (token.begin - points.c_str());
            const std::string_view written(begin,
                                           static_cast<std::size_t>(token.end - token.begin));
            const std::string meant =
                inFewerCharacters(token).value_or(std::string(writtenText(token)));
            if (meant != written) {
                lines_.replace(begin, begin + written.size(), meant);
            }
        }
    }

    /// Spells keys as the loader knows them.
    void mendKeys() {
        std::array<std::size_t, kKeyCount> counts{};
        for (std::size_t key = 0; key < kKeyCount; ++key) {
            counts[key] = count(static_cast<Key>(key));
        }
        for (HeaderLine& header : header_) {
            if (!header.meant || header.isSpelled()) {
                continue;
            }
            const bool isForeign = header.meant->isSameWord && header.meant->index >= CentreX;
            if (!isForeign && !lines_.mends(ruleOf(*header.meant))) {
                header.meant.reset();
                continue;
            }
            const std::string_view key = kKeys[header.meant->index];
            const bool isAlone = counts[header.meant->index] == 1;
            if (header.meant->isSameWord && !isAlone) {
                lines_.doubt(header.line, header.word + " is meant to be " + std::string(key) +
                                              ", which stands in another line too");
            }
            if (isAlone && (header.meant->isSameWord || parseNumber(header.value))) {
                header.word = key;
            } else {
                header.meant.reset();  // stays as it is
            }
        }
    }

    /// Takes equal dx and dy for the cell size.
    void mendCellSize() {
        if (!lines_.mends("key-not-read")) {
            return;
        }
        HeaderLine* const width = find(Width);
        HeaderLine* const height = find(Height);
        HeaderLine* const size = find(CellSize);
        const auto isSame = [](const HeaderLine* a, const HeaderLine* b) {
            return a == nullptr || b == nullptr || isSameDecimal(a->value, b->value);
        };
        if ((size == nullptr && (width == nullptr || height == nullptr)) ||
            !isSame(width, height) || !isSame(width, size) || !isSame(height, size) ||
            count(Width) > 1 || count(Height) > 1) {
            return;  // cells that are not square, or of which only one side is known
        }
        for (HeaderLine* const side : {width, height}) {
            if (side != nullptr) {
                side->isRemoved = true;
            }
        }
        if (size == nullptr) {
            width->isRemoved = false;
            width->meant->index = CellSize;
            width->word = kKeys[CellSize];
        }
    }

    /// Takes the centre of the lower left cell for its corner.
    void mendCentre(Key centreKey, Key cornerKey) {
        HeaderLine* const centre = find(centreKey);
        const HeaderLine* const corner = find(cornerKey);
        const HeaderLine* const size = find(CellSize);
        if (centre == nullptr || size == nullptr || !lines_.mends("key-not-read")) {
            return;
        }
        const auto place = minusHalf(centre->value, size->value);
        if (!place || place->size() > detail::kMaxTokenLength) {
            return;
        }
        if (count(centreKey) > 1 || (corner != nullptr && !isSameDecimal(corner->value, *place))) {
            lines_.doubt(centre->line,
                         std::string(kKeys[centreKey]) + " and " +
                             std::string(kKeys[corner != nullptr ? cornerKey : centreKey]) +
                             " in another line give two places");
        } else if (corner != nullptr) {
            centre->isRemoved = true;
        } else {
            centre->meant->index = cornerKey;
            centre->word = kKeys[cornerKey];
            centre->value = *place;
        }
    }

    /// The line that has to be the last one in front of the rows and is not; null for none.
    const HeaderLine* misplacedNoData() {
        const HeaderLine* const noData = find(NoData);
        if (noData == nullptr || count(NoData) > 1 || rows_.empty() || !areRowsNumbers_) {
            return nullptr;
        }
        const auto isLast = [&] {
            auto line = std::find_if(
                lines_.lines().begin(), lines_.lines().end(),
                [&](const LineSpan& known) { return known.begin == noData->line.begin; });
            ++line;
            while (line->begin != rows_.front().begin && isRemoved(*line)) {
                ++line;
            }
            return line->begin == rows_.front().begin;
        };
        const bool isBefore = noData->line.begin < rows_.front().begin;
        const bool isMoved = lines_.mends(isBefore ? "row-misplaced" : "nodata-missing");
        return (isBefore && isLast()) || !isMoved ? nullptr : noData;
    }

    bool isRemoved(const LineSpan& line) const {
        return std::any_of(header_.begin(), header_.end(), [&](const HeaderLine& header) {
            return header.line.begin == line.begin && header.isRemoved;
        });
    }

    /// Writes what is new in a line where it stands.
    void write(const HeaderLine& header) {
        if (header.isRemoved) {
            lines_.remove(header.line);
            return;
        }
        if (header.isSpelled() && header.meant->index < CentreX && header.word != header.key.text) {
            lines_.replace(header.key.raw, header.word);
        }
        if (header.value !=
            std::string_view(header.valueBegin,
                             static_cast<std::size_t>(header.valueEnd - header.valueBegin))) {
            lines_.replace(header.valueBegin, header.valueEnd, header.value);
        }
    }

    /// Moves a line to the place in front of the first row.
    void moveToRows(const HeaderLine& header) {
        std::string line(lines_.text(header.line), header.key.raw.begin);
        line += header.word;
        line.append(header.key.raw.end, header.valueBegin).append(header.value);
        line += lines_.written(header.line)
                    .substr(static_cast<std::size_t>(header.valueEnd - lines_.text(header.line)));
        const std::string_view row = lines_.written(rows_.front());
        if (line.back() != '\n') {
            line += row.size() > 1 && row[row.size() - 2] == '\r' ? "\r\n" : "\n";
        }
        lines_.remove(header.line);
        lines_.insertBefore(rows_.front(), std::move(line));
    }

    void shortenCells() {
        for (const LineSpan& row : rows_) {
            shortenNumbers(lines_, row);
        }
    }

    MendLines lines_;
    std::vector<HeaderLine> header_;
    std::vector<LineSpan> rows_;
    bool areRowsNumbers_ = true;  // whether each row begins with a number
};

}  // namespace

Mend mendAsc(std::string_view file, const RuleNames& ignored) {
    return AscMender(file, ignored).run();
}

}  // namespace rfu
