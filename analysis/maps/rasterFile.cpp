#include "analysis/maps/rasterFile.h"

#include <QFileInfo>
#include <QTextCodec>
#include <algorithm>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "analysis/maps/ascCheck.h"
#include "analysis/maps/bilCheck.h"
#include "analysis/support/fileWatch.h"
#include "analysis/support/files.h"
#include "analysis/support/inputError.h"
#include "analysis/support/singles.h"

namespace rfu {

namespace {

/// Sets a codec that keeps every byte during its lifetime: the library decodes float BIL files by the
/// codec of the locale.
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

void addAsc(RasterCheck& result, const QString& name) {
    const QString file = withExtension(name, "asc");
    addFindings(result, file, [&] {
        AscCheck grid = checkAsc(file);
        result.hasNoData = grid.hasNoData;
        return std::move(grid.findings);
    });
}

void addBil(RasterCheck& result, const QString& name) {
    const QString headerFile = withExtension(name, "hdr");
    const QString file = withExtension(name, "bil");
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

/// A raster format that is checked and loaded.
struct RasterFormat {
    std::vector<const char*> extensions;
    void (*addFindings)(RasterCheck& result, const QString& name);
    bool (*load)(veltaGEO& map, const QString& name);
    bool (*hasCells)(const veltaGEO& map);
    Origin origin;
};

const RasterFormat kFormats[] = {
    {{"asc"},
     addAsc,
     [](veltaGEO& map, const QString& name) { return map.loadASCFile(name); },
     [](const veltaGEO&) { return true; },
     Origin::LowerLeftCorner},
    {{"bil", "hdr"},
     addBil,
     [](veltaGEO& map, const QString& name) {
         return map.loadHDRFile(name) && map.loadBILFile(name);
     },
     [](const veltaGEO& map) { return map.isFloat == 1; },
     Origin::UpperLeftCentre}};

/// ".asc, .bil or .hdr"
std::string extensionList() {
    std::vector<std::string> names;
    for (const RasterFormat& format : kFormats) {
        names.insert(names.end(), format.extensions.begin(), format.extensions.end());
    }
    std::string list;
    for (const std::string& name : names) {
        list += (list.empty() ? "." : &name == &names.back() ? " or ." : ", .") + name;
    }
    return list;
}

/// @throw InputError for a name that has none of the extensions
const RasterFormat& formatOf(const QString& file) {
    const QString written = QFileInfo(file).suffix();
    const QString extension = written.toLower();
    for (const RasterFormat& format : kFormats) {
        for (const char* const known : format.extensions) {
            if (extension == QLatin1String(known)) {
                if (written != extension) {
                    throw InputError(file, std::string("extensions are in lower case: .") + known);
                }
                return format;
            }
        }
    }
    throw InputError(file, "a raster ends in " + extensionList());
}

}  // namespace

QString withExtension(const QString& file, const char* extension) {
    return file.left(file.lastIndexOf(QLatin1Char('.'))) + QLatin1Char('.') +
           QLatin1String(extension);
}

RasterCheck checkRaster(const QString& file) {
    requireReadable(file);
    RasterCheck result;
    formatOf(file).addFindings(result, file);
    addColors(result, withExtension(file, "clr"));
    return result;
}

QStringList filesOfRaster(const QString& file) {
    QStringList names{withExtension(file, "clr")};
    for (const char* const extension : formatOf(file).extensions) {
        names += withExtension(file, extension);
    }
    return names;
}

Raster loadRaster(const QString& file) {
    requireReadable(file);
    const RasterFormat& format = formatOf(file);
    const FileWatch watch(filesOfRaster(file));  // the library opens the names itself
    const RasterCheck check = checkRaster(file);
    for (const Findings& findings : check.files) {
        findings.throwFirstError();
    }
    Raster raster;
    raster.map = std::make_unique<veltaGEO>();
    const bool isLoaded = [&] {
        const ByteCodec codec;
        return format.load(*raster.map, ByteCodec::nameOf(file));
    }();
    watch.requireUnchanged();
    if (!isLoaded) {
        throw InputError(file, raster.map->errMsg.toStdString());
    }
    raster.origin = format.origin;
    raster.hasCells = format.hasCells(*raster.map);
    raster.hasNoData = check.hasNoData;
    return raster;
}

void requireCells(const Raster& raster, const QString& file) {
    if (!raster.hasCells) {
        throw InputError(file, kNoCells);
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
        // The sum is rounded, and the decimal text of a single may differ from it to either side.
        result.mean = std::clamp(sum / static_cast<double>(result.measured), decimalOf(smallest),
                                 decimalOf(largest));
    }
    return result;
}

}  // namespace rfu
