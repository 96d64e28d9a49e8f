#include "analysis/maps/tabFile.h"

#include <QDir>
#include <QFileInfo>
#include <string>

#include "analysis/support/files.h"
#include "analysis/support/inputError.h"
#include "analysis/support/lineReader.h"
#include "analysis/support/numbers.h"

namespace rfu {

namespace {

constexpr int kPointTokens = 6;  // x, y, column, row, "Label", "Pt n"
constexpr int kCoordSysTokens = 11;
constexpr int kUnitsTokens = 2;

double leadingNumber(const char* token) {
    const auto quantity = splitValue(token);
    return quantity ? quantity->value : 0.0;
}

/// Whether the points are converted by what the library has read so far, and from that alone.
class Conversion {
public:
    void take(const stPaser& tokens, const LineReader& lines) {
        const std::string_view key = tokens.token[0];
        if (tokens.count == kCoordSysTokens && key == "CoordSys") {
            requireNotYet(lines);
            hasCoordSys_ = true;
        } else if (tokens.count == kUnitsTokens && key == "Units" &&
                   std::string_view(tokens.token[1]) != "degree") {
            requireNotYet(lines);
            if (!hasCoordSys_) {
                throw InputError(lines.file(), lines.number(),
                                 "Units converts the control points by a CoordSys line of a "
                                 "transverse Mercator projection, and none stands before it");
            }
            unitsLine_ = lines.number();
        }
    }

    /// Once converted, nothing may come that the conversion would need.
    void requireNotYet(const LineReader& lines) const {
        if (unitsLine_ != 0) {
            throw InputError(lines.file(), unitsLine_,
                             "Units converts the control points; it has to follow them and "
                             "CoordSys, and to stand there once");
        }
    }

private:
    bool hasCoordSys_ = false;
    long long unitsLine_ = 0;
};

/// The library converts points as soon as it reads the units and does not keep their pixels, so
/// that their lines are read here once more, split into tokens by the library.
std::array<PointAsRead, 4> readPoints(const veltaGEO& tokenizer, const QString& file) {
    std::array<PointAsRead, 4> points;
    Conversion conversion;
    const auto tokens = std::make_unique<stPaser>();
    LineReader lines(file);
    for (std::string_view line; lines.next(line);) {
        if (!line.empty() && line.front() == '!') {
            continue;
        }
        tokenizer.makeToken(tokens.get(), std::string(line).c_str());
        conversion.take(*tokens, lines);
        if (tokens->count != kPointTokens) {
            continue;
        }
        for (std::size_t i = 0; i < points.size(); ++i) {
            if (tokens->token[kPointTokens - 1] == "Pt " + std::to_string(i + 1)) {
                conversion.requireNotYet(lines);
                points[i].found = true;
                points[i].x = static_cast<float>(leadingNumber(tokens->token[0]));
                points[i].y = static_cast<float>(leadingNumber(tokens->token[1]));
                points[i].pixel = {leadingNumber(tokens->token[2]),
                                   leadingNumber(tokens->token[3])};
            }
        }
    }
    return points;
}

}  // namespace

TabFile loadTab(const QString& file) {
    requireReadable(file);
    TabFile tab;
    tab.map = std::make_unique<veltaGEO>();
    if (!tab.map->loadTabFile(file)) {
        throw InputError(
            file, tab.map->errMsg.isEmpty() ? "cannot be read" : tab.map->errMsg.toStdString());
    }
    tab.points = readPoints(*tab.map, file);
    for (std::size_t i = 0; i < tab.points.size(); ++i) {
        if (!tab.points[i].found) {
            throw InputError(file, "the control point Pt " + std::to_string(i + 1) + " is missing");
        }
    }
    if (tab.map->rasterFileName[0] == '\0') {
        throw InputError(file, "names no raster file");
    }
    tab.rasterFile = QFileInfo(file).dir().filePath(QString::fromUtf8(tab.map->rasterFileName));
    return tab;
}

}  // namespace rfu
