#include "analysis/support/words.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace rfu::test {
namespace {

const std::vector<QString> kMembers = {QStringLiteral("label"), QStringLiteral("id"),
                                       QStringLiteral("enum"), QStringLiteral("dispSeq")};

TEST(Words, HaveANearMiss) {
    const struct {
        const char* wrong;
        int expected;
    } kRows[] = {{"lable", 0},   {"LABEL", 0}, {"labels", 0}, {"labl", 0},      {"Id", 1},
                 {"idx", 1},     {"en", 2},    {"enumm", 2},  {"dispseq", 3},   {"disp_seq", 3},
                 {"display", 3}, {"seq", -1},  {"name", -1},  {"comment", -1},  {"", -1},
                 {"i", 1},       {"l", -1},    {"value", -1}, {"displaySeq", 3}};
    for (const auto& row : kRows) {
        EXPECT_EQ(nearMiss(QString::fromLatin1(row.wrong), kMembers), row.expected) << row.wrong;
    }
}

TEST(Words, BeyondThirtyLettersHaveNone) {
    EXPECT_EQ(nearMiss(QString(100000, QLatin1Char('x')), kMembers), -1);
}

}  // namespace
}  // namespace rfu::test
