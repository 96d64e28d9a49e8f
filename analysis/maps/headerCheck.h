#pragma once

#include <rfUtils/geo/detail/gridHeader.h>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/maps/mapLines.h"

namespace rfu {

/// Follows the header lines of a grid as its loader does, and reports what is not read as written.
class HeaderCheck {
public:
    /// @param spelling how the format's keys are spelled, for messages
    HeaderCheck(MapLines& lines, const detail::GridHeader& format, const char* spelling)
        : lines_(lines), format_(format), spelling_(spelling) {}

    /// Takes a line of two tokens.
    /// @return false for a key that the format does not have
    bool take(const MapToken& key, const MapToken& value);

    /// Whether a word is one of the format's keys in any case.
    bool isKey(std::string_view word) const;

    /// Reports a key that a line before has given; take() does so itself.
    void reportRepeated(std::string_view key, const char* at);

    /// Reports a key that the loader ignores, because of its case or for good.
    void reportIgnored(const MapToken& key, bool isMisspelt);

    /// The keys of place and no-data that no line has given.
    std::vector<std::string_view> missingPlaces() const;

    /// Reports sizes that make no grid.
    void checkSize(Findings& findings) const;

    /// Whether the loader has refused a size, and read no further.
    bool isRefused() const { return isRefused_; }
    std::int32_t columns() const { return columns_; }
    std::int32_t rows() const { return rows_; }
    float cellSize() const { return cellSize_; }
    bool hasNoData() const { return hasNoData_; }

private:
    void takeSize(const detail::SizeKey& size, const MapToken& value);
    void takePlace(const detail::PlaceKey& place, const MapToken& value);
    std::string nearKey(const std::string& word) const;
    std::string spelled(std::string_view word) const;

    MapLines& lines_;
    const detail::GridHeader& format_;
    const char* spelling_;
    std::map<std::string_view, long long> lineOfKey_;
    bool isRefused_ = false;
    std::int32_t columns_ = 0;
    std::int32_t rows_ = 0;
    float cellSize_ = 0.0F;
    bool hasNoData_ = false;
};

}  // namespace rfu
