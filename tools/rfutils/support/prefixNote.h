#pragma once

#include <string>

#include "support/units.h"

namespace rfu::command {

/// Notes once per run the meaning of a text in which the instrument omits a large prefix.
class PrefixNote {
public:
    /// @param csvHasValues whether --format csv gives volts or watts instead
    PrefixNote(const rfu::Unit& unit, bool csvHasValues);

    /// Keeps the first text that omits a prefix.
    void check(double dBm, const std::string& text, const LevelPresenter& presenter);
    /// Prints the note on standard error, after the output so far.
    void print();

private:
    bool isVoltage_;
    bool csvHasValues_;
    bool printed_ = false;
    std::string meant_;
};

}  // namespace rfu::command
