#include "analysis/recordings/stateFile.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <optional>

#include "analysis/recordings/receiverSetting.h"
#include "analysis/recordings/timeStamp.h"
#include "analysis/support/files.h"
#include "analysis/support/inputError.h"
#include "analysis/support/numbers.h"

namespace rfu {

namespace {

constexpr std::string_view kMagic = "rfutils state ";
constexpr int kVersion = 1;
constexpr std::size_t kBytesOfPlace = 8;  // of the head, in front of the checksum

std::string firstLine() {
    return std::string(kMagic) + std::to_string(kVersion) + '\n';
}

void write(StateWriter& writer, const FrequencyAxis& axis) {
    writer.count(axis.points.size());
    for (const double point : axis.points) {
        writer.number(point);
    }
    writer.count(axis.bands.size());
    for (const FrequencyAxis::Band& band : axis.bands) {
        writer.count(band.firstPoint);
        writer.number(band.low);
        writer.number(band.high);
    }
    writer.count(axis.hops.size());
    for (const AxisHop& hop : axis.hops) {
        writer.number(hop.low);
        writer.number(hop.high);
        writer.number(hop.step);
        writer.count(hop.firstBin);
        writer.count(hop.bins);
    }
}

void readBands(StateReader& reader, FrequencyAxis& axis) {
    axis.bands.resize(reader.countOf(17));
    for (std::size_t i = 0; i < axis.bands.size(); ++i) {
        FrequencyAxis::Band& band = axis.bands[i];
        band.firstPoint = reader.count(axis.points.size());
        band.low = reader.finite();
        band.high = reader.finite();
        reader.require(band.firstPoint < axis.points.size());
        reader.require(i == 0 ? band.firstPoint == 0
                              : band.firstPoint > axis.bands[i - 1].firstPoint);
    }
    auto band = axis.bands.begin();
    for (std::size_t i = 0; i < axis.points.size(); ++i) {
        reader.require(band != axis.bands.end());
        band += band + 1 != axis.bands.end() && band[1].firstPoint == i ? 1 : 0;
        reader.require(band->low <= axis.points[i] && axis.points[i] < band->high);
    }
}

void readHops(StateReader& reader, FrequencyAxis& axis) {
    axis.hops.resize(reader.countOf(26));
    std::size_t points = 0;
    for (AxisHop& hop : axis.hops) {
        hop.low = reader.finite();
        hop.high = reader.finite();
        hop.step = reader.finite();
        reader.require(hop.low < hop.high && hop.step > 0.0 &&
                       (hop.high - hop.low) / hop.step < INT32_MAX);
        const std::size_t bins = hop.points();
        hop.firstBin = reader.count(bins);
        hop.bins = reader.count(bins - hop.firstBin);
        reader.require(hop.bins > 0);
        points += hop.bins;
    }
    reader.require(points == axis.points.size());
}

FrequencyAxis readAxis(StateReader& reader) {
    FrequencyAxis axis;
    axis.points.resize(reader.countOf(8));
    for (double& point : axis.points) {
        point = reader.finite();
    }
    readBands(reader, axis);
    readHops(reader, axis);
    reader.require(axis.bands.empty() == axis.points.empty());
    return axis;
}

std::string readStamp(StateReader& reader, const FrequencyAxis& axis) {
    std::string time = reader.text();
    reader.require(axis.points.empty() ? time.empty() : isStamp(time));
    return time;
}

StateHead readHead(StateReader& reader) {
    StateHead head;
    head.command = reader.text();
    head.settings.resize(reader.countOf(2));
    for (StateSetting& setting : head.settings) {
        setting.name = reader.text();
        setting.value = reader.text();
    }
    head.points = reader.count(INT32_MAX);
    head.axis = readAxis(reader);
    reader.require(head.points > 0 &&
                   (head.axis.points.empty() || head.axis.points.size() == head.points));
    head.sweeps = static_cast<long long>(reader.count(kMaxStateSweeps));
    reader.require(head.sweeps > 0);
    head.firstTime = readStamp(reader, head.axis);
    head.lastTime = readStamp(reader, head.axis);
    reader.require(reader.isAtEnd());
    return head;
}

/// The bytes of a file from a place on, fewer at its end.
QByteArray bytesAt(QFile& file, qint64 place, std::size_t count) {
    return place >= 0 && file.seek(place) ? file.read(static_cast<qint64>(count)) : QByteArray();
}

/// A state: where its parts begin.
struct Layout {
    std::uint64_t statistics;
    std::uint64_t head;
    std::uint64_t place;  // of the head's, behind it
};

/// @throw InputError for a file that is no state, and for one of another version
Layout layoutOf(const QString& name) {
    QFile file;
    openRegular(file, name);
    constexpr std::size_t kLongestLine = 32;
    const QByteArray line = bytesAt(file, 0, kLongestLine);
    const std::string_view text(line.constData(), static_cast<std::size_t>(line.size()));
    const std::size_t end = text.find('\n');
    if (text.substr(0, kMagic.size()) != kMagic || end == std::string_view::npos) {
        throw InputError(name, "is no state that rfutils wrote");
    }
    const std::string_view version = text.substr(kMagic.size(), end - kMagic.size());
    if (version != std::to_string(kVersion)) {
        throw InputError(name, "is a state of version " + rfu::quoted(version) +
                                   "; this rfutils reads " + std::to_string(kVersion));
    }
    const qint64 behind = file.size() - static_cast<qint64>(kStateChecksum + kBytesOfPlace);
    const QByteArray bytes = bytesAt(file, behind, kBytesOfPlace);
    std::uint64_t head = 0;
    for (auto i = bytes.size(); i-- > 0;) {
        head = head << 8U | static_cast<unsigned char>(bytes.at(i));
    }
    if (behind < 0 || head < end + 1 || head > static_cast<std::uint64_t>(behind)) {
        throw InputError(name, kDamagedState);
    }
    return {end + 1, head, static_cast<std::uint64_t>(behind)};
}

StateHead headOf(const QString& name) {
    const Layout layout = layoutOf(name);
    StateReader reader(name, layout.head, layout.place);
    StateHead head = readHead(reader);
    // Of points without frequencies there are statistics, of at least a byte.
    reader.require(!head.axis.points.empty() || head.points <= layout.head - layout.statistics);
    return head;
}

/// "--limit -60", "--channel 98.2:98.4 --channel 99:100" or "no --limit".
std::string describe(const std::vector<StateSetting>& settings, const std::string& name) {
    std::string text;
    for (const StateSetting& setting : settings) {
        if (setting.name == name) {
            text += (text.empty() ? "--" : " --") + name;
            text += (setting.value.empty() ? "" : " ") + setting.value;
        }
    }
    return text.empty() ? "no --" + name : text;
}

/// @throw InputError where they differ
void requireSettings(const QString& file, const StateHead& head, const QString& other,
                     const StateHead& otherHead) {
    const std::string comparison = ", while " + other.toStdString() + " ";
    if (head.command != otherHead.command) {
        throw InputError(file, "is a state of rfutils " + head.command + comparison +
                                   "is one of rfutils " + otherHead.command);
    }
    std::string own;
    std::string others;
    for (const auto* settings : {&head.settings, &otherHead.settings}) {
        for (const StateSetting& setting : *settings) {
            if (own == others) {
                own = describe(head.settings, setting.name);
                others = describe(otherHead.settings, setting.name);
            }
        }
    }
    if (own != others) {
        throw InputError(file, "was made with " + own + comparison + "was made with " + others);
    }
}

/// A state among others.
struct Member {
    QString file;
    std::string firstTime;
    std::string lastTime;
};

/// States without times stay where they are.
bool isEarlier(const Member& a, const Member& b) {
    const auto times = [](const Member& member) {
        return std::pair(microsecondsOf(member.firstTime), microsecondsOf(member.lastTime));
    };
    return !a.firstTime.empty() && times(a) < times(b);
}

RecordingPart partOf(const QString& file, const StateHead& head) {
    return {file, head.firstTime, head.points, head.axis};
}

}  // namespace

void beginState(StateWriter& writer) {
    writer.bytes(firstLine());
}

void finishState(StateWriter& writer, const StateHead& head) {
    const std::uint64_t place = writer.size();
    writer.text(head.command);
    writer.count(head.settings.size());
    for (const StateSetting& setting : head.settings) {
        writer.text(setting.name);
        writer.text(setting.value);
    }
    writer.count(head.points);
    write(writer, head.axis);
    writer.count(static_cast<std::uint64_t>(head.sweeps));
    writer.text(head.firstTime);
    writer.text(head.lastTime);
    std::string bytes;
    for (std::size_t i = 0; i < kBytesOfPlace; ++i) {
        bytes += static_cast<char>(place >> (8 * i) & 0xFFU);
    }
    writer.bytes(bytes);
    writer.finish();
}

StateSet::StateSet(const QStringList& files) {
    std::vector<Member> members;
    std::optional<StateHead> most;
    QString fileOfMost;
    std::uint64_t sweeps = 0;
    for (const QString& file : files) {
        layoutOf(file);  // first of all: what is no state has no checksum
        if (!StateReader::hasChecksum(file)) {
            throw InputError(file, kDamagedState);
        }
        StateHead head = headOf(file);
        if (most) {
            requireSettings(file, head, fileOfMost, *most);
        }
        members.push_back({file, head.firstTime, head.lastTime});
        sweeps += static_cast<std::uint64_t>(head.sweeps);
        if (sweeps > kMaxStateSweeps) {
            throw InputError(file, "has more sweeps with those before than can be counted, " +
                                       std::to_string(kMaxStateSweeps));
        }
        if (!most || head.axis.hops.size() > most->axis.hops.size()) {
            fileOfMost = file;
            most = std::move(head);
        }
    }
    head_ = std::move(*most);
    for (const Member& member : members) {
        requireOneSetting(partOf(member.file, headOf(member.file)), partOf(fileOfMost, head_));
    }
    std::stable_sort(members.begin(), members.end(), isEarlier);
    for (std::size_t i = 0; i < members.size(); ++i) {
        if (i > 0) {
            requireOrder({members[i].file, members[i].firstTime, 0, {}}, members[i - 1].file,
                         members[i - 1].lastTime);
        }
        files_.push_back(members[i].file);
    }
    head_.sweeps = static_cast<long long>(sweeps);
    head_.firstTime = members.front().firstTime;
    head_.lastTime = members.back().lastTime;
}

StatePart StateSet::open(const QString& file) const {
    const Layout layout = layoutOf(file);
    StateHead head = headOf(file);
    auto places = placesOf(head.axis, head_.axis);
    if (!places || (head.axis.points.empty() && head.points != head_.points)) {
        throw InputError(file, "changed while it was read");
    }
    if (head.axis.points.empty()) {
        places->resize(head.points);
        std::iota(places->begin(), places->end(), std::size_t{0});
    }
    return {file, std::move(head), std::move(*places),
            StateReader(file, layout.statistics, layout.head)};
}

}  // namespace rfu
