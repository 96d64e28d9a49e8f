#include "detail/gridHeader.h"

#include <rfUtils/detail/numberPrefix.h>
#include <rfUtils/detail/saturate.h>

#include <algorithm>
#include <iterator>

namespace rfu::detail {

namespace {

struct SizeField {
    std::string_view GridHeaderKeys::*key;
    std::int32_t veltaGEO::*field;
    std::int32_t largest;
    const char* refusal;
};

struct PlaceField {
    std::string_view GridHeaderKeys::*key;
    float veltaGEO::*field;
};

// clang-format off
constexpr SizeField kSizes[] = {
    {&GridHeaderKeys::nCols, &veltaGEO::nCols, kMaxColumns, kTooManyColumns},
    {&GridHeaderKeys::nRows, &veltaGEO::nRows, kMaxRows,    kTooManyRows}};

constexpr PlaceField kPlaces[] = {
    {&GridHeaderKeys::originX,  &veltaGEO::originX},
    {&GridHeaderKeys::originY,  &veltaGEO::originY},
    {&GridHeaderKeys::cellSize, &veltaGEO::cellSize},
    {&GridHeaderKeys::noData,   &veltaGEO::noData}};
// clang-format on

}  // namespace

bool storeGridHeader(veltaGEO& map, const GridHeaderKeys& keys, std::string_view key,
                     std::string_view value) {
    for (const SizeField& size : kSizes) {
        if (key == keys.*size.key) {
            map.*size.field = integerPrefix(value);
            const bool fits = map.*size.field <= size.largest;
            if (!fits) {
                map.setErrMsg(QLatin1String(size.refusal));
            }
            return fits;
        }
    }
    const auto* const place =
        std::find_if(std::begin(kPlaces), std::end(kPlaces),
                     [&keys, key](const PlaceField& field) { return key == keys.*field.key; });
    if (place != std::end(kPlaces)) {
        map.*place->field = toFloat(decimalPrefix(value));
    }
    return true;
}

}  // namespace rfu::detail
