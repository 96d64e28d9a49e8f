#include "check/schemas.h"

#include <QFile>
#include <QString>

namespace rfu::command {

std::vector<std::string> schemaKinds() {
    return {"catalogue", "setups"};
}

std::string schemaOf(const std::string& kind) {
    QFile file(QStringLiteral(":/schemas/%1.schema.json").arg(QString::fromStdString(kind)));
    file.open(QIODevice::ReadOnly);
    return file.readAll().toStdString();
}

}  // namespace rfu::command
