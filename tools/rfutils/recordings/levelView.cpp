#include "recordings/levelView.h"

#include <string>

namespace rfu::command {

bool LevelView::isOfEachPoint() const {
    return unit.needsAntenna() && !antenna.center;
}

Antenna LevelView::antennaAt(double frequency) const {
    Antenna used = antenna;
    if (!used.center) {
        used.center = frequency;
    }
    return used;
}

Antenna LevelView::antennaAt(const FrequencyAxis& axis, int point) const {
    return axis.points.empty() ? antenna : antennaAt(axis.points[static_cast<std::size_t>(point)]);
}

LevelView levelViewOf(const CommandLine& line) {
    return {*line.value<const rfu::Unit*>("unit"), antennaOf(line)};
}

Cell levelCell(const std::optional<double>& level, Format format, LevelPresenter& presenter,
               PrefixNote& note) {
    if (!level) {
        return {};
    }
    if (format != Format::Text) {
        return presenter.value(*level);
    }
    const std::string text = presenter.text(*level);
    note.check(*level, text, presenter);
    // The text is empty for a value too small for any prefix.
    return {*level, text.empty() ? std::string(kMissingText) : text};
}

}  // namespace rfu::command
