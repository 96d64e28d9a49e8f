// A folder for the files of a benchmark, removed at its end.
#pragma once

#include <QTemporaryDir>

#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>

namespace rfu::bench {

inline const std::string& scratchFolder() {
    static const QTemporaryDir folder;
    static const std::string path = folder.path().toStdString();
    return path;
}

/// Writes a file into the scratch folder.
/// @return its path
inline std::string writeScratch(const std::string& name, std::string_view bytes) {
    const std::string path = scratchFolder() + '/' + name;
    std::ofstream file(path, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!file.flush()) {
        throw std::runtime_error("cannot write " + path);
    }
    return path;
}

}  // namespace rfu::bench
