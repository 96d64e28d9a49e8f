#include <rfUtils/presentation/rfUtils.h>

#include <string_view>
#include <variant>

#include "analysis/support/numbers.h"
#include "subcommands.h"
#include "support/commandLine.h"
#include "support/kinds.h"
#include "support/output.h"
#include "support/values.h"

namespace rfu::command {

namespace {

struct Frequency {
    std::string_view input;
    double megahertz;
};

template <typename TextOf>
void showFrequencies(const CommandLine& line, TextOf textOf) {
    const auto read = [](std::string_view text) {
        return Frequency{trimmed(text), std::get<double>(readValue(Kind::Frequency, text))};
    };
    const auto show = [&](const Frequency& frequency) {
        standardOutput().write(textOf(frequency.megahertz) + "\n");
    };
    answerValues<Frequency>(
        line.texts("MHZ"), line.format(), read, show,
        {{"input", [](const Frequency& frequency) { return frequency.input; }},
         {"MHz", [](const Frequency& frequency) { return frequency.megahertz; }},
         {"text", [&](const Frequency& frequency) { return textOf(frequency.megahertz); }}});
}

void runFreq(const CommandLine& line) {
    const rfUtils presentation;
    showFrequencies(line,
                    [&](double megahertz) { return presentation.makeFrequencyUnit(megahertz); });
}

void runWidth(const CommandLine& line) {
    const rfUtils presentation;
    showFrequencies(line, [&](double megahertz) {
        return presentation.convertFreqWidthUnit(megahertz).toStdString();
    });
}

}  // namespace

// clang-format off
constexpr Subcommand kFreq = {
    "freq", "Show frequencies as the instrument does",
    "Show frequencies as the instrument does, in GHz, MHz, kHz or Hz. A value is a number of MHz "
    "or has a unit of its own. Without MHZ, values are read from standard input, one per line.",
    {{"MHZ", Kind::Text, 0, kAnyCount}},
    {},
    {"rfutils freq 88.1",
     "rfutils freq 2400 0.5 100kHz 1.57542GHz",
     "rfutils freq -2.5 --format json"},
    runFreq};

constexpr Subcommand kWidth = {
    "width", "Show frequency widths as the instrument does",
    "Show frequency widths (spans, bandwidths) as the instrument does: at most six digits, in "
    "GHz, MHz, kHz or Hz. A value is a number of MHz or has a unit of its own. Without MHZ, "
    "values are read from standard input, one per line. The kilohertz begin above 100 Hz here, "
    "for rfutils freq above 1 kHz.",
    {{"MHZ", Kind::Text, 0, kAnyCount}},
    {},
    {"rfutils width 20",
     "rfutils width 0.0005 30kHz 1.5GHz",
     "rfutils width 0.2 --format csv"},
    runWidth};
// clang-format on

}  // namespace rfu::command
