#include "analysis/checks/checkFiles.h"

#include <QDir>
#include <QFileInfo>
#include <algorithm>
#include <string>

#include "analysis/support/inputError.h"

namespace rfu {

namespace {

/// The files below a folder that are of a known kind, in the order of their names.
void addFilesBelow(const QString& folder, QStringList& files) {
    const QDir directory(folder);
    for (const QString& name :
         directory.entryList(QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name)) {
        const QString path = directory.filePath(name);
        if (QFileInfo(path).isDir()) {
            addFilesBelow(path, files);
        } else if (kindOf(path) != nullptr) {
            files += path;
        }
    }
}

FileKind requireKind(const QString& file) {
    if (const KnownKind* const known = kindOf(file)) {
        return known->kind;
    }
    throw InputError(file, "is of no kind that can be told from its name; --as names it");
}

}  // namespace

Findings checkFile(const QString& file, FileKind kind) {
    try {
        return kindOf(kind).check(file);
    } catch (const InputError& error) {
        static constexpr Rule kRules[] = {kFileUnreadable};
        Findings findings(file, kRules);
        findings.add(kFileUnreadable.name, error.problem());
        return findings;
    }
}

void checkFiles(const QStringList& names, const CheckOptions& options,
                const std::function<void(const CheckedFile&)>& take) {
    QStringList files;
    for (const QString& name : names) {
        if (QFileInfo(name).isDir()) {
            addFilesBelow(name, files);
        } else {
            files += name;
        }
    }
    files.removeDuplicates();
    for (const QString& file : files) {
        const FileKind kind = options.as ? *options.as : requireKind(file);
        take({file, kind, checkFile(file, kind)});
    }
}

}  // namespace rfu
