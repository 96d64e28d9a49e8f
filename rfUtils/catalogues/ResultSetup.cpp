#include <rfUtils/catalogues/ResultSetup.h>

#include <rfUtils/catalogues/detail/existingFile.h>
#include <rfUtils/platform/VemoJsonDocument.h>

#include <QDebug>
#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>

namespace {

/// Appends the setups of one group.
void append(QList<ResultSetup::SetupInfo>& setups, const QString& key, const QJsonArray& entries) {
    const QLatin1String kLabel("label");
    const QLatin1String kId("id");
    // One record for the whole group: a message names the setup appended last, else the group.
    ResultSetup::SetupInfo setup{key, QString()};
    for (const QJsonValue element : entries) {
        const QJsonObject entry = element.toObject();  // empty for anything but an object
        const auto label = entry.find(kLabel);
        const auto id = entry.find(kId);
        if (label == entry.end()) {
            qDebug() << "Not found property at json.[label] -> " << setup.id;
        } else if (id == entry.end()) {
            qDebug() << "Not found property at json.[id] -> " << setup.id;
        } else {
            setup = {id.value().toString(), label.value().toString()};
            setups.append(setup);
        }
    }
}

}  // namespace

ResultSetup::ResultSetup(QObject* parent) : QObject(parent) {}

ResultSetup::~ResultSetup() = default;

bool ResultSetup::loadJson(QString path) {
    if (!rfu::detail::existingFile(path)) {
        qDebug() << "Not found json file. ->" << path;
        return false;
    }
    VemoJsonDocument document;
    document.readFile(path);
    if (document.hasError()) {
        qDebug() << document.errorString();
        return false;
    }
    const QJsonObject groups = document.object();
    for (auto group = groups.begin(); group != groups.end(); ++group) {
        qDebug() << group.key();
        const QJsonValue value = group.value();
        if (value.isArray()) {
            append(setupList, group.key(), value.toArray());
        } else if (!value.isObject()) {
            qDebug() << value.toString();
        }
    }
    return true;
}

QString ResultSetup::setupId(const int& index) const {
    return setupList.value(index).id;
}

QString ResultSetup::setupLabel(const int& index) const {
    return setupList.value(index).label;
}
