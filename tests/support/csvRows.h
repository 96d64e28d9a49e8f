// Reads the tables of expected values that tests compare with.
#pragma once

#include <charconv>
#include <fstream>
#include <stdexcept>
#include <string>
#include <system_error>
#include <vector>

namespace rfu::test {

using CsvRow = std::vector<std::string>;

/// The cells of a line. Quotes are dropped; texts must not contain quotes or commas.
inline CsvRow csvCells(const std::string& line) {
    CsvRow cells(1);
    for (const char c : line) {
        if (c == ',') {
            cells.emplace_back();
        } else if (c != '"') {
            cells.back() += c;
        }
    }
    return cells;
}

/// The rows of a file after its header line; throws if it cannot be read.
inline std::vector<CsvRow> csvRows(const std::string& path) {
    std::ifstream file(path);
    std::string line;
    if (!std::getline(file, line)) {
        throw std::runtime_error("cannot read " + path);
    }
    std::vector<CsvRow> rows;
    while (std::getline(file, line)) {
        rows.push_back(csvCells(line));
    }
    return rows;
}

/// The number in a cell, in any locale; throws if there is none.
inline double number(const std::string& cell) {
    double value = 0.0;
    const auto result = std::from_chars(cell.data(), cell.data() + cell.size(), value);
    if (result.ec != std::errc() || result.ptr != cell.data() + cell.size()) {
        throw std::runtime_error("no number: " + cell);
    }
    return value;
}

}  // namespace rfu::test
