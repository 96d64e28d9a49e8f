#include "analysis/catalogues/jsonKind.h"

#include <QByteArray>
#include <QFile>
#include <QFileInfo>

#include "analysis/support/files.h"
#include "analysis/support/inputError.h"

namespace rfu {

namespace {

/// The beginning of a file in lower case, without what UTF-16 has between letters.
QByteArray beginningOf(const QString& name) {
    constexpr qint64 kEnough = 65536;
    QFile file;
    try {
        openRegular(file, name);
    } catch (const InputError&) {
        return {};
    }
    return file.read(kEnough).replace('\0', "").toLower();
}

}  // namespace

JsonContent jsonContentOf(const QString& file) {
    const QByteArray text = beginningOf(file);
    if (text.contains("json-schema.org")) {
        return JsonContent::Other;
    }
    const bool hasId = text.contains("\"id\"");
    const bool hasLabel = text.contains("\"label\"");
    if (text.contains("\"dispseq\"") || (text.contains("\"enum\"") && (hasId || hasLabel))) {
        return JsonContent::Catalogue;
    }
    if (hasId && hasLabel) {
        return JsonContent::Setups;
    }
    const QString name = QFileInfo(file).fileName().toLower();
    if (name.contains(QLatin1String("setup"))) {
        return JsonContent::Setups;
    }
    return name.contains(QLatin1String("catalog")) ? JsonContent::Catalogue : JsonContent::Other;
}

}  // namespace rfu
