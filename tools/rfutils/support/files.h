#pragma once

#include <QString>

/// @throw Failure unless the name is that of a regular file that can be read. A FIFO is refused
/// because opening it would wait for its writer.
void requireReadable(const QString& name);
