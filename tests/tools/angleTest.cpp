#include <gtest/gtest.h>

#include "runCommand.h"

TEST(Angle, dms) {
    expectCommands({
        {"half a degree", {"dms", "12.5"}, "", 0, "12 30 0\n", ""},
        {"seconds are cut: 33.48", {"dms", "151.2093"}, "", 0, "151 12 33\n", ""},
        {"negative", {"dms", "-33.8688"}, "", 0, "-33 52 7\n", ""},
        {"minus before zero degrees", {"dms", "-0.5"}, "", 0, "-0 30 0\n", ""},
        {"negative zero has no sign", {"dms", "-0"}, "", 0, "0 0 0\n", ""},
        {"standard input", {"dms"}, "12.5\n-45.999999\n", 0, "12 30 0\n-45 59 59\n", ""},
        {"beyond 32 bits the degrees stop",
         {"dms", "1e300"},
         "",
         0,
         "2147483647 2147483647 2147483647\n",
         ""},
        {"CSV",
         {"dms", "-0.5", "--format", "csv"},
         "",
         0,
         "input,sign,degrees,minutes,seconds\n-0.5,-1,0,30,0\n",
         ""},
        {"JSON",
         {"dms", "12.5", "--format", "json"},
         "",
         0,
         "[\n  {\"input\": \"12.5\", \"sign\": 1, \"degrees\": 12, \"minutes\": 30, \"seconds\": "
         "0}\n]\n",
         ""},
        {"no number", {"dms", "12.5N"}, "", 1, "", "rfutils: \"12.5N\" is not a number\n"},
    });
}

TEST(Angle, dd) {
    expectCommands({
        {"the sign is the degrees'", {"dd", "-33", "52", "7.68"}, "", 0, "-33.8688\n", ""},
        {"minus before zero", {"dd", "-0", "30"}, "", 0, "-0.5\n", ""},
        {"negative zero keeps its sign", {"dd", "-0"}, "", 0, "-0\n", ""},
        {"degrees alone", {"dd", "12.25"}, "", 0, "12.25\n", ""},
        {"seconds", {"dd", "0", "0", "9"}, "", 0, "0.0025\n", ""},
        {"CSV", {"dd", "12", "30", "--format", "csv"}, "", 0, "degrees\n12.5\n", ""},
        {"JSON", {"dd", "-12", "30", "0", "--format", "json"}, "", 0, "{\"degrees\": -12.5}\n", ""},
        {"missing", {"dd"}, "", 2, "", "rfutils: DEGREES is missing (see rfutils dd --help)\n"},
        {"too many",
         {"dd", "1", "2", "3", "4"},
         "",
         2,
         "",
         "rfutils: unexpected argument \"4\" (see rfutils dd --help)\n"},
        {"sign of the minutes",
         {"dd", "1", "-2"},
         "",
         1,
         "",
         "rfutils: \"-2\": only the degrees take a sign\n"},
        {"sign of a zero",
         {"dd", "1", "2", "-0"},
         "",
         1,
         "",
         "rfutils: \"-0\": only the degrees take a sign\n"},
        {"no number", {"dd", "1", "x"}, "", 1, "", "rfutils: \"x\" is not a number\n"},
    });
}
