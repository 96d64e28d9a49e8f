#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QUrl>

#include <memory>

#include "analysis/catalogues/choices.h"
#include "qml/support/backgroundRead.h"

namespace rfu::qml {

/// The choices of settings, from catalogue files (JSON). ChoiceModel shows those of a setting.
///
///     Catalogue { id: catalogue; source: "catalogue.json" }
///     Text { text: catalogue.status === Catalogue.Error ? catalogue.errorString : "" }
///
/// Files are read on another thread. Until that is done, and if it fails, the catalogue holds what
/// it held before. A new source or reload() replaces a reading under way; the object's end stops it
/// after the file at hand.
class Catalogue : public QObject {
    Q_OBJECT
    /// The file, if there is one: local, or a Qt resource.
    Q_PROPERTY(QUrl source READ source WRITE setSource NOTIFY sourceChanged)
    /// The files, merged in their order: a later choice replaces an earlier one of the same item and
    /// id. Without a file the catalogue is empty.
    Q_PROPERTY(QList<QUrl> sources READ sources WRITE setSources NOTIFY sourcesChanged)
    /// How far the reading is.
    Q_PROPERTY(Status status READ status NOTIFY statusChanged)
    /// Why the files could not be read, in a line that names the file; else empty.
    Q_PROPERTY(QString errorString READ errorString NOTIFY errorStringChanged)
    /// The ids of the settings that have choices, by character code.
    Q_PROPERTY(QStringList items READ items NOTIFY itemsChanged)

public:
    /// How far the reading of files is.
    enum Status {
        Null,     ///< there is no file to read
        Ready,    ///< the files have been read
        Loading,  ///< they are being read
        Error     ///< they cannot be read, see `errorString`
    };
    Q_ENUM(Status)

    /// A catalogue without files.
    Catalogue();

    /// Reads the files again, such as after a change.
    Q_INVOKABLE void reload();

    /// @return the choices, for ChoiceModel
    const subItemList& choices() const { return held_->choices; }

    /// @cond notify signals
Q_SIGNALS:
    void sourceChanged();
    void sourcesChanged();
    void statusChanged();
    void errorStringChanged();
    void itemsChanged();
    /// @endcond
    /// The choices may be others now.
    void choicesChanged();

private:
    QUrl source() const { return sources_.value(0); }
    void setSource(const QUrl& source);
    QList<QUrl> sources() const { return sources_; }
    void setSources(const QList<QUrl>& sources);
    Status status() const { return status_; }
    QString errorString() const { return error_; }
    QStringList items() const { return held_->items; }

    void hold(std::shared_ptr<const ItemChoices> choices);
    void finish(Status status, const QString& error);

    QList<QUrl> sources_;
    Status status_ = Null;
    QString error_;
    std::shared_ptr<const ItemChoices> held_ = std::make_shared<const ItemChoices>();
    BackgroundRead<ItemChoices> reading_;
};

}  // namespace rfu::qml
