#pragma once

#ifdef RFUTILS_EXTERNAL_PLATFORM

#include <ServerItem.h>

#else

#include <rfUtils/rfUtilsExport.h>

#include <QMap>
#include <QString>
#include <QVariant>

/// The user-interface side of one instrument parameter: how it is entered and shown.
///
/// The library only calls setProperty() and setFormatter(); the item service defines what the
/// values mean. A library built with an external platform (RFUTILS_EXTERNAL_PLATFORM) takes the
/// class from that platform's <ServerItem.h>. This embedded class stores the values in memory,
/// unchecked, so that they can be read back; derive from it to forward the calls.
class RFUTILS_EXPORT ServerItem {
public:
    virtual ~ServerItem();

    /// Stores a named property.
    /// @param name any text, also an empty one; compared exactly
    /// @param value replaces the earlier value of that name
    virtual void setProperty(const QString& name, const QVariant& value);

    /// Selects a formatter.
    /// @param name replaces the name given before
    virtual void setFormatter(const QString& name);

    /// @param name case-sensitive
    /// @return the value last stored under this name; an invalid QVariant if there is none
    QVariant property(const QString& name) const;

    /// @return the formatter last selected; a null QString if none was
    QString formatter() const;

private:
    QMap<QString, QVariant> properties_;  // Qt 6's QHash ends the process where memory runs out
    QString formatter_;
};

#endif
