#include "support/outputFile.h"

#include <QFile>
#include <optional>

#include "analysis/support/inputError.h"

#include <sys/stat.h>

namespace rfu::command {

namespace {

/// The status of a file behind all links.
std::optional<struct stat> statusOf(const QString& file) {
    struct stat status {};
    return ::stat(QFile::encodeName(file).constData(), &status) == 0 ? std::optional(status)
                                                                     : std::nullopt;
}

}  // namespace

void requireOwn(const QString& file, const QStringList& inputs) {
    const auto status = statusOf(file);
    if (status && !S_ISREG(status->st_mode)) {
        throw InputError(file, "cannot be written: it is not a regular file");
    }
    for (const QString& input : inputs) {
        const auto other = statusOf(input);
        if (status && other && status->st_dev == other->st_dev && status->st_ino == other->st_ino) {
            throw InputError(file, "cannot be written: it is the input " + input.toStdString());
        }
    }
}

OutputFile::OutputFile(const QString& file, const QStringList& inputs) : file_(file) {
    requireOwn(file, inputs);
    require(file_.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
}

void OutputFile::require(bool isDone) const {
    if (!isDone) {
        throw InputError(file_.fileName(),
                         "cannot be written: " + file_.errorString().toStdString());
    }
}

/// A write may take the first part only; the next one then gives the reason.
void OutputFile::write(std::string_view bytes) {
    while (!bytes.empty()) {
        const qint64 written = file_.write(bytes.data(), static_cast<qint64>(bytes.size()));
        require(written > 0);
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
}

void OutputFile::commit() {
    require(file_.commit());
}

}  // namespace rfu::command
