#pragma once

#include <QString>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "analysis/recordings/recording.h"
#include "analysis/recordings/stateFile.h"
#include "analysis/statistics/channelPower.h"
#include "analysis/statistics/channelSeries.h"
#include "analysis/studies/study.h"
#include "analysis/support/numbers.h"

namespace rfu {

/// A channel, and which one it is compared with.
struct StudiedChannel {
    FrequencyRange range;
    std::size_t asked;  // place of that one among the channels; its own where it was asked for
};

struct PowerQuestion {
    std::vector<FrequencyRange> asked;
    std::optional<double> spacing =
        {};                 // MHz; adds the neighbours at this distance and twice as far
    double percent = 99.0;  // of the power is in the occupied band
    double enbw = 1.0;      // noise bandwidth of the receiver's window, in bins

    /// Each channel that is asked for between its neighbours.
    std::vector<StudiedChannel> channels() const;
    /// What a state of its series fixes.
    std::vector<StateSetting> settings() const;
    /// @throw InputError where they make no sense
    static PowerQuestion of(const StateHead& head, const QString& file);
};

/// The powers in channels of a recording.
class PowerStudy {
public:
    static constexpr char kCommand[] = "power";  // of its states

    explicit PowerStudy(PowerQuestion question);

    const std::vector<StudiedChannel>& channels() const { return channels_; }

    /// Takes all sweeps.
    /// @param onBegin called once the recording is known to reach over the channels
    /// @param onSweep called with the figures of each sweep, from 1 on
    /// @throw InputError as the recording does, without frequencies, and for a channel asked for that is not within
    ///        one band of it
    using OnSweep =
        std::function<void(long long sweep, const std::string& time, const SweepFigures& figures)>;
    void read(Recording& recording, const std::function<void()>& onBegin, const OnSweep& onSweep);

    /// Takes the sweeps of states.
    /// @throw InputError for a damaged state
    void merge(const StateSet& states, const OnSweep& onSweep);

    const StateHead& head() const { return head_; }
    /// The means over all sweeps. @pre they were read
    SweepFigures means() const;
    /// Of each channel.
    std::vector<ChannelNotes> notes() const;

private:
    void begin(const Recording& recording);

    PowerQuestion question_;
    std::vector<StudiedChannel> channels_;
    StateHead head_;
    std::optional<ChannelPowers> powers_;
    std::vector<ChannelNotes> merged_;  // of states
};

/// "98.2 to 98.4 MHz"
std::string rangeText(const FrequencyRange& range);

}  // namespace rfu
