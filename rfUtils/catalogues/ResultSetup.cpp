#include <rfUtils/catalogues/ResultSetup.h>
#include <rfUtils/catalogues/detail/existingFile.h>
#include <rfUtils/catalogues/detail/plainJson.h>
#include <rfUtils/catalogues/detail/plainSetups.h>
#include <rfUtils/platform/VemoJsonDocument.h>

#include <QDebug>
#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QLatin1String>

#include <optional>
#include <string_view>
#include <utility>

using rfu::detail::maybePlainBytes;
using rfu::detail::PlainGroup;
using rfu::detail::plainGroupsOf;
using rfu::detail::PlainSetup;
using rfu::detail::takePlainSetups;
using rfu::detail::unescaped;

namespace {

/// Appends the setups of one group.
class Group {
public:
    Group(QList<ResultSetup::SetupInfo>& setups, const QString& key)
        : setups_(setups), setup_{key, QString()} {}

    void add(std::optional<QString> label, std::optional<QString> id) {
        if (!label) {
            qDebug() << "Not found property at json.[label] -> " << setup_.id;
        } else if (!id) {
            qDebug() << "Not found property at json.[id] -> " << setup_.id;
        } else {
            setup_.label = *std::move(label);
            setup_.id = *std::move(id);
            setups_.append(setup_);
        }
    }

private:
    QList<ResultSetup::SetupInfo>& setups_;
    // One record for the whole group: the messages name what was appended last, or the group.
    ResultSetup::SetupInfo setup_;
};

/// Null for a text without data.
QString textOf(std::string_view plain) {
    if (plain.find('\\') != std::string_view::npos) {
        return QString::fromStdString(unescaped(plain));
    }
    return QString::fromUtf8(plain.data(), static_cast<int>(plain.size()));
}

std::optional<QString> textOf(std::optional<std::string_view> member) {
    return member ? std::optional(textOf(*member)) : std::nullopt;
}

std::optional<QString> textOf(const QJsonObject& entry, QLatin1String name) {
    const auto member = entry.find(name);
    if (member == entry.end()) {
        return std::nullopt;
    }
    return member.value().toString();
}

void append(QList<ResultSetup::SetupInfo>& setups, PlainGroup plain) {
    const QString key = textOf(plain.key);
    qDebug() << key;
    Group group(setups, key);
    takePlainSetups(plain.setups, [&](const PlainSetup& setup) {
        group.add(textOf(setup.label), textOf(setup.id));
    });
}

/// Whether the file is plain; its setups are then in the list.
bool appendPlain(QList<ResultSetup::SetupInfo>& setups, const QString& path) {
    const QByteArray bytes = maybePlainBytes(path);
    const auto groups = plainGroupsOf(bytes);
    if (!groups) {
        return false;
    }
    for (const PlainGroup& group : *groups) {
        append(setups, group);
    }
    return true;
}

void append(QList<ResultSetup::SetupInfo>& setups, const QString& key, const QJsonArray& entries) {
    Group group(setups, key);
    for (const QJsonValue element : entries) {
        const QJsonObject entry = element.toObject();  // empty for anything but an object
        group.add(textOf(entry, QLatin1String("label")), textOf(entry, QLatin1String("id")));
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
    if (appendPlain(setupList, path)) {
        return true;
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
