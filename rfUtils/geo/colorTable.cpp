#include "detail/lineReader.h"
#include "detail/tokenizer.h"

#include <rfUtils/detail/numberPrefix.h>
#include <rfUtils/detail/regularFile.h>
#include <rfUtils/detail/saturate.h>
#include <rfUtils/geo/veltaGEO.h>

#include <array>
#include <cstdint>
#include <string_view>
#include <type_traits>

using namespace rfu::detail;

namespace {

constexpr std::int32_t kMaxEntries = std::extent_v<decltype(veltaGEO::lowValue)>;

/// One entry over the usual values of a map, with a black low end; the high colour stays.
void installDefaultTable(veltaGEO& map) {
    map.colorCount = 1;
    map.lowValue[0] = -9999.0F;
    map.highValue[0] = 9999.0F;
    map.lowRed[0] = 0;
    map.lowGreen[0] = 0;
    map.lowBlue[0] = 0;
}

/// Even lines (from 0) hold the low end of an entry, odd ones its high end.
void storeColorLine(veltaGEO& map, std::int32_t lineNumber,
                    const std::array<std::string_view, 5>& tokens) {
    const auto [value, red, green, blue, none] = tokens;
    const std::int32_t entry = lineNumber / 2;
    const bool low = lineNumber % 2 == 0;
    (low ? map.lowValue : map.highValue)[entry] = toFloat(decimalPrefix(value));
    (low ? map.lowRed : map.highRed)[entry] = integerPrefix(red);
    (low ? map.lowGreen : map.highGreen)[entry] = integerPrefix(green);
    (low ? map.lowBlue : map.highBlue)[entry] = integerPrefix(blue);
}

}  // namespace

bool veltaGEO::LoadColorTable(const QString& fileName) {
    installDefaultTable(*this);
    RegularFile file(GetFileNameExtDel(fileName) + QLatin1String(".clr"));
    if (!file.open()) {
        setErrMsg(QStringLiteral("CLR file not found. Unable to display in color."));
        return false;
    }
    LineReader lines(file.device(), kMaxClrLine);
    std::int32_t lineCount = 0;
    for (; lineCount < 2 * kMaxEntries; ++lineCount) {
        char* const line = lines.next();
        if (line == nullptr) {
            break;
        }
        std::array<std::string_view, 5> tokens;
        if (Tokenizer(line).take(tokens) == 4) {
            storeColorLine(*this, lineCount, tokens);
        }
    }
    colorCount = lineCount / 2;
    if (colorCount == 0) {
        installDefaultTable(*this);
    }
    return true;
}
