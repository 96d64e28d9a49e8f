#pragma once

#include <QSaveFile>
#include <QString>
#include <QStringList>
#include <string_view>

namespace rfu::command {

/// @param inputs files of the same run, which it must not replace under any name
/// @throw InputError for a file that exists and is no regular one, or is one of the inputs
void requireOwn(const QString& file, const QStringList& inputs);

/// Replaces an older file only once the new one is complete; until then it has another name.
class OutputFile {
public:
    /// @throw InputError
    OutputFile(const QString& file, const QStringList& inputs);

    /// @throw InputError where it cannot be written
    void write(std::string_view bytes);
    /// @param write answers whether the device took it all
    /// @throw InputError where it did not
    template <typename Write>
    void writeBy(Write write) {
        require(write(file_));
    }
    /// Puts the file in its place. @throw InputError
    void commit();

private:
    void require(bool isDone) const;

    QSaveFile file_;
};

}  // namespace rfu::command
