#pragma once

#include <QString>
#include <QVariant>

#include <string>
#include <vector>

/// An item service unlike the embedded one: not polymorphic, and it records its calls.
class ServerItem {
public:
    void setProperty(const QString& name, const QVariant& value);
    void setFormatter(const QString& name);

    std::vector<std::string> calls;
};
