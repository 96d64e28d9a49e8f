#include <rfUtils/presentation/rfUtils.h>

#include <cmath>
#include <string>
#include <string_view>

#include "analysis/support/inputError.h"
#include "analysis/support/numbers.h"
#include "subcommands.h"
#include "support/commandLine.h"
#include "support/errors.h"
#include "support/format.h"
#include "support/kinds.h"
#include "support/output.h"
#include "support/table.h"
#include "support/values.h"

namespace rfu::command {

namespace {

constexpr double kParts = 60.0;  // minutes of a degree, seconds of a minute

struct Dms {
    std::string_view input;
    short sign;
    double degrees;
    double minutes;
    double seconds;
};

Dms readDms(std::string_view text) {
    Dms dms{trimmed(text), 0, 0.0, 0.0, 0.0};
    rfUtils::convertDmsFromDd(readNumber(text), dms.sign, dms.degrees, dms.minutes, dms.seconds);
    return dms;
}

long long whole(double value) {
    return static_cast<long long>(value);  // within 32 bits
}

void showDms(const Dms& dms) {
    standardOutput().write((dms.sign < 0 ? "-" : "") + std::to_string(whole(dms.degrees)) + " " +
                           std::to_string(whole(dms.minutes)) + " " +
                           std::to_string(whole(dms.seconds)) + "\n");
}

double part(const CommandLine& line, const char* name) {
    const std::string text = line.text(name).toStdString();
    const double number = text.empty() ? 0.0 : readNumber(text);
    if (std::signbit(number)) {
        throw BadValue(rfu::quoted(text) + ": only the degrees take a sign");
    }
    if (number >= kParts) {
        throw BadValue(rfu::quoted(text) + ": minutes and seconds are below 60");
    }
    return number;
}

void runDms(const CommandLine& line) {
    answerValues<Dms>(line.texts("DEGREES"), line.format(), readDms, showDms,
                      {{"input", [](const Dms& dms) { return dms.input; }},
                       {"sign", [](const Dms& dms) { return dms.sign; }},
                       {"degrees", [](const Dms& dms) { return whole(dms.degrees); }},
                       {"minutes", [](const Dms& dms) { return whole(dms.minutes); }},
                       {"seconds", [](const Dms& dms) { return whole(dms.seconds); }}});
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
    } else {
        writeObject(line.format(), {{"degrees", decimalDegrees}});
    }
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
