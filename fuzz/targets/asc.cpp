// Holds for any bytes:
// - the answer, every field, every cell and the message are those of a plain restatement of the
//   format, without a colour table beside the file;
// - no other cell changes, nor a byte on either side of the map.
#include "support/guardedMap.h"
#include "support/mapText.h"
#include "support/require.h"
#include "support/scratchFile.h"

#include <memory>

using namespace rfu::fuzz;

namespace {

constexpr std::size_t kLineLimit = 1023999;
constexpr int kMostRows = 2048;

/// The map that a file gives.
struct Expectation {
    veltaGEO& map;
    Rows rows;

    bool load(std::string_view file) {
        map.isLoaded = 0;
        int row = 0;  // of the next line, if it is one of cells
        for (const std::string& line : linesOf(file, kLineLimit)) {
            const auto tokens = tokensOf(line);
            const int rowOfLine = row++;
            if (tokens.size() == 2) {
                if (!storeHeader(tokens[0], tokens[1])) {
                    return false;
                }
                if (tokens[0] == "NODATA_value") {
                    row = 0;
                }
            } else if (tokens.size() > 2 && rowOfLine < kMostRows && map.nCols > 0) {
                storeRow(rowOfLine, tokens);
            }
        }
        map.isLoaded = 1;
        map.isValid = 1;
        map.colorCount = 1;
        map.lowValue[0] = -9999.0F;
        map.highValue[0] = 9999.0F;
        map.lowRed[0] = map.lowGreen[0] = map.lowBlue[0] = 0;
        map.errMsg = QStringLiteral("Raster file loaded");
        return true;
    }

    bool storeHeader(const std::string& key, const std::string& value) {
        if (key == "ncols") {
            map.nCols = integerOf(value);
            if (map.nCols > 2048) {
                map.errMsg = QStringLiteral("Too many columns in the file. Unable to open");
                return false;
            }
        } else if (key == "nrows") {
            map.nRows = integerOf(value);
            if (map.nRows > 2048) {
                map.errMsg = QStringLiteral("Too many rows in the file. Unable to open");
                return false;
            }
        } else if (key == "xllcorner") {
            map.originX = decimalOf(value);
        } else if (key == "yllcorner") {
            map.originY = decimalOf(value);
        } else if (key == "cellsize") {
            map.cellSize = decimalOf(value);
        } else if (key == "NODATA_value") {
            map.noData = decimalOf(value);
        }
        return true;
    }

    /// A second header may place a row anew: what it does not cover stays.
    void storeRow(int row, const std::vector<std::string>& tokens) {
        const auto columns = static_cast<std::size_t>(map.nCols);
        std::vector<float>& cells = rows[row];
        cells.resize(std::max(cells.size(), columns));
        for (std::size_t column = 0; column < columns; ++column) {
            cells[column] = column < tokens.size() ? decimalOf(tokens[column]) : 0.0F;
        }
    }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static ScratchFile file("map.asc");
    static GuardedMap guarded;
    static const auto fields = std::make_unique<veltaGEO>();
    file.write(data, size);
    resetFields(*fields);
    Expectation expected{*fields, {}};
    const bool loads = expected.load({reinterpret_cast<const char*>(data), size});

    guarded.open(expected.rows);
    REQUIRE(guarded.map().loadASCFile(file.path()) == loads);
    REQUIRE(sameFields(guarded.map(), expected.map));
    REQUIRE(sameCells(guarded.take(), expected.rows));
    return 0;
}
