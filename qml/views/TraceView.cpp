#include "qml/views/TraceView.h"

#include <limits>

namespace rfu::qml {

double TraceView::levelAtPoint(const QPointF&) const {
    return std::numeric_limits<double>::quiet_NaN();
}

}  // namespace rfu::qml
