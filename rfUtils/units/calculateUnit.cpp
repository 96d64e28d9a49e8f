#include <rfUtils/units/calculateUnit.h>

#include <rfUtils/detail/saturate.h>
#include <rfUtils/units/detail/decibel.h>
#include <rfUtils/units/unitTable.h>

#include <cstddef>
#include <iterator>

using rfu::detail::amplitudeRatio;
using rfu::detail::antennaCorrection;
using rfu::detail::decibelOfAmplitude;
using rfu::detail::decibelOfPower;
using rfu::detail::powerRatio;
using rfu::detail::toFloat;

namespace {

/// P is the level in dBm, K the antenna correction.
enum class FromDbm {
    Unchanged,       ///< P
    Sum,             ///< P + offset
    Amplitude,       ///< 10^((P + offset)/20) factor
    Power,           ///< 10^((P + offset)/10) factor
    FieldSum,        ///< P + offset + K
    FieldAmplitude,  ///< 10^((P + offset + K)/20) factor
    FieldPower,      ///< 10^((P + offset + K)/10) factor
    FieldPowerSum,   ///< 10 lg(10^((P + offset + K)/10) factor) + 30
};

/// v is the value in the scale.
enum class ToDbm {
    Unchanged,       ///< v
    Sum,             ///< v + offset
    Amplitude,       ///< 20 lg(v factor) + offset
    FieldSum,        ///< v + offset - K
    FieldAmplitude,  ///< 20 lg(v factor) + offset - K
    FieldPower,      ///< 10 lg(v factor) + offset - K
    Nothing,         ///< the result stays untouched
};

struct Scale {
    struct Forward {
        FromDbm rule;
        double offset{};
        double factor = 1.0;
    };
    struct Backward {
        ToDbm rule;
        double offset{};
        double factor = 1.0;
    };

    Forward fromDbm;
    Backward toDbm;
};

/// 13 + 10 lg(120 pi) - 30, which is 8.7633111874175868. The number is taken as it stands: its last
/// digit is part of the results.
constexpr double kDbmOfZeroDbmPerM2 = 8.763311187417589;

// clang-format off
constexpr Scale kScales[] = {
    /*  0 dBm      */ {{FromDbm::Unchanged},                             {ToDbm::Unchanged}},
    /*  1 dBV      */ {{FromDbm::Sum, -rfu::kDbmOfZeroDbv},              {ToDbm::Sum, rfu::kDbmOfZeroDbv}},
    /*  2 dBmV     */ {{FromDbm::Sum, rfu::kDbmvOfZeroDbm},              {ToDbm::Sum, -rfu::kDbmvOfZeroDbm}},
    /*  3 dBuV     */ {{FromDbm::Sum, rfu::kDbuvOfZeroDbm},              {ToDbm::Sum, -rfu::kDbuvOfZeroDbm}},
    /*  4 V        */ {{FromDbm::Amplitude, rfu::kDbmvOfZeroDbm, 0.001}, {ToDbm::Amplitude, -rfu::kDbmvOfZeroDbm, 1000.0}},
    // Watts come back through the volt formula: not the inverse of the way out, and kept so.
    /*  5 W        */ {{FromDbm::Power, -rfu::kDbmOfOneWatt},            {ToDbm::Amplitude, -rfu::kDbmvOfZeroDbm, 1000.0}},
    /*  6 dBuV/m   */ {{FromDbm::FieldSum, rfu::kFieldDbuv},             {ToDbm::FieldSum, -rfu::kFieldDbuv}},
    /*  7 dBmV/m   */ {{FromDbm::FieldSum, rfu::kFieldDbmv},             {ToDbm::FieldSum, -rfu::kFieldDbmv}},
    /*  8 dBV/m    */ {{FromDbm::FieldSum, -rfu::kFieldDbv},             {ToDbm::FieldSum, rfu::kFieldDbv}},
    /*  9 V/m      */ {{FromDbm::FieldAmplitude, -rfu::kFieldDbv},       {ToDbm::Nothing}},
    /* 10 W/m^2    */ {{FromDbm::FieldPower, -rfu::kFieldDbv, rfu::kPerImpedance},
                       {ToDbm::FieldPower, rfu::kFieldDbv, rfu::kImpedance}},
    /* 11 dBm/m^2  */ {{FromDbm::FieldPowerSum, -rfu::kFieldDbv, rfu::kPerImpedance},
                       {ToDbm::FieldSum, kDbmOfZeroDbmPerM2}},
    /* 12 dBW/m^2  */ {{FromDbm::FieldSum, -rfu::kFieldDbw},             {ToDbm::FieldSum, rfu::kFieldDbw}},
    /* 13 A/m      */ {{FromDbm::FieldAmplitude, rfu::kFieldDbuv, rfu::kAmperePerMicrovolt},
                       {ToDbm::FieldAmplitude, -rfu::kFieldDbuv, rfu::kMicrovoltPerAmpere}},
    /* 14 dBA/m    */ {{FromDbm::FieldSum, -rfu::kFieldDba},             {ToDbm::FieldSum, rfu::kFieldDba}},
    /* 15 W/cm^2   */ {{FromDbm::FieldPower, -rfu::kFieldDbv, rfu::kPerImpedancePerCm2},
                       {ToDbm::FieldPower, rfu::kFieldDbv, rfu::kImpedancePerCm2}},
};
// clang-format on

/// The row of a scale, or null for an index that is none.
const Scale* findScale(int index) noexcept {
    const bool known = index >= 0 && static_cast<std::size_t>(index) < std::size(kScales);
    return known ? &kScales[index] : nullptr;
}

/// The antenna correction as the scales use it: rounded to single precision.
double singleCorrection(double frequency, double gain) noexcept {
    return toFloat(antennaCorrection(frequency, gain));
}

double fromDbm(const Scale::Forward& scale, double dBm, double correction) noexcept {
    const double sum = dBm + scale.offset;
    const double fieldSum = sum + correction;
    switch (scale.rule) {
        case FromDbm::Unchanged:
            return dBm;
        case FromDbm::Sum:
            return sum;
        case FromDbm::Amplitude:
            return amplitudeRatio(sum) * scale.factor;
        case FromDbm::Power:
            return powerRatio(sum) * scale.factor;
        case FromDbm::FieldSum:
            return fieldSum;
        case FromDbm::FieldAmplitude:
            return amplitudeRatio(fieldSum) * scale.factor;
        case FromDbm::FieldPower:
            return powerRatio(fieldSum) * scale.factor;
        case FromDbm::FieldPowerSum:
            return decibelOfPower(powerRatio(fieldSum) * scale.factor) + rfu::kDbmOfOneWatt;
    }
    return 0.0;  // GCOVR_EXCL_LINE: every rule returned above
}

double toDbm(const Scale::Backward& scale, double value, double correction) noexcept {
    switch (scale.rule) {
        case ToDbm::Sum:
            return value + scale.offset;
        case ToDbm::Amplitude:
            return decibelOfAmplitude(value * scale.factor) + scale.offset;
        case ToDbm::FieldSum:
            return value + scale.offset - correction;
        case ToDbm::FieldAmplitude:
            return decibelOfAmplitude(value * scale.factor) + scale.offset - correction;
        case ToDbm::FieldPower:
            return decibelOfPower(value * scale.factor) + scale.offset - correction;
        case ToDbm::Unchanged:
        case ToDbm::Nothing:
            break;
    }
    return value;
}

}  // namespace

calculateUnit::calculateUnit() = default;

bool calculateUnit::actdBm2OtherScale(double dBm, double frequency, int scale, double gain,
                                      double& result) {
    const Scale* const row = findScale(scale);
    result = row == nullptr ? 0.0 : fromDbm(row->fromDbm, dBm, singleCorrection(frequency, gain));
    return true;
}

bool actOtherScale2dBm(double value, double frequency, int scale, double gain, double& result) {
    const Scale* const row = findScale(scale);
    if (row == nullptr) {
        result = 0.0;
    } else if (row->toDbm.rule != ToDbm::Nothing) {
        result = toDbm(row->toDbm, value, singleCorrection(frequency, gain));
    }
    return true;
}
