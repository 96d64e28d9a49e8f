// Private to the library: not installed, may change in any release.
#pragma once

class QFile;
class veltaGEO;

namespace rfu::detail {

/// Fills the first nCols cells of the first nRows grid rows from a file of 4-byte singles, decoded
/// through the process's text codec, a byte-order mark at the file's start included. Cells that the
/// file does not cover whole get the no-data value. The file is open, at its start; nCols and nRows
/// are within the grid.
void readBilRows(veltaGEO& map, QFile& file);

/// The same for any codec, by way of a text stream.
void readBilRowsAsText(veltaGEO& map, QFile& file);

/// The same where decoding and encoding again changes no byte.
void readBilRowsAsBytes(veltaGEO& map, QFile& file);

}  // namespace rfu::detail
