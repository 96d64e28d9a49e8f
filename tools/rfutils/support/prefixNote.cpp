#include "support/prefixNote.h"

#include "analysis/support/inputError.h"
#include "support/errors.h"
#include "support/output.h"

namespace rfu::command {

namespace {

struct Wording {
    const char* reason;
    const char* remedy;
};

constexpr Wording kVoltageWording = {"above 100 V the instrument shows kilovolts under the label V",
                                     "; --format csv has volts"};
constexpr Wording kPowerWording = {
    "from 1 kW the instrument shows kilowatts, from 1 MW megawatts, under the label W",
    "; --format csv has watts"};

}  // namespace

PrefixNote::PrefixNote(const rfu::Unit& unit, bool csvHasValues)
    : isVoltage_(unit.quantity == rfu::Quantity::Voltage), csvHasValues_(csvHasValues) {}

void PrefixNote::check(double dBm, const std::string& text, const LevelPresenter& presenter) {
    if (!text_.empty()) {
        return;
    }
    const std::string prefix = presenter.prefixLeftOut(dBm, text);
    if (!prefix.empty()) {
        text_ = text;
        meant_ = text;
        meant_.insert(meant_.size() - 1, prefix);
    }
}

void PrefixNote::print() {
    if (text_.empty() || printed_) {
        return;
    }
    const Wording& wording = isVoltage_ ? kVoltageWording : kPowerWording;
    standardOutput().flush();  // the note follows the line that it is about
    printNote(quoted(text_) + " means " + meant_ + ": " + wording.reason +
              (csvHasValues_ ? wording.remedy : ""));
    printed_ = true;
}

}  // namespace rfu::command
