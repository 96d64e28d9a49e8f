#pragma once

#include <QString>
#include <QStringList>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "analysis/recordings/sweepReader.h"
#include "analysis/support/stateStream.h"

namespace rfu {

// States: what became of recordings, to go on from; see docs/state.md.

/// An option on which the numbers of a state depend, as the command line has it.
struct StateSetting {
    std::string name;
    std::string value;
};

/// What every state tells of itself.
struct StateHead {
    std::string command;  // that wrote it
    std::vector<StateSetting> settings;
    std::size_t points = 0;  // of a sweep
    FrequencyAxis axis;      // empty without frequencies
    long long sweeps = 0;    // at least one
    std::string firstTime;   // of the sweeps; empty without frequencies
    std::string lastTime;
};

/// The most sweeps that states hold together.
inline constexpr std::uint64_t kMaxStateSweeps = UINT32_MAX;

/// To be called before the statistics are written, and behind them.
void beginState(StateWriter& writer);
void finishState(StateWriter& writer, const StateHead& head);

/// The statistics within a state, and where its points belong.
struct StatePart {
    QString file;
    StateHead head;
    std::vector<std::size_t> places;  // of its points, in a sweep of all states together
    StateReader statistics;
};

/// States of one command, with the same settings, of one receiver. They are put in the order of their
/// first sweeps, those without times stay in the order given.
class StateSet {
public:
    /// @throw InputError for a file that is no whole state, and where they do not go together
    explicit StateSet(const QStringList& files);

    /// Of all of them.
    const StateHead& head() const { return head_; }
    /// In their order.
    const QStringList& files() const { return files_; }

    /// Calls use(StatePart&) with one after the other, and requires that it reads all statistics.
    template <typename Use>
    void forEach(Use use) const {
        for (const QString& file : files_) {
            StatePart part = open(file);
            use(part);
            part.statistics.require(part.statistics.isAtEnd());
        }
    }

private:
    StatePart open(const QString& file) const;

    StateHead head_;
    QStringList files_;
};

}  // namespace rfu
