#include "qml/traces/levelList.h"

#include <QByteArray>
#include <QJSEngine>
#include <QString>
#include <QVariant>

#include <cmath>
#include <cstring>
#include <limits>

namespace rfu::qml {

namespace {

/// Null, "" and [] are 0 to a script that wants numbers.
void dropZerosThatAreNone(const QJSValue& list, std::vector<double>& levels) {
    for (std::size_t i = 0; i < levels.size(); ++i) {
        if (levels[i] == 0.0 && !list.property(static_cast<quint32>(i)).isNumber()) {
            levels[i] = std::numeric_limits<double>::quiet_NaN();
        }
    }
}

/// @param array  a Float64Array
/// @return whether it is one that holds something
bool copyDoubles(const QJSValue& array, std::vector<double>& levels) {
    const QByteArray bytes = array.property(QStringLiteral("buffer")).toVariant().toByteArray();
    const int offset = array.property(QStringLiteral("byteOffset")).toInt();
    const int size = array.property(QStringLiteral("byteLength")).toInt();
    // What only pretends to be an array may say anything.
    if (size <= 0 || offset < 0 || offset > bytes.size() || size > bytes.size() - offset) {
        return false;
    }
    levels.resize(static_cast<std::size_t>(size) / sizeof(double));
    std::memcpy(levels.data(), bytes.constData() + offset, levels.size() * sizeof(double));
    return !levels.empty();
}

}  // namespace

bool readLevelList(const QJSValue& list, QJSEngine& engine, std::vector<double>& levels) {
    const double length = list.isObject() && !list.isCallable()
                              ? list.property(QStringLiteral("length")).toNumber()
                              : std::numeric_limits<double>::quiet_NaN();
    if (!(length >= 1.0 && length <= kMostLevels)) {
        return false;
    }
    QJSValue doubles = engine.globalObject().property(QStringLiteral("Float64Array"));
    if (list.prototype().strictlyEquals(doubles.property(QStringLiteral("prototype")))) {
        return copyDoubles(list, levels);
    }
    // The engine converts a list much faster than element by element from here.
    if (!copyDoubles(doubles.callAsConstructor({list}), levels)) {
        return false;
    }
    dropZerosThatAreNone(list, levels);
    return true;
}

}  // namespace rfu::qml
