#include <rfUtils/presentation/rfUtils.h>

#include <cmath>

#include "analysis/support/inputError.h"
#include "subcommands.h"
#include "support/commandLine.h"
#include "support/errors.h"
#include "support/values.h"

namespace rfu::command {

namespace {

// clang-format off
const Usage kDmsUsage = {
    "Show decimal degrees as degrees, minutes and seconds. Fractions of a second are cut, not\n"
    "rounded: coming back with rfutils dd loses up to one second. The minus sign stands before the\n"
    "degrees, also before 0. Without DEGREES, values are read from standard input, one per line.",
    "DEGREES...",
    {"rfutils dms 12.5",
     "rfutils dms -33.8688 151.2093 --format csv"}};

const Usage kDdUsage = {
    "Show degrees, minutes and seconds as decimal degrees. The sign stands before the degrees, also\n"
    "before 0; seconds may have a fraction. Missing minutes and seconds are 0.",
    "DEGREES [MINUTES [SECONDS]]",
    {"rfutils dd -33 52 7.68",
     "rfutils dd -0 30 --format json"}};
// clang-format on

struct Dms {
    short sign;
    double degrees;
    double minutes;
    double seconds;
};

Dms toDms(double decimalDegrees) {
    Dms dms{};
    rfUtils::convertDmsFromDd(decimalDegrees, dms.sign, dms.degrees, dms.minutes, dms.seconds);
    return dms;
}

long long whole(double value) {
    return static_cast<long long>(value);  // within 32 bits
}

std::string dmsText(const Dms& dms) {
    return (dms.sign < 0 ? "-" : "") + std::to_string(whole(dms.degrees)) + " " +
           std::to_string(whole(dms.minutes)) + " " + std::to_string(whole(dms.seconds));
}

double numberArgument(const QStringList& values, int index) {
    if (index >= values.size()) {
        return 0.0;
    }
    const std::string text = values[index].toStdString();
    const auto number = parseNumber(text);
    if (!number) {
        throw inputError(quoted(text) + " is not a number");
    }
    if (index > 0 && std::signbit(*number)) {
        throw inputError(quoted(text) + ": only the degrees take a sign");
    }
    return *number;
}

}  // namespace

void runDms(const QStringList& arguments) {
    CommandLine line(kDmsUsage);
    line.addFormat();
    if (!line.parse(arguments)) {
        return;
    }
    if (line.format() == Format::Text) {
        forEachValue(line.values(), [&](std::string_view text) {
            standardOutput().write(dmsText(toDms(requireNumber(text))));
            standardOutput().write('\n');
        });
        return;
    }
    TableWriter table(standardOutput(), line.format(),
                      {"input", "sign", "degrees", "minutes", "seconds"});
    forEachValue(line.values(), [&](std::string_view text) {
        const Dms dms = toDms(requireNumber(text));
        table.text(trimmed(text)).integer(dms.sign).integer(whole(dms.degrees));
        table.integer(whole(dms.minutes)).integer(whole(dms.seconds));
    });
    table.finish();
}

void runDd(const QStringList& arguments) {
    CommandLine line(kDdUsage);
    line.addFormat();
    if (!line.parse(arguments)) {
        return;
    }
    const QStringList& values = line.values();
    if (values.isEmpty()) {
        throw usageError("DEGREES is missing");
    }
    line.requireAtMost(3);
    const double degrees = numberArgument(values, 0);
    const short sign = std::signbit(degrees) ? -1 : 1;
    double decimalDegrees = 0.0;
    rfUtils::convertDdFromDms(sign, std::abs(degrees), numberArgument(values, 1),
                              numberArgument(values, 2), decimalDegrees);
    if (line.format() == Format::Text) {
        standardOutput().write(ShortestText(decimalDegrees).view());
        standardOutput().write('\n');
        return;
    }
    TableWriter table(standardOutput(), line.format(), {"degrees"}, TableWriter::Shape::Object);
    table.number(decimalDegrees);
    table.finish();
}

}  // namespace rfu::command
