#pragma once

#include <QString>
#include <optional>
#include <string>
#include <vector>

namespace rfu {

/// A line of a CSV file of frequencies and numbers that belong to them.
struct FrequencyRow {
    double frequency;                            // MHz
    std::vector<std::optional<double>> numbers;  // of each column; none for an empty field
    long long line;                              // counted from 1
};

/// Reads a CSV file. A line has a frequency, as parseFrequency() reads it, and a number for each
/// column; a field may be empty or, at the end of a line, missing, but not all of a line. Frequencies
/// ascend, and one may come twice, for a step. A byte-order mark, blank lines, comments ("#") and a
/// header line before all others, which begins with a letter, are skipped.
/// @param columns names of the numbers
/// @throw InputError for anything else, for a file without rows and for one that is not regular
std::vector<FrequencyRow> readFrequencyTable(const QString& file,
                                             const std::vector<std::string>& columns);

}  // namespace rfu
