#pragma once

#include <QStringList>
#include <optional>
#include <string>
#include <vector>

#include "analysis/recordings/channels.h"
#include "analysis/recordings/recording.h"
#include "analysis/recordings/stateFile.h"
#include "analysis/statistics/occupancy.h"
#include "analysis/studies/study.h"
#include "analysis/support/numbers.h"
#include "analysis/units/levels.h"

namespace rfu {

/// The level above which a channel is occupied.
struct OccupancyLimit {
    double value;
    const Unit* unit;  // that values are read in; the value has a level there
    // Of the antenna of a field:
    std::optional<double> center = {};  // MHz; without, each point has its own
    std::optional<double> gain = {};    // dBi
};

struct OccupancyQuestion {
    std::optional<OccupancyLimit> limit = {};    // none: from the floor
    std::optional<ChannelRaster> channels = {};  // none: the points
    std::optional<double> channelWidth = {};     // MHz; the step unless given
    OccupancyOptions counting = {};              // without limits

    std::vector<FrequencyRange> ranges() const;
    /// What a state of it fixes. @pre there is a limit
    std::vector<StateSetting> settings() const;
    /// @throw InputError where they make no sense
    static OccupancyQuestion of(const StateHead& head, const QString& file);
};

/// Something that channels have in common and that people should know.
struct ChannelRemark {
    std::vector<FrequencyRange> channels;
    std::string what;
};

/// How busy the channels of a recording or of states are.
class OccupancyStudy {
public:
    static constexpr char kCommand[] = "occupancy";  // of its states

    explicit OccupancyStudy(OccupancyQuestion question) : question_(std::move(question)) {}

    /// Takes all sweeps.
    /// @throw InputError as the recording does, without frequencies, and where no channel was recorded
    void read(Recording& recording);
    /// @throw InputError for a damaged state
    void merge(const StateSet& states);

    const StateHead& head() const { return head_; }

    const std::vector<Channel>& channels() const { return occupancy_->channels(); }
    const FrequencyRange& band() const { return occupancy_->band(); }
    const HourlyOccupancy& counts() const { return *counts_; }
    /// In how many parts of the recording the floor was found; see Occupancy.
    int parts() const { return occupancy_->parts(); }
    /// On channels without samples.
    std::vector<ChannelRemark> remarks() const;

    /// The statistics of a state.
    void write(StateWriter& writer) const { occupancy_->write(writer); }

private:
    void begin(const FrequencyAxis& axis);
    std::vector<double> limits(const FrequencyAxis& axis) const;
    bool isMeasured(std::size_t channel) const;

    OccupancyQuestion question_;
    QString file_;  // for messages
    StateHead head_;
    std::optional<Occupancy> occupancy_;
    const HourlyOccupancy* counts_ = nullptr;
};

}  // namespace rfu
