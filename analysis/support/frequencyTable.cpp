#include "analysis/support/frequencyTable.h"

#include <algorithm>
#include <cmath>
#include <string_view>
#include <utility>

#include "analysis/support/csvLine.h"
#include "analysis/support/files.h"
#include "analysis/support/inputError.h"
#include "analysis/support/lineReader.h"
#include "analysis/support/numbers.h"

namespace rfu {

namespace {

// Sums and differences of numbers within these bounds are finite.
constexpr double kLargest = 1e15;

class TableReader {
public:
    TableReader(const QString& file, const std::vector<std::string>& columns)
        : columns_(columns), lines_(file) {}

    std::vector<FrequencyRow> read() {
        std::string_view line;
        bool mayBeHeader = true;
        while (lines_.next(line)) {
            if (isBlankOrComment(line) ||
                (std::exchange(mayBeHeader, false) && looksLikeName(trimmed(line)))) {
                continue;
            }
            readRow(line);
        }
        if (lines_.endsEarly()) {  // half a table would be another one
            throw InputError(lines_.file(), "the compressed data ends early");
        }
        if (rows_.empty()) {
            throw InputError(lines_.file(), "holds no line of a frequency and " + names());
        }
        return std::move(rows_);
    }

private:
    InputError bad(const std::string& what) const {
        return InputError(lines_.file(), lines_.number(), what);
    }

    /// "upper or lower"
    std::string names() const {
        std::string text;
        for (std::size_t i = 0; i < columns_.size(); ++i) {
            text += i == 0 ? "" : i + 1 == columns_.size() ? " or " : ", ";
            text += columns_[i];
        }
        return text;
    }

    void readRow(std::string_view line) {
        CsvFields fields(line);
        std::string_view field;
        fields.next(field);
        FrequencyRow row = {frequencyOf(field), {}, lines_.number()};
        requireAscending(row.frequency);
        while (fields.next(field)) {
            if (row.numbers.size() < columns_.size()) {
                row.numbers.push_back(numberOf(field, columns_[row.numbers.size()]));
            } else if (!field.empty()) {
                throw bad("the line goes on behind " + columns_.back());
            }
        }
        row.numbers.resize(columns_.size());
        if (std::none_of(row.numbers.begin(), row.numbers.end(),
                         [](const auto& number) { return number.has_value(); })) {
            throw bad("the line has no " + names());
        }
        rows_.push_back(std::move(row));
    }

    double frequencyOf(std::string_view field) const {
        const auto frequency = parseFrequency(field);
        if (!frequency || *frequency < 0.0 || *frequency > kLargest) {
            throw bad(rfu::quoted(field) +
                      " is not a frequency such as 88.1MHz or a number of MHz");
        }
        return *frequency;
    }

    std::optional<double> numberOf(std::string_view field, const std::string& column) const {
        const auto number = parseNumber(field);
        if (!field.empty() && (!number || std::abs(*number) > kLargest)) {
            throw bad(column + " is " + rfu::quoted(field) + " instead of a number");
        }
        return number;
    }

    void requireAscending(double frequency) const {
        const std::size_t count = rows_.size();
        if (count > 0 && frequency < rows_[count - 1].frequency) {
            throw bad(megahertzText(frequency) + " comes after " +
                      megahertzText(rows_[count - 1].frequency));
        }
        if (count > 1 && frequency == rows_[count - 2].frequency) {
            throw bad(megahertzText(frequency) + " comes a third time");
        }
    }

    const std::vector<std::string>& columns_;
    LineReader lines_;
    std::vector<FrequencyRow> rows_;
};

}  // namespace

std::vector<FrequencyRow> readFrequencyTable(const QString& file,
                                             const std::vector<std::string>& columns) {
    requireReadable(file);  // a FIFO would be waited for
    return TableReader(file, columns).read();
}

}  // namespace rfu
