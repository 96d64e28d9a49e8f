#include <rfUtils/platform/ServerItem.h>

ServerItem::~ServerItem() = default;

void ServerItem::setProperty(const QString& name, const QVariant& value) {
    properties_.insert(name, value);
}

void ServerItem::setFormatter(const QString& name) {
    formatter_ = name;
}

QVariant ServerItem::property(const QString& name) const {
    return properties_.value(name);
}

QString ServerItem::formatter() const {
    return formatter_;
}
