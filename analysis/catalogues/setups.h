#pragma once

#include <QJsonObject>
#include <QString>
#include <functional>
#include <vector>

namespace rfu {

/// A result setup with the group that it stands in, which ResultSetup does not keep.
struct SetupEntry {
    QString group;
    QString id;     ///< null, as in ResultSetup, where the file has no text
    QString label;  ///< the same
};

/// What is done with an entry that lacks a member, "label" or "id".
/// @param after the id of the setup before it in its group, at the start of the group its key
using SkippedSetup = std::function<void(const char* missing, const QString& after)>;

/// The setups of a file's groups, at the positions that ResultSetup gives them. It cannot tell their
/// number: the texts of a setup may be null like those beyond the end.
/// @throw InputError where there is none, unless all groups are empty
std::vector<SetupEntry> setupsOf(const QJsonObject& groups, const QString& file,
                                 const SkippedSetup& skipped = {});

}  // namespace rfu
