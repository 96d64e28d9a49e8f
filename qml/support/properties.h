#pragma once

#include <QString>

#include <cmath>

namespace rfu::qml {

/// In the place of a text that cannot be given.
inline QString missingText() {
    return QStringLiteral("--");
}

/// Whether an antenna has such a centre frequency, in MHz.
inline bool isFrequency(double frequency) {
    return std::isfinite(frequency) && frequency > 0.0;
}

/// Gives a property a value.
/// @return whether that is another value; NaN is the same as NaN
template <typename T>
bool assign(T& property, const T& value) {
    if (property == value) {
        return false;
    }
    property = value;
    return true;
}

inline bool assign(double& property, double value) {
    if (property == value || (std::isnan(property) && std::isnan(value))) {
        return false;
    }
    property = value;
    return true;
}

}  // namespace rfu::qml
