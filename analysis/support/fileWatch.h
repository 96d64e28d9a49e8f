#pragma once

#include <QString>
#include <QStringList>
#include <vector>

#include <sys/stat.h>

namespace rfu {

/// Tells whether files that are opened by name more than once stayed the same.
class FileWatch {
public:
    /// @param names of the files, which need not exist
    explicit FileWatch(const QStringList& names);
    ~FileWatch();
    FileWatch(const FileWatch&) = delete;
    FileWatch& operator=(const FileWatch&) = delete;

    /// @throw InputError for a name that now leads to another file, or to one that was written
    void requireUnchanged() const;

private:
    struct Watched {
        QString name;
        int descriptor;  // keeps the inode number from being used again
        struct stat state;
    };
    std::vector<Watched> watched_;
};

}  // namespace rfu
