#pragma once

#include <rfUtils/units/unitTable.h>

#include <QStringView>

namespace rfu {

/// A unit that the instrument does not have, and how its values follow from those of one that it
/// shows and reads.
struct RelatedUnit {
    QStringView name;  // micro is u
    QStringView known;
    const char* relation;
};

// clang-format off
/// Voltages, currents and powers are those in 50 ohm, magnetic fields those in free space.
inline constexpr RelatedUnit kRelatedUnits[] = {
    {u"dBW",    u"dBm",   "dBW = dBm - 30"},
    {u"dBkW",   u"dBm",   "dBkW = dBm - 60"},
    {u"dBuW",   u"dBm",   "dBuW = dBm + 30"},
    {u"dBpW",   u"dBm",   "dBpW = dBm + 90"},
    {u"dBf",    u"dBm",   "dBf = dBm + 120"},
    {u"dBm/Hz", u"dBm",   "dBm = dBm/Hz + 10 lg of the bandwidth in Hz"},
    {u"dBA",    u"dBV",   "dBA = dBV - 33.98 in 50 ohm"},
    {u"dBmA",   u"dBmV",  "dBmA = dBmV - 33.98 in 50 ohm"},
    {u"dBuA",   u"dBuV",  "dBuA = dBuV - 33.98 in 50 ohm"},
    {u"kW",     u"W",     "1 kW = 1000 W"},
    {u"MW",     u"W",     "1 MW = 1000000 W"},
    {u"kV",     u"V",     "1 kV = 1000 V"},
    {u"Vrms",   u"V",     "1 Vrms = 1 V"},
    {u"Vp",     u"V",     "1 Vp of a sine = 0.7071 V"},
    {u"Vpp",    u"V",     "1 Vpp of a sine = 0.3536 V"},
    {u"A",      u"V",     "1 A = 50 V in 50 ohm"},
    {u"mA",     u"V",     "1 mA = 0.05 V in 50 ohm"},
    {u"uA",     u"V",     "1 uA = 0.00005 V in 50 ohm"},
    {u"dBmA/m", u"dBA/m", "dBmA/m = dBA/m + 60"},
    {u"dBuA/m", u"dBA/m", "dBuA/m = dBA/m + 120"},
    {u"dBpT",   u"dBA/m", "dBpT = dBA/m + 121.98"},
    {u"uT",     u"A/m",   "1 uT = 0.7958 A/m"},
    {u"nT",     u"A/m",   "1 nT = 0.0007958 A/m"}};
// clang-format on

}  // namespace rfu
