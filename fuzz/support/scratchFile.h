#pragma once

#include "support/require.h"

#include <QFile>
#include <QString>
#include <QTemporaryDir>

#include <cstddef>

#include <fcntl.h>
#include <unistd.h>

namespace rfu::fuzz {

/// A regular file (the loaders accept nothing else) in a folder of its own, rewritten for each run.
class ScratchFile {
public:
    explicit ScratchFile(const char* name)
        : path_(folder_.filePath(QString::fromLatin1(name))),
          descriptor_(::open(QFile::encodeName(path_).constData(), O_RDWR | O_CREAT | O_CLOEXEC,
                             S_IRUSR | S_IWUSR)) {
        REQUIRE(descriptor_ >= 0);
    }
    ~ScratchFile() { ::close(descriptor_); }
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;

    const QString& path() const { return path_; }

    void write(const void* bytes, std::size_t size) {
        REQUIRE(::ftruncate(descriptor_, 0) == 0);
        REQUIRE(::pwrite(descriptor_, bytes, size, 0) == static_cast<ssize_t>(size));
    }

private:
    QTemporaryDir folder_;
    QString path_;
    int descriptor_;
};

}  // namespace rfu::fuzz
