#include <gtest/gtest.h>

#include <string>

#include "runCommand.h"

namespace {

QStringList range(int type, const char* min, const char* max, const QStringList& more = {}) {
    return QStringList{"range", "--type", QString::number(type), "--min", min, "--max", max} + more;
}

}  // namespace

TEST(Range, texts) {
    const QStringList antenna = {"--center", "100MHz"};
    const QStringList integer = {"--integer"};
    expectCommands({
        shows("frequency", range(0, "0.009", "6000"), " {Min: 9.000 kHz, Max: 6.000000000 GHz} \n"),
        shows("suffix", range(2, "-10", "20"), " {Min: -10.00 dBm, Max: 20.00 dBm} \n"),
        shows("micro sign", range(4, "1", "2"), " {Min: 1.00 \u00B5s, Max: 2.00 \u00B5s} \n"),
        shows("no unit", range(5, "-10", "20"), " {Min: -10.00 , Max: 20.00 } \n"),
        shows("level", range(13, "-30", "0"), " {Min: 77.0 dBuV, Max: 107.0 dBuV} \n"),
        shows("field", range(16, "-30", "-10", antenna),
              " {Min: 87.20 dBuV/m, Max: 107.20 dBuV/m} \n"),
        shows("field with gain", range(16, "-30", "-10", {"--center", "100", "--gain", "2"}),
              " {Min: 85.20 dBuV/m, Max: 105.20 dBuV/m} \n"),
        shows("last field", range(21, "-30", "-30", antenna),
              " {Min: -28.56 dBm/m^2, Max: -28.56 dBm/m^2} \n"),
        shows("past the fields", range(22, "1", "2"), " {Min: 1.00 ppm, Max: 2.00 ppm} \n"),
        shows("empty text", range(23, "1", "2"), "\n"),
        shows("unknown code", range(-1, "1", "2"), " {Min: 1.00 , Max: 2.00 } \n"),
        shows("integers", range(6, "0", "100", integer), " {Min: 0 Sec, Max: 100 Sec} \n"),
        shows("seconds only for integers", range(6, "0", "100"), " {Min: 0.00 , Max: 100.00 } \n"),
        shows("integers have no field and need no antenna", range(16, "0", "1", integer),
              " {Min: 0 , Max: 1 } \n"),
    });
}

TEST(Range, csvAndJson) {
    expectCommands({
        shows("CSV", range(2, "-10.5", "20", {"--format", "csv"}),
              "type,min,max,text\n2,-10.5,20,\" {Min: -10.50 dBm, Max: 20.00 dBm} \"\n"),
        shows(
            "JSON is one object", range(1, "-5", "10", {"--integer", "--format", "json"}),
            "{\"type\": 1, \"min\": -5, \"max\": 10, \"text\": \" {Min: -5 dB, Max: 10 dB} \"}\n"),
    });
}

TEST(Range, labelsWithoutTheirPrefixAreNoted) {
    const std::string volts = ": above 100 V the instrument shows kilovolts under the label V";
    const std::string watts =
        ": from 1 kW the instrument shows kilowatts, from 1 MW megawatts, under the label W";
    expectCommands({
        shows("kilovolts", range(14, "10", "63"), " {Min: 0.71 V, Max: 0.32 V} \n")
            .noting("\"0.32 V\" means 0.32 kV" + volts),
        shows("kilowatts, of both limits noted once", range(15, "60", "90"),
              " {Min: 1.00 W, Max: 1.00 W} \n")
            .noting("\"1.00 W\" means 1.00 kW" + watts),
        shows("megawatts", range(15, "10", "90"), " {Min: 10.00 mW, Max: 1.00 W} \n")
            .noting("\"1.00 W\" means 1.00 MW" + watts),
        shows("not below", range(14, "0", "50"), " {Min: 0.22 V, Max: 70.71 V} \n"),
        shows("not of other codes", range(2, "63", "90"), " {Min: 63.00 dBm, Max: 90.00 dBm} \n"),
        shows("not of whole numbers", range(15, "60", "90", {"--integer"}),
              " {Min: 60 , Max: 90 } \n"),
        shows("not in CSV", range(15, "60", "90", {"--format", "csv"}),
              "type,min,max,text\n15,60,90,\" {Min: 1.00 W, Max: 1.00 W} \"\n"),
    });
}

TEST(Range, helpListsTheCodes) {
    const std::string help = runCommand({"range", "--help"}).output;
    for (const char* code :
         {"   0 frequency (limits in MHz) ", "   1 dB, integers too ", "   6 Sec, integers only ",
          "  13 dBuV (limits in dBm)\n", "  23 empty text, integers too\n"}) {
        EXPECT_NE(help.find(code), std::string::npos) << code;
    }
}

TEST(Range, wrongUse) {
    expectCommands({
        misuses("no type", "range --min 1 --max 2", "--type CODE is missing"),
        misuses("no lower limit", "range --type 1 --max 2", "--min V is missing"),
        misuses("no upper limit", "range --type 1 --min 2", "--max V is missing"),
        misuses("limits exchanged", range(2, "20", "-10"), "--min is above --max"),
        misuses("of whole numbers", range(6, "1", "0", {"--integer"}), "--min is above --max"),
        misuses("type without number", "range --type dBm --min 1 --max 2",
                "--type: \"dBm\" is not a whole number"),
        misuses("fraction among integers", range(1, "1", "2.5", {"--integer"}),
                "--max: \"2.5\" is not a whole number"),
        misuses("integer beyond 32 bits", range(1, "1", "2147483648", {"--integer"}),
                "--max: \"2147483648\" is not a whole number"),
        misuses("first field without frequency", range(16, "1", "2"),
                "type 16 needs the centre frequency of the antenna: --center"),
        misuses("last field without frequency", range(21, "1", "2"),
                "type 21 needs the centre frequency of the antenna: --center"),
        misuses("argument", "range 1", "unexpected argument \"1\""),
    });
}
