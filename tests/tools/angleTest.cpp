#include <gtest/gtest.h>

#include "runCommand.h"

TEST(Angle, dms) {
    expectCommands({
        shows("half a degree", "dms 12.5", "12 30 0\n"),
        shows("seconds are cut: 33.48", "dms 151.2093", "151 12 33\n"),
        shows("negative", "dms -33.8688", "-33 52 7\n"),
        shows("minus before zero degrees", "dms -0.5", "-0 30 0\n"),
        shows("negative zero has no sign", "dms -0", "0 0 0\n"),
        shows("standard input", "dms", "12 30 0\n-45 59 59\n").given("12.5\n-45.999999\n"),
        shows("beyond 32 bits the degrees stop", "dms 1e300", "2147483647 2147483647 2147483647\n"),
        shows("CSV", "dms -0.5 --format csv",
              "input,sign,degrees,minutes,seconds\n-0.5,-1,0,30,0\n"),
        shows("JSON", "dms 12.5 --format json",
              "[\n  {\"input\": \"12.5\", \"sign\": 1, \"degrees\": 12, \"minutes\": 30, "
              "\"seconds\": "
              "0}\n]\n"),
        fails("no number", "dms 12.5N", "\"12.5N\" is not a number"),
    });
}

TEST(Angle, dd) {
    expectCommands({
        shows("the sign is the degrees'", "dd -33 52 7.68", "-33.8688\n"),
        shows("minus before zero", "dd -0 30", "-0.5\n"),
        shows("negative zero keeps its sign", "dd -0", "-0\n"),
        shows("degrees alone", "dd 12.25", "12.25\n"),
        shows("seconds", "dd 0 0 9", "0.0025\n"),
        shows("CSV", "dd 12 30 --format csv", "degrees\n12.5\n"),
        shows("JSON", "dd -12 30 0 --format json", "{\"degrees\": -12.5}\n"),
        misuses("missing", "dd", "DEGREES is missing"),
        misuses("too many", "dd 1 2 3 4", "unexpected argument \"4\""),
        fails("sign of the minutes", "dd 1 -2", "\"-2\": only the degrees take a sign"),
        fails("sign of a zero", "dd 1 2 -0", "\"-0\": only the degrees take a sign"),
        fails("sixty minutes", "dd 12 60 0", "\"60\": minutes and seconds are below 60"),
        fails("sixty seconds", "dd 12 0 60.5", "\"60.5\": minutes and seconds are below 60"),
        shows("just below", "dd 0 59.4 36", "1\n"),
        fails("no number", "dd 1 x", "\"x\" is not a number"),
    });
}
