#include "analysis/plots/palette.h"

#include <algorithm>
#include <iterator>

namespace rfu {

const Palette* findPalette(std::string_view name) {
    const auto found = std::find_if(std::begin(kPalettes), std::end(kPalettes),
                                    [&](const Palette& palette) { return name == palette.name; });
    return found == std::end(kPalettes) ? nullptr : found;
}

}  // namespace rfu
