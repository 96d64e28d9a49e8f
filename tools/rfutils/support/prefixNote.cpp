#include "support/prefixNote.h"

#include "analysis/units/prefixMeaning.h"
#include "support/errors.h"
#include "support/output.h"

namespace rfu::command {

PrefixNote::PrefixNote(const rfu::Unit& unit, bool csvHasValues)
    : isVoltage_(unit.quantity == rfu::Quantity::Voltage), csvHasValues_(csvHasValues) {}

void PrefixNote::check(double dBm, const std::string& text, const LevelPresenter& presenter) {
    if (meant_.empty()) {
        meant_ = prefixMeaning(presenter, dBm, text);
    }
}

void PrefixNote::print() {
    if (meant_.empty() || printed_) {
        return;
    }
    const char* const remedy = isVoltage_ ? "; --format csv has volts" : "; --format csv has watts";
    standardOutput().flush();  // the note follows the line that it is about
    printNote(meant_ + (csvHasValues_ ? remedy : ""));
    printed_ = true;
}

}  // namespace rfu::command
