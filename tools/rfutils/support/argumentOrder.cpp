#include "support/argumentOrder.h"

namespace rfu::command {

namespace {

bool isAsciiLetter(QChar character) {
    return (character >= QLatin1Char('a') && character <= QLatin1Char('z')) ||
           (character >= QLatin1Char('A') && character <= QLatin1Char('Z'));
}

/// Options are "--name" and "-n"; "-30", "-.5" and "- 30" are values, right or wrong.
bool isOption(const QString& argument) {
    if (argument.size() < 2 || argument[0] != QLatin1Char('-')) {
        return false;
    }
    const bool namesOption = argument[1] == QLatin1Char('-') || isAsciiLetter(argument[1]);
    return namesOption && !argument.startsWith(QLatin1String("-inf"), Qt::CaseInsensitive);
}

QString optionName(const QString& argument) {
    return argument.mid(argument.startsWith(QLatin1String("--")) ? 2 : 1);
}

}  // namespace

QStringList optionsFirst(const QStringList& arguments, const QStringList& optionsWithValue) {
    QStringList options;
    QStringList values;
    for (int i = 0; i < arguments.size(); ++i) {
        if (arguments[i] == QLatin1String("--")) {
            values += arguments.mid(i + 1);
            break;
        }
        if (!isOption(arguments[i])) {
            values += arguments[i];
            continue;
        }
        options += arguments[i];
        if (optionsWithValue.contains(optionName(arguments[i]))) {
            if (i + 1 == arguments.size()) {
                return options;  // ends in an option without its value, which the parser reports
            }
            options += arguments[++i];
        }
    }
    return options + QStringList(QStringLiteral("--")) + values;
}

}  // namespace rfu::command
