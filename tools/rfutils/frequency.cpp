#include <rfUtils/presentation/rfUtils.h>

#include "analysis/support/inputError.h"
#include "subcommands.h"
#include "support/commandLine.h"
#include "support/errors.h"
#include "support/values.h"

namespace rfu::command {

namespace {

// clang-format off
const Usage kFreqUsage = {
    "Show frequencies as the instrument does, in GHz, MHz, kHz or Hz. A value is a number of MHz or\n"
    "has a unit of its own. Without MHZ, values are read from standard input, one per line.",
    "MHZ...",
    {"rfutils freq 88.1",
     "rfutils freq 2400 0.5 100kHz 1.57542GHz",
     "rfutils freq -2.5 --format json"}};

const Usage kWidthUsage = {
    "Show frequency widths (spans, bandwidths) as the instrument does: at most six digits, in GHz,\n"
    "MHz, kHz or Hz. A value is a number of MHz or has a unit of its own. Without MHZ, values are\n"
    "read from standard input, one per line. The kilohertz begin above 100 Hz here, for rfutils freq\n"
    "above 1 kHz.",
    "MHZ...",
    {"rfutils width 20",
     "rfutils width 0.0005 30kHz 1.5GHz",
     "rfutils width 0.2 --format csv"}};
// clang-format on

template <typename Show>
void showFrequencies(const Usage& usage, const QStringList& arguments, Show show) {
    CommandLine line(usage);
    line.addFormat();
    if (!line.parse(arguments)) {
        return;
    }
    const auto megahertzOf = [](std::string_view text) {
        const auto megahertz = parseFrequency(text);
        if (!megahertz) {
            throw BadValue{quoted(text) + " is not a frequency such as 88.1MHz or a number of MHz"};
        }
        return *megahertz;
    };
    if (line.format() == Format::Text) {
        forEachValue(line.values(), [&](std::string_view text) {
            standardOutput().write(show(megahertzOf(text)));
            standardOutput().write('\n');
        });
        return;
    }
    TableWriter table(standardOutput(), line.format(), {"input", "MHz", "text"});
    forEachValue(line.values(), [&](std::string_view text) {
        const double megahertz = megahertzOf(text);
        table.text(trimmed(text)).number(megahertz).text(show(megahertz));
    });
    table.finish();
}

}  // namespace

void runFreq(const QStringList& arguments) {
    const rfUtils presentation;
    showFrequencies(kFreqUsage, arguments,
                    [&](double megahertz) { return presentation.makeFrequencyUnit(megahertz); });
}

void runWidth(const QStringList& arguments) {
    const rfUtils presentation;
    showFrequencies(kWidthUsage, arguments, [&](double megahertz) {
        return presentation.convertFreqWidthUnit(megahertz).toStdString();
    });
}

}  // namespace rfu::command
