#pragma once

#include <QJSValue>

#include <cstddef>
#include <vector>

class QJSEngine;

namespace rfu::qml {

/// The longest list of levels that is read.
inline constexpr int kMostLevels = 1 << 22;

/// Reads a script's list of numbers: an array, a typed array or an object like an array. What is no number
/// becomes NaN.
/// @param engine the script's
/// @return whether it is such a list, neither empty nor longer than kMostLevels; else the levels are
/// unspecified
bool readLevelList(const QJSValue& list, QJSEngine& engine, std::vector<double>& levels);

}  // namespace rfu::qml
