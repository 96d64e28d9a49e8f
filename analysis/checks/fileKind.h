#pragma once

#include <QString>
#include <optional>
#include <string_view>
#include <vector>

#include "analysis/support/finding.h"

namespace rfu {

/// What a file is to the library.
enum class FileKind { Asc, Hdr, Bil, Tab, Catalogue, Setups };

/// How files of a kind are told, and how they are checked.
struct KnownKind {
    FileKind kind;
    std::string_view name;  ///< as --as takes it
    const char* extension;
    RuleTable (*rules)();
    /// @throw InputError where the file, or one that belongs to it, cannot be read
    Findings (*check)(const QString& file);
};

const std::vector<KnownKind>& knownKinds();

const KnownKind& kindOf(FileKind kind);

/// The kind of a file by its name and, for JSON, its content; null for a file of no known kind.
const KnownKind* kindOf(const QString& file);

}  // namespace rfu
