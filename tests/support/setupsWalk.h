#pragma once

#include <rfUtils/catalogues/ResultSetup.h>

#include <QByteArray>
#include <QDebug>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <string>
#include <vector>

/// What a load of result setups from these bytes does, as a plain walk over Qt's document tells.
class SetupsWalk {
public:
    explicit SetupsWalk(const std::string& bytes) {
        QJsonParseError error;
        const auto document = QJsonDocument::fromJson(QByteArray::fromStdString(bytes), &error);
        loads = error.error == QJsonParseError::NoError;
        if (!loads) {
            log("", error.errorString());
        }
        const QJsonObject groups = document.object();
        // By place, not by key: Qt gives a key that begins with a byte-order mark without the mark,
        // and then finds nothing under it.
        for (auto group = groups.begin(); group != groups.end(); ++group) {
            log("", group.key());
            const QJsonValue value = group.value();
            if (value.isArray()) {
                addGroup(group.key(), value.toArray());
            } else if (!value.isObject()) {
                log("", value.toString());
            }
        }
    }

    bool loads = false;
    std::vector<ResultSetup::SetupInfo> setups;
    std::vector<std::string> lines;  // of the message log

private:
    void log(const char* before, const QString& text) {
        QString line;
        QDebug(&line).nospace() << before << text;
        lines.push_back(line.toStdString());
    }

    void addGroup(const QString& key, const QJsonArray& elements) {
        QString last = key;
        for (int i = 0; i < elements.size(); ++i) {
            const QJsonObject object = elements.at(i).toObject();
            if (!object.contains(QLatin1String("label"))) {
                log("Not found property at json.[label] ->  ", last);
            } else if (!object.contains(QLatin1String("id"))) {
                log("Not found property at json.[id] ->  ", last);
            } else {
                last = object[QLatin1String("id")].toString();
                setups.push_back({last, object[QLatin1String("label")].toString()});
            }
        }
    }
};
