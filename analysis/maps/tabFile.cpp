#include "analysis/maps/tabFile.h"

#include <rfUtils/geo/detail/tabLine.h>
#include <QDir>
#include <QFileInfo>
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <initializer_list>
#include <limits>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "analysis/maps/mapLines.h"
#include "analysis/maps/mapRules.h"
#include "analysis/support/fileWatch.h"
#include "analysis/support/inputError.h"
#include "analysis/support/numbers.h"
#include "analysis/support/words.h"

namespace rfu {

namespace {

constexpr std::string_view kPointInfinite = "point-infinite";

constexpr Rule kTabRules[] = {
    map_rules::kLineCut,
    map_rules::kTextAfterNul,
    map_rules::kTokenCut,
    map_rules::kNoNumber,
    {kPointInfinite, Severity::Error,
     "The places of control points are single-precision numbers. One beyond about 3.4e38 becomes "
     "infinite, and the map "
     "lies nowhere.",
     "(1e39,0) (0,0) Label \"Pt 1\"", "Write the place of the point."},
    map_rules::kKeyCase,
    map_rules::kKeyNeedsOneValue,
    map_rules::kKeyUnknown,
    {"type-not-supported", Severity::Error,
     "The loader refuses any file whose Type is not \"RASTER\".", "Type \"NATIVE\"",
     "Register the raster anew in the program that wrote the file; a table of other things is no "
     "georeference."},
    {"raster-not-named", Severity::Error,
     "Without a File line the library does not know whose place this is, and shows no map.",
     "Definition Table\n  Type \"RASTER\"", "Add the name of the raster: File \"terrain.asc\"."},
    {"units-misplaced", Severity::Error,
     "A Units line other than degree converts the control points at once, by the CoordSys line "
     "before it. Points and "
     "CoordSys that follow it are not converted, and a second one converts the points once more.",
     "Units \"m\"\n(500000,0) (0,0) Label \"Pt 1\"",
     "Make Units the last line, and leave one of them."},
    {"coordsys-missing", Severity::Error,
     "A Units line other than degree converts the control points from UTM. The zone follows from "
     "the CoordSys line, "
     "which is missing.",
     "Units \"m\"",
     "Add CoordSys before Units: CoordSys Earth Projection 8, 104, \"m\", 9, 0, 0.9996, 500000, "
     "0."},
    {"not-utm", Severity::Error,
     "Any projected system counts as UTM on WGS 84: projection number, datum, scale factor and "
     "units are not read. "
     "Points of another system are converted to wrong places.",
     "CoordSys Earth Projection 3, 33, \"m\", 3, 46.5, 44, 49, 700000, 6600000",
     "Project the raster to UTM on WGS 84 (gdalwarp -t_srs EPSG:32632 for zone 32 north)."},
    {"point-missing", Severity::Error,
     "The map lies by four control points. One that the file does not name keeps its former place, "
     "at first 0, 0.",
     "three points only", "Add the point: (X,Y) (COLUMN,ROW) Label \"Pt 4\"."},
    {"point-not-read", Severity::Warning,
     "A control point is a line of six words, the last of them \"Pt 1\" to \"Pt 4\" in exactly "
     "this spelling. Others are "
     "ignored, and so are points with decimal commas, which have more words.",
     "(1,2) (0,0) Label \"Pt 5\"", "Leave four points, named Pt 1 to Pt 4, with decimal points."},
    map_rules::kKeyRepeated,
    {"point-repeated", Severity::Warning,
     "A control point stands in the file more than once. The last one counts.",
     "(1,2) (0,0) Label \"Pt 1\"\n(3,4) (0,0) Label \"Pt 1\"",
     "Delete the line that does not hold."}};

/// A value of CoordSys that the loader presumes when it converts the points.
struct UtmValue {
    std::size_t token;
    const char* name;
    bool (*isRight)(const MapToken& token);
    const char* right;
};

bool isOneOf(const MapToken& token, std::initializer_list<double> values) {
    const auto value = parseNumber(token.text);
    return value && std::find(values.begin(), values.end(), *value) != values.end();
}

bool isMeridianOfZone(const MapToken& token) {
    const auto value = parseNumber(token.text);
    return value && std::abs(*value) <= 177.0 && std::remainder(*value - 3.0, 6.0) == 0.0;
}

bool isMetres(const MapToken& token) {
    return token.text == "m";
}

// clang-format off
constexpr UtmValue kUtm[] = {
    {3,  "projection",       [](const MapToken& t) { return isOneOf(t, {8.0}); },         "8"},
    {5,  "units",            isMetres,                                                    "m"},
    {6,  "central meridian", isMeridianOfZone,                                            "-177, -171, ... or 177"},
    {7,  "origin latitude",  [](const MapToken& t) { return isOneOf(t, {0.0}); },         "0"},
    {8,  "scale",            [](const MapToken& t) { return isOneOf(t, {0.9996}); },      "0.9996"},
    {9,  "false easting",    [](const MapToken& t) { return isOneOf(t, {500000.0}); },    "500000"},
    {10, "false northing",   [](const MapToken& t) { return isOneOf(t, {0.0, 1e7}); },    "0 or 10000000"}};
// clang-format on

std::string notUtm(const char* name, const char* right, const MapToken& token) {
    return std::string("the points are converted as UTM, with ") + name + ' ' + right + ", not " +
           rfu::quoted(token.text);
}

/// A key, and how many tokens its line has.
struct GeoreferenceKey {
    std::string_view key;
    std::size_t tokens;
    detail::TabLine::Kind kind;
};

constexpr GeoreferenceKey kGeoreferenceKeys[] = {{"Type", 2, detail::TabLine::Kind::Type},
                                                 {"File", 2, detail::TabLine::Kind::File},
                                                 {"Units", 2, detail::TabLine::Kind::Units},
                                                 {"CoordSys", 11, detail::TabLine::Kind::CoordSys}};

/// Whether a word is a key but for one letter, the order of its letters or what is behind it, whatever their case.
bool isNearKey(std::string_view word, std::string_view key) {
    const QString typed = QString::fromLatin1(word.data(), static_cast<int>(word.size())).toLower();
    const QString known = QString::fromLatin1(key.data(), static_cast<int>(key.size())).toLower();
    return typed.startsWith(known) || editDistance(typed, known) == 1 ||
           std::is_permutation(typed.begin(), typed.end(), known.begin(), known.end());
}

/// The lines of a georeference, in the order in which the loader reads them.
class TabWalk {
public:
    explicit TabWalk(const QString& file)
        : findings_(file, kTabRules), lines_(findings_, detail::kMaxTabLine) {}

    TabCheck run() {
        while (const char* const line = isSupported_ ? lines_.next() : nullptr) {
            if (line[0] == '!') {  // a comment
                continue;
            }
            lines_.checkLength();
            std::string text(line);  // tabLine() changes it
            const detail::TabLine tabLine = detail::tabLine(text.data());
            if (tabLine.kind != detail::TabLine::Kind::Ignored || countsWithoutNul(line)) {
                lines_.checkNul();
            }
            const bool isIgnored = tabLine.kind == detail::TabLine::Kind::Ignored;
            takeLine(tabLine, tokensOf(line, isIgnored ? std::numeric_limits<std::size_t>::max()
                                                       : detail::TabLine::kMaxTokens));
        }
        checkWhole();
        findings_.sort();
        return {std::move(findings_), points_, pointLines_, fileLine_};
    }

private:
    /// Whether the loader would not ignore the last line if its NULs were blanks.
    bool countsWithoutNul(const char* line) const {
        std::string text(line, lines_.lineEnd());
        std::replace(text.begin(), text.end(), '\0', ' ');
        return detail::tabLine(text.data()).kind != detail::TabLine::Kind::Ignored;
    }

    void takeLine(const detail::TabLine& line, const std::vector<MapToken>& tokens) {
        kinds_.insert(line.kind);
        switch (line.kind) {
            case detail::TabLine::Kind::Type:
                takeType(tokens[1]);
                break;
            case detail::TabLine::Kind::File:
                if (tokens[1].raw.isCut()) {
                    lines_.reportCut(tokens[1].raw, rfu::quoted(tokens[1].text));
                }
                reportRepeated(tokens[0], fileLine_);
                fileLine_ = lines_.number();
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
                checkIgnored(tokens);
                break;
        }
    }

    /// Whether a line has the word or the name of a control point, which may have grown together with a number.
    static bool isMeantAsPoint(const std::vector<MapToken>& tokens) {
        constexpr std::string_view kName = "Pt ";
        return std::any_of(tokens.begin(), tokens.end(),
                           [](const MapToken& token) { return isSameWord(token.text, "Label"); }) ||
               (!tokens.empty() &&
                isSameWord(std::string_view(tokens.back().text).substr(0, kName.size()), kName));
    }

    /// Reports a line that is ignored for the spelling of its key, or for its number of values. Of keys that are none,
    /// files have many: one that is nearly another is reported at the end where the other one stands nowhere.
    void checkIgnored(const std::vector<MapToken>& tokens) {
        if (isMeantAsPoint(tokens)) {
            lines_.report(
                "point-not-read", tokens[0].raw.begin,
                "not read: a control point is (X,Y) (COLUMN,ROW) Label \"Pt 1\", to \"Pt 4\"");
            return;
        }
        for (const GeoreferenceKey& known : kGeoreferenceKeys) {
            const std::string_view key = known.key;
            if (tokens.empty() || !isSameWord(tokens[0].text, key)) {
                if (tokens.size() == known.tokens && isNearKey(tokens[0].text, key) &&
                    nearKeys_.size() < Findings::kMaxKept) {
                    nearKeys_.push_back({lines_.number(), lines_.columnOf(tokens[0].raw.begin),
                                         tokens[0].text, known});
                }
                continue;
            }
            if (tokens[0].text != key) {
                lines_.report("key-case", tokens[0].raw.begin,
                              tokens[0].text + " is not read: write " + std::string(key));
            } else if (known.kind == detail::TabLine::Kind::CoordSys) {
                // Its number of values depends on the system, and may be right for another.
                ignoredCoordSys_ = "; line " + std::to_string(lines_.number()) +
                                   " is not read as one: it has " + std::to_string(tokens.size()) +
                                   " words, not " + std::to_string(known.tokens);
            } else {
                lines_.report("key-needs-one-value", tokens[0].raw.begin,
                              tokens[0].text + " is not read: the line is a key and a value");
            }
        }
    }

    /// @param line in which the key has stood before; 0 for none
    void reportRepeated(const MapToken& key, long long line) {
        if (line != 0) {
            lines_.report("key-repeated", key.raw.begin,
                          key.text + " stands in line " + std::to_string(line) +
                              " already; the last one counts");
        }
    }

    void takeType(const MapToken& type) {
        isSupported_ = type.text == "RASTER";
        if (!isSupported_) {
            lines_.report("type-not-supported", type.raw.begin,
                          "File not supported: the type is " + rfu::quoted(type.text) +
                              ", and only \"RASTER\" is read" +
                              (isSameWord(type.text, "RASTER") ? ": write \"RASTER\"" : ""));
        }
    }

    void takeUnits(const MapToken& unit) {
        if (convertingLine_ != 0) {
            reportMisplacedUnits();
        } else if (unit.text != "degree") {
            convertingLine_ = lines_.number();
            if (!isMetres(unit)) {
                lines_.report("not-utm", unit.raw.begin, notUtm("units", "m", unit));
            }
            for (const NotUtm& value : notUtm_) {
                findings_.add("not-utm", coordSysLine_, value.column, value.text);
            }
            if (coordSysLine_ == 0) {
                lines_.report("coordsys-missing", nullptr,
                              "Units converts the control points by a CoordSys line of a "
                              "transverse Mercator projection, and none stands before it" +
                                  ignoredCoordSys_);
            }
        }
    }

    void takeCoordSys(const std::vector<MapToken>& tokens) {
        reportMisplacedUnits();
        reportRepeated(tokens[0], coordSysLine_);
        coordSysLine_ = lines_.number();
        notUtm_.clear();
        for (const UtmValue& value : kUtm) {
            const MapToken& token = tokens[value.token];
            if (!value.isRight(token)) {
                notUtm_.push_back(
                    {lines_.columnOf(token.raw.begin), notUtm(value.name, value.right, token)});
            }
        }
        for (const std::size_t number : {6U, 7U, 9U, 10U}) {
            lines_.checkSingle(tokens[number].raw, kPointInfinite);
        }
    }

    void takePoint(std::size_t index, const std::vector<MapToken>& tokens) {
        reportMisplacedUnits();
        pointLines_[index] = lines_.number();
        if (std::exchange(hasPoint_[index], true)) {
            lines_.report("point-repeated", tokens.back().raw.begin,
                          tokens.back().text + " is given once more; the last one counts");
        }
        points_[index].x = lines_.checkSingle(tokens[0].raw, kPointInfinite);
        points_[index].y = lines_.checkSingle(tokens[1].raw, kPointInfinite);
        points_[index].pixel = {lines_.checkNumber(tokens[2].raw, kPointInfinite),
                                lines_.checkNumber(tokens[3].raw, kPointInfinite)};
    }

    /// Reports lines that the conversion of the points needs and that come only after it.
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
        if (fileLine_ == 0) {
            findings_.add("raster-not-named", "names no raster file");
        }
        for (const NearKey& near : nearKeys_) {
            if (kinds_.count(near.known.kind) == 0) {
                findings_.add(map_rules::kKeyUnknown.name, near.line, near.column,
                              rfu::quoted(near.word) + " is not read: did you mean " +
                                  std::string(near.known.key) + '?');
            }
        }
    }

    /// A word that is nearly a key.
    struct NearKey {
        long long line;
        long long column;
        std::string word;
        GeoreferenceKey known;
    };

    struct NotUtm {
        long long column;
        std::string text;
    };

    Findings findings_;
    MapLines lines_;
    std::array<PointAsRead, 4> points_;
    std::array<bool, 4> hasPoint_{};
    bool isSupported_ = true;
    long long fileLine_ = 0;  // that names the raster
    std::array<long long, 4> pointLines_{};
    bool isMisplacedReported_ = false;
    long long coordSysLine_ = 0;
    std::string ignoredCoordSys_;            // what is said of the last one that is not read
    std::vector<NotUtm> notUtm_;             // in that line
    std::set<detail::TabLine::Kind> kinds_;  // of the lines so far
    std::vector<NearKey> nearKeys_;
    long long convertingLine_ = 0;  // of the units that make the loader convert the points
};

}  // namespace

MapUnits TabFile::units() const {
    constexpr int kDegree = 1;
    constexpr int kConverted = 2;
    return map->unitKind == kDegree      ? MapUnits::Degrees
           : map->unitKind == kConverted ? MapUnits::Utm
                                         : MapUnits::Unknown;
}

Projection TabFile::projection() const {
    return {units(), map->utmZone, map->southHemisphere != 0};
}

RuleTable tabRules() {
    return kTabRules;
}

TabCheck checkTab(const QString& file) {
    return TabWalk(file).run();
}

TabFile loadTab(const QString& file) {
    const FileWatch watch({file});  // the library opens the name itself
    const TabCheck check = checkTab(file);
    check.findings.throwFirstError();
    TabFile tab;
    tab.map = std::make_unique<veltaGEO>();
    const bool isLoaded = tab.map->loadTabFile(file);
    watch.requireUnchanged();
    if (!isLoaded) {
        throw InputError(
            file, tab.map->errMsg.isEmpty() ? "cannot be read" : tab.map->errMsg.toStdString());
    }
    tab.points = check.points;
    tab.rasterFile = QFileInfo(file).dir().filePath(QString::fromUtf8(tab.map->rasterFileName));
    return tab;
}

}  // namespace rfu
