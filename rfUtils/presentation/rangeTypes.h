#pragma once

#include <rfUtils/units/unitTable.h>

#include <QStringView>

/// @file
/// @brief The type codes of rfUtils::makeBoundaryMsg, for programs that offer or check them.
///
/// A code that a table does not have shows limits as given and without a unit.

namespace rfu {

/// How a limit is shown.
enum class LimitText {
    AsGiven,    ///< the number itself; with two decimals if it is a double
    Frequency,  ///< MHz, by rfUtils::makeFrequencyUnit
    Converted,  ///< dBm, by HMath::getdBmToUnit or HMath::getdBmToField
    None,       ///< the whole message is empty, without the braces too
};

/// A type code.
struct RangeType {
    int code;          ///< as makeBoundaryMsg takes it
    LimitText text;    ///< how its limits are shown
    QStringView unit;  ///< behind each limit; the micro sign is U+00B5

    /// @return the unit that limits are converted to; null where they are not converted
    constexpr const Unit* convertedUnit() const noexcept {
        return text == LimitText::Converted ? findUnit(unit) : nullptr;
    }
};

// clang-format off
/// The codes of makeBoundaryMsg(int, int, int).
inline constexpr RangeType kIntegerRangeTypes[] = {
    { 1, LimitText::AsGiven, u"dB"},
    { 4, LimitText::AsGiven, u"\u00B5s"},
    { 6, LimitText::AsGiven, u"Sec"},
    { 7, LimitText::AsGiven, u"ns"},
    { 8, LimitText::AsGiven, u"%"},
    {23, LimitText::None,    u""},
};

/// The codes of makeBoundaryMsg(double, double, int).
inline constexpr RangeType kDoubleRangeTypes[] = {
    { 0, LimitText::Frequency, u""},
    { 1, LimitText::AsGiven,   u"dB"},
    { 2, LimitText::AsGiven,   u"dBm"},
    { 4, LimitText::AsGiven,   u"\u00B5s"},
    { 7, LimitText::AsGiven,   u"ns"},
    { 8, LimitText::AsGiven,   u"%"},
    { 9, LimitText::AsGiven,   u"dBi"},
    {11, LimitText::Converted, u"dBV"},
    {12, LimitText::Converted, u"dBmV"},
    {13, LimitText::Converted, u"dBuV"},
    {14, LimitText::Converted, u"V"},
    {15, LimitText::Converted, u"W"},
    {16, LimitText::Converted, u"dBuV/m"},
    {17, LimitText::Converted, u"dBmV/m"},
    {18, LimitText::Converted, u"dBV/m"},
    {19, LimitText::Converted, u"V/m"},
    {20, LimitText::Converted, u"W/m^2"},
    {21, LimitText::Converted, u"dBm/m^2"},
    {22, LimitText::AsGiven,   u"ppm"},
    {23, LimitText::None,      u""},
};
// clang-format on

/// Looks a type code up.
/// @param types  kIntegerRangeTypes or kDoubleRangeTypes
/// @param code   any
/// @return its row; for a code without one, a row that shows limits as given and without a unit
template <typename Types>
constexpr RangeType rangeType(const Types& types, int code) noexcept {
    for (const RangeType& type : types) {
        if (type.code == code) {
            return type;
        }
    }
    return {code, LimitText::AsGiven, u""};
}

}  // namespace rfu
