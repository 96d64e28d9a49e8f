#pragma once

#include <string>
#include <vector>

#include "analysis/recordings/recording.h"
#include "analysis/recordings/spurs.h"
#include "analysis/recordings/stateFile.h"
#include "analysis/statistics/peaks.h"
#include "analysis/studies/study.h"

namespace rfu {

/// A spur, and how it was asked for.
struct NamedSpur {
    Spur spur;
    std::string name;
};

/// The signals of a recording or of states.
class SignalStudy {
public:
    static constexpr char kCommand[] = "peaks";  // of its states

    /// Takes all sweeps.
    /// @throw InputError as the recording does, without frequencies, and where the levels do not fit the memory
    void read(Recording& recording);
    /// @throw InputError for a damaged state
    void merge(const StateSet& states);

    const StateHead& head() const { return head_; }
    /// Within how many dB medians lie; see LevelHistory.
    double resolution() const { return finder_.resolution(); }

    /// @throw InputError for a spur that no point lies in
    std::vector<Signal> find(const std::vector<NamedSpur>& spurs, const PeakOptions& options);

    /// The statistics of a state.
    void write(StateWriter& writer) const { finder_.write(writer); }

private:
    QString file_;  // for messages
    StateHead head_;
    PeakFinder finder_;
};

}  // namespace rfu
