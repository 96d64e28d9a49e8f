#include "ElfItem.h"
#include "ServerItem.h"
#include "VemoJsonDocument.h"

#include <QByteArray>
#include <QJsonDocument>
#include <QVariant>

void ServerItem::setProperty(const QString& name, const QVariant& value) {
    calls.push_back(name.toStdString() + '=' + value.toString().toStdString());
}

void ServerItem::setFormatter(const QString& name) {
    calls.push_back("formatter " + name.toStdString());
}

QByteArray VemoJsonDocument::content;
QString VemoJsonDocument::error;
QStringList VemoJsonDocument::pathsRead;

void VemoJsonDocument::readFile(const QString& path) {
    pathsRead.append(path);
    QJsonDocument::operator=(fromJson(content));
}
