#pragma once

#include <QRgb>
#include <string_view>

#include "analysis/plots/paletteTables.h"

namespace rfu {

/// Colours for levels from the lowest to the highest.
struct Palette {
    const char* name;
    const PaletteTable& table;
    bool isUniform;  // equal steps of the level look equally large

    static constexpr int kEntries = 256;

    QRgb color(int entry) const { return 0xff000000U | table[entry]; }
};

inline constexpr Palette kPalettes[] = {{"viridis", kViridisTable, true},
                                        {"magma", kMagmaTable, true},
                                        {"cividis", kCividisTable, true},
                                        {"grey", kGreyTable, true},
                                        {"turbo", kTurboTable, false}};

/// Null where there is none of that name.
const Palette* findPalette(std::string_view name);

}  // namespace rfu
