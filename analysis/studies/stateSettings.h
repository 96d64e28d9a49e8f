#pragma once

#include <QString>
#include <optional>
#include <string>
#include <vector>

#include "analysis/recordings/stateFile.h"
#include "analysis/support/inputError.h"
#include "analysis/support/numbers.h"

namespace rfu {

/// The settings of a state, which may be damaged though its checksum fits.
class SettingReader {
public:
    SettingReader(const StateHead& head, const QString& file) : head_(head), file_(file) {}

    bool has(const char* name) const { return !texts(name).empty(); }
    /// The last one of a name, empty if there is none.
    std::string text(const char* name) const { return has(name) ? texts(name).back() : ""; }
    std::vector<std::string> texts(const char* name) const {
        std::vector<std::string> found;
        for (const StateSetting& setting : head_.settings) {
            if (setting.name == name) {
                found.push_back(setting.value);
            }
        }
        return found;
    }
    /// @throw InputError for what is no number
    std::optional<double> number(const char* name) const {
        if (!has(name)) {
            return std::nullopt;
        }
        const auto number = parseNumber(text(name));
        require(number.has_value());
        return number;
    }
    void require(bool makesSense) const {
        if (!makesSense) {
            throw InputError(file_, kDamagedState);
        }
    }

private:
    const StateHead& head_;
    const QString& file_;
};

}  // namespace rfu
