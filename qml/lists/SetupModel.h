#pragma once

#include <QString>
#include <QUrl>

#include <vector>

#include "analysis/catalogues/setups.h"
#include "qml/support/backgroundRead.h"
#include "qml/support/listModel.h"

namespace rfu::qml {

/// The result setups of a file (JSON): groups by their keys, the setups of a group as they stand in
/// the file. The row is the position by which applications ask.
///
///     SetupModel { id: setups; source: "setups.json" }
///     ListView { model: setups; delegate: Text { text: model.group + ": " + model.label } }
///
/// | role      | type   |                                             |
/// |-----------|--------|---------------------------------------------|
/// | `setupId` | string | id of the setup; empty if it is not a text  |
/// | `label`   | string | text for the operator, empty likewise       |
/// | `group`   | string | key of the group that the setup stands in   |
///
/// The file is read on another thread. Until that is done, and if it fails, the model holds what it
/// held before. A new source or reload() replaces a reading under way.
class SetupModel : public ListModel<SetupEntry> {
    Q_OBJECT
    /// The file: local, or a Qt resource. Without one the model is empty.
    Q_PROPERTY(QUrl source READ source WRITE setSource NOTIFY sourceChanged)
    /// How far the reading is.
    Q_PROPERTY(Status status READ status NOTIFY statusChanged)
    /// Why the file could not be read, in a line that names it; else empty.
    Q_PROPERTY(QString errorString READ errorString NOTIFY errorStringChanged)
    /// The number of setups.
    Q_PROPERTY(int count READ count NOTIFY countChanged)

public:
    /// How far the reading of the file is.
    enum Status {
        Null,     ///< there is no file to read
        Ready,    ///< the file has been read
        Loading,  ///< it is being read
        Error     ///< it cannot be read, see `errorString`
    };
    Q_ENUM(Status)

    /// A model without file.
    SetupModel();

    /// Reads the file again, such as after a change.
    Q_INVOKABLE void reload();

    /// @cond notify signals
Q_SIGNALS:
    void sourceChanged();
    void statusChanged();
    void errorStringChanged();
    void countChanged();
    /// @endcond

private:
    QUrl source() const { return source_; }
    void setSource(const QUrl& source);
    Status status() const { return status_; }
    QString errorString() const { return error_; }

    void hold(const std::vector<SetupEntry>& setups);
    void finish(Status status, const QString& error);

    QUrl source_;
    Status status_ = Null;
    QString error_;
    BackgroundRead<std::vector<SetupEntry>> reading_;
};

}  // namespace rfu::qml
