#pragma once

#include <string>

#include "support/units.h"

namespace rfu::command {

/// Says once per run what a text means that the instrument shows without its large prefix.
class PrefixNote {
public:
    /// @param csvHasValues whether the same run with --format csv gives volts or watts
    PrefixNote(const rfu::Unit& unit, bool csvHasValues);

    /// Keeps the first text that leaves a prefix out.
    void check(double dBm, const std::string& text, const LevelPresenter& presenter);
    /// The note on standard error, behind what standard output shows so far.
    void print();

private:
    bool isVoltage_;
    bool csvHasValues_;
    bool printed_ = false;
    std::string text_;
    std::string meant_;
};

}  // namespace rfu::command
