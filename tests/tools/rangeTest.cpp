#include <gtest/gtest.h>

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
        {"frequency", range(0, "0.009", "6000"), "", 0,
         " {Min: 9.000 kHz, Max: 6.000000000 GHz} \n", ""},
        {"suffix", range(2, "-10", "20"), "", 0, " {Min: -10.00 dBm, Max: 20.00 dBm} \n", ""},
        {"micro sign", range(4, "1", "2"), "", 0, " {Min: 1.00 \u00B5s, Max: 2.00 \u00B5s} \n", ""},
        {"no unit", range(5, "-10", "20"), "", 0, " {Min: -10.00 , Max: 20.00 } \n", ""},
        {"level", range(13, "-30", "0"), "", 0, " {Min: 77.0 dBuV, Max: 107.0 dBuV} \n", ""},
        {"field", range(16, "-30", "-10", antenna), "", 0,
         " {Min: 87.20 dBuV/m, Max: 107.20 dBuV/m} \n", ""},
        {"field with gain", range(16, "-30", "-10", {"--center", "100", "--gain", "2"}), "", 0,
         " {Min: 85.20 dBuV/m, Max: 105.20 dBuV/m} \n", ""},
        {"last field", range(21, "-30", "-30", antenna), "", 0,
         " {Min: -28.56 dBm/m^2, Max: -28.56 dBm/m^2} \n", ""},
        {"past the fields", range(22, "1", "2"), "", 0, " {Min: 1.00 ppm, Max: 2.00 ppm} \n", ""},
        {"empty text", range(23, "1", "2"), "", 0, "\n", ""},
        {"unknown code", range(-1, "1", "2"), "", 0, " {Min: 1.00 , Max: 2.00 } \n", ""},
        {"integers", range(6, "0", "100", integer), "", 0, " {Min: 0 Sec, Max: 100 Sec} \n", ""},
        {"seconds only for integers", range(6, "0", "100"), "", 0, " {Min: 0.00 , Max: 100.00 } \n",
         ""},
        {"integers have no field and need no antenna", range(16, "0", "1", integer), "", 0,
         " {Min: 0 , Max: 1 } \n", ""},
    });
}

TEST(Range, csvAndJson) {
    expectCommands({
        {"CSV", range(2, "-10.5", "20", {"--format", "csv"}), "", 0,
         "type,min,max,text\n2,-10.5,20,\" {Min: -10.50 dBm, Max: 20.00 dBm} \"\n", ""},
        {"JSON is one object", range(1, "-5", "10", {"--integer", "--format", "json"}), "", 0,
         "{\"type\": 1, \"min\": -5, \"max\": 10, \"text\": \" {Min: -5 dB, Max: 10 dB} \"}\n", ""},
    });
}

TEST(Range, labelsWithoutTheirPrefixAreNoted) {
    const std::string volts = ": above 100 V the instrument shows kilovolts under the label V\n";
    const std::string watts =
        ": from 1 kW the instrument shows kilowatts, from 1 MW megawatts, under the label W\n";
    expectCommands({
        {"kilovolts", range(14, "10", "63"), "", 0, " {Min: 0.71 V, Max: 0.32 V} \n",
         "rfutils: note: \"0.32 V\" means 0.32 kV" + volts},
        {"kilowatts, of both limits noted once", range(15, "60", "90"), "", 0,
         " {Min: 1.00 W, Max: 1.00 W} \n", "rfutils: note: \"1.00 W\" means 1.00 kW" + watts},
        {"megawatts", range(15, "10", "90"), "", 0, " {Min: 10.00 mW, Max: 1.00 W} \n",
         "rfutils: note: \"1.00 W\" means 1.00 MW" + watts},
        {"not below", range(14, "0", "50"), "", 0, " {Min: 0.22 V, Max: 70.71 V} \n", ""},
        {"not of other codes", range(2, "63", "90"), "", 0, " {Min: 63.00 dBm, Max: 90.00 dBm} \n",
         ""},
        {"not of whole numbers", range(15, "60", "90", {"--integer"}), "", 0,
         " {Min: 60 , Max: 90 } \n", ""},
        {"not in CSV", range(15, "60", "90", {"--format", "csv"}), "", 0,
         "type,min,max,text\n15,60,90,\" {Min: 1.00 W, Max: 1.00 W} \"\n", ""},
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
    const std::string help = " (see rfutils range --help)\n";
    expectCommands({
        {"no type",
         {"range", "--min", "1", "--max", "2"},
         "",
         2,
         "",
         "rfutils: --type CODE is missing" + help},
        {"no lower limit",
         {"range", "--type", "1", "--max", "2"},
         "",
         2,
         "",
         "rfutils: --min V is missing" + help},
        {"no upper limit",
         {"range", "--type", "1", "--min", "2"},
         "",
         2,
         "",
         "rfutils: --max V is missing" + help},
        {"type without number",
         {"range", "--type", "dBm", "--min", "1", "--max", "2"},
         "",
         2,
         "",
         "rfutils: --type: \"dBm\" is not a whole number" + help},
        {"fraction among integers", range(1, "1", "2.5", {"--integer"}), "", 2, "",
         "rfutils: --max: \"2.5\" is not a whole number" + help},
        {"integer beyond 32 bits", range(1, "1", "2147483648", {"--integer"}), "", 2, "",
         "rfutils: --max: \"2147483648\" is not a whole number" + help},
        {"first field without frequency", range(16, "1", "2"), "", 2, "",
         "rfutils: type 16 needs the centre frequency of the antenna: --center" + help},
        {"last field without frequency", range(21, "1", "2"), "", 2, "",
         "rfutils: type 21 needs the centre frequency of the antenna: --center" + help},
        {"argument", {"range", "1"}, "", 2, "", "rfutils: unexpected argument \"1\"" + help},
    });
}
