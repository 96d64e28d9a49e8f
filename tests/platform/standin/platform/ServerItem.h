#pragma once

#include <QString>
#include <QVariant>

#include <string>
#include <vector>

/// An item service of another make: not polymorphic, and it only writes down what it is told.
class ServerItem {
public:
    void setProperty(const QString& name, const QVariant& value);
    void setFormatter(const QString& name);

    std::vector<std::string> calls;
};
