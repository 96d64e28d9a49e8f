#include <gtest/gtest.h>

#include <string>

#include "runCommand.h"

// U[mV] = 10^((P + 46.9897)/20), P_W = 10^((P - 30)/10), K = 20 lg f - 29.8 - G.

TEST(Convert, levelsAcrossFiftyOhm) {
    expectCommands({
        shows("dBm to itself", "convert -30 --to dBm", "-30.0 dBm\n"),
        shows("-30 - 13.0103", "convert -30 --to dBV", "-43.0 dBV\n"),
        shows("-30 + 46.9897", "convert -30 --to dBmV", "17.0 dBmV\n"),
        shows("-30 + 106.9897", "convert -30 --to dBuV", "77.0 dBuV\n"),
        shows("7.0711 mV", "convert -30 --to V", "7.07 mV\n"),
        shows("7.0711 V", "convert 30 --to V", "7.07 V\n"),
        shows("0.22361 uV", "convert -120 --to V", "0.22 \u00B5V\n"),
        shows("1 uW", "convert -30 --to W", "1.00 \u00B5W\n"),
        shows("0.22387 W", "convert 23.5 --to W", "0.22 W\n"),
        shows("several values, one line each",
              "convert -30 -30dBm \"-30 dBm\" \" -30  dBm \" --to dBuV",
              "77.0 dBuV\n77.0 dBuV\n77.0 dBuV\n77.0 dBuV\n"),
        shows("plus sign and exponent", "convert +3e1 --to dBm", "30.0 dBm\n"),
    });
}

TEST(Convert, readsEveryUnitOfLevelVoltageAndPower) {
    // 1 V = 13.0103 dBm; each step of a prefix is 60 dB of voltage or 30 dB of power; the level is
    // cut to three decimals before it is shown with one.
    expectCommands({
        shows("dBV", "convert 0dBV --to dBm", "13.0 dBm\n"),
        shows("dBmV", "convert 0dBmV --to dBm", "-47.0 dBm\n"),
        shows("dBuV", "convert 0dBuV --to dBm", "-107.0 dBm\n"),
        shows("voltages", "convert 1V 1mV 1uV 1nV 1pV --to dBm",
              "13.0 dBm\n-47.0 dBm\n-107.0 dBm\n-167.0 dBm\n-227.0 dBm\n"),
        shows("powers", "convert 1W 1mW 1uW 1nW 1pW --to dBm",
              "30.0 dBm\n0.0 dBm\n-30.0 dBm\n-60.0 dBm\n-90.0 dBm\n"),
        shows("from one unit to another", "convert \"2.5 mV\" --to dBuV", "68.0 dBuV\n"),
        shows("the rounded image of 100 dBm comes back as 100 dBm",
              "convert 87dBV 86dBV --to dBm --format csv",
              "input,dBm,value,unit,text\n"
              "87dBV,100,100,dBm,100.0 dBm\n"
              "86dBV,99.01,99.01,dBm,99.0 dBm\n"),
    });
}

TEST(Convert, readsMicroInEverySpelling) {
    const QString u = "1u";
    const QString sign = QString::fromUtf8("1\u00B5");
    const QString mu = QString::fromUtf8("1\u03BC");
    const std::string volts = "-107.0 dBm\n-107.0 dBm\n-107.0 dBm\n";
    const std::string watts = "-30.0 dBm\n-30.0 dBm\n-30.0 dBm\n";
    const std::string levels = "-106.0 dBm\n-106.0 dBm\n-106.0 dBm\n";
    // 20 lg 1e-6 + 42.8 - 40 and 10 lg(120 pi 1e-6) + 42.8 - 40
    const std::string fields = "-117.2 dBm\n-117.2 dBm\n-117.2 dBm\n";
    const std::string densities = "-31.4 dBm\n-31.4 dBm\n-31.4 dBm\n";
    const QString dbu = "1dBuV";
    const QString dbSign = QString::fromUtf8("1dB\u00B5V");
    const QString dbMu = QString::fromUtf8("1dB\u03BCV");
    expectCommands({
        shows("voltage", QStringList{"convert", u + "V", sign + "V", mu + "V", "--to", "dBm"},
              volts),
        shows("power", QStringList{"convert", u + "W", sign + "W", mu + "W", "--to", "dBm"}, watts),
        shows("level", QStringList{"convert", dbu, dbSign, dbMu, "--to", "dBm"}, levels),
        shows("field",
              QStringList{"convert", u + "V/m", sign + "V/m", mu + "V/m", "--to", "dBm", "--center",
                          "100"},
              fields),
        shows("power density",
              QStringList{"convert", u + "W/m^2", sign + "W/m^2", mu + "W/m^2", "--to", "dBm",
                          "--center", "100"},
              densities),
        shows("as the target with the micro sign", "convert 0 --to dB\u00B5V", "107.0 dBuV\n"),
        shows("as the target with the Greek letter", "convert 0 --to dB\u03BCV", "107.0 dBuV\n"),
        shows("as the target of a field", "convert 0 --to dB\u00B5V/m --center 100",
              "117.20 dBuV/m\n"),
    });
}

TEST(Convert, showsEveryFieldUnit) {
    // At 100 MHz and 0 dBi K is 10.2 dB; E = 10^((-30 - 13 + 10.2)/20) = 0.022909 V/m.
    const auto at = [](const char* unit) {
        return QStringList{"convert", "-30", "--to", unit, "--center", "100MHz"};
    };
    expectCommands({
        shows("-30 + 107 + K", at("dBuV/m"), "87.20 dBuV/m\n"),
        shows("-30 + 47 + K", at("dBmV/m"), "27.20 dBmV/m\n"),
        shows("-30 - 13 + K", at("dBV/m"), "-32.80 dBV/m\n"),
        shows("E", at("V/m"), "0.02 V/m\n"),
        shows("E^2 / 120 pi = 1.3921e-6", at("W/m^2"), "1.39 uW/m^2\n"),
        shows("10 lg of it in mW", at("dBm/m^2"), "-28.56 dBm/m^2\n"),
        shows("-30 - 38.76 + K", at("dBW/m^2"), "-58.56 dBW/m^2\n"),
        shows("E / 377 = 6.0766e-5", at("A/m"), "0.06 mA/m\n"),
        shows("-30 - 64.53 + K", at("dBA/m"), "-84.33 dBA/m\n"),
        shows("E^2 / 120 pi / 1e4", at("W/cm^2"), "0.14 nW/cm^2\n"),
        shows("the gain lowers the field", "convert -30 --to dBuV/m --center 100 --gain 2.5",
              "84.70 dBuV/m\n"),
        shows("with its unit", "convert -30 --to dBuV/m --center 100M --gain 2.5dBi",
              "84.70 dBuV/m\n"),
        shows("a negative gain raises it", "convert -30 --to dBuV/m --center 100 --gain -2.5",
              "89.70 dBuV/m\n"),
        shows("the frequency with a unit", "convert -30dBm --to V/m --center 1GHz", "0.23 V/m\n"),
        shows("too small for any prefix", "convert -700 --to V/m --center 100", "-\n"),
    });
}

TEST(Convert, readsEveryFieldUnit) {
    // D = 40 dB at 100 MHz.
    const auto from = [](const char* value) {
        return QStringList{"convert", value, "--to", "dBm", "--center", "100MHz", "--gain", "0"};
    };
    expectCommands({
        shows("87.2 - 77.2 - D", from("87.2dBuV/m"), "-30.0 dBm\n"),
        shows("27.2 - 17.2 - D", from("27.2dBmV/m"), "-30.0 dBm\n"),
        shows("-32.8 + 42.8 - D", from("-32.8dBV/m"), "-30.0 dBm\n"),
        shows("20 lg 1 + 42.8 - D", from("1V/m"), "2.8 dBm\n"),
        shows("20 lg 0.00229 + 42.8 - D", from("2.29mV/m"), "-50.0 dBm\n"),
        shows("nano", from("1nV/m"), "-177.2 dBm\n"),
        shows("pico", from("1pV/m"), "-237.2 dBm\n"),
        shows("10 lg 120 pi + 42.8 - D", from("1W/m^2"), "28.6 dBm\n"),
        shows("milli", from("1mW/m^2"), "-1.4 dBm\n"),
        shows("nano of a density", from("1nW/m^2"), "-61.4 dBm\n"),
        shows("pico of a density", from("1pW/m^2"), "-91.4 dBm\n"),
        shows("0 + 38.5633 - D", from("0dBm/m^2"), "-1.4 dBm\n"),
        shows("0 + 68.56 - D", from("0dBW/m^2"), "28.6 dBm\n"),
        shows("20 lg(1e-6 3.77e8) - 77.2 - D", from("1e-6A/m"), "-65.7 dBm\n"),
        shows("0 + 94.33 - D", from("0dBA/m"), "54.3 dBm\n"),
        shows("10 lg 3769911 + 42.8 - D", from("1w/cm^2"), "68.6 dBm\n"),
        shows("the gain raises the level", "convert 87.2dBuV/m --to dBm --center 100 --gain 2",
              "-28.0 dBm\n"),
        shows("from field to field", "convert 87.2dBuV/m --to V/m --center 100", "0.02 V/m\n"),
    });
}

TEST(Convert, mixedUnitsFromStandardInput) {
    expectCommands({
        shows("each line has its own unit", "convert --to dBm",
              "0.0 dBm\n13.0 dBm\n0.0 dBm\n-107.0 dBm\n13.0 dBm\n-7.0 dBm\n")
            .given("0\n1V\n 1 mW\n0dBuV\n1V\n-7dBm\n"),
        fails("a bad unit names its line", "convert --to dBm",
              "-:2: there is no unit \"Volt\"; the nearest are V, V/m or dBmV")
            .given("0\n1Volt\n")
            .after("0.0 dBm\n"),
        fails("a decimal comma is no number", "convert --to dBm",
              "-:1: \"1,5\" is not understood: numbers have a decimal point, no comma")
            .given("1,5\n"),
    });
}

TEST(Convert, csvAndJsonCarryFullPrecision) {
    // The value: exp((P - 13 + K) ln10/20) with K = 10.199999809265137, 10.2 in single precision.
    expectCommands({
        shows("CSV", "convert -30 \"87.2 dBuV/m\" --to V/m --center 100 --format csv",
              "input,dBm,value,unit,text\n"
              "-30,-30,0.02290867602462237,V/m,0.02 V/m\n"
              "87.2 dBuV/m,-30,0.02290867602462237,V/m,0.02 V/m\n"),
        shows("JSON", "convert 0 -30 --to V --format json",
              "[\n"
              "  {\"input\": \"0\", \"dBm\": 0, \"value\": 0.22360679663372815, \"unit\": \"V\", "
              "\"text\": \"0.22 V\"},\n"
              "  {\"input\": \"-30\", \"dBm\": -30, \"value\": 0.0070710677765665215, \"unit\": "
              "\"V\", "
              "\"text\": \"7.07 mV\"}\n"
              "]\n"),
        shows(
            "a level of 1 mV is cut to three decimals", "convert 1mV --to dBm --format csv",
            "input,dBm,value,unit,text\n1mV,-46.98900000000001,-46.98900000000001,dBm,-47.0 dBm\n"),
        shows("no text for a value below every prefix",
              "convert -700 --to V/m --center 100 --format csv",
              "input,dBm,value,unit,text\n-700,-700,7.244359441669762e-36,V/m,\n"),
        shows("and null in JSON", "convert -700 --to V/m --center 100 --format json",
              "[\n  {\"input\": \"-700\", \"dBm\": -700, \"value\": 7.244359441669762e-36, "
              "\"unit\": \"V/m\", \"text\": null}\n]\n"),
        shows("an infinite value in CSV", "convert 7000 --to W --format csv",
              "input,dBm,value,unit,text\n7000,7000,inf,W,inf W\n"),
        shows("an infinite value is null in JSON", "convert 7000 --to W --format json",
              "[\n  {\"input\": \"7000\", \"dBm\": 7000, \"value\": null, \"unit\": \"W\", "
              "\"text\": \"inf W\"}\n]\n"),
    });
}

// 53 dBm are 99.88 V, 63 dBm 315.85 V; 60 dBm are 1 kW, 90 dBm 1 MW.
TEST(Convert, labelsWithoutTheirPrefixAreNoted) {
    const std::string volts =
        ": above 100 V the instrument shows kilovolts under the label V; --format csv has volts";
    const std::string watts =
        ": from 1 kW the instrument shows kilowatts, from 1 MW megawatts, under the label W; "
        "--format csv has watts";
    expectCommands({
        shows("kilovolts", "convert 63 --to V", "0.32 V\n")
            .noting("\"0.32 V\" means 0.32 kV" + volts),
        shows("many kilovolts", "convert 200 --to V", "2236067.97 V\n")
            .noting("\"2236067.97 V\" means 2236067.97 kV" + volts),
        shows("kilowatts", "convert 60 --to W", "1.00 W\n")
            .noting("\"1.00 W\" means 1.00 kW" + watts),
        shows("megawatts", "convert 90 --to W", "1.00 W\n")
            .noting("\"1.00 W\" means 1.00 MW" + watts),
        shows("once per run, by the first", "convert 30 89.9 90 60 --to W",
              "1.00 W\n977.24 W\n1.00 W\n1.00 W\n")
            .noting("\"977.24 W\" means 977.24 kW" + watts),
        shows("not below", "convert 53 -20 --to V", "99.88 V\n0.02 V\n"),
        shows("not below a kilowatt", "convert 59.9 10 --to W", "977.24 W\n10.00 mW\n"),
        shows("not where nothing is left of the number", "convert -400 --to V", "0.00 V\n"),
        shows("fields have their prefix", "convert 80 --to V/m --center 100", "7.24 kV/m\n"),
        shows("CSV holds the number", "convert 60 --to W --format csv",
              "input,dBm,value,unit,text\n60,60,1000.0000000000016,W,1.00 W\n"),
    });
    const CommandResult json = runCommand({"convert", "63", "--to", "V", "--format", "json"});
    EXPECT_NE(
        json.output.find("\"value\": 315.85299547796626, \"unit\": \"V\", \"text\": \"0.32 V\""),
        std::string::npos)
        << json.output;
    EXPECT_EQ(json.errors, "");
    EXPECT_NE(runCommand({"convert", "--help"}).output.find("keeps the label W"),
              std::string::npos);
}

TEST(Convert, unitsOfOneDirectionAreExplained) {
    expectCommands({
        fails("prefixed voltage", "convert 1 --to mV",
              "\"mV\" cannot be asked for, the prefix follows from the level; ask for V"),
        fails("with micro", "convert 1 --to uV",
              "\"uV\" cannot be asked for, the prefix follows from the level; ask for V"),
        fails("prefixed power", "convert 1 --to yW",
              "\"yW\" cannot be asked for, the prefix follows from the level; ask for W"),
        fails("prefixed field", "convert 1 --to uV/m",
              "\"uV/m\" cannot be asked for, the prefix follows from the level; ask for V/m"),
        fails("a prefix that only the text has", "convert 1 --to kV/m",
              "\"kV/m\" cannot be asked for, the prefix follows from the level; ask for V/m"),
        fails("lower-case watts per area", "convert 1 --to w/cm^2",
              "\"w/cm^2\" is only read, never shown; ask for W/cm^2"),
        fails("upper-case watts per area", "convert 1W/cm^2 --to V",
              "\"W/cm^2\" is only shown, never read; values are read in w/cm^2"),
        fails("too small a prefix", "convert 1fV --to V",
              "\"fV\" is only shown, never read; values are read in V, mV, \u00B5V, nV or pV"),
        fails("prefixed magnetic field", "convert 1mA/m --to V",
              "\"mA/m\" is only shown, never read; values are read in A/m"),
        fails(
            "large prefix of a field", "convert 1GV/m --to V",
            "\"GV/m\" is only shown, never read; values are read in V/m, mV/m, uV/m, nV/m or pV/m"),
    });
}

TEST(Convert, unknownUnitsAreAnsweredWithTheNearest) {
    expectCommands({
        fails("letter case weighs little", "convert 1 --to dbuv",
              "there is no unit \"dbuv\"; the nearest are dBuV, dBmV or dBV"),
        // A name of x and V is nearest to those that end in V, one of x to the longest.
        fails("thirty letters count", QStringList{"convert", "1", "--to", QString(29, 'x') + "V"},
              "there is no unit \"" + std::string(29, 'x') +
                  "V\"; the nearest are dBmV, dBuV or dBV"),
        fails("the thirty-first does not",
              QStringList{"convert", "1", "--to", QString(30, 'x') + "V"},
              "there is no unit \"" + std::string(30, 'x') +
                  "V\"; the nearest are dBm/m^2, dBW/m^2 or dBuV/m"),
        fails("letter case of a prefixed unit", "convert 1 --to uv",
              "there is no unit \"uv\"; the nearest are \u00B5V (ask for V), V or W"),
        fails("named as it was typed", "convert 1 --to \u00B5v",
              "there is no unit \"\u00B5v\"; the nearest are \u00B5V (ask for V), V or W"),
        fails("also in Greek", "convert 1 --to \u03BCv",
              "there is no unit \"\u03BCv\"; the nearest are \u00B5V (ask for V), V or W"),
        fails("letter case of a prefix that only the text has", "convert 1 --to Kv/m",
              "there is no unit \"Kv/m\"; the nearest are kV/m (ask for V/m), V/m or A/m"),
        fails("milliwatts", "convert 1 --to mw",
              "there is no unit \"mw\"; the nearest are mW (ask for W), W or V"),
        fails("a name with the same beginning comes before one of the same length",
              "convert 1 --to dbm", "there is no unit \"dbm\"; the nearest are dBm, dBmV or dBV"),
        fails("letter case of a value's unit", "convert 1uw --to V",
              "there is no unit \"uw\"; the nearest are \u00B5W, \u00B5V or mW"),
        fails("one letter short", "convert 1 --to dBu",
              "there is no unit \"dBu\"; the nearest are dBuV, dBm or dBV"),
        fails("empty", QStringList{"convert", "1", "--to", ""},
              "there is no unit \"\"; the nearest are V, W or dBm"),
        fails("a very long name is cut",
              QStringList{"convert", "1" + QString(500, 'V'), "--to", "V"},
              "there is no unit \"" + std::string(60, 'V') +
                  "...\"; the nearest are V, dBuV/m or dBmV/m"),
    });
}

TEST(Convert, unitsThatFollowFromKnownOnesAreExplained) {
    const QString sign = QString::fromUtf8("1dB\u00B5A");
    const QString mu = QString::fromUtf8("1dB\u03BCA");
    // 20 lg 50 = 33.979; 1 uT / (4 pi 1e-7 H/m) = 0.79577 A/m, of which 0 dBpT are 20 lg 1e-6
    const std::string amperes = "; use dBuV: dBuA = dBuV - 33.98 in 50 ohm";
    expectCommands({
        fails("to be shown", "convert 0 --to dBW",
              "there is no unit \"dBW\"; use dBm: dBW = dBm - 30"),
        fails("to be read", "convert 0dBW --to V",
              "there is no unit \"dBW\"; use dBm: dBW = dBm - 30"),
        fails("in other letter case", "convert 0 --to dbw",
              "there is no unit \"dbw\"; use dBm: dBW = dBm - 30"),
        fails("with micro", "convert 1dBuA --to V", "there is no unit \"dBuA\"" + amperes),
        fails("with the micro sign", QStringList{"convert", sign, "--to", "V"},
              "there is no unit \"dB\u00B5A\"" + amperes),
        fails("with the Greek letter", QStringList{"convert", mu, "--to", "V"},
              "there is no unit \"dB\u03BCA\"" + amperes),
        fails("kilowatts", "convert 1kW --to V", "there is no unit \"kW\"; use W: 1 kW = 1000 W"),
        fails("megawatts", "convert 1MW --to V",
              "there is no unit \"MW\"; use W: 1 MW = 1000000 W"),
        fails("milliwatts in wrong letter case are no megawatts", "convert 1mw --to V",
              "there is no unit \"mw\"; the nearest are mW, mV or \u00B5W"),
        fails("kilovolts", "convert 1kV --to V", "there is no unit \"kV\"; use V: 1 kV = 1000 V"),
        fails("a flux density", "convert 1uT --to V",
              "there is no unit \"uT\"; use A/m: 1 uT = 0.7958 A/m"),
        fails("the unit of an option", "trace x --all-points --unit dBuA/m",
              "there is no unit \"dBuA/m\"; use dBA/m: dBuA/m = dBA/m + 120"),
    });
}

TEST(Convert, wrongUse) {
    expectCommands({
        misuses("no target", "convert 1", "--to UNIT is missing"),
        misuses("field target without frequency", "convert 1 --to V/m",
                "V/m needs the centre frequency of the antenna: --center"),
        misuses("field value without frequency", "convert 1dBuV/m --to V",
                "dBuV/m needs the centre frequency of the antenna: --center"),
        misuses("frequency zero", "convert 1 --to V/m --center 0", "--center has to be above zero"),
        misuses("gain over a dipole", "convert 1 --to V --gain 2dBd",
                "--gain: \"2dBd\" is not a gain such as 3dBi or a number of dBi"),
    });
}

TEST(Convert, valuesWithoutLevel) {
    expectCommands({
        fails("zero volts", "convert 0V --to dBm", "0 V has no level, it is not above zero"),
        fails("negative watts", "convert \"-2.5 mW\" --to dBm",
              "-2.5 mW has no level, it is not above zero"),
        fails("zero field", "convert 0V/m --to dBm --center 1",
              "0 V/m has no level, it is not above zero"),
        shows("a level may be negative", "convert -1dBV --to dBm", "12.0 dBm\n"),
        fails("no number", "convert abc --to V", "\"abc\" is not a number with or without a unit"),
        fails("empty", QStringList{"convert", "", "--to", "V"},
              "\"\" is not a number with or without a unit"),
        fails("not a number", "convert nan --to V",
              "\"nan\" is not a number with or without a unit"),
        fails("beyond the range of numbers", "convert 1e400 --to V",
              "\"1e400\" is not a number with or without a unit"),
        fails("a blank behind the sign", "convert \"- 30\" --to V",
              "\"- 30\" is not a number with or without a unit"),
        fails("hexadecimal", "convert -0X10 --to V",
              "\"-0X10\" is not understood: hexadecimal numbers are not read"),
        fails("no hexadecimal", "convert 1xV/m --to V",
              "there is no unit \"xV/m\"; the nearest are mV/m, uV/m or nV/m"),
        fails("decimal comma", "convert \"1,5 V\" --to V",
              "\"1,5 V\" is not understood: numbers have a decimal point, no comma"),
        fails("two signs", "convert +-3 --to V", "\"+-3\" is not a number with or without a unit"),
    });
}
