#include <rfUtils/catalogues/ResultSetup.h>
#include <rfUtils/catalogues/detail/existingFile.h>
#include <rfUtils/platform/VemoJsonDocument.h>

#include <QDebug>
#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QLatin1String>

namespace {

void appendGroup(QList<ResultSetup::SetupInfo>& setups, const QString& key,
                 const QJsonArray& entries) {
    // One record for the whole group: the messages name what was appended last, or the group.
    ResultSetup::SetupInfo setup{key, QString()};
    for (const QJsonValue element : entries) {
        const QJsonObject entry = element.toObject();  // empty for anything but an object
        const auto label = entry.find(QLatin1String("label"));
        const auto id = entry.find(QLatin1String("id"));
        if (label == entry.end()) {
            qDebug() << "Not found property at json.[label] -> " << setup.id;
        } else if (id == entry.end()) {
            qDebug() << "Not found property at json.[id] -> " << setup.id;
        } else {
            setup.label = label.value().toString();
            setup.id = id.value().toString();
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
            appendGroup(setupList, group.key(), value.toArray());
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
