#include "check/schemas.h"

#include <QFile>
#include <QString>
#include <algorithm>
#include <iterator>

#include "analysis/support/inputError.h"
#include "support/errors.h"

namespace rfu::command {

std::string schemaOf(const std::string& kind) {
    static constexpr const char* kKinds[] = {"catalogue", "setups"};
    if (std::find(std::begin(kKinds), std::end(kKinds), kind) == std::end(kKinds)) {
        throw UsageError("--schema: " + quoted(kind) + " is not catalogue or setups");
    }
    QFile file(QStringLiteral(":/schemas/%1.schema.json").arg(QString::fromStdString(kind)));
    file.open(QIODevice::ReadOnly);
    return file.readAll().toStdString();
}

}  // namespace rfu::command
