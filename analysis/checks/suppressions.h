#pragma once

#include <QString>
#include <QStringList>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "analysis/support/finding.h"

namespace rfu {

/// Rules whose findings do not count: everywhere, or in the files of a folder that has a file ".rfutils-check". A line of
/// it names a rule and, behind it, the files that it is about, with "*" and "?"; without files it is about all beside it.
/// Lines that begin with "#" are comments.
class Suppressions {
public:
    /// @param rules that do not count anywhere
    explicit Suppressions(RuleNames rules) : everywhere_(std::move(rules)) {}

    /// Those that do not count in a file.
    /// @throw InputError where a ".rfutils-check" cannot be read or names no rule
    RuleNames rulesIn(const QString& file);

private:
    struct Line {
        std::string rule;
        QStringList files;
    };
    const std::vector<Line>& linesOf(const QString& folder);

    RuleNames everywhere_;
    std::map<QString, std::vector<Line>> ofFolders_;
};

}  // namespace rfu
