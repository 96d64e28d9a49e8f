#pragma once

#include <QPoint>
#include <QPointF>
#include <string>
#include <string_view>
#include <variant>

#include "analysis/recordings/channels.h"
#include "analysis/recordings/markers.h"
#include "analysis/recordings/spurs.h"
#include "analysis/recordings/window.h"
#include "analysis/support/numbers.h"
#include "support/format.h"
#include "support/subcommand.h"

namespace rfu {
struct Unit;
}

namespace rfu::command {

struct NumberRange {
    double low;
    double high;
};

/// A number in a unit.
struct Quantity {
    double value;
    const rfu::Unit* unit;
};

/// A value by its kind: Number, Gain, Decibels, Percent and Frequency (MHz) are double, Integer
/// is int, Cell is QPoint, Pair is QPointF, Range is NumberRange.
using Value = std::variant<double, int, Format, const rfu::Unit*, MarkerRequest, QPoint, QPointF,
                           NumberRange, FrequencyRange, Spur, WindowTime, Quantity, ChannelRaster>;

/// Whether readValue() reads the kind; values of the others stay texts.
bool isRead(Kind kind);

/// Reads a value, in every locale alike.
/// @throw BadValue with the expected form
Value readValue(Kind kind, std::string_view text);

inline double readNumber(std::string_view text) {
    return std::get<double>(readValue(Kind::Number, text));
}

}  // namespace rfu::command
