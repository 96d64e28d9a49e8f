#pragma once

#include <QTemporaryDir>

#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

/// A folder for the files of one test, removed with the object. Paths are in UTF-8.
class TempFiles {
public:
    std::string path(const std::string& name) const {
        return folder_.path().toStdString() + '/' + name;
    }

    /// Removes an earlier file first: rewriting one in place makes some file systems wait for the disk.
    std::string write(const std::string& name, std::string_view bytes) const {
        std::filesystem::remove(path(name));
        std::ofstream(path(name), std::ios::binary) << bytes;
        return path(name);
    }

    std::string makeFolder(const std::string& name) const {
        std::filesystem::create_directory(path(name));
        return path(name);
    }

    /// A FIFO that nobody writes to: opening it for reading would wait for ever.
    std::string makeFifo(const std::string& name) const {
        mkfifo(path(name).c_str(), 0600);
        return path(name);
    }

    std::string makeLink(const std::string& name, const std::string& target) const {
        std::filesystem::create_symlink(target, path(name));
        return path(name);
    }

private:
    QTemporaryDir folder_;
};
