// Files of one test and what the checks say about them.
#pragma once

#include <gtest/gtest.h>
#include <support/tempFiles.h>

#include <QString>
#include <cstring>
#include <string>
#include <vector>

#include "../support/findingLines.h"
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
