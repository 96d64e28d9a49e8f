#include "support/commandLine.h"

#include <string>

#include "analysis/support/inputError.h"
#include "support/errors.h"
#include "support/kinds.h"
#include "support/nearest.h"

namespace rfu::command {

namespace {

bool isAsciiLetter(QChar character) {
    return character.unicode() < 0x80 && character.isLetter();
}

/// Options are "--name" and "-h"; "-30", "-.5" and "- 30" are values, right or wrong.
bool isOption(const QString& argument) {
    if (argument.size() < 2 || argument[0] != QLatin1Char('-')) {
        return false;
    }
    const bool namesOption = argument[1] == QLatin1Char('-') || isAsciiLetter(argument[1]);
    return namesOption && !argument.startsWith(QLatin1String("-inf"), Qt::CaseInsensitive);
}

std::string dashed(const Option& option) {
    return std::string("--") + option.name;
}

/// @param name with its dashes
const Option& optionOf(const Subcommand& subcommand, const QString& name) {
    const std::string asked = name.toStdString();
    std::vector<std::string> known;
    for (const Option* option : optionsOf(subcommand)) {
        known.push_back(dashed(*option));
        const bool isShort = option->letter != 0 && asked == std::string("-") + option->letter;
        if (isShort || asked == known.back()) {
            return *option;
        }
    }
    throw UsageError("there is no option " + rfu::quoted(asked) + didYouMean(name, known));
}

/// A value in its place on the command line.
Value readAt(const std::string& place, Kind kind, const QString& text) {
    try {
        return readValue(kind, text.toStdString());
    } catch (const BadValue& bad) {
        if (kind == Kind::Unit) {
            throw;  // the message says it all
        }
        throw UsageError(place + ": " + bad.message);
    }
}

bool isRead(const Option& option) {
    return option.kind == Kind::Word || isRead(option.kind);
}

Value readOption(const Option& option, const QString& text) {
    if (option.kind != Kind::Word) {
        return readAt(dashed(option), option.kind, text);
    }
    try {
        return readWord(option, text.toStdString());
    } catch (const BadValue& bad) {
        throw UsageError(dashed(option) + ": " + bad.message);
    }
}

}  // namespace

CommandLine::CommandLine(const Subcommand& subcommand, const QStringList& arguments) {
    const QStringList others = takeOptions(subcommand, arguments);
    if (!isSet("help")) {
        takeArguments(subcommand, others);
        completeOptions(subcommand);
    }
}

QStringList CommandLine::takeOptions(const Subcommand& subcommand, const QStringList& arguments) {
    QStringList others;
    for (int i = 0; i < arguments.size(); ++i) {
        const QString& argument = arguments[i];
        if (argument == QLatin1String("--")) {
            return others + arguments.mid(i + 1);
        }
        if (!isOption(argument)) {
            others += argument;
            continue;
        }
        const auto equals = argument.indexOf(QLatin1Char('='));
        const Option& option = optionOf(subcommand, argument.left(equals));
        if (option.kind == Kind::Flag && equals >= 0) {
            throw UsageError(dashed(option) + " takes no value");
        }
        if (option.kind == Kind::Flag || equals >= 0) {
            texts_[option.name] += argument.mid(equals + 1);
        } else if (++i < arguments.size()) {
            texts_[option.name] += arguments[i];
        } else {
            throw UsageError(dashed(option) + " " + option.valueName + ": the value is missing");
        }
    }
    return others;
}

void CommandLine::takeArguments(const Subcommand& subcommand, const QStringList& arguments) {
    int next = 0;
    for (const Argument& argument : subcommand.arguments) {
        for (int i = 0; i < argument.maxCount && next < arguments.size(); ++i, ++next) {
            texts_[argument.name] += arguments[next];
            if (isRead(argument.kind)) {
                values_[argument.name].push_back(
                    readAt(argument.name, argument.kind, arguments[next]));
            }
        }
        if (texts(argument.name).size() < argument.minCount) {
            throw UsageError(std::string(argument.name) + " is missing");
        }
    }
    if (next < arguments.size()) {
        throw UsageError("unexpected argument " + rfu::quoted(arguments[next].toStdString()));
    }
}

void CommandLine::completeOptions(const Subcommand& subcommand) {
    for (const Option* option : optionsOf(subcommand)) {
        const QStringList given = texts(option->name);
        if (given.size() < option->minCount) {
            throw UsageError(dashed(*option) + " " + option->valueName + " is missing");
        }
        if (option->maxCount > 1 && given.size() > option->maxCount) {
            throw UsageError(dashed(*option) + " may be given " + std::to_string(option->maxCount) +
                             " times at most");
        }
        if (!isRead(*option)) {
            continue;
        }
        for (const QString& text : given) {
            values_[option->name].push_back(readOption(*option, text));
        }
        if (given.isEmpty() && option->fallback != nullptr) {
            values_[option->name].push_back(
                readOption(*option, QString::fromUtf8(option->fallback)));
        }
    }
}

QStringList CommandLine::texts(std::string_view name) const {
    const auto found = texts_.find(name);
    return found == texts_.end() ? QStringList() : found->second;
}

}  // namespace rfu::command
