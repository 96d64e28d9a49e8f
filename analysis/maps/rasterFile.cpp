#include "analysis/maps/rasterFile.h"

#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <cstdint>
#include <iterator>
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

constexpr Rule kFileRules[] = {kFileUnreadable};

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

void addColors(RasterCheck& result, const QString& file) {
    addFindings(result, file, [&] {
        requireReadable(file);
        return Findings(file, kFileRules);
    });
}

constexpr char kColorExtension[] = "clr";

/// A colour table in the place of the one that the library has read: no end of an entry that a line of the table leaves
/// out is that of the former table.
void loadColors(veltaGEO& map, const QString& file) {
    for (float* const values : {map.lowValue, map.highValue}) {
        std::fill_n(values, std::size(map.lowValue), 0.0F);
    }
    for (std::int32_t* const components :
         {map.lowRed, map.lowGreen, map.lowBlue, map.highRed, map.highGreen, map.highBlue}) {
        std::fill_n(components, std::size(map.lowRed), 0);
    }
    const QString message = map.errMsg;
    map.LoadColorTable(file);
    map.setErrMsg(message);
}

/// Reads the cells of a grid of floats, little-endian singles, as the library reads them under a text codec that keeps
/// every byte. @pre the file has been checked
bool readCells(veltaGEO& map, const QString& name) {
    QFile cells;
    openRegular(cells, withExtension(name, "bil"));
    const qint64 rowBytes = map.nCols * qint64{sizeof(float)};
    for (int row = 0; row < map.nRows; ++row) {
        if (cells.read(reinterpret_cast<char*>(map.grid[row]), rowBytes) != rowBytes) {
            map.setErrMsg(cells.errorString());
            return false;
        }
    }
    return true;
}

/// The library would decode the cells by the codec of the process, and setting another one would disturb other threads.
/// So it reads all but the cells, as it does for a grid of integers.
bool loadBil(veltaGEO& map, const QString& name) {
    if (!map.loadHDRFile(name)) {
        return false;
    }
    const std::int32_t isFloat = std::exchange(map.isFloat, 0);
    const bool isLoaded = map.loadBILFile(name);
    map.isFloat = isFloat;
    return isLoaded && (isFloat == 0 || readCells(map, name));
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
     loadBil,
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

RasterCheck checkGrid(const QString& file) {
    requireReadable(file);
    RasterCheck result;
    formatOf(file).addFindings(result, file);
    return result;
}

/// Loads what has been checked.
/// @throw InputError with the first error of the check, and where a file has changed meanwhile
Raster loadChecked(const QString& file, const RasterCheck& check, const FileWatch& watch) {
    for (const Findings& findings : check.files) {
        findings.throwFirstError();
    }
    const RasterFormat& format = formatOf(file);
    Raster raster;
    raster.map = std::make_unique<veltaGEO>();
    const bool isLoaded = format.load(*raster.map, file);
    watch.requireUnchanged();
    if (!isLoaded) {
        throw InputError(file, raster.map->errMsg.toStdString());
    }
    raster.origin = format.origin;
    raster.hasCells = format.hasCells(*raster.map);
    raster.hasNoData = check.hasNoData;
    return raster;
}

}  // namespace

QString withExtension(const QString& file, const char* extension) {
    return file.left(file.lastIndexOf(QLatin1Char('.'))) + QLatin1Char('.') +
           QLatin1String(extension);
}

RasterCheck checkRaster(const QString& file) {
    RasterCheck result = checkGrid(file);
    const QString colors = withExtension(file, kColorExtension);
    // The loader takes a table that it cannot open for one that is not there.
    if (QFileInfo::exists(colors)) {
        addColors(result, colors);
    }
    return result;
}

QStringList filesOfRaster(const QString& file) {
    QStringList names{withExtension(file, kColorExtension)};
    for (const char* const extension : formatOf(file).extensions) {
        names += withExtension(file, extension);
    }
    return names;
}

Raster loadRaster(const QString& file) {
    requireReadable(file);
    const FileWatch watch(filesOfRaster(file));  // the library opens the names itself
    return loadChecked(file, checkRaster(file), watch);
}

Raster loadRaster(const QString& file, const QString& colorTable) {
    if (QFileInfo(colorTable).suffix() != QLatin1String(kColorExtension)) {
        throw InputError(colorTable, "a colour table ends in .clr");
    }
    requireReadable(file);
    const FileWatch watch(filesOfRaster(file) << colorTable);
    RasterCheck check = checkGrid(file);
    addColors(check, colorTable);
    Raster raster = loadChecked(file, check, watch);
    loadColors(*raster.map, colorTable);
    watch.requireUnchanged();
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
