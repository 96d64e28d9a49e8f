#include <gtest/gtest.h>

#include "runCommand.h"

// K = float(20 lg f - 29.8 - G): 10.199999809265137 at 100 MHz, 30.200000762939453 at 1 GHz.

TEST(Scale, fromDbm) {
    expectCommands({
        {"unchanged", {"scale", "0", "-30"}, "", 0, "-30 dBm\n", ""},
        {"-30 - 13.0103", {"scale", "1", "-30"}, "", 0, "-43.0103 dBV\n", ""},
        {"-30 + 106.9897", {"scale", "3", "-30"}, "", 0, "76.9897 dBuV\n", ""},
        {"exp(46.9897 ln10/20) / 1000", {"scale", "4", "0"}, "", 0, "0.22360679663372815 V\n", ""},
        {"one watt", {"scale", "5", "30"}, "", 0, "1 W\n", ""},
        {"-30 + 107 + K",
         {"scale", "6", "-30", "--center", "1GHz"},
         "",
         0,
         "107.20000076293945 dBuV/m\n",
         ""},
        {"with gain",
         {"scale", "6", "-30", "--center", "1000", "--gain", "2"},
         "",
         0,
         "105.20000076293945 dBuV/m\n",
         ""},
        {"V/m", {"scale", "9", "-30", "--center", "100"}, "", 0, "0.02290867602462237 V/m\n", ""},
        {"W/cm^2 is the last",
         {"scale", "15", "13", "--center", "1"},
         "",
         0,
         // exp(float(-29.8) ln10/10) / (120 pi 1e4)
         "2.777595229198276e-10 W/cm^2\n",
         ""},
        {"several values", {"scale", "0", "1", "-2", "3.5"}, "", 0, "1 dBm\n-2 dBm\n3.5 dBm\n", ""},
        {"from standard input", {"scale", "0"}, "1\n-2\n", 0, "1 dBm\n-2 dBm\n", ""},
    });
}

TEST(Scale, toDbm) {
    expectCommands({
        {"unchanged", {"scale", "0", "-30", "--to-dbm"}, "", 0, "-30 dBm\n", ""},
        {"60 - 46.9897", {"scale", "4", "1", "--to-dbm"}, "", 0, "13.0103 dBm\n", ""},
        {"watts by the formula of the volt",
         {"scale", "5", "0.001", "--to-dbm"},
         "",
         0,
         "-46.9897 dBm\n",
         ""},
        {"a field level",
         {"scale", "6", "107.2", "--to-dbm", "--center", "1GHz"},
         "",
         0,
         "-30.00000076293945 dBm\n",
         ""},
        {"no way back",
         {"scale", "9", "1", "--to-dbm", "--center", "100"},
         "",
         1,
         "",
         "rfutils: scale 9 (V/m) has no way back to dBm; rfutils convert reads V/m\n"},
        {"zero has no level",
         {"scale", "4", "0", "--to-dbm"},
         "",
         1,
         "",
         "rfutils: 0 V has no level, it is not above zero\n"},
    });
}

TEST(Scale, csvAndJson) {
    expectCommands({
        {"CSV",
         {"scale", "1", "-30", "-0", "--format", "csv"},
         "",
         0,
         "input,scale,value,unit\n-30,1,-43.0103,dBV\n-0,1,-13.0103,dBV\n",
         ""},
        {"JSON",
         {"scale", "5", "0.001", "--to-dbm", "--format", "json"},
         "",
         0,
         "[\n  {\"input\": \"0.001\", \"scale\": 5, \"value\": -46.9897, \"unit\": \"dBm\"}\n]\n",
         ""},
    });
}

TEST(Scale, helpListsTheScalesInColumns) {
    const std::string help = runCommand({"scale", "--help"}).output;
    EXPECT_NE(
        help.find("\n   0 dBm       3 dBuV      6 dBuV/m    9 V/m      12 dBW/m^2  15 W/cm^2\n"
                  "   1 dBV       4 V         7 dBmV/m   10 W/m^2    13 A/m\n"
                  "   2 dBmV      5 W         8 dBV/m    11 dBm/m^2  14 dBA/m\n\n"),
        std::string::npos);
}

TEST(Scale, wrongUse) {
    const std::string help = " (see rfutils scale --help)\n";
    expectCommands({
        {"beyond the last",
         {"scale", "16", "1"},
         "",
         1,
         "",
         "rfutils: there is no scale 16; scales are 0 to 15\n"},
        {"before the first",
         {"scale", "-1", "1"},
         "",
         1,
         "",
         "rfutils: there is no scale -1; scales are 0 to 15\n"},
        {"missing", {"scale"}, "", 2, "", "rfutils: INDEX is missing" + help},
        {"no index",
         {"scale", "V", "1"},
         "",
         2,
         "",
         "rfutils: INDEX: \"V\" is not a whole number" + help},
        {"first scale of an antenna",
         {"scale", "6", "1"},
         "",
         2,
         "",
         "rfutils: dBuV/m needs the centre frequency of the antenna: --center" + help},
        {"a value with a unit",
         {"scale", "0", "1dBm"},
         "",
         1,
         "",
         "rfutils: \"1dBm\" is not a number\n"},
    });
}
