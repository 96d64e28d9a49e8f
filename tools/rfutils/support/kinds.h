#pragma once

#include <QPoint>
#include <QPointF>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

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
/// and Code are int, Cell is QPoint, Pair is QPointF, Range is NumberRange, Word is std::string.
using Value =
    std::variant<double, int, Format, const rfu::Unit*, MarkerRequest, QPoint, QPointF, NumberRange,
                 FrequencyRange, Spur, WindowTime, Quantity, ChannelRaster, std::string>;

/// Whether readValue() reads the kind; values of the others stay texts, but for words.
bool isRead(Kind kind);

/// "a frequency such as 88.1MHz or a number of MHz", for kinds that are read.
const char* expectedOf(Kind kind);

/// What values of Kind::Format and Kind::Word may be; none of other kinds.
std::vector<std::string> wordsOf(const Option& option);

/// A value of an option of Kind::Word. @throw BadValue with the words, of many with the nearest
std::string readWord(const Option& option, std::string_view text);

/// Reads a value, in every locale alike.
/// @throw BadValue with the expected form
Value readValue(Kind kind, std::string_view text);

inline double readNumber(std::string_view text) {
    return std::get<double>(readValue(Kind::Number, text));
}

}  // namespace rfu::command
