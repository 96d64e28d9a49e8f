#include "detail/gridHeader.h"
#include "detail/lineReader.h"
#include "detail/plainDecimal.h"
#include "detail/tokenizer.h"

#include <rfUtils/detail/numberPrefix.h>
#include <rfUtils/detail/regularFile.h>
#include <rfUtils/detail/saturate.h>
#include <rfUtils/geo/veltaGEO.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

using namespace rfu::detail;

namespace {

using FirstTokens = std::array<std::string_view, 3>;

float cellValue(std::string_view token) {
    return toFloat(decimalPrefix(token));
}

/// The cell of the next token, 0 without one.
float nextCell(const char*& cursor, const char* lineEnd) {
    cursor = skipSeparators(cursor);
    const PlainDecimal number = plainDecimal(cursor, lineEnd);
    if (number.end == nullptr) {
        char text[kMaxTokenLength];
        return cellValue(tokenText(nextRawToken(cursor), text));
    }
    cursor = number.end;
    return toFloat(number.value);
}

/// Fills `columns` cells from the first tokens of a line and those at `rest`; a cell without a token
/// becomes 0. Inlined, the loop would share its registers with the line reader.
[[gnu::noinline]] void readRow(const FirstTokens& first, const char* rest, const char* lineEnd,
                               float* row, std::int32_t columns) {
    const auto taken = std::min(columns, static_cast<std::int32_t>(first.size()));
    for (std::int32_t column = 0; column < taken; ++column) {
        row[column] = cellValue(first[static_cast<std::size_t>(column)]);
    }
    for (std::int32_t column = taken; column < columns; ++column) {
        row[column] = nextCell(rest, lineEnd);
    }
}

}  // namespace

bool veltaGEO::loadASCFile(const QString& fileName) {
    isLoaded = 0;
    RegularFile file(GetFileNameExtDel(fileName) + QLatin1String(".asc"));
    if (!file.open()) {
        setErrMsg(QStringLiteral("ASC file not found"));
        return false;
    }
    LineReader lines(file.device(), kMaxAscLine);
    std::int64_t headerLines = 0;
    while (char* const line = lines.next()) {
        Tokenizer tokenizer(line);
        FirstTokens first;
        const std::size_t count = tokenizer.take(first);
        const std::int64_t row = lines.number() - headerLines - 1;
        if (count == 2) {
            if (!storeGridHeader(*this, kAscHeader, first[0], first[1])) {
                return false;
            }
            if (first[0] == kAscLastKey) {
                headerLines = lines.number();
            }
        } else if (count == first.size() && row < kMaxRows) {
            readRow(first, tokenizer.cursor(), lines.lineEnd(), grid[row],
                    std::min(nCols, kMaxColumns));
        }
    }
    return finishRaster(*this, fileName);
}
