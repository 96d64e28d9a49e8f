#include "analysis/units/prefixMeaning.h"

#include "analysis/support/inputError.h"

namespace rfu {

namespace {

constexpr char kVoltsUnderOneLabel[] =
    "above 100 V the instrument shows kilovolts under the label V";
constexpr char kWattsUnderOneLabel[] =
    "from 1 kW the instrument shows kilowatts, from 1 MW megawatts, under the label W";

}  // namespace

std::string prefixMeaning(const LevelPresenter& presenter, double dBm, const std::string& text) {
    const std::string prefix = presenter.prefixLeftOut(dBm, text);
    if (prefix.empty()) {
        return {};
    }
    std::string meant = text;
    meant.insert(meant.size() - 1, prefix);
    return rfu::quoted(text) + " means " + meant + ": " +
           (presenter.unitName() == "V" ? kVoltsUnderOneLabel : kWattsUnderOneLabel);
}

}  // namespace rfu
