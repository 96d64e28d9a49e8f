#include "analysis/support/finding.h"

#include <gtest/gtest.h>

#include <map>
#include <stdexcept>
#include <string>
#include <string_view>

#include "analysis/support/inputError.h"

namespace rfu {
namespace {

constexpr Rule kRules[] = {{"bad", Severity::Error, "", "", ""},
                           {"odd", Severity::Warning, "", "", ""}};

Findings someFindings() {
    return {QStringLiteral("f"), kRules};
}

TEST(Findings, TakeTheSeverityFromTheTable) {
    Findings findings = someFindings();
    findings.add("odd", 3, 7, "b");
    findings.add("bad", "a");
    ASSERT_EQ(findings.kept().size(), 2U);
    const Finding& first = findings.kept()[0];
    EXPECT_EQ(first.rule, "odd");
    EXPECT_EQ(first.severity, Severity::Warning);
    EXPECT_EQ(first.file, QStringLiteral("f"));
    EXPECT_EQ(first.line, 3);
    EXPECT_EQ(first.column, 7);
    EXPECT_EQ(first.text, "b");
    EXPECT_EQ(findings.kept()[1].severity, Severity::Error);
    EXPECT_EQ(findings.kept()[1].line, 0);
    EXPECT_THROW(findings.add("none", "x"), std::logic_error);
}

TEST(Findings, SortByLineAndColumnWithThoseOfTheFileLast) {
    Findings findings = someFindings();
    findings.add("bad", "whole");
    findings.add("odd", 9, 1, "ninth");
    findings.add("odd", 2, 5, "second");
    findings.add("odd", 2, 1, "first");
    findings.add("bad", 2, 5, "as added");
    findings.add("bad", 2, 0, "line");
    findings.sort();
    std::string order;
    for (const Finding& finding : findings.kept()) {
        order += finding.text + ", ";
    }
    EXPECT_EQ(order, "line, first, second, as added, ninth, whole, ");
}

TEST(Findings, KeepSomeHundredOfEachRule) {
    Findings findings = someFindings();
    for (int line = 1; line <= 300; ++line) {
        findings.add("odd", line, 0, "x");
    }
    EXPECT_EQ(findings.kept().size(), 200U);
    EXPECT_FALSE(findings.hasError());
    EXPECT_NO_THROW(findings.throwFirstError());
    findings.add("bad", 301, 4, "first");
    findings.add("bad", 302, 4, "second");
    EXPECT_EQ(findings.kept().size(), 202U);
    EXPECT_EQ(findings.counts(), (std::map<std::string_view, long long>{{"bad", 2}, {"odd", 300}}));
    EXPECT_TRUE(findings.hasError());
    try {
        findings.throwFirstError();
        ADD_FAILURE() << "no error";
    } catch (const InputError& error) {
        EXPECT_EQ(error.message(), "f:301: first");
    }
}

}  // namespace
}  // namespace rfu
