// Files of one test and what the checks say about them.
#pragma once

#include <gtest/gtest.h>
#include <support/tempFiles.h>

#include <QString>
#include <cstring>
#include <string>
#include <vector>

#include "analysis/support/finding.h"
#include "analysis/support/inputError.h"

namespace rfu::test {

class MapFiles : public testing::Test {
protected:
    /// Writes a file and gives its name.
    QString write(const char* name, const std::string& bytes) const {
        return QString::fromStdString(files.write(name, bytes));
    }

    QString named(const char* name) const { return QString::fromStdString(files.path(name)); }

    TempFiles files;
};

/// "LINE:COLUMN severity rule: text" for each finding, without what is 0.
inline std::vector<std::string> listed(const Findings& findings) {
    std::vector<std::string> result;
    for (const Finding& finding : findings.kept()) {
        std::string place;
        if (finding.line > 0) {
            place = std::to_string(finding.line) + ':';
            place += finding.column > 0 ? std::to_string(finding.column) + ' ' : " ";
        }
        const char* const severity = finding.severity == Severity::Error     ? "error "
                                     : finding.severity == Severity::Warning ? "warning "
                                                                             : "note ";
        result.push_back(place + severity + std::string(finding.rule) + ": " + finding.text);
    }
    return result;
}

/// The message of the InputError that a call throws, without the folder; empty where it throws none.
template <typename Call>
std::string refusal(Call call) {
    try {
        call();
        return "";
    } catch (const InputError& error) {
        return error.message().substr(error.message().rfind('/') + 1);
    }
}

inline std::string bytesOf(const std::vector<float>& values) {
    std::string bytes(values.size() * sizeof(float), '\0');
    std::memcpy(bytes.data(), values.data(), bytes.size());
    return bytes;
}

}  // namespace rfu::test
