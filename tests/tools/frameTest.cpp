#include <gtest/gtest.h>

#include "runCommand.h"

TEST(Frame, answersWithoutSubcommand) {
    expectCommands({
        {"version", {"--version"}, "", 0, "rfutils 1.0.0\n", ""},
        {"no command",
         {},
         "",
         2,
         "",
         "rfutils: a command is missing (rfutils --help lists them)\n"},
        {"unknown command",
         {"paint"},
         "",
         2,
         "",
         "rfutils: there is no command \"paint\" (rfutils --help lists them)\n"},
        {"a line end in a name stays in one line",
         {"a\nb"},
         "",
         2,
         "",
         "rfutils: there is no command \"a?b\" (rfutils --help lists them)\n"},
    });
}
