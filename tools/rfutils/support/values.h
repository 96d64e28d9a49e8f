#pragma once

#include <QStringList>
#include <string_view>

#include "analysis/support/inputError.h"
#include "analysis/support/lineReader.h"
#include "analysis/support/numbers.h"
#include "support/errors.h"
#include "support/output.h"

namespace rfu::command {

/// Calls use(std::string_view) with each argument in turn or, where there are none, with each line
/// of standard input; blank lines are skipped. A BadValue of a line ends as "rfutils: -:LINE: ...".
template <typename Use>
void forEachValue(const QStringList& arguments, Use use) {
    for (const QString& argument : arguments) {
        use(std::string_view(argument.toStdString()));
    }
    if (!arguments.isEmpty()) {
        return;
    }
    LineReader lines(kStandardInput, [] { standardOutput().flush(); });
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
}

}  // namespace rfu::command
