#pragma once

#include <QString>
#include <QStringList>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "analysis/checks/fileKind.h"
#include "analysis/support/finding.h"

namespace rfu {

struct CheckOptions {
    std::optional<FileKind> as = {};  ///< of all files; else each by its name and content
    RuleNames ignored = {};           ///< rules whose findings do not count
};

struct CheckedFile {
    QString file;
    std::optional<FileKind> kind;  ///< nothing for one of no known kind, which a finding says
    Findings findings;             ///< that count
    RuleNames ignored = {};        ///< rules whose findings do not count in the file
};

/// Checks files one after the other, each with those that belong to it; a folder stands for the files below it that are
/// of a known kind. Each file is checked once.
/// @param take called with each file as soon as it is checked
/// @return the files in folders that are passed over though their names end as those of a kind do
/// @throw InputError as Suppressions does
QStringList checkFiles(const QStringList& names, const CheckOptions& options,
                       const std::function<void(const CheckedFile&)>& take);

/// What to say of files that are passed over; empty without any.
std::string noteOfPassedOver(const QStringList& files);

/// The findings of a file, with one behind them for each rule that has more than are kept.
std::vector<Finding> listedFindings(const CheckedFile& file);

/// "error"
const char* nameOf(Severity severity);

/// Checks one file, also against those that belong to it.
/// @param kind nothing for a file of no known kind
Findings checkFile(const QString& file, std::optional<FileKind> kind);

}  // namespace rfu
