#include "analysis/maps/rasterFile.h"

#include <QFileInfo>
#include <QTextCodec>
#include <algorithm>
#include <limits>
#include <utility>

#include "analysis/maps/ascCheck.h"
#include "analysis/maps/bilCheck.h"
#include "analysis/support/fileWatch.h"
#include "analysis/support/files.h"
#include "analysis/support/inputError.h"
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

QString withExtension(const QString& file, const char* extension) {
    return file.left(file.lastIndexOf(QLatin1Char('.'))) + QLatin1Char('.') +
           QLatin1String(extension);
}

/// Whether a name is that of a BIL grid, otherwise of an ASCII one.
/// @throw InputError for any other name
bool isBilName(const QString& file) {
    const QString written = QFileInfo(file).suffix();
    const QString extension = written.toLower();
    const bool isBil = extension == QLatin1String("bil") || extension == QLatin1String("hdr");
    if (!isBil && extension != QLatin1String("asc")) {
        throw InputError(file, "a raster ends in .asc, .bil or .hdr");
    }
    if (written != extension) {
        throw InputError(file, "extensions are in lower case: ." + extension.toStdString());
    }
    return isBil;
}

constexpr Rule kFileRules[] = {{"file-unreadable", Severity::Error}};

/// Adds the findings that `check()` gives, or its InputError as one.
template <typename Check>
void addFindings(RasterCheck& result, const QString& file, Check check) {
    try {
        result.files.push_back(check());
    } catch (const InputError& error) {
        result.files.emplace_back(file, kFileRules);
        result.files.back().add("file-unreadable", error.problem());
    }
}

void addAsc(RasterCheck& result, const QString& file) {
    addFindings(result, file, [&] {
        AscCheck grid = checkAsc(file);
        result.hasNoData = grid.hasNoData;
        return std::move(grid.findings);
    });
}

void addBil(RasterCheck& result, const QString& headerFile, const QString& file) {
    std::optional<HdrCheck> header;
    addFindings(result, headerFile, [&] {
        header = checkHdr(headerFile);
        result.hasNoData = header->hasNoData;
        return header->findings;
    });
    if (header && !header->findings.hasError()) {
        addFindings(result, file, [&] { return checkBil(file, *header); });
    }
}

/// The loader takes a table that it cannot open for one that is not there.
void addColors(RasterCheck& result, const QString& file) {
    if (QFileInfo::exists(file)) {
        addFindings(result, file, [&] {
            requireReadable(file);
            return Findings(file, kFileRules);
        });
    }
}

bool load(veltaGEO& map, const QString& file, bool isBil) {
    const ByteCodec codec;
    const QString name = ByteCodec::nameOf(file);
    return isBil ? map.loadHDRFile(name) && map.loadBILFile(name) : map.loadASCFile(name);
}

}  // namespace

RasterCheck checkRaster(const QString& file) {
    requireReadable(file);
    RasterCheck result;
    if (isBilName(file)) {
        addBil(result, withExtension(file, "hdr"), withExtension(file, "bil"));
    } else {
        addAsc(result, withExtension(file, "asc"));
    }
    addColors(result, withExtension(file, "clr"));
    return result;
}

Raster loadRaster(const QString& file) {
    requireReadable(file);
    const bool isBil = isBilName(file);
    // The library opens the names itself.
    const FileWatch watch(
        isBil ? QStringList{withExtension(file, "hdr"), withExtension(file, "bil"),
                            withExtension(file, "clr")}
              : QStringList{withExtension(file, "asc"), withExtension(file, "clr")});
    const RasterCheck check = checkRaster(file);
    for (const Findings& findings : check.files) {
        findings.throwFirstError();
    }
    Raster raster;
    raster.map = std::make_unique<veltaGEO>();
    const bool isLoaded = load(*raster.map, file, isBil);
    watch.requireUnchanged();
    if (!isLoaded) {
        throw InputError(file, raster.map->errMsg.toStdString());
    }
    raster.hasCells = !isBil || raster.map->isFloat == 1;
    raster.hasNoData = check.hasNoData;
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
        // The sum is rounded, and the decimal that stands for a single may be on either side of it.
        result.mean = std::clamp(sum / static_cast<double>(result.measured), decimalOf(smallest),
                                 decimalOf(largest));
    }
    return result;
}

}  // namespace rfu
