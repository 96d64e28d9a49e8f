#include "analysis/checks/checkFiles.h"

#include <QDir>
#include <QFileInfo>
#include <QSet>
#include <algorithm>
#include <string>
#include <utility>

#include "analysis/checks/rules.h"
#include "analysis/checks/suppressions.h"
#include "analysis/support/files.h"
#include "analysis/support/inputError.h"

namespace rfu {

namespace {

struct NamedFile {
    QString name;
    std::optional<FileKind> kind;  // nothing: of no known one
};

/// The files to check, each of them once.
class FileList {
public:
    void add(const QString& file, std::optional<FileKind> kind) {
        const QString path = QFileInfo(file).absoluteFilePath();
        if (!known_.contains(QDir::cleanPath(path))) {
            known_.insert(QDir::cleanPath(path));
            files_.push_back({file, kind});
        }
    }

    /// Adds those that exist of the files that belong to one.
    void addCompanions(const QString& file, const KnownKind& kind) {
        if (kind.companions == nullptr) {
            return;
        }
        for (const QString& companion : kind.companions(file)) {
            const KnownKind* const other = kindOf(companion);
            if (other != nullptr && QFileInfo(companion).isFile()) {
                add(companion, other->kind);
            }
        }
    }

    /// Adds the files below a folder that are of a known kind, in the order of their names.
    void addBelow(const QString& folder) {
        const QDir directory(folder);
        for (const QFileInfo& entry :
             directory.entryInfoList(QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name)) {
            const QString path = directory.filePath(entry.fileName());
            if (entry.isDir()) {
                if (!entry.isSymLink()) {  // which may lead back
                    addBelow(path);
                }
            } else if (const KnownKind* const kind = kindOf(path)) {
                add(path, kind->kind);
            } else if (hasKnownExtension(path)) {
                passedOver_.push_back(path);
            }
        }
    }

    const std::vector<NamedFile>& files() const { return files_; }
    const QStringList& passedOver() const { return passedOver_; }

private:
    std::vector<NamedFile> files_;
    QStringList passedOver_;
    QSet<QString> known_;
};

FileList filesOf(const QStringList& names, const std::optional<FileKind>& as) {
    FileList list;
    for (const QString& name : names) {
        if (QFileInfo(name).isDir()) {
            list.addBelow(name);
        } else if (as) {
            list.add(name, as);
        } else if (const KnownKind* const kind = kindOf(name)) {
            list.add(name, kind->kind);
            list.addCompanions(name, *kind);
        } else {
            list.add(name, std::nullopt);
        }
    }
    return list;
}

Findings kindUnknown(const QString& file) {
    requireReadable(file);
    static constexpr Rule kRules[] = {kKindUnknown};
    Findings findings(file, kRules);
    findings.add(kKindUnknown.name,
                 "not checked: its kind cannot be told from its name or content; name it with "
                 "--as");
    return findings;
}

}  // namespace

Findings checkFile(const QString& file, std::optional<FileKind> kind) {
    try {
        Findings findings = kind ? kindOf(*kind).check(file) : kindUnknown(file);
        findings.sort();
        return findings;
    } catch (const InputError& error) {
        Findings findings(file, fileRules());
        const std::string other = error.file() == file ? "" : shortNameOf(error.file()) + ": ";
        findings.add(kFileUnreadable.name, "refused: " + other + error.problem());
        return findings;
    }
}

QStringList checkFiles(const QStringList& names, const CheckOptions& options,
                       const std::function<void(const CheckedFile&)>& take) {
    const FileList list = filesOf(names, options.as);
    Suppressions suppressions(options.ignored);
    for (const NamedFile& file : list.files()) {
        CheckedFile checked{file.name, file.kind, checkFile(file.name, file.kind),
                            suppressions.rulesIn(file.name)};
        for (const std::string& rule : checked.ignored) {
            checked.findings.remove(rule);
        }
        take(checked);
    }
    QStringList passedOver = list.passedOver();
    passedOver.removeDuplicates();
    const auto isIgnored = [&](const QString& file) {
        return suppressions.rulesIn(file).count(kKindUnknown.name) > 0;
    };
    passedOver.erase(std::remove_if(passedOver.begin(), passedOver.end(), isIgnored),
                     passedOver.end());
    return passedOver;
}

std::string noteOfPassedOver(const QStringList& files) {
    constexpr int kNamed = 3;
    if (files.isEmpty()) {
        return "";
    }
    const int unnamed = static_cast<int>(files.size()) - kNamed;
    return "not checked, for nothing in them tells their kind: " +
           QStringList(files.mid(0, kNamed)).join(QStringLiteral(", ")).toStdString() +
           (unnamed > 0 ? " and " + std::to_string(unnamed) + " more" : "");
}

std::vector<Finding> listedFindings(const CheckedFile& file) {
    std::vector<Finding> listed = file.findings.kept();
    for (const auto& [rule, count] : file.findings.counts()) {
        if (count > Findings::kMaxKept) {
            listed.push_back({rule, Severity::Note, file.file, 0, 0,
                              std::to_string(count - Findings::kMaxKept) + " more are not listed"});
        }
    }
    return listed;
}

const char* nameOf(Severity severity) {
    return severity == Severity::Error     ? "error"
           : severity == Severity::Warning ? "warning"
                                           : "note";
}

}  // namespace rfu
