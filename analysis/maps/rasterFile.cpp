#include "analysis/maps/rasterFile.h"

#include <QFile>
#include <QFileInfo>
#include <QTextCodec>
#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <vector>

#include "analysis/support/files.h"
#include "analysis/support/inputError.h"
#include "analysis/support/lineReader.h"
#include "analysis/support/numbers.h"
#include "analysis/support/singles.h"

namespace rfu {

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
        throw InputError(file, map.errMsg.toStdString());
    }
}

void requireSize(const veltaGEO& map, const QString& file) {
    if (map.nCols <= 0 || map.nRows <= 0) {
        throw InputError(file, "announces no usable size: " + std::to_string(map.nCols) +
                                   " columns and " + std::to_string(map.nRows) + " rows");
    }
}

// ASCII grids ----------------------------------------------------------------------------------

constexpr std::string_view kTokenCharacters =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+-._";

bool isTokenCharacter(char c) {
    static constexpr auto kIsOne = [] {
        std::array<bool, 256> isOne{};
        for (const char one : kTokenCharacters) {
            isOne[static_cast<unsigned char>(one)] = true;
        }
        return isOne;
    }();
    return kIsOne[static_cast<unsigned char>(c)];
}

/// The next token of a line, by the library's rule without its limits; quotes within a token stay.
/// The line is left with what stands behind it; no token is empty.
std::string_view takeToken(std::string_view& line) {
    std::size_t begin = line.size();
    bool isQuoted = false;
    std::size_t at = 0;
    for (; at < line.size(); ++at) {
        if (line[at] == '"') {
            isQuoted = !isQuoted;
        } else if (isQuoted || isTokenCharacter(line[at])) {
            begin = std::min(begin, at);
        } else if (begin < at) {
            break;
        }
    }
    const std::string_view token = line.substr(begin, at - begin);
    line.remove_prefix(at);
    return token;
}

char lowered(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool isSameWord(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return lowered(x) == lowered(y); });
}

template <std::size_t Count>
bool hasWord(const std::string_view (&words)[Count], std::string_view word) {
    return std::any_of(std::begin(words), std::end(words),
                       [word](std::string_view known) { return isSameWord(known, word); });
}

/// Calls use(key, value, lines) with each header line, which is one of two tokens.
template <typename Use>
void forEachHeaderLine(const QString& file, Use use) {
    LineReader lines(file);
    std::string_view line;
    while (lines.next(line)) {
        const std::string_view key = takeToken(line);
        const std::string_view value = takeToken(line);
        if (!value.empty() && takeToken(line).empty()) {
            use(key, value, lines);
        }
    }
}

/// The library ignores keys that it does not know; here those that change the map are an error.
void requireReadKeys(const QString& file) {
    static constexpr std::string_view kRead[] = {"ncols",     "nrows",    "xllcorner",
                                                 "yllcorner", "cellsize", "NODATA_value"};
    static constexpr std::string_view kMeaningful[] = {"xllcenter", "yllcenter", "dx", "dy"};
    forEachHeaderLine(file, [](std::string_view key, std::string_view, const LineReader& lines) {
        if (hasWord(kMeaningful, key)) {
            throw InputError(
                lines.file(), lines.number(),
                std::string(key) +
                    " is not read: the place of a map is given by xllcorner, yllcorner "
                    "and cellsize");
        }
        if (hasWord(kRead, key) &&
            std::find(std::begin(kRead), std::end(kRead), key) == std::end(kRead)) {
            throw InputError(
                lines.file(), lines.number(),
                std::string(key) + " is not read: keys are in lower case, except NODATA_value");
        }
    });
}

bool isNumber(std::string_view token) {
    if (parseNumber(token)) {
        return true;
    }
    if (!token.empty() && (token.front() == '-' || token.front() == '+')) {
        token.remove_prefix(1);
    }
    static constexpr std::string_view kNotFinite[] = {"inf", "infinity", "nan"};
    return hasWord(kNotFinite, token);
}

/// Steps over a number such as "-51.23" and the blanks before it. Allowed where a blank or the end
/// of the line follows: the number is then a token of its own, and too short to be out of range.
/// @return false, the line untouched, for anything else
bool skipPlainNumber(std::string_view& line) {
    constexpr std::ptrdiff_t kLongest = 64;
    const auto skipDigits = [end = line.data() + line.size()](const char*& at) {
        const char* const first = at;
        while (at != end && *at >= '0' && *at <= '9') {
            ++at;
        }
        return at != first;
    };
    const char* const end = line.data() + line.size();
    const char* at = line.data();
    while (at != end && *at == ' ') {
        ++at;
    }
    const char* const begin = at;
    if (at != end && *at == '-') {
        ++at;
    }
    bool isNumber = skipDigits(at);
    if (at != end && *at == '.') {
        ++at;
        isNumber = skipDigits(at) && isNumber;
    }
    if (!isNumber || at - begin > kLongest || (at != end && *at != ' ')) {
        return false;
    }
    line.remove_prefix(static_cast<std::size_t>(at - line.data()));
    return true;
}

struct Row {
    int cells = 0;
    std::string_view noNumber;  // the first cell that is none; empty where all are
};

Row rowOf(std::string_view line) {
    Row row;
    for (;; ++row.cells) {
        if (skipPlainNumber(line)) {
            continue;
        }
        const std::string_view token = takeToken(line);
        if (token.empty()) {
            return row;
        }
        if (row.noNumber.empty() && !isNumber(token)) {
            row.noNumber = token;
        }
    }
}

/// The library takes missing cells for zeros, ignores those beyond the last column, leaves missing
/// rows as they were and reads words as numbers; here each is an error.
void requireWholeRows(const veltaGEO& map, const QString& file) {
    constexpr int kFewestCells = 3;  // with less a line is no row to the library
    LineReader lines(file);
    std::string_view line;
    int rows = 0;
    while (lines.next(line)) {
        const Row row = rowOf(line);
        if (row.cells < kFewestCells) {
            continue;
        }
        if (!row.noNumber.empty()) {
            throw InputError(file, lines.number(), quoted(row.noNumber) + " is no number");
        }
        if (row.cells != map.nCols) {
            throw InputError(file, lines.number(),
                             "a row of " + std::to_string(row.cells) +
                                 " cells, while the grid has " + std::to_string(map.nCols) +
                                 " columns");
        }
        if (rows == map.nRows) {
            throw InputError(file, lines.number(),
                             "a row beyond the " + std::to_string(map.nRows) + " of the grid");
        }
        ++rows;
    }
    if (rows < map.nRows) {
        throw InputError(
            file, "holds " + std::to_string(rows) + " of " + std::to_string(map.nRows) + " rows");
    }
    for (int row = 0; row < map.nRows; ++row) {
        if (isUntouched(map.grid[row][0])) {
            throw InputError(file,
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
    requireReadKeys(file);
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

struct LayoutKey {
    std::string_view key;
    std::string wanted;  // the only value that means what the library reads
    bool ofFloats;       // whether it matters for floats alone
};

std::vector<LayoutKey> layoutOf(const veltaGEO& map) {
    const std::string rowBytes = std::to_string(kCellBytes * map.nCols);
    return {{"BYTEORDER", "I", false},
            {"LAYOUT", "BIL", false},
            {"NBANDS", "1", false},
            {"SKIPBYTES", "0", false},
            {"YDIM", textOf(map.cellSize), false},
            {"NBITS", "32", true},
            {"BANDROWBYTES", rowBytes, true},
            {"TOTALROWBYTES", rowBytes, true}};
}

bool isSameValue(std::string_view a, std::string_view b) {
    const auto x = parseNumber(a);
    const auto y = parseNumber(b);
    return x && y ? static_cast<float>(*x) == static_cast<float>(*y) : isSameWord(a, b);
}

/// The library ignores how the cells are laid out; here only the layout that it reads will do.
void requireReadLayout(const veltaGEO& map, const QString& header) {
    static constexpr std::string_view kRead[] = {"NCOLS", "NROWS",  "ULXMAP",   "ULYMAP",
                                                 "XDIM",  "NODATA", "PIXELTYPE"};
    const std::vector<LayoutKey> layout = layoutOf(map);
    const bool isFloat = map.isFloat == 1;
    forEachHeaderLine(
        header, [&](std::string_view key, std::string_view value, const LineReader& lines) {
            const auto fail = [&](const std::string& what) {
                throw InputError(lines.file(), lines.number(), std::string(key) + ' ' + what);
            };
            if (hasWord(kRead, key) &&
                std::find(std::begin(kRead), std::end(kRead), key) == std::end(kRead)) {
                fail("is not read: keys are in capitals");
            }
            for (const LayoutKey& known : layout) {
                if (isSameWord(key, known.key) && (isFloat || !known.ofFloats) &&
                    !isSameValue(value, known.wanted)) {
                    fail(std::string(value) + " is not read, only " + known.wanted);
                }
            }
        });
}

void requireWholeCells(const veltaGEO& map, const QString& name) {
    QFile file(name);
    const auto needed = qint64{kCellBytes} * map.nCols * map.nRows;
    if (!file.open(QIODevice::ReadOnly)) {
        throw InputError(name, file.errorString().toStdString());
    }
    if (file.size() < needed) {
        throw InputError(name, "holds " + std::to_string(file.size()) + " bytes, while " +
                                   std::to_string(map.nCols) + " x " + std::to_string(map.nRows) +
                                   " cells take " + std::to_string(needed));
    }
    if (opensLikeUnicode(file.peek(kCellBytes))) {
        throw InputError(name, "its first cell would be taken for the mark of Unicode text");
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
    requireReadLayout(*raster.map, header);
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

Raster loadRaster(const QString& file) {
    requireReadable(file);
    const QString written = QFileInfo(file).suffix();
    const QString extension = written.toLower();
    const bool isBil = extension == QLatin1String("bil") || extension == QLatin1String("hdr");
    if (!isBil && extension != QLatin1String("asc")) {
        throw InputError(file, "a raster ends in .asc, .bil or .hdr");
    }
    if (written != extension) {
        throw InputError(file, "extensions are in lower case: ." + extension.toStdString());
    }
    // The library takes a table that it cannot open for one that is not there.
    const QString colors = withExtension(file, "clr");
    if (QFileInfo::exists(colors)) {
        requireReadable(colors);
    }
    Raster raster = isBil ? loadBil(file) : loadAsc(file);
    raster.hasNoData = !isUntouched(raster.map->noData);
    return raster;
}

void requireCells(const Raster& raster, const QString& file) {
    if (!raster.hasCells) {
        throw InputError(file, "holds integers (PIXELTYPE is not FLOAT), which are not read");
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

}  // namespace rfu
