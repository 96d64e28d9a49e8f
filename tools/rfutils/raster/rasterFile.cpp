#include "raster/rasterFile.h"

#include <QFile>
#include <QFileInfo>
#include <QTextCodec>
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>

#include "support/errors.h"
#include "support/files.h"
#include "support/lineReader.h"

namespace {

/// The library decodes float BIL files by the locale's codec: while this lives, one that keeps
/// every byte.
class ByteCodec {
public:
    ByteCodec() : before_(QTextCodec::codecForLocale()) {
        QTextCodec::setCodecForLocale(QTextCodec::codecForName("ISO 8859-1"));
    }
    ~ByteCodec() { QTextCodec::setCodecForLocale(before_); }
    ByteCodec(const ByteCodec&) = delete;
    ByteCodec& operator=(const ByteCodec&) = delete;

    /// Under the codec every character of a file name is one byte of it.
    static QString nameOf(const QString& file) { return QString::fromLatin1(file.toUtf8()); }

private:
    QTextCodec* before_;
};

constexpr int kCellBytes = 4;

/// A value that no file can hold: stays where a loader does not write.
constexpr std::uint32_t kUntouched = 0x7FC0C0DE;

float untouched() {
    float value = 0.0F;
    std::memcpy(&value, &kUntouched, sizeof value);
    return value;
}

bool isUntouched(float value) {
    std::uint32_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return bits == kUntouched;
}

QString withExtension(const QString& file, const char* extension) {
    return file.left(file.lastIndexOf(QLatin1Char('.'))) + QLatin1Char('.') +
           QLatin1String(extension);
}

std::unique_ptr<veltaGEO> emptyMap() {
    auto map = std::make_unique<veltaGEO>();
    map->noData = untouched();
    return map;
}

void requireLoaded(bool loaded, const veltaGEO& map, const QString& file) {
    if (!loaded) {
        throw fileError(file, map.errMsg.toStdString());
    }
}

void requireSize(const veltaGEO& map, const QString& file) {
    if (map.nCols <= 0 || map.nRows <= 0) {
        throw fileError(file, "announces no usable size: " + std::to_string(map.nCols) +
                                  " columns and " + std::to_string(map.nRows) + " rows");
    }
}

// ASCII grids ----------------------------------------------------------------------------------

bool isTokenCharacter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '+' ||
           c == '-' || c == '.' || c == '_';
}

/// The library's rule, without its limits.
int countTokens(std::string_view line) {
    int count = 0;
    bool inToken = false;
    bool isQuoted = false;
    for (const char c : line) {
        if (c == '"') {
            isQuoted = !isQuoted;
        } else if (isQuoted || isTokenCharacter(c)) {
            count += int{!inToken};
            inToken = true;
        } else {
            inToken = false;
        }
    }
    return count;
}

/// The library takes missing cells for zeros and leaves missing rows as they were; here either is
/// an error.
void requireWholeRows(const veltaGEO& map, const QString& file) {
    constexpr int kFewestCells = 3;  // with less a line is no row to the library
    LineReader lines(file);
    std::string_view line;
    int rows = 0;
    while (rows < map.nRows && lines.next(line)) {
        const int cells = countTokens(line);
        if (cells < kFewestCells) {
            continue;
        }
        if (cells < map.nCols) {
            throw lineError(file, lines.number(),
                            "a row of " + std::to_string(cells) + " cells, while the grid has " +
                                std::to_string(map.nCols) + " columns");
        }
        ++rows;
    }
    if (rows < map.nRows) {
        throw fileError(
            file, "holds " + std::to_string(rows) + " of " + std::to_string(map.nRows) + " rows");
    }
    for (int row = 0; row < map.nRows; ++row) {
        if (isUntouched(map.grid[row][0])) {
            throw fileError(file,
                            "its rows are not placed from row 0 on without a gap: NODATA_value "
                            "has to be the last header line, and no line between rows may be "
                            "blank");
        }
    }
}

Raster loadAsc(const QString& given) {
    const QString file = withExtension(given, "asc");
    requireReadable(file);
    Raster raster;
    raster.map = emptyMap();
    for (auto& row : raster.map->grid) {
        row[0] = untouched();
    }
    bool loaded = false;
    {
        const ByteCodec codec;
        loaded = raster.map->loadASCFile(ByteCodec::nameOf(file));
    }
    requireLoaded(loaded, *raster.map, file);
    requireSize(*raster.map, file);
    requireWholeRows(*raster.map, file);
    return raster;
}

// BIL grids ------------------------------------------------------------------------------------

/// Bytes by which the decoder would recognise Unicode text, and not keep every byte.
bool opensLikeUnicode(const QByteArray& bytes) {
    const QByteArray marks[] = {QByteArray("\xEF\xBB\xBF", 3), QByteArray("\xFE\xFF", 2),
                                QByteArray("\xFF\xFE", 2), QByteArray("\0\0\xFE\xFF", 4)};
    return std::any_of(std::begin(marks), std::end(marks),
                       [&](const QByteArray& mark) { return bytes.startsWith(mark); });
}

void requireWholeCells(const veltaGEO& map, const QString& name) {
    QFile file(name);
    const auto needed = qint64{kCellBytes} * map.nCols * map.nRows;
    if (!file.open(QIODevice::ReadOnly)) {
        throw fileError(name, file.errorString().toStdString());
    }
    if (file.size() < needed) {
        throw fileError(name, "holds " + std::to_string(file.size()) + " bytes, while " +
                                  std::to_string(map.nCols) + " x " + std::to_string(map.nRows) +
                                  " cells take " + std::to_string(needed));
    }
    if (opensLikeUnicode(file.peek(kCellBytes))) {
        throw fileError(name, "its first cell would be taken for the mark of Unicode text");
    }
}

Raster loadBil(const QString& given) {
    const QString header = withExtension(given, "hdr");
    const QString file = withExtension(given, "bil");
    requireReadable(header);
    Raster raster;
    raster.map = emptyMap();
    bool loaded = false;
    {
        const ByteCodec codec;
        loaded = raster.map->loadHDRFile(ByteCodec::nameOf(header));
    }
    requireLoaded(loaded, *raster.map, header);
    requireSize(*raster.map, header);
    requireReadable(file);
    raster.hasCells = raster.map->isFloat == 1;
    if (raster.hasCells) {
        requireWholeCells(*raster.map, file);
    }
    {
        const ByteCodec codec;
        loaded = raster.map->loadBILFile(ByteCodec::nameOf(file));
    }
    requireLoaded(loaded, *raster.map, file);
    return raster;
}

}  // namespace

bool Raster::isMeasured(float value) const {
    return !std::isnan(value) && !(hasNoData && value == map->noData);
}

Raster loadRaster(const QString& file) {
    requireReadable(file);
    const QString extension = QFileInfo(file).suffix().toLower();
    const bool isBil = extension == QLatin1String("bil") || extension == QLatin1String("hdr");
    if (!isBil && extension != QLatin1String("asc")) {
        throw fileError(file, "a raster ends in .asc, .bil or .hdr");
    }
    Raster raster = isBil ? loadBil(file) : loadAsc(file);
    raster.hasNoData = !isUntouched(raster.map->noData);
    return raster;
}

void requireCells(const Raster& raster, const QString& file) {
    if (!raster.hasCells) {
        throw fileError(file, "holds integers (PIXELTYPE is not FLOAT), which are not read");
    }
}

RasterStatistics statisticsOf(const Raster& raster) {
    RasterStatistics result;
    if (!raster.hasCells) {
        return result;
    }
    double sum = 0.0;
    float smallest = std::numeric_limits<float>::infinity();
    float largest = -std::numeric_limits<float>::infinity();
    for (int row = 0; row < raster.map->nRows; ++row) {
        for (int column = 0; column < raster.map->nCols; ++column) {
            const float value = raster.cell(column, row);
            if (raster.isMeasured(value)) {
                ++result.measured;
                sum += static_cast<double>(value);
                smallest = std::min(smallest, value);
                largest = std::max(largest, value);
            }
        }
    }
    if (result.measured > 0) {
        result.smallest = smallest;
        result.largest = largest;
        result.mean = sum / static_cast<double>(result.measured);
    }
    return result;
}
