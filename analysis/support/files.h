#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace rfu {

/// "fm_band.csv" of "recordings/fm_band.csv", "standard input" of "-".
std::string shortNameOf(const QString& file);

/// Opens a file for reading, with further flags of open(2).
/// @return a descriptor, negative with the system's error
int openForReading(const QString& name, int flags);

/// The size of a regular file in bytes; nothing for anything else.
std::optional<std::int64_t> sizeOfRegular(const QString& name);

/// Opens a regular file or a Qt resource for reading. Anything else is refused without blocking, such as a FIFO that
/// has no writer, and so are files below /proc and /sys.
/// @throw InputError where no regular file opens
void openRegular(QFile& file, const QString& name);

/// @throw InputError as openRegular() does
void requireReadable(const QString& name);

/// All bytes of a regular file.
/// @throw InputError as openRegular() does, and where reading fails
QByteArray readWhole(const QString& name);

/// Whether a regular file begins with the byte-order mark of UTF-8.
/// @throw InputError as openRegular() does
bool beginsWithUtf8Mark(const QString& name);

/// The same bytes, as long as the array stays.
std::string_view viewOf(const QByteArray& bytes);

}  // namespace rfu
