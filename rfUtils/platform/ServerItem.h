#pragma once

#ifdef RFUTILS_EXTERNAL_PLATFORM

#include <ServerItem.h>

#else

#include <rfUtils/rfUtilsExport.h>

#include <QHash>
#include <QString>
#include <QVariant>

/// The user-interface side of one instrument parameter: how it is entered and shown.
///
/// The library only calls setProperty() and setFormatter(); what the values mean is the item
/// service's affair. A library built with an external platform (RFUTILS_EXTERNAL_PLATFORM) takes
/// the class from that platform's <ServerItem.h>. This embedded one keeps what was set, in memory
/// and without checks, so that it can be read back; derive from it to forward the calls elsewhere.
class RFUTILS_EXPORT ServerItem {
public:
    virtual ~ServerItem();

    /// Stores a named property; a later value of the same name replaces the earlier one.
    /// Names are compared exactly, any name (also an empty one) and any value are accepted.
    virtual void setProperty(const QString& name, const QVariant& value);

    /// Selects the formatter by name; only the last name is kept.
    virtual void setFormatter(const QString& name);

    /// The value last stored under this name; an invalid QVariant when it was never set.
    ///   setProperty("precision", 2), property("precision") -> QVariant(2)
    ///   property("Precision") -> invalid: letter case counts
    QVariant property(const QString& name) const;

    /// The formatter last selected; a null QString when none was.
    QString formatter() const;

private:
    QHash<QString, QVariant> properties_;
    QString formatter_;
};

#endif
