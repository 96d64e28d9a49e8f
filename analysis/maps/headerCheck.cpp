#include "analysis/maps/headerCheck.h"

#include <rfUtils/detail/numberPrefix.h>
#include <rfUtils/detail/saturate.h>
#include <algorithm>
#include <iterator>
#include <string>

#include "analysis/support/inputError.h"
#include "analysis/support/numbers.h"
#include "analysis/support/singles.h"
#include "analysis/support/words.h"

namespace rfu {

bool HeaderCheck::take(const MapToken& key, const MapToken& value) {
    for (const detail::SizeKey& size : format_.sizes) {
        if (key.text == size.key) {
            reportRepeated(size.key, key.raw.begin);
            takeSize(size, value);
            return true;
        }
    }
    for (const detail::PlaceKey& place : format_.places) {
        if (key.text == place.key) {
            reportRepeated(place.key, key.raw.begin);
            takePlace(place, value);
            return true;
        }
    }
    return false;
}

void HeaderCheck::takeSize(const detail::SizeKey& size, const MapToken& value) {
    const std::int32_t asRead = detail::integerPrefix(value.text);
    const bool isColumns = size.field == &veltaGEO::nCols;
    (isColumns ? columns_ : rows_) = asRead;
    isRefused_ = asRead > size.limit;
    if (isRefused_) {
        lines_.report("size-refused", value.raw.begin,
                      "too many " + std::string(isColumns ? "columns" : "rows") + ": " +
                          value.text + ", where a map has " + std::to_string(size.limit) +
                          " at most; gdal_translate -srcwin cuts a part out");
        return;
    }
    lines_.checkInteger(value);
}

void HeaderCheck::takePlace(const detail::PlaceKey& place, const MapToken& value) {
    if (!isInfinityOrNan(writtenText(value.raw))) {
        lines_.checkSingle(value.raw);
    }
    if (place.field == &veltaGEO::cellSize) {
        cellSize_ = detail::toFloat(detail::decimalPrefix(value.text));
        const auto written = parseNumberOfAnySize(writtenText(value.raw));
        if (written && *written <= 0.0) {
            lines_.report("cell-size", value.raw.begin,
                          "kept as written: a cell of size " + textOf(cellSize_));
        }
    } else if (place.field == &veltaGEO::noData) {
        hasNoData_ = true;
    }
}

void HeaderCheck::reportRepeated(std::string_view key, const char* at) {
    const auto [known, isFirst] = lineOfKey_.emplace(key, lines_.number());
    if (!isFirst) {
        lines_.report("key-repeated", at,
                      std::string(key) + " stands in line " + std::to_string(known->second) +
                          " already; the last one counts");
    }
}

bool HeaderCheck::isKey(std::string_view word) const {
    const auto isIt = [word](const auto& known) { return isSameWord(known.key, word); };
    return std::any_of(std::begin(format_.sizes), std::end(format_.sizes), isIt) ||
           std::any_of(std::begin(format_.places), std::end(format_.places), isIt);
}

void HeaderCheck::reportIgnored(const MapToken& key, bool isMisspelt) {
    if (isMisspelt) {
        lines_.report("key-case", key.raw.begin,
                      key.text + " is not read: write " + spelled(key.text) + ", " + spelling_);
    } else {
        lines_.report("key-unknown", key.raw.begin,
                      rfu::quoted(key.text) + " is not read" + nearKey(key.text));
    }
}

std::string HeaderCheck::nearKey(const std::string& word) const {
    std::vector<QString> keys;
    const auto add = [&keys](std::string_view key) {
        keys.push_back(QString::fromUtf8(key.data(), static_cast<int>(key.size())));
    };
    for (const detail::SizeKey& size : format_.sizes) {
        add(size.key);
    }
    for (const detail::PlaceKey& place : format_.places) {
        add(place.key);
    }
    const int near = nearMiss(QString::fromUtf8(word.data(), static_cast<int>(word.size())), keys);
    return near < 0 ? std::string()
                    : ": did you mean " + keys[static_cast<std::size_t>(near)].toStdString() + '?';
}

std::string HeaderCheck::spelled(std::string_view word) const {
    const auto isIt = [word](const auto& known) { return isSameWord(known.key, word); };
    const auto* const size = std::find_if(std::begin(format_.sizes), std::end(format_.sizes), isIt);
    const auto* const place =
        std::find_if(std::begin(format_.places), std::end(format_.places), isIt);
    return std::string(size != std::end(format_.sizes)     ? size->key
                       : place != std::end(format_.places) ? place->key
                                                           : detail::kPixelTypeKey);
}

std::vector<std::string_view> HeaderCheck::missingPlaces() const {
    std::vector<std::string_view> missing;
    for (const detail::PlaceKey& place : format_.places) {
        if (lineOfKey_.count(place.key) == 0) {
            missing.push_back(place.key);
        }
    }
    return missing;
}

void HeaderCheck::checkSize(Findings& findings) const {
    if (isRefused_ || (columns_ > 0 && rows_ > 0)) {
        return;
    }
    std::string missing;
    for (const detail::SizeKey& size : format_.sizes) {
        if (lineOfKey_.count(size.key) == 0) {
            missing += (missing.empty() ? "; no line gives " : " or ") + std::string(size.key);
        }
    }
    findings.add("size-unusable", "shows nothing: the map has " + std::to_string(columns_) +
                                      " columns and " + std::to_string(rows_) + " rows" + missing);
}

}  // namespace rfu
