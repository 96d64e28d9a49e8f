#include "analysis/maps/bilCheck.h"

#include <string>
#include <vector>

#include "mapFiles.h"

namespace rfu::test {
namespace {

struct HdrRow {
    const char* name;
    std::string header;
    std::vector<std::string> findings;
};

class BilCheckTest : public MapFiles {
protected:
    void expect(const std::vector<HdrRow>& rows) const {
        for (const HdrRow& row : rows) {
            EXPECT_EQ(listed(checkHdr(write("map.hdr", row.header)).findings), row.findings)
                << row.name;
        }
    }
};

/// Seven lines.
const std::string kHdrLines =
    "NCOLS 3\nNROWS 2\nULXMAP 9.1\nULYMAP 47.5\nXDIM 0.25\nNODATA -1\nPIXELTYPE FLOAT\n";
const std::string kIntegerLines = "NCOLS 3\nNROWS 2\n";

TEST_F(BilCheckTest, PassesHeadersOfWhatIsRead) {
    expect(
        {{"plain", kHdrLines, {}},
         {"the layout that is read",
          kHdrLines + "BYTEORDER I\nLAYOUT bil\nnbands 1\nNBITS 32\nSKIPBYTES 0\n"
                      "BANDROWBYTES 12\nTOTALROWBYTES 12.0\nYDIM .250\n",
          {}},
         {"the layout before the sizes", "TOTALROWBYTES 12\nYDIM 0.25\nNBITS 32\n" + kHdrLines, {}},
         {"integers of any width", kIntegerLines + "NBITS 16\nTOTALROWBYTES 6\n", {}},
         {"blank lines", "\n\r\n" + kHdrLines, {}}});
}

TEST_F(BilCheckTest, FindsLayoutsThatAreNotRead) {
    const auto layout = [](const char* line, const char* wanted) {
        const std::string text = line;
        return HdrRow{line,
                      kHdrLines + text + "\n",
                      {"8:" + std::to_string(text.find(' ') + 2) + " error layout-not-read: " +
                       text + " is not read: the cells are read as with " + wanted}};
    };
    expect(
        {layout("BYTEORDER M", "I"),
         layout("BYTEORDER MSBFIRST", "I"),
         layout("NBANDS 2", "1"),
         layout("NBITS 64", "32"),
         layout("SKIPBYTES 4", "0"),
         layout("LAYOUT BIP", "BIL"),
         layout("layout bsq", "BIL"),
         layout("YDIM 0.5", "0.25"),
         layout("TOTALROWBYTES 16", "12"),
         layout("BANDROWBYTES 16", "12"),
         {"before the sizes",
          "YDIM 0.5\nBANDROWBYTES 16\n" + kHdrLines,
          {"1:6 error layout-not-read: YDIM 0.5 is not read: the cells are read as with 0.25",
           "2:14 error layout-not-read: BANDROWBYTES 16 is not read: the cells are read as with "
           "12"}},
         {"integers with an offset",
          kIntegerLines + "SKIPBYTES 4\n",
          {"3:11 error layout-not-read: SKIPBYTES 4 is not read: the cells are read as with 0"}}});
}

TEST_F(BilCheckTest, FindsLinesThatAreNotReadAsWritten) {
    const std::string pair = " is not read: a line is a key and a value";
    const auto added = [](const std::string& line) { return kHdrLines + line; };
    expect(
        {{"small letters",
          added("ulxmap 16\n"),
          {"8:1 error key-case: ulxmap is not read: write ULXMAP, keys are in capitals"}},
         {"small letters of the kind",
          added(" PixelType FLOAT\n"),
          {"8:2 error key-case: PixelType is not read: write PIXELTYPE, keys are in capitals"}},
         {"small letters in the kind",
          kIntegerLines + "PIXELTYPE Float\n",
          {"3:11 error value-case: Float is not read, only FLOAT"}},
         {"another key",
          added("MAPUNITS METERS\n"),
          {"8:1 warning key-unknown: \"MAPUNITS\" is not read"}},
         {"near a key",
          added("\tNDOATA -1\n"),
          {"8:2 warning key-unknown: \"NDOATA\" is not read: did you mean NODATA?"}},
         {"cells of no size",
          "XDIM  0\n" + kIntegerLines,
          {"1:7 note cell-size: kept as written: a cell of size 0"}},
         {"a key twice",
          added("XDIM 0.25\n"),
          {"8:1 warning key-repeated: XDIM stands in line 5 already; the last one counts"}},
         {"no value", added("NODATA\n"), {"8:1 error key-needs-one-value: NODATA" + pair}},
         {"two values", added("NODATA -1 -2\n"), {"8:1 error key-needs-one-value: NODATA" + pair}},
         {"a decimal comma",
          added("ULXMAP 9,5\n"),
          {"8:1 error key-needs-one-value: ULXMAP" + pair +
           "; 9,5 has a decimal comma, which separates: write 9.5"}},
         {"commas that are none",
          added("NODATA -1, 2\n"),
          {"8:1 error key-needs-one-value: NODATA" + pair}},
         {"no kind", added("pixeltype\n"), {"8:1 error key-needs-one-value: pixeltype" + pair}},
         {"no byte order",
          added("BYTEORDER\n"),
          {"8:1 error key-needs-one-value: BYTEORDER" + pair}},
         {"a remark",
          added("written by hand\n"),
          {"8:1 warning line-skipped: a line that is no key and value is not read"}},
         {"a value that is no number",
          added("NODATA x\n"),
          {"8:1 warning key-repeated: NODATA stands in line 6 already; the last one counts",
           "8:8 error no-number: \"x\" is no number: read as 0"}},
         {"two kinds of cells",
          added("PIXELTYPE SIGNEDINT\n"),
          {"8:1 warning key-repeated: PIXELTYPE stands in line 7 already; the last one counts"}},
         {"a value beyond singles",
          "NODATA -1e300\n" + kIntegerLines,
          {"1:8 warning number-infinite: \"-1e300\" is beyond the range of a single: read as "
           "infinite"}},
         {"a size that is not whole",
          "NCOLS 3.5\nNROWS 2\n",
          {"1:7 error no-whole-number: \"3.5\" is no whole number: read as 3"}},
         {"a value too long",
          "XDIM " + std::string(63, '0') + "1\n" + kIntegerLines,
          {"1:6 error token-cut: \"" + std::string(60, '0') +
           "...\" is too long: its first 63 characters are read as 0"}},
         {"a value too long for decimals that no single holds",
          "XDIM 0." + std::string(62, '0') + "1\n" + kIntegerLines,
          {}},
         {"a NUL",
          std::string("XDIM\0 1\n", 8) + kIntegerLines,
          {"1:1 error key-needs-one-value: XDIM" + pair,
           "1:5 error text-after-nul: the text behind a NUL in a line is not read"}},
         {"a line too long",
          "XDIM 1" + std::string(10239 - 6, ' ') + "2\n" + kIntegerLines,
          {"1:10240 error line-cut: of a line only the first 10239 characters are read"}}});
}

TEST_F(BilCheckTest, FindsSizesThatMakeNoGrid) {
    const std::string none = "error size-unusable: shows nothing: the map has ";
    expect({{"empty", "", {none + "0 columns and 0 rows; no line gives NCOLS or NROWS"}},
            {"negative", "NCOLS -3\nNROWS 2\n", {none + "-3 columns and 2 rows"}},
            {"no rows", "NCOLS 3\nNROWS 0\n", {none + "3 columns and 0 rows"}},
            {"too wide",
             "NCOLS 2049\nBYTEORDER M\n",
             {"1:7 error size-refused: too many columns: 2049, where a map has 2048 at most; "
              "gdal_translate -srcwin cuts a part out"}},
            {"too tall",
             "NCOLS 2048\nNROWS 2049\n",
             {"2:7 error size-refused: too many rows: 2049, where a map has 2048 at most; "
              "gdal_translate -srcwin cuts a part out"}}});
}

TEST_F(BilCheckTest, TellsWhatTheHeaderAnnounces) {
    const HdrCheck header = checkHdr(write("map.hdr", kHdrLines));
    EXPECT_EQ(header.columns, 3);
    EXPECT_EQ(header.rows, 2);
    EXPECT_TRUE(header.isFloat);
    EXPECT_TRUE(header.hasNoData);
    const HdrCheck integers = checkHdr(write("map.hdr", kHdrLines + "PIXELTYPE SIGNEDINT\n"));
    EXPECT_FALSE(integers.isFloat);
    EXPECT_FALSE(checkHdr(write("map.hdr", kIntegerLines)).hasNoData);
}

TEST_F(BilCheckTest, FindsCellsThatAreNotReadAsWritten) {
    const std::string cells = bytesOf({-1.5F, 0.1F, -1.0F, 240.25F, -0.001F, 1e10F});
    const std::string mark =
        "error unicode-mark: its first cell would be taken for the mark of Unicode text";
    const auto beginning = [&](const std::string& bytes) {
        return bytes + cells.substr(bytes.size());
    };
    const struct {
        const char* name;
        std::string header;
        std::string cells;
        std::vector<std::string> findings;
    } kFiles[] = {
        {"whole", kHdrLines, cells, {}},
        {"a byte missing",
         kHdrLines,
         cells.substr(1),
         {"error cells-missing: holds 23 bytes, while 3 x 2 cells take 24"}},
        {"a byte more",
         kHdrLines,
         cells + "x",
         {"warning cells-left-over: holds 25 bytes, of which 24 are read"}},
        {"integers are not looked at", kIntegerLines, "\xFF\xFE", {}},
        {"UTF-8", kHdrLines, beginning("\xEF\xBB\xBF"), {mark}},
        {"UTF-16, little-endian", kHdrLines, beginning("\xFF\xFE"), {mark}},
        {"UTF-16, big-endian", kHdrLines, beginning("\xFE\xFF"), {mark}},
        {"UTF-32, big-endian", kHdrLines, beginning(std::string("\0\0\xFE\xFF", 4)), {mark}},
        {"half of a mark", kHdrLines, beginning("\xEF\xBB"), {}}};
    for (const auto& row : kFiles) {
        const HdrCheck header = checkHdr(write("map.hdr", row.header));
        EXPECT_EQ(listed(checkBil(write("map.bil", row.cells), header)), row.findings) << row.name;
    }
}

}  // namespace
}  // namespace rfu::test
