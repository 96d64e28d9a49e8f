#pragma once

#include <QJsonObject>
#include <QString>
#include <functional>

namespace rfu {

/// The top-level object of a JSON file.
/// @throw InputError with the line of the error if the file is no JSON object
QJsonObject readJsonObject(const QString& file);

/// The same of a file that a class of the library loads as well.
/// @param load makes the class load the file; false where it fails
/// @throw InputError also where loading fails or the file changes between the two reads
QJsonObject loadJsonObject(const QString& file, const std::function<bool()>& load);

/// For an object in which the library finds nothing.
/// @throw InputError with the problem, unless all members are empty lists
void requireNothing(const QJsonObject& object, const QString& file, const char* problem);

}  // namespace rfu
