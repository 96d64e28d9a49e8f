#include "support/commandLine.h"

#include "analysis/support/inputError.h"
#include "analysis/support/numbers.h"
#include "support/argumentOrder.h"
#include "support/errors.h"

namespace rfu::command {

namespace {

const QString kHelp = QStringLiteral("help");
const QString kFormat = QStringLiteral("format");

struct FormatName {
    const char* name;
    Format format;
};
constexpr FormatName kFormats[] = {
    {"text", Format::Text}, {"csv", Format::Csv}, {"json", Format::Json}};

/// Qt's "Unknown option 'x'." as part of a line of ours.
std::string asPartOfLine(QString qtMessage) {
    if (qtMessage.endsWith(QLatin1Char('.'))) {
        qtMessage.chop(1);
    }
    return (qtMessage.left(1).toLower() + qtMessage.mid(1)).toStdString();
}

std::string wrongValue(const char* option, const QString& value, const char* expected) {
    return std::string("--") + option + " " + quoted(value.toStdString()) + ": " + expected;
}

}  // namespace

CommandLine::CommandLine(const Usage& usage) : examples_(usage.examples) {
    parser_.setApplicationDescription(QString::fromUtf8(usage.description));
    if (*usage.syntax != '\0') {
        // The description explains the arguments; only the usage line names them.
        parser_.addPositionalArgument(QStringLiteral("arguments"), {},
                                      QString::fromUtf8(usage.syntax));
    }
    parser_.addOption({{QStringLiteral("h"), kHelp}, QStringLiteral("Show this help.")});
}

void CommandLine::addFlag(const char* name, const char* description) {
    parser_.addOption({QString::fromUtf8(name), QString::fromUtf8(description)});
}

void CommandLine::addOption(const char* name, const char* valueName, const char* description) {
    parser_.addOption(
        {QString::fromUtf8(name), QString::fromUtf8(description), QString::fromUtf8(valueName)});
    optionsWithValue_ += QString::fromUtf8(name);
}

void CommandLine::addFormat() {
    addOption("format", "FORMAT", "text (default), csv or json.");
}

void CommandLine::addAntenna() {
    addOption("center", "FREQ",
              "Centre frequency for field units: 88.1MHz, 2.4GHz, 100kHz, 5Hz or a number of MHz.");
    addOption("gain", "DBI", "Antenna gain in dBi for field units (default 0).");
}

bool CommandLine::parse(const QStringList& arguments) {
    const QStringList program(QStringLiteral("rfutils"));
    if (!parser_.parse(program + optionsFirst(arguments, optionsWithValue_))) {
        throw usageError(asPartOfLine(parser_.errorText()));
    }
    if (parser_.isSet(kHelp)) {
        std::string help = parser_.helpText().toStdString();
        // The arguments stand in the usage line and in the description already.
        help.erase(std::min(help.find("\nArguments:\n"), help.size()));
        help += "\nExamples:\n";
        for (const char* example : examples_) {
            help += std::string("  ") + example + "\n";
        }
        standardOutput().write(help);
        return false;
    }
    values_ = parser_.positionalArguments();
    format_ = parsedFormat();
    return true;
}

Format CommandLine::parsedFormat() const {
    if (!optionsWithValue_.contains(kFormat) || !parser_.isSet(kFormat)) {
        return Format::Text;
    }
    const QString asked = parser_.value(kFormat);
    for (const FormatName& known : kFormats) {
        if (asked == QLatin1String(known.name)) {
            return known.format;
        }
    }
    throw usageError(wrongValue("format", asked, "text, csv or json is expected"));
}

void CommandLine::requireAtMost(int count) const {
    if (values_.size() > count) {
        throw usageError("unexpected argument " + quoted(values_[count].toStdString()));
    }
}

QString CommandLine::onlyValue(const char* what) const {
    if (values_.isEmpty()) {
        throw usageError(std::string(what) + " is missing");
    }
    requireAtMost(1);
    return values_.first();
}

bool CommandLine::isSet(const char* name) const {
    return parser_.isSet(QString::fromUtf8(name));
}

QString CommandLine::option(const char* name) const {
    return parser_.value(QString::fromUtf8(name));
}

QStringList CommandLine::options(const char* name) const {
    return parser_.values(QString::fromUtf8(name));
}

std::optional<double> CommandLine::number(const char* name) const {
    if (!isSet(name)) {
        return std::nullopt;
    }
    const auto value = parseNumber(option(name).toStdString());
    if (!value) {
        throw usageError(wrongValue(name, option(name), "a number is expected"));
    }
    return value;
}

std::optional<int> CommandLine::integer(const char* name) const {
    if (!isSet(name)) {
        return std::nullopt;
    }
    const auto value = parseInteger(option(name).toStdString());
    if (!value) {
        throw usageError(wrongValue(name, option(name), "a whole number is expected"));
    }
    return value;
}

std::optional<double> CommandLine::frequency(const char* name) const {
    if (!isSet(name)) {
        return std::nullopt;
    }
    const auto value = parseFrequency(option(name).toStdString());
    if (!value) {
        throw usageError(wrongValue(name, option(name), "a frequency such as 88.1MHz is expected"));
    }
    return value;
}

}  // namespace rfu::command
