#include "analysis/studies/signalStudy.h"

#include <algorithm>
#include <utility>

#include "analysis/support/inputError.h"

namespace rfu {

void SignalStudy::read(Recording& recording) {
    file_ = recording.files().first();
    for (Sweep sweep; recording.next(sweep);) {
        if (!recording.hasFrequencies()) {
            throw recording.error("the recording holds no frequencies");
        }
        finder_.add(sweep);
        if (finder_.isFull()) {
            throw recording.error("has " + std::to_string(sweep.levels.size()) +
                                  " points, whose levels do not fit " +
                                  std::to_string(LevelHistory::kMaxBytes / 1000000) +
                                  " MB; --band chooses some of them");
        }
        count(sweep, head_);
    }
    setAxis(recording, head_);
    head_.command = kCommand;
}

void SignalStudy::merge(const StateSet& states) {
    file_ = states.files().first();
    head_ = states.head();
    states.forEach([this](StatePart& part) { finder_.merge(part, head_.points); });
}

std::vector<Signal> SignalStudy::find(const std::vector<NamedSpur>& spurs,
                                      const PeakOptions& options) {
    std::vector<Spur> leftOut;
    for (const NamedSpur& spur : spurs) {
        const std::vector<bool> isIn = pointsInSpurs(head_.axis, {spur.spur});
        if (std::none_of(isIn.begin(), isIn.end(), [](bool is) { return is; })) {
            throw InputError(file_, "no point lies in the spur " + rfu::quoted(spur.name));
        }
        leftOut.push_back(spur.spur);
    }
    return finder_.find(head_.axis, pointsInSpurs(head_.axis, leftOut), options);
}

}  // namespace rfu
