// Grids that are damaged in ways that have one right mend become the grids that they were: the mended file passes its check
// in silence, loads what the undamaged one does, and is mended no further.
#include <analysis/maps/mapFiles.h>
#include <rfUtils/geo/veltaGEO.h>
#include <support/samples.h>

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "analysis/checks/mendFile.h"
#include "analysis/maps/ascCheck.h"
#include "analysis/maps/mapMend.h"
#include "analysis/support/edits.h"

namespace rfu::test {
namespace {

/// A decimal number of at most two decimals, which every double of its size tells apart.
std::string decimal(long long hundredths, char point = '.') {
    const std::string digits = std::to_string(std::llabs(hundredths) % 100);
    return (hundredths < 0 ? "-" : "") + std::to_string(std::llabs(hundredths) / 100) + point +
           (digits.size() < 2 ? "0" : "") + digits;
}

struct HeaderItem {
    std::string key;
    long long hundredths;
    bool isWhole = false;
};

struct Grid {
    std::size_t columns;
    std::size_t rows;
    std::vector<HeaderItem> header;  // in the order of the loader's keys, NODATA_value last
    std::vector<long long> cells;    // hundredths
};

Grid randomGrid(Samples& samples) {
    const auto whole = [&](std::size_t least) {
        return least + static_cast<std::size_t>(samples.below(6));
    };
    const auto number = [&] { return static_cast<long long>(samples.below(2000000)) - 1000000; };
    Grid grid{whole(3), whole(1), {}, {}};
    const long long size = 2 + 2 * static_cast<long long>(samples.below(5000));
    grid.header = {{"ncols", 100 * static_cast<long long>(grid.columns), true},
                   {"nrows", 100 * static_cast<long long>(grid.rows), true},
                   {"xllcorner", number()},
                   {"yllcorner", number()},
                   {"cellsize", size},
                   {"NODATA_value", -999900}};
    for (std::size_t i = 0; i < grid.columns * grid.rows; ++i) {
        grid.cells.push_back(number());
    }
    return grid;
}

/// What is wrong with a file.
struct Damage {
    bool hasCapitals = false;
    bool hasCentre = false;
    bool hasSides = false;
    bool hasMisplacedNoData = false;
    bool hasLongNumbers = false;
    bool hasCommas = false;
    bool hasMark = false;
    enum { Lf, CrLf, Cr } lineEnds = Lf;
    bool isUtf16 = false;
};

Damage randomDamage(Samples& samples) {
    const auto rarely = [&] { return samples.below(4) == 0; };
    Damage damage;
    damage.hasCapitals = rarely();
    damage.hasCentre = rarely();
    damage.hasSides = rarely();
    damage.hasMisplacedNoData = rarely();
    damage.hasLongNumbers = rarely();
    damage.hasCommas = rarely();
    damage.hasMark = rarely();
    damage.lineEnds = rarely() ? Damage::CrLf : rarely() ? Damage::Cr : Damage::Lf;
    damage.isUtf16 = !damage.hasMark && rarely();
    return damage;
}

std::string inUtf16(const std::string& text) {
    std::string bytes = "\xFF\xFE";
    for (const char c : text) {
        bytes += {c, '\0'};
    }
    return bytes;
}

std::string written(const Grid& grid, const Damage& damage, Samples& samples) {
    const std::string end = damage.lineEnds == Damage::CrLf ? "\r\n"
                            : damage.lineEnds == Damage::Cr ? "\r"
                                                            : "\n";
    const char point = damage.hasCommas ? ',' : '.';
    const auto number = [&](long long hundredths) {
        std::string text = decimal(hundredths, point);
        if (damage.hasLongNumbers && samples.below(3) == 0) {
            const std::string zeros(60 + samples.below(10), '0');
            samples.coin() ? text.append(zeros + "1") : text.insert(text[0] == '-' ? 1 : 0, zeros);
        }
        return text;
    };
    std::vector<std::string> lines;
    for (const HeaderItem& item : grid.header) {
        const long long half = grid.header[4].hundredths / 2;
        const bool isCorner = item.key[1] == 'l';
        std::string key =
            damage.hasCentre && isCorner ? item.key.substr(0, 4) + "center" : item.key;
        if (damage.hasCapitals) {
            std::transform(key.begin(), key.end(), key.begin(), [&](char c) {
                return samples.coin() ? static_cast<char>(std::toupper(c)) : c;
            });
        }
        const std::string value =
            item.isWhole
                ? std::to_string(item.hundredths / 100)
                : decimal(item.hundredths + (damage.hasCentre && isCorner ? half : 0), point);
        if (damage.hasSides && item.key == "cellsize") {
            lines.push_back("dx " + value);
            lines.push_back("dy " + value);
        } else {
            lines.push_back(key.append(" ").append(value));
        }
    }
    if (damage.hasMisplacedNoData) {
        const std::string noData = lines.back();
        lines.pop_back();
        lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(samples.below(lines.size())),
                     noData);
    }
    for (std::size_t i = 0; i < grid.cells.size(); ++i) {
        if (i % grid.columns == 0) {
            lines.emplace_back();
        }
        lines.back() += (i % grid.columns == 0 ? ""
                         : samples.coin()      ? " "
                                               : "\t") +
                        number(grid.cells[i]);
    }
    std::string text = damage.hasMark ? "\xEF\xBB\xBF" : "";
    for (const std::string& line : lines) {
        text += line + end;
    }
    return damage.isUtf16 ? inUtf16(text) : text;
}

class MendingTest : public MapFiles {};

bool areSame(const veltaGEO& a, const veltaGEO& b) {
    bool isSame = a.nCols == b.nCols && a.nRows == b.nRows && same(a.originX, b.originX) &&
                  same(a.originY, b.originY) && same(a.cellSize, b.cellSize) &&
                  same(a.noData, b.noData);
    for (int row = 0; row < a.nRows && isSame; ++row) {
        isSame = std::equal(a.grid[row], a.grid[row] + a.nCols, b.grid[row], b.grid[row] + a.nCols);
    }
    return isSame;
}

TEST_F(MendingTest, GivesTheGridThatIsMeant) {
    const auto meant = std::make_unique<veltaGEO>();
    const auto read = std::make_unique<veltaGEO>();
    Samples samples(20261122);
    for (int i = isLongRun() ? 100000 : caseCount() / 40; i > 0 && !HasFailure(); --i) {
        const Grid grid = randomGrid(samples);
        ASSERT_TRUE(meant->loadASCFile(write("meant.asc", written(grid, {}, samples))));
        const std::string broken = written(grid, randomDamage(samples), samples);
        SCOPED_TRACE(testing::PrintToString(broken));
        const Mend mend = mendAscFile(broken);
        ASSERT_TRUE(mend.doubts.empty()) << mend.doubts[0].text;
        const std::string mended = withEdits(broken, mend.edits);
        const QString file = write("map.asc", mended);
        EXPECT_EQ(listed(checkAsc(file).findings), std::vector<std::string>()) << mended;
        EXPECT_TRUE(read->loadASCFile(file));
        EXPECT_TRUE(areSame(*meant, *read)) << mended;
        EXPECT_TRUE(mendAscFile(mended).edits.empty()) << mended;
    }
}

}  // namespace
}  // namespace rfu::test
