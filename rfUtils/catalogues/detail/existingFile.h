// Private to the catalogues: not installed, may change in any release.
#pragma once

#include <QChar>
#include <QFile>
#include <QString>

namespace rfu::detail {

/// QFile::exists() without the warning that Qt logs for a name with a NUL.
inline bool existingFile(const QString& path) {
    return !path.contains(QChar::Null) && QFile::exists(path);
}

}  // namespace rfu::detail
