#include "detail/gridHeader.h"
#include "detail/textAsBytes.h"

#include <rfUtils/detail/regularFile.h>
#include <rfUtils/geo/veltaGEO.h>

#include <QFile>
#include <QTextCodec>

#include <algorithm>
#include <cstdint>

using namespace rfu::detail;

namespace {

static_assert(sizeof(float) == 4, "the bytes of a cell are copied unchanged");

/// The codec that QTextStream would choose: that of a byte-order mark, otherwise the locale's. Null
/// where there is none, and bytes are characters.
const QTextCodec* codecOf(QFile& file) {
    constexpr qint64 kMaxMarkLength = 4;
    return QTextCodec::codecForUtfText(file.peek(kMaxMarkLength), QTextCodec::codecForLocale());
}

/// Whether decoding and encoding as ISO 8859-1 keeps every byte.
bool keepsBytes(const QTextCodec* codec) {
    constexpr int kLatin1 = 4;  // IANA MIBenum
    return codec == nullptr || codec->mibEnum() == kLatin1;
}

/// Fills nRows rows of nCols cells by `readCells(cells, size)`, which returns the bytes written or
/// a negative number for an error. The other cells become the no-data value. Stops at the first
/// short read: bytes behind a read error would land in the wrong cells.
template <typename ReadCells>
void fillRows(veltaGEO& map, ReadCells readCells) {
    // Rows as wide as the grid are contiguous and read at once.
    const bool isContiguous = map.nCols == kMaxColumns;
    const std::int32_t rowsAtOnce = isContiguous ? std::max(map.nRows, 1) : 1;
    const std::int32_t cells = std::max(map.nCols, 0) * rowsAtOnce;
    const qint64 size = cells * qint64{sizeof(float)};
    bool ended = false;
    for (std::int32_t row = 0; row < map.nRows; row += rowsAtOnce) {
        float* const begin = map.grid[row];
        const qint64 got = ended ? 0 : std::max<qint64>(readCells(begin, size), 0);
        ended = got < size;
        std::fill(begin + got / qint64{sizeof(float)}, begin + cells, map.noData);
    }
}

/// @pre nCols and nRows fit the grid, and the file is at its start
void readRows(veltaGEO& map, QFile& file) {
    const QTextCodec* const codec = codecOf(file);
    if (keepsBytes(codec)) {
        fillRows(map, [&file](float* cells, qint64 size) {
            return file.read(reinterpret_cast<char*>(cells), size);
        });
    } else {
        TextAsBytes text(file, *codec);
        fillRows(map, [&text](float* cells, qint64 size) {
            return text.read(reinterpret_cast<char*>(cells), size);
        });
    }
}

}  // namespace

bool veltaGEO::loadBILFile(const QString& fileName) {
    RegularFile file(GetFileNameExtDel(fileName) + QLatin1String(".bil"));
    if (!file.open()) {
        setErrMsg(QStringLiteral("BIL file not found"));
        return false;
    }
    // loadHDRFile() stores a size that it refuses.
    if (nCols > kMaxColumns) {
        setErrMsg(QLatin1String(kTooManyColumns));
        return false;
    }
    if (nRows > kMaxRows) {
        setErrMsg(QLatin1String(kTooManyRows));
        return false;
    }
    // Integer rasters count as loaded although their cells are not read.
    if (isFloat == 1) {
        readRows(*this, file.device());
    }
    return finishRaster(*this, fileName);
}
