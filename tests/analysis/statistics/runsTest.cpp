#include "analysis/statistics/runs.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace {

/// Excesses from signs: + above, - not above, ? not measured.
std::vector<double> excessOf(const std::string& signs) {
    std::vector<double> excess;
    for (const char sign : signs) {
        excess.push_back(sign == '+' ? 1.0 : sign == '-' ? 0.0 : std::nan(""));
    }
    return excess;
}

}  // namespace

TEST(Runs, BridgeOnePoint) {
    const struct {
        const char* name;
        std::string signs;
        std::vector<double> levels;
        std::vector<std::size_t> bands;
        std::string runs;  // first-last, strongest
    } kRows[] = {
        {"nothing", "", {}, {}, ""},
        {"none above", "---", {1, 2, 3}, {0}, ""},
        {"one point", "-+-", {1, 2, 1}, {0}, "1-1,1 "},
        {"all", "+++", {1, 3, 2}, {0}, "0-2,1 "},
        {"of equal levels the first", "+++", {1, 3, 3}, {0}, "0-2,1 "},
        {"one below", "+-+", {1, 9, 2}, {0}, "0-2,2 "},
        {"one not measured", "+?+", {1, std::nan(""), 2}, {0}, "0-2,2 "},
        {"two below", "+--+", {1, 0, 0, 2}, {0}, "0-0,0 3-3,3 "},
        {"one below, twice", "+-+-+", {3, 0, 2, 0, 1}, {0}, "0-4,0 "},
        {"a border", "++++", {1, 2, 4, 3}, {0, 2}, "0-1,1 2-3,2 "},
        {"a border behind one below", "+-+", {1, 0, 2}, {0, 2}, "0-0,0 2-2,2 "},
        {"bands without points", "+++", {1, 2, 3}, {0, 0, 1, 1, 3}, "0-0,0 1-2,2 "},
    };
    for (const auto& row : kRows) {
        std::string runs;
        for (const rfu::Run& run : rfu::runsAbove(excessOf(row.signs), row.levels, row.bands)) {
            runs += std::to_string(run.first) + '-' + std::to_string(run.last) + ',' +
                    std::to_string(run.strongest) + ' ';
        }
        EXPECT_EQ(runs, row.runs) << row.name;
    }
}
