#include "qml/lists/ToastModel.h"

namespace rfu::qml {

bool ToastModel::push(const QString& text) {
    if (isFull()) {
        return false;
    }
    beginInsertRows({}, count(), count());
    toasts_.setToastMessage(text.toStdString());
    endInsertRows();
    Q_EMIT countChanged();
    if (isFull()) {
        Q_EMIT fullChanged();
    }
    return true;
}

void ToastModel::clear() {
    if (count() == 0) {
        return;
    }
    const bool wasFull = isFull();
    beginRemoveRows({}, 0, count() - 1);
    toasts_.clearToastMessage();
    endRemoveRows();
    Q_EMIT countChanged();
    if (wasFull) {
        Q_EMIT fullChanged();
    }
}

bool ToastModel::isFull() const {
    return count() == static_cast<int>(toasts_.toastMessages.size());
}

int ToastModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : count();
}

QVariant ToastModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid) || role != TextRole) {
        return {};
    }
    return QString::fromStdString(toasts_.toastMessages[static_cast<std::size_t>(index.row())]);
}

QHash<int, QByteArray> ToastModel::roleNames() const {
    return {{TextRole, "text"}};
}

}  // namespace rfu::qml
