// What the tests of HMath share.
#pragma once

#include <rfUtils/units/HMath.h>
#include <support/limits.h>

#include <QObject>
#include <QString>

#include <string>

namespace rfu::test {

inline QString text(const char* utf8) {
    return QString::fromUtf8(utf8);
}

inline std::string utf8(const QString& text) {
    return text.toStdString();
}

/// An HMath with its signals counted, and the unit that it had when the last one came.
struct Probe {
    HMath math;
    int signalCount = 0;
    std::string unitAtSignal;

    Probe() {
        QObject::connect(&math, &HMath::unitChanged, &math, [this] {
            ++signalCount;
            unitAtSignal = utf8(math.unit());
        });
    }

    std::string unit() { return utf8(math.unit()); }
};

}  // namespace rfu::test
