#include "analysis/maps/tabFile.h"

#include <rfUtils/geo/detail/tabLine.h>
#include <QDir>
#include <QFileInfo>
#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "analysis/maps/mapLines.h"
#include "analysis/support/inputError.h"

namespace rfu {

namespace {

constexpr Rule kRules[] = {
    {"line-cut", Severity::Error},         {"text-after-nul", Severity::Error},
    {"token-cut", Severity::Error},        {"no-number", Severity::Error},
    {"number-infinite", Severity::Error},  {"type-not-supported", Severity::Error},
    {"raster-not-named", Severity::Error}, {"units-misplaced", Severity::Error},
    {"coordsys-missing", Severity::Error}, {"point-missing", Severity::Error},
    {"point-repeated", Severity::Warning}};

/// The lines of a georeference, in the order in which the loader reads them.
class Walk {
public:
    explicit Walk(const QString& file)
        : findings_(file, kRules), lines_(findings_, detail::kMaxTabLine) {}

    TabCheck run() {
        while (const char* const line = isSupported_ ? lines_.next() : nullptr) {
            if (line[0] != '!') {  // a comment
                lines_.checkLength();
            }
            std::string text(line);  // in which tabLine() writes
            const detail::TabLine tabLine = detail::tabLine(text.data());
            if (tabLine.kind != detail::TabLine::Kind::Ignored || countsWithoutNul(line)) {
                lines_.checkNul();
            }
            takeLine(tabLine, tokensOf(line, detail::TabLine::kMaxTokens));
        }
        checkWhole();
        findings_.sort();
        return {std::move(findings_), points_};
    }

private:
    /// Whether the loader would not ignore the last line if its NULs were blanks.
    bool countsWithoutNul(const char* line) const {
        std::string text(line, lines_.lineEnd());
        std::replace(text.begin(), text.end(), '\0', ' ');
        return detail::tabLine(text.data()).kind != detail::TabLine::Kind::Ignored;
    }

    void takeLine(const detail::TabLine& line, const std::vector<MapToken>& tokens) {
        switch (line.kind) {
            case detail::TabLine::Kind::Type:
                takeType(tokens[1]);
                break;
            case detail::TabLine::Kind::File:
                lines_.checkLength(tokens[1].raw);
                namesRaster_ = true;
                break;
            case detail::TabLine::Kind::Units:
                takeUnits(tokens[1]);
                break;
            case detail::TabLine::Kind::CoordSys:
                takeCoordSys(tokens);
                break;
            case detail::TabLine::Kind::Point:
                takePoint(line.point, tokens);
                break;
            case detail::TabLine::Kind::Ignored:
                break;
        }
    }

    void takeType(const MapToken& type) {
        isSupported_ = type.text == "RASTER";
        if (!isSupported_) {
            lines_.report("type-not-supported", type.raw.begin, "File not supported");
        }
    }

    void takeUnits(const MapToken& unit) {
        if (convertingLine_ != 0) {
            reportMisplacedUnits();
        } else if (unit.text != "degree") {
            convertingLine_ = lines_.number();
            if (coordSysLine_ == 0) {
                lines_.report("coordsys-missing", nullptr,
                              "Units converts the control points by a CoordSys line of a "
                              "transverse Mercator projection, and none stands before it");
            }
        }
    }

    void takeCoordSys(const std::vector<MapToken>& tokens) {
        reportMisplacedUnits();
        coordSysLine_ = lines_.number();
        for (const std::size_t number : {6U, 7U, 9U, 10U}) {
            lines_.checkSingle(tokens[number].raw);
        }
    }

    void takePoint(std::size_t index, const std::vector<MapToken>& tokens) {
        reportMisplacedUnits();
        if (std::exchange(hasPoint_[index], true)) {
            lines_.report("point-repeated", tokens.back().raw.begin,
                          tokens.back().text + " is given once more; the last one counts");
        }
        points_[index].x = lines_.checkSingle(tokens[0].raw);
        points_[index].y = lines_.checkSingle(tokens[1].raw);
        points_[index].pixel = {lines_.checkNumber(tokens[2].raw),
                                lines_.checkNumber(tokens[3].raw)};
    }

    /// Once the points are converted, nothing may come that the conversion would need.
    void reportMisplacedUnits() {
        if (convertingLine_ != 0 && !std::exchange(isMisplacedReported_, true)) {
            findings_.add("units-misplaced", convertingLine_, 0,
                          "Units converts the control points; it has to follow them and "
                          "CoordSys, and to stand there once");
        }
    }

    void checkWhole() {
        if (!isSupported_) {
            return;
        }
        for (std::size_t i = 0; i < hasPoint_.size(); ++i) {
            if (!hasPoint_[i]) {
                findings_.add("point-missing",
                              "the control point Pt " + std::to_string(i + 1) + " is missing");
            }
        }
        if (!namesRaster_) {
            findings_.add("raster-not-named", "names no raster file");
        }
    }

    Findings findings_;
    MapLines lines_;
    std::array<PointAsRead, 4> points_;
    std::array<bool, 4> hasPoint_{};
    bool isSupported_ = true;
    bool namesRaster_ = false;
    bool isMisplacedReported_ = false;
    long long coordSysLine_ = 0;
    long long convertingLine_ = 0;  // of the units that make the loader convert the points
};

}  // namespace

TabCheck checkTab(const QString& file) {
    return Walk(file).run();
}

TabFile loadTab(const QString& file) {
    const TabCheck check = checkTab(file);
    check.findings.throwFirstError();
    TabFile tab;
    tab.map = std::make_unique<veltaGEO>();
    if (!tab.map->loadTabFile(file)) {
        throw InputError(
            file, tab.map->errMsg.isEmpty() ? "cannot be read" : tab.map->errMsg.toStdString());
    }
    tab.points = check.points;
    tab.rasterFile = QFileInfo(file).dir().filePath(QString::fromUtf8(tab.map->rasterFileName));
    return tab;
}

}  // namespace rfu
