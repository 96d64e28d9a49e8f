#include <rfUtils/presentation/rfUtils.h>

#include <cmath>

#include "analysis/support/inputError.h"
#include "analysis/support/numbers.h"
#include "subcommands.h"
#include "support/commandLine.h"
#include "support/errors.h"
#include "support/kinds.h"
#include "support/output.h"
#include "support/tableWriter.h"
#include "support/values.h"

namespace rfu::command {

namespace {

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

double part(const CommandLine& line, const char* name) {
    const std::string text = line.text(name).toStdString();
    const double number = text.empty() ? 0.0 : readNumber(text);
    if (std::signbit(number)) {
        throw BadValue(quoted(text) + ": only the degrees take a sign");
    }
    return number;
}

void runDms(const CommandLine& line) {
    const QStringList values = line.texts("DEGREES");
    if (line.format() == Format::Text) {
        forEachValue(values, [&](std::string_view text) {
            standardOutput().write(dmsText(toDms(readNumber(text))));
            standardOutput().write('\n');
        });
        return;
    }
    TableWriter table(standardOutput(), line.format(),
                      {"input", "sign", "degrees", "minutes", "seconds"});
    forEachValue(values, [&](std::string_view text) {
        const Dms dms = toDms(readNumber(text));
        table.text(trimmed(text)).integer(dms.sign).integer(whole(dms.degrees));
        table.integer(whole(dms.minutes)).integer(whole(dms.seconds));
    });
    table.finish();
}

void runDd(const CommandLine& line) {
    const double degrees = readNumber(line.text("DEGREES").toStdString());
    const short sign = std::signbit(degrees) ? -1 : 1;
    double decimalDegrees = 0.0;
    rfUtils::convertDdFromDms(sign, std::abs(degrees), part(line, "MINUTES"), part(line, "SECONDS"),
                              decimalDegrees);
    if (line.format() == Format::Text) {
        standardOutput().write(ShortestText(decimalDegrees).view());
        standardOutput().write('\n');
        return;
    }
    TableWriter table(standardOutput(), line.format(), {"degrees"}, TableWriter::Shape::Object);
    table.number(decimalDegrees);
    table.finish();
}

}  // namespace

// clang-format off
constexpr Subcommand kDms = {
    "dms", "Decimal degrees to degrees, minutes and seconds",
    "Show decimal degrees as degrees, minutes and seconds. Fractions of a second are cut, not "
    "rounded: coming back with rfutils dd loses up to one second. The minus sign stands before "
    "the degrees, also before 0. Without DEGREES, values are read from standard input, one per "
    "line.",
    {{"DEGREES", Kind::Text, 0, kAnyCount}},
    {},
    {"rfutils dms 12.5",
     "rfutils dms -33.8688 151.2093 --format csv"},
    runDms};

constexpr Subcommand kDd = {
    "dd", "Degrees, minutes and seconds to decimal degrees",
    "Show degrees, minutes and seconds as decimal degrees. The sign stands before the degrees, "
    "also before 0; seconds may have a fraction. Missing minutes and seconds are 0.",
    {{"DEGREES", Kind::Text}, {"MINUTES", Kind::Text, 0}, {"SECONDS", Kind::Text, 0}},
    {},
    {"rfutils dd -33 52 7.68",
     "rfutils dd -0 30 --format json"},
    runDd};
// clang-format on

}  // namespace rfu::command
