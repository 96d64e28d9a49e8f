#pragma once

#include "qml/views/SpectrumItem.h"

namespace rfu::qml {

/// The levels of a trace over frequency.
class TraceView : public SpectrumItem {
    Q_OBJECT

private:
    double levelAtPoint(const QPointF& point) const override;
};

}  // namespace rfu::qml
