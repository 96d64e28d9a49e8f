// The reader of corrections behind `--correction`. Holds for any bytes:
// - reading ends with a correction or an InputError that names the file;
// - it is that of the table's lines: the number at each, the second one at a step; between two lines it
//   lies between their numbers, beyond all lines it is that of the first or the last;
// - corrected levels stay within those of a recording, and what was not measured stays that;
// - reading again gives the same.
#include "support/input.h"
#include "support/require.h"
#include "support/scratchFile.h"

#include "analysis/recordings/levelCorrection.h"
#include "analysis/support/frequencyTable.h"
#include "analysis/support/inputError.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <vector>

using namespace rfu;
using namespace rfu::fuzz;

namespace {

std::optional<LevelCorrection> read(const QString& file) {
    try {
        return LevelCorrection(0.0, file);
    } catch (const InputError& error) {
        REQUIRE(error.file() == file);
        return std::nullopt;
    }
}

void requireRows(const LevelCorrection& correction, const std::vector<FrequencyRow>& rows) {
    REQUIRE(correction.at(0.0) == *rows.front().numbers[0] || rows.front().frequency == 0.0);
    REQUIRE(correction.at(std::numeric_limits<double>::max()) == *rows.back().numbers[0]);
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const double frequency = rows[i].frequency;
        const bool isLastThere = i + 1 == rows.size() || rows[i + 1].frequency > frequency;
        REQUIRE(!isLastThere || correction.at(frequency) == *rows[i].numbers[0]);
        if (i + 1 < rows.size() && isLastThere) {
            const auto [low, high] = std::minmax(*rows[i].numbers[0], *rows[i + 1].numbers[0]);
            const double between = correction.at((frequency + rows[i + 1].frequency) / 2.0);
            const double rounding = 1e-9 * std::max(std::abs(low), std::abs(high));
            REQUIRE(between >= low - rounding && between <= high + rounding);
        }
    }
}

void requireLevels(const LevelCorrection& correction, const std::vector<FrequencyRow>& rows) {
    std::vector<double> frequencies;
    frequencies.reserve(rows.size());
    for (const FrequencyRow& row : rows) {
        frequencies.push_back(row.frequency);
    }
    const std::vector<double> decibels = correction.ofPoints(frequencies, rows.size());
    std::vector<double> levels(rows.size(), -50.0);
    levels.front() = -999.0;
    correct(levels, decibels);
    REQUIRE(levels.front() == -999.0);
    for (std::size_t i = 1; i < levels.size(); ++i) {
        REQUIRE(levels[i] > -999.0 && levels[i] < 999.0);
        REQUIRE(levels[i] == decibels[i] - 50.0 || std::abs(levels[i]) > 998.0);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static ScratchFile file("cable.csv");
    file.write(data, size);
    const auto correction = read(file.path());
    const auto again = read(file.path());
    REQUIRE(correction.has_value() == again.has_value());
    if (!correction) {
        return 0;
    }
    const std::vector<FrequencyRow> rows = readFrequencyTable(file.path(), {"dB"});
    requireRows(*correction, rows);
    requireRows(*again, rows);
    requireLevels(*correction, rows);
    return 0;
}
