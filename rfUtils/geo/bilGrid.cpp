#include "detail/gridHeader.h"
#include "detail/textAsBytes.h"

#include <rfUtils/detail/regularFile.h>
#include <rfUtils/geo/veltaGEO.h>

#include <QFile>
#include <QTextCodec>

#include <algorithm>

using namespace rfu::detail;

namespace {

static_assert(sizeof(float) == 4, "a cell of the file is a grid cell as it stands");

/// What QTextStream would decode the file with: it looks for a byte-order mark at the start of its
/// device before it takes the locale's codec. Null where bytes are taken for characters.
const QTextCodec* codecOf(QFile& file) {
    constexpr qint64 kLongestMark = 4;
    return QTextCodec::codecForUtfText(file.peek(kLongestMark), QTextCodec::codecForLocale());
}

/// Whether decoding and encoding as ISO 8859-1 again changes no byte.
bool decodesToItself(const QTextCodec* codec) {
    constexpr int kLatin1 = 4;  // its number in the IANA registry
    return codec == nullptr || codec->mibEnum() == kLatin1;
}

/// Fills the first nCols cells of the first nRows grid rows by `readCells(cells, size)`, which gives
/// how many bytes it wrote, negative for an error. What it does not cover becomes the no-data value. What
/// is not whole is the last: behind a read error it would stand in the wrong cells.
template <typename ReadCells>
void fillRows(veltaGEO& map, ReadCells readCells) {
    // Rows as wide as the grid stand without gaps, so that they are read as one.
    const bool gapless = map.nCols == kMaxColumns;
    const std::int32_t rowsAtOnce = gapless ? std::max(map.nRows, 1) : 1;
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

/// nCols and nRows are within the grid, the file is at its start.
void readRows(veltaGEO& map, QFile& file) {
    const QTextCodec* const codec = codecOf(file);
    if (decodesToItself(codec)) {
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
    // A refused header leaves its size behind.
    if (nCols > kMaxColumns) {
        setErrMsg(QLatin1String(kTooManyColumns));
        return false;
    }
    if (nRows > kMaxRows) {
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
