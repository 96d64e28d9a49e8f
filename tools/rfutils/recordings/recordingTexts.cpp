#include "recordings/recordingTexts.h"

#include <algorithm>
#include <cstddef>

#include "analysis/statistics/levelHistory.h"
#include "analysis/support/files.h"
#include "analysis/support/inputError.h"
#include "analysis/support/numbers.h"
#include "support/errors.h"
#include "support/interruption.h"

namespace rfu::command {

std::string bandsText(const FrequencyAxis& axis) {
    std::string text;
    for (const FrequencyAxis::Band& band : axis.bands) {
        text += text.empty() ? "" : " ";
        text += ShortestText(band.low).view();
        text += ':';
        text += ShortestText(band.high).view();
    }
    return text;
}

std::string titleOf(const QStringList& files, long long sweeps) {
    const std::string others =
        files.size() > 1 ? " and " + std::to_string(files.size() - 1) + " more" : "";
    return shortNameOf(files.first()) + others + ", " + std::to_string(sweeps) +
           (sweeps == 1 ? " sweep" : " sweeps");
}

std::string rangeText(const FrequencyRange& range) {
    return std::string(ShortestText(range.low).view()) + " to " + megahertzText(range.high);
}

void noteChannels(const QString& file, const std::vector<FrequencyRange>& channels,
                  const std::string& what) {
    constexpr std::size_t kMaxNamed = 4;
    if (channels.empty()) {
        return;
    }
    std::string names;
    for (std::size_t i = 0; i < std::min(channels.size(), kMaxNamed); ++i) {
        names += (i == 0 ? "" : ", ") + rangeText(channels[i]);
    }
    if (channels.size() > kMaxNamed) {
        names += " and " + std::to_string(channels.size() - kMaxNamed) + " more channels";
    }
    printNote(InputError(file, names + ": " + what).message());
}

void noteMedians(double resolution, bool areMerged) {
    if (resolution > 0.0) {
        const std::string reason =
            areMerged ? "states hold no single levels"
                      : "the levels do not fit " +
                            std::to_string(LevelHistory::kMaxBytes / 1000000) + " MB";
        printNote(reason + "; medians are within " + fixedText(resolution, 2) + " dB");
    }
}

void requireSweeps(const Recording& recording, long long sweeps) {
    if (sweeps == 0) {
        const InputError error = recording.error("interrupted before a sweep was complete");
        throw Failure(error.message(), interruptedStatus());
    }
}

}  // namespace rfu::command
