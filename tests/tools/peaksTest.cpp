#include <gtest/gtest.h>

#include "runCommand.h"

namespace {

/// Sweeps of a hop of ten points, 1 MHz each, ten minutes apart: a floor of -78 dBm, a triangle around
/// 104 MHz in every sweep but the first, and in the second sweep a single point at 108 MHz.
const char* const kBand =
    "2024-05-04, 23:40:00, 100000000, 110000000, 1000000, 5, "
    "-78.0, -78.0, -78.0, -78.0, -78.0, -78.0, -78.0, -78.0, -78.0, -78.0\n"
    "2024-05-04, 23:50:00, 100000000, 110000000, 1000000, 5, "
    "-78.0, -78.0, -78.0, -48.0, -44.0, -48.0, -78.0, -78.0, -54.0, -78.0\n"
    "2024-05-05, 00:00:00.25, 100000000, 110000000, 1000000, 5, "
    "-78.0, -78.0, -78.0, -46.0, -42.0, -46.0, -78.0, -78.0, nan, -78.0\n";

/// The first two of these sweeps.
std::string oneDay() {
    const std::string band = kBand;
    return band.substr(0, band.find("2024-05-05"));
}

QStringList peaks(const char* options) {
    return QStringList{QStringLiteral("peaks"), QStringLiteral("-")} + splitWords(options);
}

CommandCase good(const char* name, const char* options, const std::string& input,
                 const std::string& output) {
    return {name, peaks(options), input, 0, output, ""};
}

CommandCase bad(const char* name, const char* options, const std::string& input,
                const std::string& error) {
    return {name, peaks(options), input, 1, "", "rfutils: " + error + "\n"};
}

CommandCase misused(const char* name, const char* options, const std::string& error) {
    return {
        name, peaks(options), kBand, 2, "", "rfutils: " + error + " (see rfutils peaks --help)\n"};
}

const char* const kHeader =
    "frequencyMHz,widthMHz,maximum,average,floor,above,present,first,last,unit\n";

}  // namespace

// Width of the triangle: from its maximum by 4 dB to the neighbours, by 2 of the 32 dB (of 30 in the
// first two sweeps) beyond. Of the single point: 6 of 24 dB to either side.
TEST(Peaks, showSignals) {
    expectCommands({
        good("text of several days", "", kBand,
             "frequencyMHz  widthMHz    maximum  above  present  first        last\n"
             "  104.000000  2.125000  -42.0 dBm   36.0    0.667  05-04 23:50  05-05 00:00\n"
             "  108.000000  0.500000  -54.0 dBm   24.0    0.500  05-04 23:50  05-04 23:50\n")
            .noting("left out to fit 80 columns: average, floor; --format csv has all"),
        good("text of a day, in another unit", "--unit dBuV", oneDay(),
             "frequencyMHz  widthMHz    maximum      floor  above  present  first     last\n"
             "  104.000000  2.133333  63.0 dBuV  29.0 dBuV   34.0    0.500  23:50:00  23:50:00\n"
             "  108.000000  0.500000  53.0 dBuV  29.0 dBuV   24.0    0.500  23:50:00  23:50:00\n")
            .noting("left out to fit 80 columns: average; --format csv has all"),
        good("CSV", "--format csv", kBand,
             kHeader + std::string("104,2.125,-42,-54.666666666666664,-78,36,0.6666666666666666,"
                                   "2024-05-04 23:50:00,2024-05-05 00:00:00.25,dBm\n"
                                   "108,0.5,-54,-66,-78,24,0.5,"
                                   "2024-05-04 23:50:00,2024-05-04 23:50:00,dBm\n")),
        // The threshold, -53 dBm, lies above 24 dB below the maximum: 7 of the 32 dB beyond.
        good("JSON, above a level of one's own, at another width",
             "--above 25dB --width-at 24 --format json", kBand,
             "[\n  {\"frequencyMHz\": 104, \"widthMHz\": 2.4375, \"maximum\": -42, \"average\": "
             "-54.666666666666664, \"floor\": -78, \"above\": 36, \"present\": 0.6666666666666666, "
             "\"first\": \"2024-05-04 23:50:00\", \"last\": \"2024-05-05 00:00:00.25\", \"unit\": "
             "\"dBm\"}\n]\n"),
        good("without spurs", "--format csv --spur 104.5MHz:2500kHz --spur 108.5:1", kBand,
             kHeader),
        // The bins at 104 and 105 MHz: 103 MHz has neighbours 1 and 3 MHz away, 32 dB lower.
        good(
            "without the middle of every hop", "--spur hops:100kHz --format csv --above 25", kBand,
            kHeader + std::string("103.1875,0.75,-46,-57.333333333333336,-78,32,0.6666666666666666,"
                                  "2024-05-04 23:50:00,2024-05-05 00:00:00.25,dBm\n")),
        good("no signal, CSV", "--above 60 --format csv", kBand, kHeader),
        good("no signal, JSON", "--above 60 --format json", kBand, "[]\n"),
    });
}

TEST(Peaks, refuseWhatTheyCannotUse) {
    expectCommands({
        bad("traces without frequencies", "", "-90, -50, -90\n",
            "-: the recording holds no frequencies"),
        bad("nothing", "", "", "-: holds no sweep"),
        bad("a spur outside", "--spur 200MHz:1MHz", kBand,
            "-: no point lies in the spur \"200MHz:1MHz\""),
        misused("a spur without width", "--spur 104MHz",
                "--spur: \"104MHz\" is not a range such as 98.3MHz:50kHz or hops:50kHz"),
        misused("a spur without extent", "--spur 104MHz:0",
                "--spur: \"104MHz:0\" is not a range such as 98.3MHz:50kHz or hops:50kHz"),
        misused("a threshold on the floor", "--above 0", "--above has to be above zero"),
        misused("no difference", "--above 6dBm",
                "--above: \"6dBm\" is not a difference such as 6dB or a number of dB"),
        misused("no width", "--width-at -6", "--width-at has to be above zero"),
        misused("a narrow window", "--window 4", "--window takes 5 to 1000000 points"),
        misused("an antenna without effect", "--gain 3",
                "--gain needs a --unit that depends on the antenna, such as dBuV/m"),
    });
}
