#include <rfUtils/units/unitTable.h>

#include <gtest/gtest.h>

#include <iterator>
#include <string>

#include "runCommand.h"

// K = float(20 lg f - 29.8 - G): 10.199999809265137 at 100 MHz, 30.200000762939453 at 1 GHz.

TEST(Scale, fromDbm) {
    expectCommands({
        shows("unchanged", "scale 0 -30", "-30 dBm\n"),
        shows("-30 - 13.0103", "scale 1 -30", "-43.0103 dBV\n"),
        shows("-30 + 106.9897", "scale 3 -30", "76.9897 dBuV\n"),
        shows("exp(46.9897 ln10/20) / 1000", "scale 4 0", "0.22360679663372815 V\n"),
        shows("one watt", "scale 5 30", "1 W\n"),
        shows("-30 + 107 + K", "scale 6 -30 --center 1GHz", "107.20000076293945 dBuV/m\n"),
        shows("with gain", "scale 6 -30 --center 1000 --gain 2", "105.20000076293945 dBuV/m\n"),
        shows("V/m", "scale 9 -30 --center 100", "0.02290867602462237 V/m\n"),
        // exp(float(-29.8) ln10/10) / (120 pi 1e4)
        shows("W/cm^2 is the last", "scale 15 13 --center 1", "2.777595229198276e-10 W/cm^2\n"),
        shows("several values", "scale 0 1 -2 3.5", "1 dBm\n-2 dBm\n3.5 dBm\n"),
        shows("from standard input", "scale 0", "1 dBm\n-2 dBm\n").given("1\n-2\n"),
    });
}

TEST(Scale, toDbm) {
    expectCommands({
        shows("unchanged", "scale 0 -30 --to-dbm", "-30 dBm\n"),
        shows("60 - 46.9897", "scale 4 1 --to-dbm", "13.0103 dBm\n"),
        shows("watts by the formula of the volt", "scale 5 0.001 --to-dbm", "-46.9897 dBm\n"),
        shows("a field level", "scale 6 107.2 --to-dbm --center 1GHz", "-30.00000076293945 dBm\n"),
        fails("no way back", "scale 9 1 --to-dbm --center 100",
              "scale 9 (V/m) has no way back to dBm; rfutils convert reads V/m"),
        fails("zero has no level", "scale 4 0 --to-dbm", "0 V has no level, it is not above zero"),
    });
}

TEST(Scale, csvAndJson) {
    expectCommands({
        shows("CSV", "scale 1 -30 -0 --format csv",
              "input,scale,value,unit\n-30,1,-43.0103,dBV\n-0,1,-13.0103,dBV\n"),
        shows("JSON", "scale 5 0.001 --to-dbm --format json",
              "[\n  {\"input\": \"0.001\", \"scale\": 5, \"value\": -46.9897, \"unit\": "
              "\"dBm\"}\n]\n"),
    });
}

TEST(Scale, helpListsTheScalesInColumns) {
    const std::string help = runCommand({"scale", "--help"}).output;
    EXPECT_NE(help.find("\n   0 dBm       "), std::string::npos);
    EXPECT_NE(help.find("  15 W/cm^2"), std::string::npos);
}

TEST(Scale, wrongUse) {
    const std::string range = "; scales are 0 to " + std::to_string(std::size(rfu::kScales) - 1);
    expectCommands({
        misuses("beyond the last",
                QStringList{"scale", QString::number(std::size(rfu::kScales)), "1"},
                "there is no scale " + std::to_string(std::size(rfu::kScales)) + range),
        misuses("before the first", "scale -1 1", "there is no scale -1" + range),
        misuses("missing", "scale", "INDEX is missing"),
        misuses("no index", "scale V 1", "INDEX: \"V\" is not a whole number"),
        misuses("first scale of an antenna", "scale 6 1",
                "dBuV/m needs the centre frequency of the antenna: --center"),
        fails("a value with a unit", "scale 0 1dBm", "\"1dBm\" is not a number"),
    });
}
