#include <rfUtils/catalogues/ResultSetup.h>

#include <rfUtils/catalogues/detail/existingFile.h>
#include <rfUtils/platform/VemoJsonDocument.h>

#include <QDebug>
#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QtGlobal>

namespace {

/// Logs an entry that is skipped because it lacks a member, as qDebug() would.
/// @param line its text, made if null. Entries that give the same line share it: a log that keeps a
///        line for each entry then holds the id once, however long it is.
void reportSkipped(QString& line, const char* member, const QString& id) {
    if (line.isNull()) {
        QDebug(&line).nospace() << "Not found property at json.[" << member << "] ->  " << id;
    }
    qt_message_output(
        QtDebugMsg,
        QMessageLogContext(QT_MESSAGELOG_FILE, QT_MESSAGELOG_LINE, QT_MESSAGELOG_FUNC, "default"),
        line);
}

/// Appends the setups of one group.
void append(QList<ResultSetup::SetupInfo>& setups, const QString& key, const QJsonArray& entries) {
    const QLatin1String kLabel("label");
    const QLatin1String kId("id");
    // One record for the whole group: a message names the setup appended last, else the group.
    ResultSetup::SetupInfo setup{key, QString()};
    QString withoutLabel;
    QString withoutId;
    for (const QJsonValue element : entries) {
        const QJsonObject entry = element.toObject();  // empty for anything but an object
        const auto label = entry.find(kLabel);
        const auto id = entry.find(kId);
        if (label == entry.end()) {
            reportSkipped(withoutLabel, "label", setup.id);
        } else if (id == entry.end()) {
            reportSkipped(withoutId, "id", setup.id);
        } else {
            setup = {id.value().toString(), label.value().toString()};
            setups.append(setup);
            withoutLabel = QString();
            withoutId = QString();
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
