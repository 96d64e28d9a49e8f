#include "analysis/maps/ascCheck.h"

#include <cstddef>
#include <string>
#include <vector>

#include "mapFiles.h"

namespace rfu::test {
namespace {

using Expected = std::vector<std::string>;

struct AscRow {
    const char* name;
    std::string file;
    Expected findings;
};

class AscCheckTest : public MapFiles {
protected:
    void expect(const std::vector<AscRow>& rows) const {
        for (const AscRow& row : rows) {
            EXPECT_EQ(listed(checkAsc(write("map.asc", row.file)).findings), row.findings)
                << row.name;
        }
    }
};

const std::string kAscHeader = "ncols 4\nnrows 2\ncellsize 30\nNODATA_value -9999\n";  // four lines
const std::string kAscRows = "1 2 3 4\n5 6 7 8\n";

std::string zeros(std::size_t count) {
    return std::string(count, '0');
}

/// A grid of four columns with a text for a cell of its first row, in column 5 of line 5.
std::string withCell(const std::string& cell) {
    return kAscHeader + "1 2 " + cell + " 4\n5 6 7 8\n";
}

TEST_F(AscCheckTest, PassesGridsThatAreReadAsWritten) {
    expect(
        {{"plain", kAscHeader + kAscRows, {}},
         {"no end of the last line", kAscHeader + "1 2 3 4\n5 6 7 8", {}},
         {"ends of lines with a carriage return",
          "ncols 4\r\nnrows 2\r\nNODATA_value -9\r\n1 2 3 4\r\n5 6 7 8\r\n",
          {}},
         {"all ways to write a number",
          kAscHeader + "-1.5 +2 .5e1 -9.\n1E2 1e-3 00 123456789012\n",
          {}},
         {"not finite", kAscHeader + "inf -Infinity nan +NAN\n5 6 7 8\n", {}},
         {"a cell of 63 characters", withCell(zeros(62) + "5"), {}},
         {"blank lines outside the rows",
          "\nncols 4\n\nnrows 2\nNODATA_value 0\n" + kAscRows + "\n",
          {}},
         {"sizes in other words", "ncols 4.0\nnrows 2e0\nNODATA_value nan\n" + kAscRows, {}},
         {"rows announced behind them", "ncols 4\nNODATA_value 0\n" + kAscRows + "nrows 2\n", {}},
         {"quotes without text", kAscHeader + "1 \"\" 2 3 4\n5 6 7 8\n", {}},
         {"NULs and blanks behind a row",
          kAscHeader + kAscRows.substr(0, 7) + std::string(3, '\0') + " \r\n5 6 7 8\n",
          {}}});
}

TEST_F(AscCheckTest, FindsTextThatTheLoaderDrops) {
    expect({{"a cell of 64 characters",
             withCell(zeros(63) + "5"),
             {"5:5 error token-cut: \"" + zeros(60) +
              "...\" is too long: its first 63 characters are read as 0"}},
            {"an exponent behind the cut",
             withCell("1.234" + zeros(59) + "e2"),
             {"5:5 error token-cut: \"1.234" + zeros(55) +
              "...\" is too long: its first 63 characters are read as 1.234"}},
            {"a NUL in a row",
             kAscHeader + std::string("1 2 3 4\n5 6\0 7 8\n", 17),
             {"6:1 warning line-skipped: a line of two numbers is not read",
              "6:4 error text-after-nul: the text behind a NUL in a line is not read",
              "error rows-missing: only 1 of 2 rows: the others keep what the map held before, at "
              "first "
              "0"}},
            {"a NUL behind whole rows",
             kAscHeader + kAscRows.substr(0, 15) + std::string("\0 9\n", 4),
             {"6:8 error text-after-nul: the text behind a NUL in a line is not read"}},
            {"a NUL in a header",
             std::string("ncols 4\0 5\n", 11) + kAscHeader.substr(8) + kAscRows,
             {"1:8 error text-after-nul: the text behind a NUL in a line is not read"}},
            {"a header value of 64 characters",
             "ncols " + zeros(63) + "4\n" + kAscHeader.substr(8),
             {"1:7 error no-whole-number: \"" + zeros(60) + "...\" is no whole number: read as 0",
              "1:7 error token-cut: \"" + zeros(60) +
                  "...\" is too long: its first 63 characters are read as 0",
              "error size-unusable: shows nothing: the map has 0 columns and 2 rows"}}});
}

TEST_F(AscCheckTest, FindsLinesBeyondTheLimit) {
    const std::string blanks(1023999 - 7, ' ');
    expect({{"as long as lines may be", kAscHeader + "1 2 3 4" + blanks + "\n5 6 7 8\n", {}},
            {"one character more",
             kAscHeader + "1 2 3 4" + blanks + "5\n5 6 7 8\n",
             {"5:1024000 error line-cut: of a line only the first 1023999 characters are read"}}});
}

TEST_F(AscCheckTest, FindsWhatIsNoNumber) {
    const auto noNumber = [](const char* cell, const std::string& asRead) {
        std::string shown = cell;
        for (std::size_t at = 0; (at = shown.find('"', at)) != std::string::npos; at += 2) {
            shown.insert(at, "\\");
        }
        return AscRow{cell,
                      withCell(cell),
                      {"5:5 error no-number: \"" + shown + "\" is no number: read as " + asRead}};
    };
    expect({noNumber("x", "0"),
            noNumber("4x", "4"),
            noNumber("0x10", "16"),
            noNumber("--4", "0"),
            noNumber("+-4", "0"),
            noNumber("3.5.1", "3.5"),
            noNumber(".", "0"),
            noNumber("-", "0"),
            noNumber("4-", "4"),
            noNumber("1e", "1"),
            noNumber("3\"4\"", "34"),
            noNumber("\"4\"", "4"),
            noNumber("\"1 2\"", "1"),
            noNumber("infinite", "inf"),
            noNumber("nan0", "nan"),
            {"too large for a double",
             withCell(std::string(400, '9')),
             {"5:5 warning number-infinite: \"" + std::string(60, '9') +
              "...\" is beyond the range of a single: read as infinite"}},
            {"too large for a double, with an exponent",
             withCell("1e999"),
             {"5:5 warning number-infinite: \"1e999\" is beyond the range of a single: read as "
              "infinite"}},
            {"too near to zero for a single", withCell("1e-50"), {}},
            {"too near to zero for a double", withCell("-1e-400"), {}},
            {"two in a row",
             kAscHeader + "1 x 3 y\n5 6 7 8\n",
             {"5:3 error no-number: \"x\" is no number: read as 0",
              "5:7 error no-number: \"y\" is no number: read as 0"}},
            {"too large for a single",
             withCell("-1e39"),
             {"5:5 warning number-infinite: \"-1e39\" is beyond the range of a single: read as "
              "infinite"}},
            {"header values",
             "xllcorner 12km\ncellsize  0x10\nyllcorner 1e39\n" + kAscHeader + kAscRows,
             {"1:11 error no-number: \"12km\" is no number: read as 12",
              "2:11 error no-number: \"0x10\" is no number: read as 16",
              "3:11 warning number-infinite: \"1e39\" is beyond the range of a single: read as "
              "infinite",
              "6:1 warning key-repeated: cellsize stands in line 2 already; the last one counts"}},
            {"sizes",
             "ncols 4.5\nnrows 2x\nNODATA_value 0\n" + kAscRows,
             {"1:7 error no-whole-number: \"4.5\" is no whole number: read as 4",
              "2:7 error no-whole-number: \"2x\" is no whole number: read as 2"}},
            {"a size as a power of ten",
             "ncols 4e0\nnrows 2e1\nNODATA_value 0\n" + kAscRows,
             {"2:7 error no-whole-number: \"2e1\" is no whole number: read as 2"}}});
}

TEST_F(AscCheckTest, FindsKeysThatAreNotRead) {
    const std::string place =
        " is not read: the place of a map is given by xllcorner, yllcorner and cellsize";
    const std::string lower = ", keys are in lower case, except NODATA_value";
    const auto first = [](const char* line) { return line + kAscHeader + kAscRows; };
    expect(
        {{"centre of the corner, x",
          first("xllcenter 1\n"),
          {"1:1 error key-not-read: xllcenter" + place}},
         {"centre of the corner, y",
          first(" yllcenter 1\n"),
          {"1:2 error key-not-read: yllcenter" + place}},
         {"width of a cell", first("dx 1\n"), {"1:1 error key-not-read: dx" + place}},
         {"height of a cell", first("DY 1\n"), {"1:1 error key-not-read: DY" + place}},
         {"capitals",
          "NCOLS 4\n" + kAscHeader.substr(8) + kAscRows,
          {"1:1 error key-case: NCOLS is not read: write ncols" + lower,
           "error size-unusable: shows nothing: the map has 0 columns and 2 rows; no line gives "
           "ncols"}},
         {"capitals of the origin",
          first("XLLCorner 4\n"),
          {"1:1 error key-case: XLLCorner is not read: write xllcorner" + lower}},
         {"small letters",
          first("nodata_value 4\n"),
          {"1:1 error key-case: nodata_value is not read: write NODATA_value" + lower}},
         {"another key", first("zunits m\n"), {"1:1 warning key-unknown: \"zunits\" is not read"}},
         {"near a key",
          first(" celsize 30\n"),
          {"1:2 warning key-unknown: \"celsize\" is not read: did you mean cellsize?"}},
         {"a key twice",
          first("nrows 7\n"),
          {"3:1 warning key-repeated: nrows stands in line 1 already; the last one counts"}},
         {"a key in quotes is read",
          first("\"cellsize\" 4\n"),
          {"4:1 warning key-repeated: cellsize stands in line 1 already; the last one counts"}},
         {"a cell size below 0",
          "ncols 4\nnrows 2\ncellsize -30\nNODATA_value -9999\n" + kAscRows,
          {"3:10 note cell-size: kept as written: a cell of size -30"}},
         {"a cell size that is none",
          "ncols 4\nnrows 2\ncellsize m\nNODATA_value -9999\n" + kAscRows,
          {"3:10 error no-number: \"m\" is no number: read as 0"}},
         {"no value",
          first("cellsize\n"),
          {"1:1 error key-needs-one-value: cellsize is not read without a value"}},
         {"two values",
          kAscHeader + "cellsize 30 m\n" + kAscRows,
          {"5: error row-width: a row of 3 cells in a grid of 4 columns: the missing ones are read "
           "as 0",
           "5:1 error key-needs-one-value: cellsize is not read: a line of more than two words is "
           "a row of cells",
           "5:1 error no-number: \"cellsize\" is no number: read as 0",
           "5:13 error no-number: \"m\" is no number: read as 0",
           "7: error row-beyond-grid: not shown: it becomes row 3 of a grid of 2"}},
         {"a decimal comma",
          "ncols 4\nnrows 2\nxllcorner 500000,5\nNODATA_value -9999\n" + kAscRows,
          {"3: error nodata-missing: a row of cells to the library, which counts rows from "
           "NODATA_value; none stands before this line: leave a key and one value in it",
           "3: error row-width: a row of 3 cells in a grid of 4 columns: the missing ones are "
           "read as 0",
           "3:1 error key-needs-one-value: xllcorner is not read: a line of more than two words "
           "is a row of cells; 500000,5 has a decimal comma, which separates: write 500000.5",
           "3:1 error no-number: \"xllcorner\" is no number: read as 0",
           "5: error row-misplaced: its rows are not placed from row 0 on without a gap: "
           "NODATA_value has to be the last header line, and no line between rows may be blank"}},
         {"no value, capitals",
          first("NODATA_VALUE\n"),
          {"1:1 error key-needs-one-value: NODATA_VALUE is not read without a value"}},
         {"a word",
          first("height\n"),
          {"1:1 warning line-skipped: a line of one token is not read"}},
         {"two numbers",
          kAscHeader + kAscRows + "9 10\n",
          {"7:1 warning line-skipped: a line of two numbers is not read"}}});
}

TEST_F(AscCheckTest, FindsSizesThatMakeNoGrid) {
    const std::string none = "error size-unusable: shows nothing: the map has ";
    const std::string empty = none + "0 columns and 0 rows; no line gives ncols or nrows";
    expect({{"empty", "", {empty}},
            {"NULs", std::string(1000, '\0'), {empty}},
            {"lines of NULs", std::string("\0\0\n\0\n", 5), {empty}},
            {"no rows",
             "ncols 4\nNODATA_value 0\n",
             {none + "4 columns and 0 rows; no line gives nrows"}},
            {"no columns",
             "nrows 2\nNODATA_value 0\n" + kAscRows,
             {none + "0 columns and 2 rows; no line gives ncols"}},
            {"negative",
             "ncols 4\nnrows -2\nNODATA_value 0\n" + kAscRows,
             {none + "4 columns and -2 rows"}},
            {"too wide",
             "ncols 2049\nnrows x\n",
             {"1:7 error size-refused: too many columns: 2049, where a map has 2048 at most; "
              "gdal_translate -srcwin cuts a part out"}},
            {"too tall",
             "ncols 2048\nnrows 99999999999\n",
             {"2:7 error size-refused: too many rows: 99999999999, where a map has 2048 at most; "
              "gdal_translate -srcwin cuts a part out"}},
            {"other columns behind the rows",
             "ncols 4\nnrows 2\nNODATA_value 0\n" + kAscRows + "ncols 4\nncols 5\n",
             {"6:1 warning key-repeated: ncols stands in line 1 already; the last one counts",
              "7:1 warning key-repeated: ncols stands in line 1 already; the last one counts",
              "7:7 error size-changed: the rows before this line are read with 4 columns"}},
            {"columns behind the rows",
             "nrows 2\nNODATA_value 0\n" + kAscRows + "ncols 4\n",
             {"3: error size-changed: not read: the number of columns stands behind it, in line 5",
              "4: error size-changed: not read: the number of columns stands behind it, in line 5",
              "5:7 error size-changed: the rows before this line are read with 0 columns"}}});
}

TEST_F(AscCheckTest, FindsRowsThatAreNotWholeOrNotInTheirPlace) {
    const std::string gap =
        " error row-misplaced: its rows are not placed from row 0 on without a gap: NODATA_value "
        "has to be the last header line, and no line between rows may be blank";
    const auto width = [](const char* place, const char* cells) {
        return std::string(place) + " error row-width: a row of " + cells +
               " cells in a grid of 4 columns: " +
               (*cells < '4'   ? "the missing ones are read as 0"
                : *cells > '7' ? "those beyond are not read; each row needs a line of its own"
                               : "those beyond are not read");
    };
    const auto missing = [](const char* held) {
        return std::string("error rows-missing: only ") + held +
               " rows: the others keep what the map held before, at first 0";
    };
    const std::string skipped = " warning line-skipped: a line of one token is not read";
    expect(
        {{"too long", kAscHeader + "1 2 3 4\n5 6 7 8 9\n", {width("6:", "5")}},
         {"a decimal comma", kAscHeader + "1 2 3 4\n5 6,5 7 8\n", {width("6:", "5")}},
         {"cut to three cells", kAscHeader + "1 2 3 4\n5 6 7\n", {width("6:", "3")}},
         {"cut to one cell", kAscHeader + "1 2 3 4\n5\n", {"6:1" + skipped, missing("1 of 2")}},
         {"a row missing", kAscHeader + "1 2 3 4\n", {missing("1 of 2")}},
         {"all rows missing", kAscHeader, {missing("0 of 2")}},
         {"all rows in one line",
          kAscHeader + "1 2 3 4 5 6 7 8\n",
          {width("5:", "8"), missing("1 of 2")}},
         {"too many",
          kAscHeader + kAscRows + "9 8 7 6\n5 4 3 2\n",
          {"7: error row-beyond-grid: not shown: it becomes row 3 of a grid of 2",
           "8: error row-beyond-grid: not shown: it becomes row 4 of a grid of 2"}},
         {"a row in the place of another one's, and so beyond the grid",
          "ncols 4\nnrows 3\nNODATA_value 0\n1 2 3 4\n\n5 6 7 8\n9 8 7 6\n",
          {"6:" + gap, "7: error row-beyond-grid: not shown: it becomes row 4 of a grid of 3"}},
         {"a blank line between rows", kAscHeader + "1 2 3 4\n\n5 6 7 8\n", {"7:" + gap}},
         {"a word between rows",
          kAscHeader + "1 2 3 4\nrow\n5 6 7 8\n",
          {"6:1" + skipped, "7:" + gap}},
         {"a blank line before the rows",
          kAscHeader + "\n" + kAscRows,
          {"6:" + gap, "7: error row-beyond-grid: not shown: it becomes row 3 of a grid of 2"}},
         {"a header line behind the last one",
          "ncols 4\nNODATA_value 0\nnrows 2\n" + kAscRows,
          {"4:" + gap, "5: error row-beyond-grid: not shown: it becomes row 3 of a grid of 2"}},
         {"no last header line",
          "ncols 4\nnrows 2\n" + kAscRows,
          {"3: error nodata-missing: no NODATA_value line stands before the rows, which are "
           "counted from it: add one as the last header line, such as NODATA_value -9999",
           "4: error row-beyond-grid: not shown: it becomes row 4 of a grid of 2"}},
         {"the last header line between rows",
          kAscHeader + "1 2 3 4\nNODATA_value 0\n5 6 7 8\n",
          {"6:1 warning key-repeated: NODATA_value stands in line 4 already; the last one "
           "counts",
           "7:" + gap}},
         {"two columns",
          "ncols 2\nnrows 1\nNODATA_value 0\n1 2\n",
          {"4:1 warning line-skipped: a line of two numbers is not read",
           "error columns-too-few: a grid of 2 columns is not read: a line of fewer than 3 cells "
           "is no row to the library; add columns of no-data"}},
         {"wrapped",
          kAscHeader + "1 2 3\n4 5 6\n7 8 9\n",
          {width("5:", "3"), width("6:", "3"), width("7:", "3"),
           "7: error row-beyond-grid: not shown: it becomes row 3 of a grid of 2"}}});
}

TEST_F(AscCheckTest, FindsTheRowBeyondTheLargestGrid) {
    std::string grid = "ncols 3\nnrows 2048\nNODATA_value 0\n";
    for (int row = 0; row < 2048; ++row) {
        grid += "1 2 3\n";
    }
    expect({{"2048 rows", grid, {}},
            {"2050 rows",
             grid + "1 2 3\n1 2 3\n",
             {"2052: error row-beyond-grid: not shown: it becomes row 2049 of a grid of 2048",
              "2053: error row-beyond-grid: not shown: it becomes row 2050 of a grid of 2048"}}});
}

TEST_F(AscCheckTest, TellsWhetherThereIsANoDataValue) {
    EXPECT_TRUE(checkAsc(write("map.asc", kAscHeader + kAscRows)).hasNoData);
    EXPECT_FALSE(checkAsc(write("map.asc", "ncols 4\nnodata_value 0\nNODATA_value\n")).hasNoData);
}

}  // namespace
}  // namespace rfu::test
