// The reader of states behind `rfutils merge`. Holds for any bytes, also for those that get a checksum
// that fits:
// - reading ends with statistics or an InputError that names the file;
// - what was read, written and read again is the same bytes;
// - a state with any byte changed, or cut anywhere, is refused;
// - a state and the one that follows it merge, whatever is in them.
#include "support/require.h"
#include "support/scratchFile.h"

#include "analysis/recordings/channels.h"
#include "analysis/recordings/stateFile.h"
#include "analysis/statistics/channelSeries.h"
#include "analysis/statistics/occupancy.h"
#include "analysis/statistics/peaks.h"
#include "analysis/statistics/sweepStore.h"
#include "analysis/support/inputError.h"

#include <QCryptographicHash>

#include <algorithm>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

using namespace rfu;
using namespace rfu::fuzz;

namespace {

constexpr std::size_t kMaxPoints = 4096;  // the statistics beyond are the same

QString fileOf(const char* name, const std::string& bytes) {
    static std::map<std::string, ScratchFile> files;
    ScratchFile& file = files.try_emplace(name, name).first->second;
    file.write(bytes.data(), bytes.size());
    return file.path();
}

/// The bytes with a checksum behind them.
std::string checked(std::string bytes) {
    const QByteArray checksum = QCryptographicHash::hash(
        QByteArray::fromRawData(bytes.data(), static_cast<int>(bytes.size())),
        QCryptographicHash::Sha256);
    return bytes + checksum.toStdString();
}

/// A state of the statistics that write() gives.
template <typename Write>
std::string stateOf(const StateHead& head, Write write) {
    std::string bytes;
    StateWriter writer([&bytes](std::string_view piece) { bytes += piece; });
    beginState(writer);
    write(writer);
    finishState(writer, head);
    return bytes;
}

/// How many settings have a name.
std::size_t settingsOf(const StateHead& head, const char* name) {
    return static_cast<std::size_t>(
        std::count_if(head.settings.begin(), head.settings.end(),
                      [name](const StateSetting& setting) { return setting.name == name; }));
}

std::string mergedTraces(const StateSet& states) {
    SweepStore sweeps(SweepStore::kAll, false, 0.0);
    states.forEach([&](StatePart& part) { sweeps.merge(part, states.head().points); });
    return stateOf(states.head(), [&](StateWriter& writer) { sweeps.write(writer); });
}

std::string mergedPeaks(const StateSet& states) {
    const StateHead& head = states.head();
    PeakFinder finder;
    states.forEach([&](StatePart& part) { finder.merge(part, head.points); });
    for (const Signal& signal :
         finder.find(head.axis, std::vector<bool>(head.points, false), PeakOptions())) {
        REQUIRE(signal.point < head.points && signal.present > 0.0 && signal.present <= 1.0);
        REQUIRE(!signal.first.empty() && !signal.last.empty());
    }
    return stateOf(head, [&](StateWriter& writer) { finder.write(writer); });
}

std::string mergedSeries(const StateSet& states) {
    std::vector<ChannelNotes> notes(settingsOf(states.head(), "channel"));
    return stateOf(states.head(), [&](StateWriter& writer) {
        states.forEach([&](StatePart& part) {
            readSeries(part, notes, [&](const std::string& time, const SweepFigures& figures) {
                writeSweep(writer, time, figures);
            });
        });
        writeNotes(writer, notes);
    });
}

std::string mergedOccupancies(const StateSet& states) {
    const StateHead& head = states.head();
    OccupancyOptions options;
    options.limits.assign(head.points, -80.0);
    options.isByHour = settingsOf(head, "by") > 0;
    Occupancy occupancy(head.axis, ChannelPlacer(head.axis).ofPoints(), options);
    states.forEach([&](StatePart& part) { occupancy.merge(part, true); });
    return stateOf(head, [&](StateWriter& writer) { occupancy.write(writer); });
}

std::string merged(const StateSet& states) {
    const std::string& command = states.head().command;
    if (command == "peaks") {
        return mergedPeaks(states);
    }
    if (command == "power") {
        return mergedSeries(states);
    }
    if (command == "occupancy" && !states.head().axis.points.empty()) {
        return mergedOccupancies(states);
    }
    return mergedTraces(states);
}

/// @return nothing where the file is refused
std::optional<std::string> read(const QString& file) {
    try {
        const StateSet states({file});
        if (states.head().points > kMaxPoints) {
            return std::nullopt;
        }
        return merged(states);
    } catch (const InputError& error) {
        REQUIRE(error.file() == file && !error.problem().empty());
        return std::nullopt;
    }
}

bool isRefused(const std::string& bytes) {
    const QString file = fileOf("damaged", bytes);
    try {
        const StateSet states({file});
        return false;
    } catch (const InputError& error) {
        return error.file() == file;
    }
}

void requireDamageIsNoticed(std::string bytes, std::size_t place) {
    place %= bytes.size();
    REQUIRE(isRefused(bytes.substr(0, place)));
    bytes[place] = static_cast<char>(bytes[place] ^ (1 << place % 8));
    REQUIRE(isRefused(bytes));
}

/// The state merges with itself where all its sweeps are of one time, and with none otherwise.
void requireMerging(const QString& file) {
    try {
        const StateSet twice({file, file});
        const std::string both = merged(twice);
        const auto again = read(fileOf("both", both));
        REQUIRE(again && *again == both);
    } catch (const InputError& error) {
        REQUIRE(error.file() == file);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    read(fileOf("raw", bytes));
    const std::string whole = checked(bytes);
    const QString file = fileOf("whole", whole);
    const auto state = read(file);
    if (!state) {
        return 0;
    }
    const auto again = read(fileOf("again", *state));
    REQUIRE(again && *again == *state);
    requireDamageIsNoticed(whole, size * 2654435761U + data[size / 2]);
    requireMerging(file);
    return 0;
}
