#pragma once

#include <QJsonObject>
#include <QString>

namespace rfu::command {

/// The top-level object of a JSON file.
/// @throw InputError with the line of the error if the file is no JSON object
QJsonObject readJsonObject(const QString& file);

}  // namespace rfu::command
