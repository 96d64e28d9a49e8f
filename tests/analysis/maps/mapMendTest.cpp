#include "analysis/maps/mapMend.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "analysis/support/edits.h"

namespace rfu::test {
namespace {

using namespace std::string_literals;

struct MendRow {
    const char* name;
    std::string file;
    std::string mended;  // the same for what is left as it is
    std::vector<std::string> doubts = {};
};

std::vector<std::string> listed(const std::vector<Doubt>& doubts) {
    std::vector<std::string> result;
    result.reserve(doubts.size());
    for (const Doubt& doubt : doubts) {
        result.push_back(std::to_string(doubt.line) + ": " + doubt.text);
    }
    return result;
}

void expect(Mend (*mend)(std::string_view, const RuleNames&), const std::vector<MendRow>& rows) {
    for (const MendRow& row : rows) {
        const Mend result = mend(row.file, {});
        EXPECT_EQ(listed(result.doubts), row.doubts) << row.name;
        EXPECT_EQ(withEdits(row.file, result.edits), row.mended) << row.name;
        if (result.doubts.empty()) {
            EXPECT_TRUE(mend(row.mended, {}).edits.empty()) << row.name << ", once more";
        }
    }
}

std::string zeros(std::size_t count) {
    return std::string(count, '0');
}

const std::string kSizes = "ncols 3\nnrows 2\n";
const std::string kPlace = "xllcorner 10\nyllcorner 20\ncellsize 4\n";
const std::string kNoData = "NODATA_value -9\n";
const std::string kRows = "1 2 3\n4 5 6\n";

/// A grid with lines in place of those that give its place.
std::string placed(const std::string& lines) {
    return kSizes + lines + kNoData + kRows;
}

/// A grid with rows of its own.
std::string filled(const std::string& rows) {
    return kSizes + kPlace + kNoData + rows;
}

TEST(AscMend, LeavesWhatIsRight) {
    const std::string grid = kSizes + kPlace + kNoData + kRows;
    expect(mendAscFile,
           {{"plain", grid, grid},
            {"empty", "", ""},
            {"no end of the last line", grid.substr(0, grid.size() - 1),
             grid.substr(0, grid.size() - 1)},
            {"CR LF", "ncols 3\r\nnrows 1\r\nNODATA_value 0\r\n1 2 3\r\n",
             "ncols 3\r\nnrows 1\r\nNODATA_value 0\r\n1 2 3\r\n"},
            {"commas that separate", filled("1,2,3\n4, 5, 6\n"), filled("1,2,3\n4, 5, 6\n")},
            {"quotes", "\"ncols\" 3\nnrows\"\" 2\n" + kNoData + kRows,
             "\"ncols\" 3\nnrows\"\" 2\n" + kNoData + kRows},
            {"keys that the loader does not know", placed("zunits m\nncells 6\n"),
             placed("zunits m\nncells 6\n")},
            {"rows announced behind them", "ncols 3\nNODATA_value 0\n1 2 3\nnrows 1\n",
             "ncols 3\nNODATA_value 0\n1 2 3\nnrows 1\n"},
            {"any bytes", "\xFF\x00\xFE\r\n\"x"s, "\xFF\x00\xFE\r\n\"x"s}});
}

TEST(AscMend, SpellsKeys) {
    expect(
        mendAscFile,
        {{"capitals",
          "NCOLS 3\nNROWS 2\nXLLCORNER 1\nYLLCORNER 2\nCELLSIZE 3\nNODATA_VALUE -9\n" + kRows,
          "ncols 3\nnrows 2\nxllcorner 1\nyllcorner 2\ncellsize 3\nNODATA_value -9\n" + kRows},
         {"everything around them stays",
          "\t nCols = 3 ;\r\nnrows 2\r\nnodata_value -9\r\n" + kRows,
          "\t ncols = 3 ;\r\nnrows 2\r\nNODATA_value -9\r\n" + kRows},
         {"quotes", "\"NCOLS\" \"3\"\nnrows 2\n" + kNoData + kRows,
          "ncols \"3\"\nnrows 2\n" + kNoData + kRows},
         {"one letter wrong", "ncol 3\nnrowss 2\ncelsize 4\n" + kNoData + kRows,
          "ncols 3\nnrows 2\ncellsize 4\n" + kNoData + kRows},
         {"underscores", "n_cols 3\nn_rows 2\nCell_Size 4\nNo_Data_Value -9\n" + kRows,
          "ncols 3\nnrows 2\ncellsize 4\nNODATA_value -9\n" + kRows},
         {"the header's word for it", kSizes + "NODATA -9\n" + kRows, kSizes + kNoData + kRows},
         {"near to two keys", placed("zllcorner 1\nnrolx 3\n"), placed("zllcorner 1\nnrolx 3\n")},
         {"misspelt beside the right one", placed("ncol 5\n"), placed("ncol 5\n")},
         {"misspelt twice", "ncol 5\nncolss 6\n" + kNoData, "ncol 5\nncolss 6\n" + kNoData},
         {"misspelt without a number", placed("cellsizes small\n"), placed("cellsizes small\n")},
         {"in another case beside the right one",
          placed("NCOLS 5\n"),
          placed("NCOLS 5\n"),
          {"3: NCOLS is meant to be ncols, which stands in another line too"}},
         {"twice in another case",
          "NCOLS 3\nNcols 3\n" + kNoData,
          "NCOLS 3\nNcols 3\n" + kNoData,
          {"1: NCOLS is meant to be ncols, which stands in another line too",
           "2: Ncols is meant to be ncols, which stands in another line too"}}});
}

TEST(AscMend, TakesTheCentreForTheCorner) {
    expect(mendAscFile,
           {{"both", placed("xllcenter 500015\nyllcenter 4649791\ncellsize 30\n"),
             placed("xllcorner 500000\nyllcorner 4649776\ncellsize 30\n")},
            {"the cell size behind them, capitals",
             placed("XLLCENTER 0.1\nYllCenter 1e2\nCELLSIZE 0.3\n"),
             placed("xllcorner -0.05\nyllcorner 99.85\ncellsize 0.3\n")},
            {"British", placed("xllcentre 2\nyllcentre 2\ncellsize 1\n"),
             placed("xllcorner 1.5\nyllcorner 1.5\ncellsize 1\n")},
            {"one of each", placed("xllcenter 500015\nyllcorner 4649791\ncellsize 30\n"),
             placed("xllcorner 500000\nyllcorner 4649791\ncellsize 30\n")},
            {"no digit is rounded",
             placed("xllcenter 9007199254740993\nyllcorner 0\ncellsize 0.000000000000001\n"),
             placed("xllcorner 9007199254740992.9999999999999995\nyllcorner 0\ncellsize "
                    "0.000000000000001\n")},
            {"beside the corner that it gives", placed("xllcenter 12\n" + kPlace), placed(kPlace)},
            {"beside another corner",
             placed("xllcenter 13\n" + kPlace),
             placed("xllcenter 13\n" + kPlace),
             {"3: xllcenter and xllcorner in another line give two places"}},
            {"twice",
             placed("xllcenter 13\nxllcenter 13\ncellsize 2\n"),
             placed("xllcenter 13\nxllcenter 13\ncellsize 2\n"),
             {"4: xllcenter and xllcenter in another line give two places"}},
            {"without a cell size", placed("xllcenter 13\n"), placed("xllcenter 13\n")},
            {"without a number", placed("xllcenter x\ncellsize 2\n"),
             placed("xllcenter x\ncellsize 2\n")},
            {"a place of more digits than are read", placed("xllcenter 1e63\ncellsize 1\n"),
             placed("xllcenter 1e63\ncellsize 1\n")}});
}

TEST(AscMend, TakesEqualSidesForTheCellSize) {
    expect(
        mendAscFile,
        {{"in its place", placed("dx 30\ndy 30\n"), placed("cellsize 30\n")},
         {"written otherwise, in capitals", placed("DX  30\nDY 3.0e1\n"), placed("cellsize  30\n")},
         {"beside it", placed(kPlace + "dx 4\ndy 4.0\n"), placed(kPlace)},
         {"one beside it", placed("dy 4\n" + kPlace), placed(kPlace)},
         {"for the centre", placed("xllcenter 10\nyllcenter 20\ndx 2\ndy 2\n"),
          placed("xllcorner 9\nyllcorner 19\ncellsize 2\n")},
         {"in the first line", "dy 4\n" + placed(kPlace), placed(kPlace)},
         {"in the first line behind a mark",
          "\xEF\xBB\xBF"
          "dy 4\n" +
              placed(kPlace),
          placed(kPlace)},
         {"not square", placed("dx 30\ndy 20\n"), placed("dx 30\ndy 20\n")},
         {"another size", placed(kPlace + "dx 5\ndy 5\n"), placed(kPlace + "dx 5\ndy 5\n")},
         {"one alone", placed("dx 30\n"), placed("dx 30\n")},
         {"no numbers", placed("dx a\ndy a\n"), placed("dx a\ndy a\n")},
         {"one twice", placed("dx 30\ndx 20\ndy 30\n"), placed("dx 30\ndx 20\ndy 30\n")}});
}

TEST(AscMend, MovesTheNoDataLineInFrontOfTheRows) {
    const std::string grid = kSizes + "cellsize 4\n" + kNoData + kRows;
    expect(
        mendAscFile,
        {{"first", kNoData + kSizes + "cellsize 4\n" + kRows, grid},
         {"between", "ncols 3\n" + kNoData + "nrows 2\ncellsize 4\n" + kRows, grid},
         {"behind the rows", kSizes + "cellsize 4\n" + kRows + kNoData, grid},
         {"behind the rows, without a line end", "ncols 3\r\nnrows 1\r\n1 2 3\r\nNODATA_value 0",
          "ncols 3\r\nnrows 1\r\nNODATA_value 0\r\n1 2 3\r\n"},
         {"a blank line below it", kSizes + kNoData + "\n" + kRows,
          kSizes + "\n" + kNoData + kRows},
         {"spelled anew", "nodata = -9;\r\n" + kSizes + kRows,
          kSizes + "NODATA_value = -9;\r\n" + kRows},
         {"lines below it that go", kSizes + kNoData + "dx 4\ndy 4\n" + kRows,
          kSizes + "cellsize 4\n" + kNoData + kRows},
         {"a line below it that goes alone", kSizes + "cellsize 4\n" + kNoData + "dx 4\n" + kRows,
          kSizes + "cellsize 4\n" + kNoData + kRows},
         {"twice", kNoData + kSizes + kNoData + "\n" + kRows,
          kNoData + kSizes + kNoData + "\n" + kRows},
         {"no rows", kNoData + kSizes, kNoData + kSizes},
         {"a comment that the loader takes for a row",
          kNoData + "# from the survey\n" + kSizes + kRows,
          kNoData + "# from the survey\n" + kSizes + kRows}});
}

TEST(AscMend, ShortensNumbersThatTheLoaderCuts) {
    expect(
        mendAscFile,
        {{"a cell", filled("1 2 " + zeros(63) + "5\n4 5 6\n"), filled("1 2 5\n4 5 6\n")},
         {"decimals that no single holds", filled("1 0.1" + zeros(62) + "1 3\n4 5 6\n"),
          filled("1 0.1" + zeros(62) + "1 3\n4 5 6\n")},
         {"an exponent behind them", filled("1 1.5" + zeros(62) + "e2\t3\n"), filled("1 150\t3\n")},
         {"63 characters", filled("1 2 " + zeros(62) + "5\n"), filled("1 2 " + zeros(62) + "5\n")},
         {"a header value", "ncols " + zeros(63) + "3\nnrows 2\n" + kNoData + kRows,
          kSizes + kNoData + kRows},
         {"the corner of a centre", placed("xllcenter 12." + zeros(70) + "\ncellsize 4\n"),
          placed("xllcorner 10\ncellsize 4\n")},
         {"no number", filled("1 2 " + zeros(63) + "x\n"), filled("1 2 " + zeros(63) + "x\n")},
         {"beyond a double", filled("1 2 1e400" + zeros(63) + "\n"),
          filled("1 2 1e400" + zeros(63) + "\n")}});
}

TEST(AscMend, WritesPointsForDecimalCommas) {
    const auto doubtful = [](const char* line) {
        return std::string(line) +
               ": other rows have 3 cells only if their commas are decimal points, and this one "
               "has "
               "as many either way";
    };
    const auto notShown = [](const char* line, const char* value) {
        return std::string(line) + ": \"" + value +
               "\" may be a number with a decimal comma, but the rows do not show that commas are "
               "decimal points";
    };
    const std::string commas = kSizes + "xllcorner 10,5\ncellsize 0,25\nNODATA_value -9,0\n";
    const std::string points = kSizes + "xllcorner 10.5\ncellsize 0.25\nNODATA_value -9.0\n";
    expect(
        mendAscFile,
        {{"every row", filled("1,5 2 3\n4;-5,25;6e1\n"), filled("1.5 2 3\n4;-5.25;6e1\n")},
         {"commas and blanks between cells", filled("1,5, 2,5, 3,5\n4,5, 5, 6\n"),
          filled("1.5, 2.5, 3.5\n4.5, 5, 6\n")},
         {"the header too", commas + "1,5 2 3\n4 5 6,5\n", points + "1.5 2 3\n4 5 6.5\n"},
         {"the corner of a centre",
          kSizes + "xllcenter 10,5\ncellsize 0,25\nNODATA_value -9\n1,5 2 3\n4 5 6,5\n",
          kSizes + "xllcorner 10.375\ncellsize 0.25\nNODATA_value -9\n1.5 2 3\n4 5 6.5\n"},
         {"numbers that are cut too", filled(zeros(62) + "1,5 2 3\n4 5 6,5\n"),
          filled("1.5 2 3\n4 5 6.5\n")},
         {"one row either way",
          filled("1,5 2 3\n4 5 6\n"),
          filled("1,5 2 3\n4 5 6\n"),
          {doubtful("8")}},
         {"the header alone",
          commas + kRows,
          commas + kRows,
          {notShown("3", "10,5"), notShown("4", "0,25"), notShown("5", "-9,0")}},
         {"thousands",
          placed("xllcorner 500,000\n"),
          placed("xllcorner 500,000\n"),
          {notShown("3", "500,000")}},
         {"another number of cells", filled("1,5 2 3 4\n4 5 6,5\n"),
          filled("1,5 2 3 4\n4 5 6,5\n")},
         {"a word among them", filled("1,5 x 3\n4 5 6,5\n"), filled("1,5 x 3\n4 5 6,5\n")},
         {"two commas in a number", filled("1,5,2 2 3\n4 5 6,5\n"), filled("1,5,2 2 3\n4 5 6,5\n")},
         {"no number of columns", "nrows 2\n" + kNoData + "1,5 2 3\n4 5 6,5\n",
          "nrows 2\n" + kNoData + "1,5 2 3\n4 5 6,5\n"}});
}

TEST(MapMend, TakesAnyEncodingAndLineEnd) {
    const std::string grid = kSizes + kNoData + kRows;
    std::string little = "\xFF\xFE";
    std::string old;
    for (const char c : "NCOLS" + grid.substr(5)) {
        little += {c, '\0'};
        old += c == '\n' ? '\r' : c;
    }
    const std::string mark = "\xEF\xBB\xBF";
    expect(mendAscFile, {{"a mark", mark + grid, grid},
                         {"a mark and a key", mark + "NCOLS" + grid.substr(5), grid},
                         {"UTF-16", little, grid},
                         {"UTF-16, half a character less", little.substr(0, little.size() - 1),
                          little.substr(0, little.size() - 1)},
                         {"CR", old, grid}});
    expect(mendHdrFile, {{"a mark", mark + "nrows 4\n", "NROWS 4\n"}});
    expect(mendClrFile, {{"CR and a mark", mark + "1 2 3 4\r5 6 7 8\r", "1 2 3 4\n5 6 7 8\n"}});
    expect(mendTabFile, {{"a mark", mark + "!table\n", "!table\n"}});
}

/// What becomes of a file of which each of some rules alone is ignored, and what where none is.
struct IgnoringRow {
    const char* rule;
    std::string mended;
};

void expectIgnoring(Mend (*mend)(std::string_view, const RuleNames&), const std::string& file,
                    const std::vector<IgnoringRow>& rows) {
    RuleNames all;
    for (const IgnoringRow& row : rows) {
        const Mend result = mend(file, {row.rule});
        EXPECT_EQ(listed(result.doubts), std::vector<std::string>()) << row.rule;
        EXPECT_EQ(withEdits(file, result.edits), row.mended) << row.rule;
        EXPECT_TRUE(mend(row.mended, {row.rule}).edits.empty()) << row.rule << ", once more";
        all.insert(row.rule);
    }
    EXPECT_EQ(withEdits(file, mend(file, all).edits), file);
}

TEST(MapMend, LeavesWhatIsIgnored) {
    const std::string mark = "\xEF\xBB\xBF";
    const std::string longNumber = zeros(63) + "5";
    const std::string rows = "1,5 2 3\n4 5 " + longNumber + ",5\n";
    expectIgnoring(
        mendAscFile, mark + "NCOLS 3\nNODATA -9\nnrows 2\nxllcenter 1\nCELLSIZE 2\n" + rows,
        {{"", "ncols 3\nnrows 2\nxllcorner 0\ncellsize 2\nNODATA_value -9\n1.5 2 3\n4 5 5.5\n"},
         {"byte-order-mark", mark + "ncols 3\nnrows 2\nxllcorner 0\ncellsize 2\nNODATA_value -9\n"
                                    "1.5 2 3\n4 5 5.5\n"},
         {"key-case",
          "NCOLS 3\nnrows 2\nxllcenter 1\nCELLSIZE 2\nNODATA_value -9\n1.5 2 3\n4 5 "
          "5.5\n"},
         {"key-unknown",
          "ncols 3\nNODATA -9\nnrows 2\nxllcorner 0\ncellsize 2\n1.5 2 3\n4 5 "
          "5.5\n"},
         {"key-not-read",
          "ncols 3\nnrows 2\nxllcenter 1\ncellsize 2\nNODATA_value -9\n1.5 2 3\n"
          "4 5 5.5\n"},
         {"row-misplaced",
          "ncols 3\nNODATA_value -9\nnrows 2\nxllcorner 0\ncellsize 2\n1.5 2 "
          "3\n4 5 5.5\n"},
         {"row-width",
          "ncols 3\nnrows 2\nxllcorner 0\ncellsize 2\nNODATA_value -9\n1,5 2 3\n4 5 "
          "5,5\n"},
         {"token-cut", "ncols 3\nnrows 2\nxllcorner 0\ncellsize 2\nNODATA_value -9\n1.5 2 3\n4 5 " +
                           longNumber + ".5\n"}});
    expectIgnoring(mendAscFile, kSizes + kRows + kNoData,
                   {{"row-misplaced", kSizes + kNoData + kRows},
                    {"nodata-missing", kSizes + kRows + kNoData}});
    expectIgnoring(mendAscFile, placed("dx 2\ndy 2\n"), {{"key-not-read", placed("dx 2\ndy 2\n")}});
    expectIgnoring(mendAscFile, placed("NCOLS 3\n"), {{"key-case", placed("NCOLS 3\n")}});
    expectIgnoring(mendAscFile, kSizes + "cellsize 0,5\n" + kNoData + kRows,
                   {{"row-width", kSizes + "cellsize 0,5\n" + kNoData + kRows}});
    expectIgnoring(mendAscFile, "ncols 3\rnrows 1\r",
                   {{"line-ends", "ncols 3\rnrows 1\r"}, {"utf-16", "ncols 3\nnrows 1\n"}});
    expectIgnoring(mendHdrFile, "ncols 3\nNROW 2\nPixelType float\nXDIM " + longNumber + "\n",
                   {{"", "NCOLS 3\nNROWS 2\nPIXELTYPE FLOAT\nXDIM 5\n"},
                    {"key-case", "ncols 3\nNROWS 2\nPixelType float\nXDIM 5\n"},
                    {"key-unknown", "NCOLS 3\nNROW 2\nPIXELTYPE FLOAT\nXDIM 5\n"},
                    {"value-case", "NCOLS 3\nNROWS 2\nPIXELTYPE float\nXDIM 5\n"},
                    {"token-cut", "NCOLS 3\nNROWS 2\nPIXELTYPE FLOAT\nXDIM " + longNumber + "\n"}});
    expectIgnoring(mendHdrFile, "NCOLS 3\nncols 4\n", {{"key-case", "NCOLS 3\nncols 4\n"}});
    expectIgnoring(mendClrFile, longNumber + " 1 2 3\n",
                   {{"token-cut", longNumber + " 1 2 3\n"}, {"key-case", "5 1 2 3\n"}});
    expectIgnoring(
        mendTabFile, "FILE \"a\"\nType \"Raster\"\nUnits \"Degree\"\n(" + longNumber + ",2)\n",
        {{"", "File \"a\"\nType \"RASTER\"\nUnits \"degree\"\n(5,2)\n"},
         {"key-case", "FILE \"a\"\nType \"RASTER\"\nUnits \"degree\"\n(5,2)\n"},
         {"type-not-supported", "File \"a\"\nType \"Raster\"\nUnits \"degree\"\n(5,2)\n"},
         {"not-utm", "File \"a\"\nType \"RASTER\"\nUnits \"Degree\"\n(5,2)\n"},
         {"token-cut", "File \"a\"\nType \"RASTER\"\nUnits \"degree\"\n(" + longNumber + ",2)\n"}});
    expectIgnoring(mendTabFile, "Units \"m\"\nUNITS \"m\"\n",
                   {{"key-case", "Units \"m\"\nUNITS \"m\"\n"}});
}

TEST(HdrMend, SpellsKeysAndThePixelType) {
    const std::string right = "NCOLS 3\nNROWS 2\nPIXELTYPE FLOAT\nXDIM 4\nNODATA -9\n";
    expect(mendHdrFile,
           {{"plain", right, right},
            {"small letters", "ncols 3\nNrows 2\nPixelType float\nxdim 4\nnodata -9\n", right},
            {"misspelt", "NCOL 3\nN_ROWS 2\nPIXELTYPES Float\nXDIM 4\nNODATA_value -9\n",
             "NCOLS 3\nNROWS 2\nPIXELTYPES Float\nXDIM 4\nNODATA -9\n"},
            {"integers", "PIXELTYPE SIGNEDINT\n", "PIXELTYPE SIGNEDINT\n"},
            {"keys that are not read", "byteorder I\nYDIM 4\nlayout BIL\nnbits 32\n",
             "byteorder I\nYDIM 4\nlayout BIL\nnbits 32\n"},
            {"a number that is cut", "XDIM " + zeros(63) + "4\n", "XDIM 4\n"},
            {"in another case beside the right one",
             "NCOLS 3\nncols 4\n",
             "NCOLS 3\nncols 4\n",
             {"2: ncols is meant to be NCOLS, which stands in another line too"}},
            {"misspelt beside the right one", "NCOLS 3\nNCOL 4\n", "NCOLS 3\nNCOL 4\n"}});
}

TEST(ClrMend, ShortensNumbers) {
    expect(mendClrFile, {{"plain", "0 1 2 3\n\n# x\n", "0 1 2 3\n\n# x\n"},
                         {"a value", zeros(63) + "7 1 2 3\n", "7 1 2 3\n"}});
}

TEST(TabMend, SpellsKeysAndWords) {
    expect(
        mendTabFile,
        {{"plain", "!table\nFile \"a.asc\"\nType \"RASTER\"\nUnits \"m\"\n",
          "!table\nFile \"a.asc\"\nType \"RASTER\"\nUnits \"m\"\n"},
         {"in another case", "FILE \"a.asc\"\n  type \"Raster\"\nUNITS \"Degree\"\n",
          "File \"a.asc\"\n  Type \"RASTER\"\nUnits \"degree\"\n"},
         {"a projection", "COORDSYS Earth Projection 8, 104, \"m\", 9, 0, 0.9996, 500000, 0\n",
          "CoordSys Earth Projection 8, 104, \"m\", 9, 0, 0.9996, 500000, 0\n"},
         {"a comment", "!type \"raster\"\n", "!type \"raster\"\n"},
         {"another number of values", "type\nUNITS \"m\" \"ft\"\n", "type\nUNITS \"m\" \"ft\"\n"},
         {"a coordinate that is cut", "(" + zeros(63) + "5,2) (0,0) Label \"Pt 1\"\n",
          "(5,2) (0,0) Label \"Pt 1\"\n"},
         {"beside the right one",
          "Units \"m\"\nUNITS \"m\"\n",
          "Units \"m\"\nUNITS \"m\"\n",
          {"2: UNITS is meant to be Units, which stands in another line too"}}});
}

}  // namespace
}  // namespace rfu::test
