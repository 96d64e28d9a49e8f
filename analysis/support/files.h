#pragma once

#include <QByteArray>
#include <QString>

namespace rfu {

/// Opens a file for reading, with further flags of open(2).
/// @return a descriptor, negative with the system's error
int openForReading(const QString& name, int flags);

/// @throw InputError unless the name is that of a regular file that can be read. Nothing else is
/// opened for long or waited for: a FIFO would wait for its writer.
void requireReadable(const QString& name);

/// All bytes of a regular file.
/// @throw InputError as requireReadable does, and where reading fails
QByteArray readWhole(const QString& name);

}  // namespace rfu
