#pragma once

#include <rfUtils/presentation/rfUtils.h>

#include <QAbstractListModel>
#include <QString>

namespace rfu::qml {

/// Up to ten short texts that a page collects and shows as notices, the oldest first. Role: `text`.
///
///     ToastModel { id: toasts }
///     ListView { model: toasts; delegate: Text { text: model.text } }
class ToastModel : public QAbstractListModel {
    Q_OBJECT
    /// The number of texts.
    Q_PROPERTY(int count READ count NOTIFY countChanged)
    /// Whether no further text is kept.
    Q_PROPERTY(bool full READ isFull NOTIFY fullChanged)

public:
    /// What a row holds.
    enum Role {
        TextRole = Qt::UserRole  ///< `text`: the notice
    };

    /// Appends a text.
    /// @param text  any; a lone half of a surrogate pair becomes a question mark
    /// @return whether it is kept: false while the model is full
    Q_INVOKABLE bool push(const QString& text);

    /// Removes all texts.
    Q_INVOKABLE void clear();

    /// @cond notify signals and the model
Q_SIGNALS:
    void countChanged();
    void fullChanged();
    /// @endcond

private:
    int count() const { return toasts_.getNoOfToast(); }
    bool isFull() const;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    rfUtils toasts_;
};

}  // namespace rfu::qml
