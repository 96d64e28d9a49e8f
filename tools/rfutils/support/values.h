#pragma once

#include <QString>
#include <QStringList>
#include <string_view>
#include <utility>
#include <vector>

#include "analysis/support/inputError.h"
#include "analysis/support/lineReader.h"
#include "analysis/support/numbers.h"
#include "support/errors.h"
#include "support/output.h"
#include "support/table.h"

namespace rfu::command {

/// Calls use(std::string_view) with each argument or, if there are none, with each line of standard
/// input that is not blank. A BadValue in a line becomes an InputError with the line's number.
template <typename Use>
void forEachValue(const QStringList& arguments, Use use) {
    for (const QString& argument : arguments) {
        use(std::string_view(argument.toStdString()));
    }
    if (!arguments.isEmpty()) {
        return;
    }
    LineReader lines(kStandardInput, {[] { standardOutput().flush(); }});
    std::string_view line;
    while (lines.next(line)) {
        if (trimmed(line).empty()) {
            continue;
        }
        try {
            use(line);
        } catch (const BadValue& bad) {
            throw InputError(lines.file(), lines.number(), bad.message);
        }
    }
    if (lines.endsEarly()) {
        throw InputError(lines.file(), "the compressed data ends early");
    }
}

/// Answers each value as it is read: in text format by show(row), else by a row of a table.
/// @param read turns the text of a value into a row
template <typename Row, typename Read, typename Show>
void answerValues(const QStringList& values, Format format, Read read, Show show,
                  std::vector<Column<Row>> columns) {
    if (format == Format::Text) {
        forEachValue(values, [&](std::string_view text) { show(read(text)); });
        return;
    }
    Table<Row> table(format, std::move(columns));
    forEachValue(values, [&](std::string_view text) { table.add(read(text)); });
    table.finish();
}

}  // namespace rfu::command
