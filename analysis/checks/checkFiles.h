#pragma once

#include <QString>
#include <QStringList>
#include <functional>
#include <optional>

#include "analysis/checks/fileKind.h"
#include "analysis/support/finding.h"

namespace rfu {

struct CheckOptions {
    std::optional<FileKind> as = {};  ///< of all files; else each by its name and content
};

struct CheckedFile {
    QString file;
    FileKind kind;
    Findings findings;
};

/// Checks files one after the other; a folder stands for the files below it that are of a known kind.
/// @param take called with each file as soon as it is checked
/// @throw InputError for a name that is neither a file nor a folder, and for a file of no known kind
void checkFiles(const QStringList& names, const CheckOptions& options,
                const std::function<void(const CheckedFile&)>& take);

/// Checks one file; what stands in others is only looked at where it belongs to this one.
Findings checkFile(const QString& file, FileKind kind);

}  // namespace rfu
