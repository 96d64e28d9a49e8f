#include "analysis/checks/mapSets.h"

#include <QDir>
#include <QFileInfo>
#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "analysis/maps/ascCheck.h"
#include "analysis/maps/bilCheck.h"
#include "analysis/maps/cellGrid.h"
#include "analysis/maps/clrCheck.h"
#include "analysis/maps/georeference.h"
#include "analysis/maps/mapRules.h"
#include "analysis/maps/rasterFile.h"
#include "analysis/maps/tabFile.h"
#include "analysis/support/files.h"
#include "analysis/support/inputError.h"
#include "analysis/support/plainText.h"

namespace rfu {

namespace {

// What several kinds of map files share.

constexpr Rule kExtensionCase = {"extension-case", Severity::Error,
                                 "The loaders put their own extension in lower case behind the "
                                 "name that they are given. A file whose name ends in "
                                 "capitals is not found where case counts.",
                                 "TERRAIN.ASC", "Rename the file: TERRAIN.asc."};

constexpr Rule kKeysMissing = {"keys-missing", Severity::Note,
                               "A key that the header does not have keeps the value of the map "
                               "before, at first 0: the map lies at 0, 0, has cells "
                               "of no size, or takes 0 for no data.",
                               "ncols 4\nnrows 2\nNODATA_value -9999\n...", "Add the key."};

constexpr Rule kColorsMissing = {"colors-missing", Severity::Note,
                                 "Without a colour table beside it, in a file of the same name "
                                 "that ends in .clr, the map has one entry from -9999 to "
                                 "9999 with a black lower end.",
                                 "terrain.asc without terrain.clr",
                                 "Put a colour table beside the map."};

constexpr Rule kPartMissing = {
    "part-missing", Severity::Error,
    "A BIL grid is two files of one name, .hdr and .bil. Without one of them nothing loads.",
    "terrain.hdr without terrain.bil", "Put the other file beside it."};

constexpr Rule kAscRules[] = {kExtensionCase, kUtf16,        kLineEnds, map_rules::kByteOrderMark,
                              kKeysMissing,   kColorsMissing};

constexpr Rule kHdrRules[] = {kExtensionCase,
                              kUtf16,
                              kLineEnds,
                              map_rules::kByteOrderMark,
                              kKeysMissing,
                              kPartMissing,
                              {"integer-cells", Severity::Error,
                               "The library reads cells of floats only, and takes a header without "
                               "PIXELTYPE FLOAT for one of integers. The grid "
                               "counts as loaded, and no cell is read.",
                               "PIXELTYPE SIGNEDINT",
                               "Convert the grid: gdal_translate -of EHdr -ot Float32. If its "
                               "cells are floats already, add PIXELTYPE FLOAT."}};

constexpr Rule kBilRules[] = {kExtensionCase, kPartMissing, kColorsMissing};

constexpr Rule kClrRules[] = {kExtensionCase, kUtf16, kLineEnds, map_rules::kByteOrderMark};

constexpr Rule kTabRules[] = {
    kUtf16,
    kLineEnds,
    map_rules::kByteOrderMark,
    {"units-missing", Severity::Warning,
     "Without a Units line the library neither knows what the control points are nor converts "
     "them.",
     "a file that ends with CoordSys",
     "Add as the last line Units \"m\" for UTM coordinates, or Units \"degree\"."},
    {"raster-missing", Severity::Error,
     "The raster that the file names is looked for beside it, by exactly this name. It is not "
     "there, and no map is "
     "shown.",
     "File \"terrain.asc\" without terrain.asc", "Put the raster there, or correct the name."},
    {"raster-unknown", Severity::Error,
     "The kind of the raster follows from its extension. The library loads ASC and BIL grids, in "
     "small or in capital "
     "letters, and nothing else.",
     "File \"terrain.tif\"",
     "Convert the raster (gdal_translate -of AAIGrid) and name the new file."},
    {"place-differs", Severity::Warning,
     "The raster has a place of its own, and the control point lies more than a cell from where "
     "the raster has its "
     "pixel. The map is shown where the control points say.",
     "(500000,5000000) (0,0) Label \"Pt 1\" for a raster with xllcorner 400000",
     "Correct the one that is wrong. Rows count from the top, coordinates from the bottom."},
    {"point-outside", Severity::Note,
     "The control point is at a column or row that the raster does not have.",
     "(1,2) (512,0) Label \"Pt 2\" for a raster of 256 columns",
     "Correct the point, if the raster has been cut since."}};

std::string baseName(const QString& file) {
    return QFileInfo(file).fileName().toStdString();
}

/// Reports the mark of UTF-8, which to leave out is its mend.
void checkMark(Findings& findings) {
    constexpr auto kMark = static_cast<std::int64_t>(kUtf8Mark.size());
    if (beginsWithUtf8Mark(findings.file())) {
        findings.add(map_rules::kByteOrderMark.name, 1, 1, "passed over: a byte-order mark",
                     {{0, kMark, ""}});
    }
}

/// Reports an extension in capitals.
void checkExtension(Findings& findings, const char* extension) {
    const QString written = QFileInfo(findings.file()).suffix();
    if (written != QLatin1String(extension) && written.toLower() == QLatin1String(extension)) {
        findings.add(kExtensionCase.name, "not found: the library opens " +
                                              baseName(withExtension(findings.file(), extension)));
    }
}

void checkKeys(Findings& findings, const std::vector<std::string_view>& missing) {
    if (missing.empty() || findings.hasError()) {
        return;
    }
    std::string names;
    for (const std::string_view key : missing) {
        names += (names.empty() ? "" : ", ") + std::string(key);
    }
    findings.add(kKeysMissing.name, "no " + names + ": kept from the map before, at first 0");
}

void checkColors(Findings& findings) {
    const QString colors = withExtension(findings.file(), "clr");
    if (!QFileInfo::exists(colors)) {
        findings.add(kColorsMissing.name,
                     "no " + baseName(colors) + ": one colour from black, for -9999 to 9999");
    }
}

void checkPart(Findings& findings, const char* extension) {
    const QString part = withExtension(findings.file(), extension);
    if (!QFileInfo::exists(part)) {
        findings.add(kPartMissing.name, "refused: there is no " + baseName(part) + " beside it");
    }
}

/// A file of the folder whose name differs in case only; empty where there is none.
QString otherCase(const QString& file) {
    const QFileInfo wanted(file);
    for (const QString& name : wanted.dir().entryList(QDir::Files)) {
        if (name.compare(wanted.fileName(), Qt::CaseInsensitive) == 0) {
            return name;
        }
    }
    return {};
}

/// The raster that a georeference names.
void checkRasterOf(Findings& findings, const TabFile& tab, const TabCheck& check) {
    constexpr int kBilKind = 1;
    // As it stands in the file: no quote can be in the name, and a backslash is no escape there.
    const auto quoted = [](const std::string& file) { return '"' + file + '"'; };
    const std::string name = quoted(tab.map->rasterFileName);
    if (tab.map->fileKind < 0 || tab.map->fileKind > kBilKind) {
        findings.add("raster-unknown", check.fileLine, 0,
                     "not shown: the library loads ASC and BIL grids, not " + name);
        return;
    }
    if (!QFileInfo(tab.rasterFile).isFile()) {
        const QString other = otherCase(tab.rasterFile);
        findings.add("raster-missing", check.fileLine, 0,
                     "not shown: there is no " + name + " beside it" +
                         (other.isEmpty() ? "" : ", but " + quoted(other.toStdString())));
        return;
    }
    std::optional<CellGrid> grid;
    try {
        grid = gridOf(loadRaster(tab.rasterFile));
    } catch (const InputError&) {  // found where the raster is checked
    }
    if (!grid) {
        return;
    }
    for (std::size_t i = 0; i < tab.points.size(); ++i) {
        const QPointF& pixel = tab.points[i].pixel;
        if (pixel.x() < 0 || pixel.y() < 0 || pixel.x() > grid->columns || pixel.y() > grid->rows) {
            findings.add("point-outside", check.pointLines[i], 0,
                         "Pt " + std::to_string(i + 1) + " lies outside the " +
                             std::to_string(grid->columns) + " x " + std::to_string(grid->rows) +
                             " cells of " + name);
        }
        if (!isPlacedAt(tab.points[i], *grid)) {
            findings.add("place-differs", check.pointLines[i], 0,
                         "shown here: Pt " + std::to_string(i + 1) +
                             " lies more than a cell from where " + name + " has it");
        }
    }
}

}  // namespace

RuleTable ascSetRules() {
    return ascRules().with(kAscRules);
}

RuleTable hdrSetRules() {
    return hdrRules().with(kHdrRules);
}

RuleTable bilSetRules() {
    return bilRules().with(kBilRules);
}

RuleTable clrSetRules() {
    return clrRules().with(kClrRules);
}

RuleTable tabSetRules() {
    return tabRules().with(kTabRules);
}

Findings checkAscSet(const QString& file) {
    if (auto findings = notPlainText(file, ascSetRules())) {
        return std::move(*findings);
    }
    const AscCheck check = checkAsc(file);
    Findings findings(file, ascSetRules());
    findings.add(check.findings);
    checkMark(findings);
    checkExtension(findings, "asc");
    checkKeys(findings, check.missingKeys);
    checkColors(findings);
    return findings;
}

Findings checkHdrSet(const QString& file) {
    if (auto findings = notPlainText(file, hdrSetRules())) {
        return std::move(*findings);
    }
    const HdrCheck check = checkHdr(file);
    Findings findings(file, hdrSetRules());
    findings.add(check.findings);
    checkMark(findings);
    checkExtension(findings, "hdr");
    checkKeys(findings, check.missingKeys);
    checkPart(findings, "bil");
    if (!check.isFloat && !check.findings.hasError()) {
        findings.add("integer-cells", check.pixelTypeLine, 0, kNoCells);
    }
    findings.sort();
    return findings;
}

Findings checkBilSet(const QString& file) {
    requireReadable(file);
    Findings findings(file, bilSetRules());
    checkExtension(findings, "bil");
    checkPart(findings, "hdr");
    const QString headerFile = withExtension(file, "hdr");
    if (QFileInfo::exists(headerFile)) {
        const HdrCheck header = checkHdr(headerFile);
        if (!header.findings.hasError()) {
            findings.add(checkBil(file, header));
        }
    }
    checkColors(findings);
    return findings;
}

Findings checkClrSet(const QString& file) {
    if (auto findings = notPlainText(file, clrSetRules())) {
        return std::move(*findings);
    }
    Findings findings(file, clrSetRules());
    findings.add(checkClr(file));
    checkMark(findings);
    checkExtension(findings, "clr");
    return findings;
}

Findings checkTabSet(const QString& file) {
    if (auto findings = notPlainText(file, tabSetRules())) {
        return std::move(*findings);
    }
    const TabCheck check = checkTab(file);
    Findings findings(file, tabSetRules());
    findings.add(check.findings);
    checkMark(findings);
    if (!findings.hasError()) {
        const TabFile tab = loadTab(file);
        if (tab.units() == MapUnits::Unknown) {
            findings.add("units-missing",
                         "not converted: no Units line follows the control points");
        }
        checkRasterOf(findings, tab, check);
        findings.sort();
    }
    return findings;
}

QStringList filesOfGrid(const QString& file) {
    try {
        return filesOfRaster(file);
    } catch (const InputError&) {  // reported where the file is checked
        return {};
    }
}

QStringList filesOfTab(const QString& file) {
    try {
        return filesOfGrid(loadTab(file).rasterFile);
    } catch (const InputError&) {  // likewise
        return {};
    }
}

}  // namespace rfu
