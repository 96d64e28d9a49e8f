#include "detail/gridHeader.h"

#include <rfUtils/detail/regularFile.h>
#include <rfUtils/geo/veltaGEO.h>

#include <QFile>
#include <QTextCodec>
#include <QTextStream>

#include <algorithm>
#include <cstring>

using namespace rfu::detail;

namespace {

static_assert(sizeof(float) == 4, "a cell of the file is a grid cell as it stands");

/// The cells behind the bytes that the file gave for a row.
void fillUncovered(float* row, std::int32_t columns, qint64 bytes, float noData) {
    std::fill(row + std::max<qint64>(bytes, 0) / qint64{sizeof(float)}, row + columns, noData);
}

/// Whether QTextStream, which looks for a byte-order mark at the start of its device before it
/// takes the locale's codec, would decode the file as ISO 8859-1: a byte for a character.
bool decodesToItself(QFile& file) {
    constexpr qint64 kLongestMark = 4;
    constexpr int kLatin1 = 4;  // its number in the IANA registry
    const QTextCodec* codec =
        QTextCodec::codecForUtfText(file.peek(kLongestMark), QTextCodec::codecForLocale());
    return codec != nullptr && codec->mibEnum() == kLatin1;
}

/// Fills the rows by what `readRow` gives: the bytes that it wrote, negative for an error. A row that
/// is not whole is the last: what came behind a read error would stand in the wrong cells.
template <typename ReadRow>
void readRowsBy(veltaGEO& map, ReadRow readRow) {
    const qint64 rowBytes = map.nCols * qint64{sizeof(float)};
    bool ended = false;
    for (std::int32_t row = 0; row < map.nRows; ++row) {
        const qint64 got = ended ? 0 : readRow(map.grid[row], rowBytes);
        ended = got < rowBytes;
        fillUncovered(map.grid[row], map.nCols, got, map.noData);
    }
}

void readRowsAsText(veltaGEO& map, QFile& file) {
    QTextStream stream(&file);
    readRowsBy(map, [&stream](float* row, qint64 size) -> qint64 {
        const QByteArray bytes = stream.read(size).toLatin1();
        std::memcpy(row, bytes.constData(), static_cast<std::size_t>(bytes.size()));
        return bytes.size();
    });
}

/// The same rows as readRowsAsText() gives where decoding and encoding again changes no byte.
void readRowsAsBytes(veltaGEO& map, QFile& file) {
    readRowsBy(map, [&file](float* row, qint64 size) {
        return file.read(reinterpret_cast<char*>(row), size);
    });
}

/// Fills the first nCols cells of the first nRows grid rows from a file that is open, at its start;
/// nCols and nRows are within the grid.
void readRows(veltaGEO& map, QFile& file) {
    if (decodesToItself(file)) {
        readRowsAsBytes(map, file);
    } else {
        readRowsAsText(map, file);
    }
}

}  // namespace

bool veltaGEO::loadBILFile(const QString& fileName) {
    RegularFile file(GetFileNameExtDel(fileName) + QLatin1String(".bil"));
    if (!file.open()) {
        setErrMsg(QStringLiteral("BIL file not found"));
        return false;
    }
    // A refused header leaves its size behind.
    if (nCols < 0 || nCols > kMaxColumns) {
        setErrMsg(QLatin1String(kTooManyColumns));
        return false;
    }
    if (nRows < 0 || nRows > kMaxRows) {
        setErrMsg(QLatin1String(kTooManyRows));
        return false;
    }
    // Integer rasters are reported as loaded although their cells are not read.
    if (isFloat == 1) {
        readRows(*this, file.device());
    }
    isLoaded = 1;
    isValid = 1;
    LoadColorTable(fileName);
    setErrMsg(QLatin1String(kRasterLoaded));
    return true;
}
