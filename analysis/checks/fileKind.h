#pragma once

#include <QString>
#include <QStringList>
#include <string_view>
#include <vector>

#include "analysis/support/edits.h"
#include "analysis/support/finding.h"

namespace rfu {

/// What a file is to the library or, for recordings, to the command.
enum class FileKind { Asc, Hdr, Bil, Clr, Tab, Catalogue, Setups, Recording };

/// How files of a kind are told, and how they are checked.
struct KnownKind {
    FileKind kind;
    std::string_view name;                ///< as --as takes it
    std::vector<const char*> extensions;  ///< which may be followed by that of a packed file
    RuleTable (*rules)();
    /// @throw InputError where the file cannot be read
    Findings (*check)(const QString& file);
    /// What is to be done about the bytes of a file with findings, but for those of ignored rules; null where the
    /// findings alone say it.
    Mend (*mend)(std::string_view bytes, const RuleNames& ignored) = nullptr;
    /// The files that belong to one of this kind, which need not exist.
    QStringList (*companions)(const QString& file) = nullptr;
    /// Tells files of this kind from others of the same extension; null where the extension says it.
    bool (*isKind)(const QString& file) = nullptr;
};

const std::vector<KnownKind>& knownKinds();

const KnownKind& kindOf(FileKind kind);

/// The kind of a file by its name, in any case, and its content where the name does not say it; null for a file of no
/// known kind.
const KnownKind* kindOf(const QString& file);

/// Whether the name of a file ends as those of a kind do, in any case.
bool hasKnownExtension(const QString& file);

}  // namespace rfu
