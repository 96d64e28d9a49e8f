#include "analysis/maps/clrCheck.h"

#include <string>
#include <vector>

#include "mapFiles.h"

namespace rfu::test {
namespace {

using Expected = std::vector<std::string>;

struct ClrRow {
    const char* name;
    std::string file;
    Expected findings;
};

class ClrCheckTest : public MapFiles {
protected:
    void expect(const std::vector<ClrRow>& rows) const {
        for (const ClrRow& row : rows) {
            EXPECT_EQ(listed(checkClr(write("map.clr", row.file))), row.findings) << row.name;
        }
    }
};

const std::string kEntry = "0 0 0 255\n100 0 255 0\n";

std::string entries(int count) {
    std::string file;
    for (int i = 0; i < count; ++i) {
        file += kEntry;
    }
    return file;
}

std::string zeros(std::size_t count) {
    return std::string(count, '0');
}

TEST_F(ClrCheckTest, PassesTablesThatAreReadAsWritten) {
    expect({{"plain", kEntry, {}},
            {"no end of the last line", "0 0 0 255\n100 0 255 0", {}},
            {"ends of lines with a carriage return", "0 0 0 255\r\n100 0 255 0\r\n", {}},
            {"a byte-order mark", "\xEF\xBB\xBF" + kEntry, {}},
            {"commas and tabs", "0,0,0,255\n100\t0\t255\t0\n", {}},
            {"an entry of one value", "7 0 0 0\n7 255 255 255\n", {}},
            {"values without end", "-inf 0 0 0\ninf 255 255 255\n", {}},
            {"64 lines", entries(32), {}},
            {"a blank line at the end", kEntry + "\n", {}},
            {"blank lines behind 64 lines", entries(32) + "\n \r\n", {}}});
}

TEST_F(ClrCheckTest, NotesRangesThatDescend) {
    expect({{"the upper end first",
             kEntry + "100 0 0 0\n -5.5 255 255 255\n",
             {"4:2 note range-descends: kept as written: the upper end of entry 2 is -5.5, below "
              "its lower end, 100"}},
            {"behind an entry without a lower end",
             "100 0 0 0\n" + kEntry,
             {"2:1 note range-descends: kept as written: the upper end of entry 1 is 0, below its "
              "lower end, 100",
              "3:1 warning color-unpaired: the lower end of entry 2 has no upper end: the entry "
              "is not shown"}}});
}

TEST_F(ClrCheckTest, FindsLinesThatAreNoColors) {
    const auto counts = [](const std::string& place, const char* what, const char* end) {
        return place + " error no-color: " + what + " is no colour, but counts as the " + end +
               ", which stays as it was before";
    };
    expect({{"a comment",
             "# colours\n" + kEntry + "101 2 3 4\n",
             {counts("1:3", "a line of 1 word", "lower end of entry 1")}},
            {"a blank line",
             "0 0 0 255\n\n" + kEntry,
             {counts("2:", "a blank line", "upper end of entry 1")}},
            {"a comment behind a colour",
             kEntry + "1 2 3 4 # four\n1 2 3 4\n",
             {counts("3:1", "a line of more than four words", "lower end of entry 2")}},
            {"three numbers",
             kEntry + "1 2 3 4\n 1 2 3\n",
             {counts("4:2", "a line of 3 words", "upper end of entry 2")}},
            {"two blank lines at the end",
             kEntry + "\n\n",
             {counts("3:", "a blank line", "lower end of entry 2"),
              counts("4:", "a blank line", "upper end of entry 2")}}});
}

TEST_F(ClrCheckTest, FindsColorsThatAreNotShown) {
    expect({{"an odd line",
             kEntry + " 200 1 1 1\n",
             {"3:2 warning color-unpaired: the lower end of entry 2 has no upper end: the entry is "
              "not shown"}},
            {"an odd line of words",
             kEntry + "the end\n",
             {"3:1 warning line-skipped: a line that is no colour"}},
            {"76 lines",
             entries(38),
             {"65: warning colors-cut: cut after 64 lines: 12 of 76 colours are not read"}},
            {"words behind 64 lines",
             entries(32) + "# end\n",
             {"65:3 warning line-skipped: a line that is no colour"}},
            {"three numbers and a colour behind 64 lines",
             entries(32) + "1 2 3\n1 2 3 4\n",
             {"65:1 warning line-skipped: a line that is no colour",
              "66: warning colors-cut: cut after 64 lines: 1 of 65 colours are not read"}},
            {"a colour behind a NUL behind 64 lines",
             entries(32) + std::string("\0 1 2 3 4\n", 10),
             {"65:1 error text-after-nul: the text behind a NUL in a line is not read"}},
            {"one line",
             "0 0 0 255\n",
             {"error colors-none: has no two lines for an entry: one is shown from -9999 to 9999, "
              "with a black lower end"}},
            {"NULs",
             std::string(1000, '\0'),
             {"error colors-none: has no two lines for an entry: one is shown from -9999 to 9999, "
              "with a black lower end"}},
            {"nothing",
             "",
             {"error colors-none: has no two lines for an entry: one is shown from -9999 to 9999, "
              "with a black lower end"}}});
}

TEST_F(ClrCheckTest, FindsNumbersThatAreReadDifferently) {
    const auto second = [](const std::string& line) { return "0 0 0 255\n" + line + "\n"; };
    expect({{"a value that is no number",
             second("x 1 2 3"),
             {"2:1 error no-number: \"x\" is no number: read as 0"}},
            {"a value beyond singles",
             second("1e39 1 2 3"),
             {"2:1 warning number-infinite: \"1e39\" is beyond the range of a single: read as "
              "infinite"}},
            {"a value beyond doubles",
             second("-1e999 1 2 3"),
             {"2:1 warning number-infinite: \"-1e999\" is beyond the range of a single: read as "
              "infinite",
              "2:1 note range-descends: kept as written: the upper end of entry 1 is -inf, below "
              "its lower end, 0"}},
            {"a value too long",
             second(zeros(63) + "5 1 2 3"),
             {"2:1 error token-cut: \"" + zeros(60) +
              "...\" is too long: its first 63 characters are read as 0"}},
            {"parts of one",
             second("1 0.5 2 3"),
             {"2:3 error no-whole-number: \"0.5\" is no whole number: read as 0"}},
            {"beyond a byte",
             second("1 256 -1 3"),
             {"2:3 note color-range: red is kept as 256, beyond 0 to 255",
              "2:7 note color-range: green is kept as -1, beyond 0 to 255"}},
            {"a line too long",
             second("1 2 3 4" + std::string(1016, ' ') + "5"),
             {"2:1024 error line-cut: of a line only the first 1023 characters are read"}},
            {"a NUL",
             second(std::string("1 2 3 4\0 5", 10)),
             {"2:8 error text-after-nul: the text behind a NUL in a line is not read"}}});
}

}  // namespace
}  // namespace rfu::test
