// The first bytes choose the header's fields and the process's text codec, the rest is the file.
// For any bytes:
// - the result, every field and the message are those of the format's rules, without a colour
//   table;
// - no cell outside the header's size changes, nor a byte beside the map;
// - under ISO 8859-1 the cells are the bytes of the file, and the no-data value behind its end;
// - under any codec a second load gives the same cells.
#include "support/guardedMap.h"
#include "support/input.h"
#include "support/require.h"
#include "support/scratchFile.h"

#include <QTextCodec>

#include <algorithm>
#include <array>
#include <climits>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <memory>
#include <string_view>
#include <vector>

using namespace rfu::fuzz;
using namespace rfu::test;

namespace {

constexpr int kMaxSize = 2048;

/// Mostly small, seldom a number at the bounds: a map of 16 MiB takes as long as thousands of small
/// ones.
int sizeOf(std::uint8_t byte) {
    static constexpr std::array<int, 6> kBounds = {-1,      INT_MIN,  kMaxSize + 1,
                                                   INT_MAX, kMaxSize, kMaxSize - 1};
    constexpr int kFirstBound = 256 - static_cast<int>(kBounds.size());
    return byte < kFirstBound ? byte % 32 : kBounds[static_cast<std::size_t>(byte - kFirstBound)];
}

/// Limits the columns of a map with many rows.
void limitCells(veltaGEO& map) {
    constexpr int kFew = 4;
    if (map.nCols > kFew && map.nRows > 32) {
        map.nCols %= kFew;
    }
}

/// Codecs that keep the file's name; the first keeps every byte.
const char* const kCodecs[] = {"ISO 8859-1", "UTF-8", "windows-1252", "Shift_JIS"};

bool hasByteOrderMark(std::string_view file) {
    const auto beginsWith = [file](std::string_view mark) {
        return file.substr(0, mark.size()) == mark;
    };
    return beginsWith("\xEF\xBB\xBF") || beginsWith("\xFE\xFF") || beginsWith("\xFF\xFE") ||
           beginsWith(std::string_view("\0\0\xFE\xFF", 4));
}

Rows rowsOf(const veltaGEO& map, std::string_view file) {
    Rows rows;
    const auto columns = static_cast<std::size_t>(std::max(map.nCols, 0));
    for (int row = 0; row < map.nRows; ++row) {
        std::vector<float>& cells = rows[row];
        cells.assign(columns, map.noData);
        for (float& cell : cells) {
            if (file.size() < sizeof cell) {
                file = {};  // an incomplete cell
                break;
            }
            std::memcpy(&cell, file.data(), sizeof cell);
            file.remove_prefix(sizeof cell);
        }
    }
    return rows;
}

/// Sets the fields that the run's header gives.
void announce(veltaGEO& map, Input header) {
    resetFields(map);
    map.nCols = sizeOf(header.byte());
    map.nRows = sizeOf(header.byte());
    limitCells(map);
    map.isFloat = header.byte() % 4 - 1;
    map.noData = header.bits<float>();
}

bool finish(veltaGEO& map) {
    if (map.nCols > kMaxSize) {
        map.errMsg = QStringLiteral("Too many columns in the file. Unable to open");
        return false;
    }
    if (map.nRows > kMaxSize) {
        map.errMsg = QStringLiteral("Too many rows in the file. Unable to open");
        return false;
    }
    storeLoaded(map);
    return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static ScratchFile file("map.bil");
    static GuardedMap guarded;
    static const auto expected = std::make_unique<veltaGEO>();

    Input input(data, size);
    const std::size_t codec = input.byte() % std::size(kCodecs);
    const Input header = input;
    constexpr std::size_t kHeaderBytes = 7;
    const std::string_view rest = input.rest();
    const std::string_view content = rest.substr(std::min(kHeaderBytes, rest.size()));
    file.write(content.data(), content.size());
    QTextCodec::setCodecForLocale(QTextCodec::codecForName(kCodecs[codec]));

    announce(*expected, header);
    const bool loads = finish(*expected);
    const bool reads = loads && expected->isFloat == 1;
    const Rows rows = reads ? rowsOf(*expected, content) : Rows();
    const auto load = [&] {
        guarded.open(rows);
        announce(guarded.map(), header);
        REQUIRE(guarded.map().loadBILFile(file.path()) == loads);
        REQUIRE(sameFields(guarded.map(), *expected));
        return guarded.take();
    };
    const Rows cells = load();
    if (codec == 0 && !hasByteOrderMark(content)) {
        REQUIRE(sameCells(cells, rows));
    } else {
        REQUIRE(sameCells(cells, load()));
    }
    return 0;
}
