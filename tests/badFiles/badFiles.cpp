#include "badFiles.h"

#include <cstddef>

namespace {

using namespace std::string_literals;

constexpr std::size_t kTenMegabytes = 10 * 1024 * 1024;

/// A text as UTF-16 with byte-order mark.
std::string utf16(const std::string& text, bool bigEndian) {
    std::string bytes = bigEndian ? "\xFE\xFF" : "\xFF\xFE";
    for (const char c : text) {
        bytes += bigEndian ? "\0"s + c : c + "\0"s;
    }
    return bytes;
}

std::string repeated(const std::string& text, std::size_t times) {
    std::string result;
    result.reserve(text.size() * times);
    for (; times > 0; --times) {
        result += text;
    }
    return result;
}

/// A file of one entry that is both a choice and a setup.
std::string choice(const std::string& id, const std::string& label) {
    return R"({"item":[{"label":")" + label + R"(","id":")" + id + R"(","enum":1,"dispSeq":2}]})";
}

constexpr char kTooManyColumns[] = "Too many columns in the file. Unable to open";
constexpr char kTooManyRows[] = "Too many rows in the file. Unable to open";
constexpr char kRasterLoaded[] = "Raster file loaded";
constexpr char kTooDeep[] = "\"too deeply nested document\"";
constexpr char kIllegal[] = "\"illegal value\"";

}  // namespace

std::vector<BadFile> badFiles() {
    const std::string tenMegabytes(kTenMegabytes, ' ');
    const std::string millionOnes = repeated("1 ", 1000000);
    const std::string deepArrays =
        R"({"item":)" + std::string(100000, '[') + std::string(100000, ']') + "}";
    const std::string deepObjects =
        R"({"item":)" + repeated(R"({"a":)", 100000) + "0" + std::string(100000, '}') + "}";
    const std::string loneSurrogates = choice(R"(\ud800)", R"(\udc00x)");
    const std::string nulInId = choice(R"(a\u0000b)", "Label");
    const std::string longLabel = choice("long", std::string(kTenMegabytes, 'x'));
    const std::string millionSetups = R"({"item":[{"label":"l","id":"i"})" +
                                      repeated(R"(,{"label":"l","id":"i"})", 999999) + "]}";
    return {
        {kHdr, "empty", "", true, "", ""},
        {kHdr, "line of 10 MB", "NCOLS 3" + tenMegabytes + "4\nNROWS 2\n", true, "",
         "nCols=3 nRows=2"},
        {kHdr, "10 MB without a line end", "NCOLS" + tenMegabytes + "3", true, "", ""},
        {kHdr, "a million tokens", "NCOLS 3\n" + millionOnes + "\nNROWS 2\n", true, "",
         "nCols=3 nRows=2"},
        {kHdr, "a million columns", "XDIM 4\nNCOLS 1000000\nNROWS 2\n", false, kTooManyColumns,
         "nCols=1000000 cellSize=4"},
        {kHdr, "a million rows", "NROWS 1000000\nNCOLS 2\n", false, kTooManyRows, "nRows=1000000"},
        {kHdr, "sizes that are no numbers", "NCOLS wide\nNROWS -\nXDIM x\n", true, "", ""},
        {kHdr, "sizes of zero", "NCOLS 0\nNROWS 0\n", true, "", ""},
        {kHdr, "negative sizes", "NCOLS -3\nNROWS -99999999999\n", true, "",
         "nCols=-3 nRows=-2147483648"},
        {kHdr, "NUL bytes", "NCOLS 3\0 4\nNROWS\0 2\nXD\0IM 4\n"s, true, "", "nCols=3"},
        {kHdr, "nothing but NUL bytes", std::string(100000, '\0'), true, "", ""},
        {kHdr, "CR LF", "NCOLS 3\r\nNROWS 2\r\n", true, "", "nCols=3 nRows=2"},
        {kHdr, "lone CR", "NCOLS 3\rNROWS 2\r", true, "", ""},
        {kHdr, "byte-order mark", "\xEF\xBB\xBFNCOLS 3\nNROWS 2\n", true, "", "nCols=3 nRows=2"},
        {kHdr, "UTF-16, little-endian", utf16(kHdr.good, false), true, "", ""},
        {kHdr, "UTF-16, big-endian", utf16(kHdr.good, true), true, "", ""},
        {kHdr, "a key twice: the last counts", "NCOLS 5\nNCOLS 3\n", true, "", "nCols=3"},

        {kAsc, "empty", "", true, kRasterLoaded, kLoaded + kDefault},
        {kAsc, "row of 10 MB",
         "ncols 3\nNODATA_value -9\n" + repeated("7 ", kTenMegabytes / 2) + "\n4 5 6\n", true,
         kRasterLoaded, kLoaded + " nCols=3 noData=-9" + kDefault + " row0=7,7,7 row1=4,5,6"},
        {kAsc, "header line of 10 MB", "ncols" + tenMegabytes + "3\nNODATA_value -9\n1 2 3\n", true,
         kRasterLoaded, kLoaded + " noData=-9" + kDefault},
        {kAsc, "a million columns", "nrows 4\nncols 1000000\nNODATA_value -9\n1 2 3\n", false,
         kTooManyColumns, "nCols=1000000 nRows=4"},
        {kAsc, "a million rows", "ncols 3\nnrows 1000000\nNODATA_value -9\n1 2 3\n", false,
         kTooManyRows, "nCols=3 nRows=1000000"},
        {kAsc, "a million short lines",
         "ncols 3\nNODATA_value -9\n1 2 3\n" + repeated("\n", 1000000) + "4 5 6\n", true,
         kRasterLoaded, kLoaded + " nCols=3 noData=-9" + kDefault + " row0=1,2,3"},
        {kAsc, "sizes that are no numbers", "ncols wide\nnrows tall\nNODATA_value none\n1 2 3\n",
         true, kRasterLoaded, kLoaded + kDefault},
        {kAsc, "sizes of zero", "ncols 0\nnrows 0\nNODATA_value -9\n1 2 3\n", true, kRasterLoaded,
         kLoaded + " noData=-9" + kDefault},
        {kAsc, "nothing but NUL bytes", std::string(100000, '\0'), true, kRasterLoaded,
         kLoaded + kDefault},
        {kAsc, "UTF-16, little-endian", utf16(kAsc.good, false), true, kRasterLoaded,
         kLoaded + kDefault},
        {kAsc, "UTF-16, big-endian", utf16(kAsc.good, true), true, kRasterLoaded,
         kLoaded + kDefault},
        {kAsc, "a key twice: the last counts", "ncols 5\nncols 3\nNODATA_value -9\n1 2 3 4 5\n",
         true, kRasterLoaded, kLoaded + " nCols=3 noData=-9" + kDefault + " row0=1,2,3"},

        {kBil, "empty", "", true, kRasterLoaded,
         kLoaded + " nCols=3 nRows=2 noData=-9" + kDefault +
             " isFloat=1 row0=-9,-9,-9 row1=-9,-9,-9"},
        {kBil, "10 MB too long", kBil.good + tenMegabytes, true, kRasterLoaded, kBil.goodHolds},

        {kClr, "empty", "", true, "", kDefault.substr(1)},
        {kClr, "line of 10 MB", "0 1 2 3" + tenMegabytes + "7\n10 4 5 6\n", true, "",
         kClr.goodHolds},
        {kClr, "10 MB without a line end", "0" + tenMegabytes + "1 2 3", true, "",
         kDefault.substr(1)},
        {kClr, "a million columns", millionOnes + "\n10 4 5 6\n", true, "",
         "colours=1 [-9999 0 0 0|10 4 5 6]"},
        {kClr, "a million lines", repeated("\n", 1000000), true, "",
         "colours=32 [-9999 0 0 0|9999 0 0 0]"},
        {kClr, "colours that are no numbers", "low red green blue\n1 2x - +\n", true, "",
         "colours=1 [0 0 0 0|1 2 0 0]"},
        {kClr, "huge and negative colours", "-1e999 99999999999 -99999999999 -1\n1e999 256 0 -0\n",
         true, "", "colours=1 [-inf 2147483647 -2147483648 -1|inf 256 0 0]"},
        {kClr, "NUL bytes", "0 1 2 3\0 9\n10 4\0 5 6\n"s, true, "",
         "colours=1 [0 1 2 3|9999 0 0 0]"},
        {kClr, "CR LF", "0 1 2 3\r\n10 4 5 6\r\n", true, "", kClr.goodHolds},
        {kClr, "lone CR", "0 1 2 3\r10 4 5 6\r", true, "", kDefault.substr(1)},
        {kClr, "byte-order mark", "\xEF\xBB\xBF" + kClr.good, true, "", kClr.goodHolds},
        {kClr, "UTF-16, little-endian", utf16(kClr.good, false), true, "", kDefault.substr(1)},
        {kClr, "UTF-16, big-endian", utf16(kClr.good, true), true, "", kDefault.substr(1)},

        {kTab, "empty", "", true, "", ""},
        {kTab, "line of 10 MB", "File" + tenMegabytes + "\"map.bil\"\nUnits \"degree\"\n", true, "",
         "unitKind=1"},
        {kTab, "name of 10 MB",
         "File \"" + std::string(kTenMegabytes, 'n') + "\"\nUnits \"degree\"\n", true, "",
         "file=" + std::string(63, 'n') + " unitKind=1 fileKind=-1"},
        {kTab, "a million columns", millionOnes + "\nUnits \"degree\"\n", true, "", "unitKind=1"},
        {kTab, "points that are no numbers",
         "(x,y) (0,0) Label \"Pt 1\",\n(-,5z) (0,0) Label \"Pt 2\",\n", true, "", "point1=0,5"},
        {kTab, "huge points", "(1e999,-1e999) (0,0) Label \"Pt 3\",\n", true, "",
         "point2=inf,-inf"},
        {kTab, "NUL bytes", "File \"a.bil\0\"\nUnits\0 \"m\"\n"s, true, "",
         "file=a.bil fileKind=1"},
        {kTab, "CR LF", "File \"a.bil\"\r\nUnits \"degree\"\r\n", true, "",
         "file=a.bil unitKind=1 fileKind=1"},
        {kTab, "lone CR", "Type \"NATIVE\"\rFile \"a.bil\"\r", true, "", ""},
        {kTab, "byte-order mark",
         "\xEF\xBB\xBF"
         "File \"a.bil\"\n",
         true, "", "file=a.bil fileKind=1"},
        {kTab, "UTF-16, little-endian", utf16("Type \"NATIVE\"\n" + kGoodTab, false), true, "", ""},
        {kTab, "UTF-16, big-endian", utf16("Type \"NATIVE\"\n" + kGoodTab, true), true, "", ""},
        {kTab, "a point twice: the last counts",
         "(1,2) (3,4) Label \"Pt 1\",\n(5,6) (7,8) Label \"Pt 1\",\n", true, "", "point0=5,6"},
        {kTab, "refused in the middle", "File \"a.bil\"\nType \"NATIVE\"\nUnits \"degree\"\n",
         false, "File not supported", "file=a.bil fileKind=1"},

        {kItems, "arrays nested 100,000 deep", deepArrays, false, "", ""},
        {kItems, "objects nested 100,000 deep", deepObjects, false, "", ""},
        {kItems, "open arrays 100,000 deep", std::string(100000, '['), false, "", ""},
        {kItems, "UTF-16, little-endian", utf16(kGoodJson, false), false, "", ""},
        {kItems, "UTF-16, big-endian", utf16(kGoodJson, true), false, "", ""},
        {kItems, "nothing but NUL bytes", std::string(100000, '\0'), false, "", ""},
        {kItems, "CR as blanks", "\r{\r\"item\"\r:\r[\r]\r}\r\n", true, "", ""},
        {kItems, "lone surrogates", loneSurrogates, true, "", "item.?=?,?x,1,2"},
        {kItems, "NUL in an id", nulInId, true, "", "item.A(NUL)B=a(NUL)b,Label,1,2"},
        {kItems, "label of 10 MB", longLabel, true, "", "item.LONG=long,10485760 characters,1,2"},
        {kItems, "a million choices that lack a member", millionSetups, true, "", ""},

        {kSetups, "arrays nested 100,000 deep", deepArrays, false, kTooDeep, ""},
        {kSetups, "objects nested 100,000 deep", deepObjects, false, kTooDeep, ""},
        {kSetups, "open arrays 100,000 deep", std::string(100000, '['), false, kTooDeep, ""},
        {kSetups, "UTF-16, little-endian", utf16(kGoodJson, false), false, kIllegal, ""},
        {kSetups, "UTF-16, big-endian", utf16(kGoodJson, true), false, kIllegal, ""},
        {kSetups, "nothing but NUL bytes", std::string(100000, '\0'), false, kIllegal, ""},
        {kSetups, "CR as blanks", "\r{\r\"item\"\r:\r[\r]\r}\r\n", true, "\"item\"", ""},
        {kSetups, "byte-order mark", "\xEF\xBB\xBF" + kGoodJson, true, "\"item\" \"second\"",
         "auto,Auto"},
        {kSetups, "lone surrogates", loneSurrogates, true, "\"item\"", "?,?x"},
        {kSetups, "NUL in an id", nulInId, true, "\"item\"", "a(NUL)b,Label"},
        {kSetups, "label of 10 MB", longLabel, true, "\"item\"", "long,10485760 characters"},
        {kSetups, "a million setups", millionSetups, true, "\"item\"", "1000000 setups"},
    };
}
