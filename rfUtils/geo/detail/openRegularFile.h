// Private to the library: not installed, may change in any release.
#pragma once

class QFile;

namespace rfu::detail {

/// Opens a file read-only, as bytes. Only regular files (and Qt resources) open: a folder is no
/// map, and a FIFO or device could keep the caller waiting for ever.
bool openRegularFile(QFile& file);

}  // namespace rfu::detail
