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

}  // namespace

bool readLevelList(const QJSValue& list, QJSEngine& engine, std::vector<double>& levels) {
    const double length = list.isObject() && !list.isCallable()
                              ? list.property(QStringLiteral("length")).toNumber()
                              : std::numeric_limits<double>::quiet_NaN();
    if (!(length >= 1.0 && length <= kMostLevels)) {
        return false;
    }
    // The engine converts a list much faster than element by element from here.
    const QJSValue numbers =
        engine.globalObject().property(QStringLiteral("Float64Array")).callAsConstructor({list});
    const QByteArray bytes = numbers.property(QStringLiteral("buffer")).toVariant().toByteArray();
    if (numbers.isError() || bytes.isEmpty()) {
        return false;
    }
    levels.resize(static_cast<std::size_t>(bytes.size()) / sizeof(double));
    std::memcpy(levels.data(), bytes.constData(), levels.size() * sizeof(double));
    dropZerosThatAreNone(list, levels);
    return true;
}

}  // namespace rfu::qml
