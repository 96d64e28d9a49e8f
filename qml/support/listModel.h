#pragma once

#include <QAbstractListModel>
#include <QVariant>

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

namespace rfu::qml {

/// A role of a list: its name and its value in a row.
template <typename Row>
struct RowRole {
    const char* name;
    QVariant (*value)(const Row& row);
};

/// A list of rows that are replaced as a whole, while views are told what has changed only.
template <typename Row>
class ListModel : public QAbstractListModel {
protected:
    /// Whether two rows are the same one, perhaps with other values.
    using Same = bool (*)(const Row& a, const Row& b);

    ListModel(std::vector<RowRole<Row>> roles, Same same) : roles_(std::move(roles)), same_(same) {}

    int count() const { return static_cast<int>(rows_.size()); }

    /// Shows other rows. Those at the beginning and at the end that are the same stay, with their
    /// changed roles told; the rows between them are removed and inserted.
    void show(std::vector<Row> rows) {
        const std::size_t most = std::min(rows.size(), rows_.size());
        const auto same = [&](const Row& a, const Row& b) { return same_(a, b); };
        const std::size_t head = static_cast<std::size_t>(
            std::mismatch(rows.begin(), rows.begin() + offset(most), rows_.begin(), same).first -
            rows.begin());
        const std::size_t tail = static_cast<std::size_t>(
            std::mismatch(rows.rbegin(), rows.rbegin() + offset(most - head), rows_.rbegin(), same)
                .first -
            rows.rbegin());
        const std::size_t inserted = rows.size() - tail;
        remove(head, rows_.size() - tail);
        insert(head, rows, inserted);
        for (std::size_t i = 0; i < head; ++i) {
            update(i, std::move(rows[i]));
        }
        for (std::size_t i = inserted; i < rows.size(); ++i) {
            update(i, std::move(rows[i]));
        }
    }

private:
    static std::ptrdiff_t offset(std::size_t index) { return static_cast<std::ptrdiff_t>(index); }

    void remove(std::size_t first, std::size_t end) {
        if (first < end) {
            beginRemoveRows({}, static_cast<int>(first), static_cast<int>(end) - 1);
            rows_.erase(rows_.begin() + offset(first), rows_.begin() + offset(end));
            endRemoveRows();
        }
    }

    void insert(std::size_t first, const std::vector<Row>& rows, std::size_t end) {
        if (first < end) {
            beginInsertRows({}, static_cast<int>(first), static_cast<int>(end) - 1);
            rows_.insert(rows_.begin() + offset(first), rows.begin() + offset(first),
                         rows.begin() + offset(end));
            endInsertRows();
        }
    }

    void update(std::size_t at, Row row) {
        QVector<int> changed;
        for (std::size_t role = 0; role < roles_.size(); ++role) {
            if (roles_[role].value(row) != roles_[role].value(rows_[at])) {
                changed.append(Qt::UserRole + static_cast<int>(role));
            }
        }
        rows_[at] = std::move(row);
        if (!changed.isEmpty()) {
            const QModelIndex where = index(static_cast<int>(at));
            Q_EMIT dataChanged(where, where, changed);
        }
    }

    int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : count();
    }

    QVariant data(const QModelIndex& where, int role) const override {
        const int known = role - Qt::UserRole;
        if (!checkIndex(where, CheckIndexOption::IndexIsValid) || known < 0 ||
            known >= static_cast<int>(roles_.size())) {
            return {};
        }
        return roles_[static_cast<std::size_t>(known)].value(
            rows_[static_cast<std::size_t>(where.row())]);
    }

    QHash<int, QByteArray> roleNames() const override {
        QHash<int, QByteArray> names;
        for (std::size_t role = 0; role < roles_.size(); ++role) {
            names.insert(Qt::UserRole + static_cast<int>(role), roles_[role].name);
        }
        return names;
    }

    std::vector<RowRole<Row>> roles_;
    Same same_;
    std::vector<Row> rows_;
};

}  // namespace rfu::qml
