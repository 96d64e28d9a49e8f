#include <rfUtils/detail/fixedText.h>
#include <rfUtils/presentation/rfUtils.h>

#include <algorithm>
#include <iterator>

namespace {

constexpr int kEmptyMessage = 23;

enum class Shown { AsGiven, Frequency, Level, Field };

struct BoundaryForm {
    int type;
    Shown shown;
    const char* unit;
};

// Types that have no row are shown as given and without a unit.

// clang-format off
constexpr BoundaryForm kIntegerForms[] = {
    { 1, Shown::AsGiven,   "dB"},
    { 4, Shown::AsGiven,   "\u00b5s"},
    { 6, Shown::AsGiven,   "Sec"},
    { 7, Shown::AsGiven,   "ns"},
    { 8, Shown::AsGiven,   "%"}};

constexpr BoundaryForm kDoubleForms[] = {
    { 0, Shown::Frequency, ""},
    { 1, Shown::AsGiven,   "dB"},
    { 2, Shown::AsGiven,   "dBm"},
    { 4, Shown::AsGiven,   "\u00b5s"},
    { 7, Shown::AsGiven,   "ns"},
    { 8, Shown::AsGiven,   "%"},
    { 9, Shown::AsGiven,   "dBi"},
    {11, Shown::Level,     "dBV"},
    {12, Shown::Level,     "dBmV"},
    {13, Shown::Level,     "dBuV"},
    {14, Shown::Level,     "V"},
    {15, Shown::Level,     "W"},
    {16, Shown::Field,     "dBuV/m"},
    {17, Shown::Field,     "dBmV/m"},
    {18, Shown::Field,     "dBV/m"},
    {19, Shown::Field,     "V/m"},
    {20, Shown::Field,     "W/m^2"},
    {21, Shown::Field,     "dBm/m^2"},
    {22, Shown::AsGiven,   "ppm"}};
// clang-format on

template <typename Forms>
BoundaryForm formOf(const Forms& forms, int type) {
    const auto* const form =
        std::find_if(std::begin(forms), std::end(forms),
                     [type](const BoundaryForm& row) { return row.type == type; });
    return form != std::end(forms) ? *form : BoundaryForm{type, Shown::AsGiven, ""};
}

std::string asGiven(std::string number, const char* unit) {
    return (number += ' ') += unit;
}

std::string limitText(rfUtils& utils, const BoundaryForm& form, double limit) {
    switch (form.shown) {
        case Shown::Frequency:
            return utils.makeFrequencyUnit(limit);
        case Shown::Level:
            return utils.hMath.getdBmToUnit(QLatin1String(form.unit), limit, true).toStdString();
        case Shown::Field:
            return utils.hMath
                .getdBmToField(QLatin1String(form.unit), limit, utils.fCenter, utils.fGain, true)
                .toStdString();
        case Shown::AsGiven:
            break;
    }
    return asGiven(std::string(rfu::detail::FixedText(limit, 2).view()), form.unit);
}

std::string message(const std::string& minText, const std::string& maxText) {
    return " {Min: " + minText + ", Max: " + maxText + "} ";
}

}  // namespace

std::string rfUtils::makeBoundaryMsg(int max, int min, int type) {
    if (type == kEmptyMessage) {
        return {};
    }
    const char* const unit = formOf(kIntegerForms, type).unit;
    return message(asGiven(std::to_string(min), unit), asGiven(std::to_string(max), unit));
}

std::string rfUtils::makeBoundaryMsg(double max, double min, int type) {
    if (type == kEmptyMessage) {
        return {};
    }
    const BoundaryForm form = formOf(kDoubleForms, type);
    // In this order: hMath keeps the unit of the limit that is converted last.
    const std::string minText = limitText(*this, form, min);
    const std::string maxText = limitText(*this, form, max);
    return message(minText, maxText);
}
