#pragma once

#include <QAbstractItemModel>
#include <QAbstractItemModelTester>
#include <QObject>
#include <QVariant>

#include <memory>

/// Watches a model: breaks of the rules of Qt's models become warnings, and the changes of rows are noted in words.
class ModelTester : public QObject {
    Q_OBJECT
    Q_PROPERTY(QAbstractItemModel* model READ model WRITE setModel NOTIFY modelChanged)

public:
    QAbstractItemModel* model() const { return model_; }
    void setModel(QAbstractItemModel* model) {
        model_ = model;
        tester_ = std::make_unique<QAbstractItemModelTester>(
            model, QAbstractItemModelTester::FailureReportingMode::Warning);
        connect(model, &QAbstractItemModel::rowsInserted, this,
                [this](const QModelIndex&, int first, int last) { note("insert", first, last); });
        connect(model, &QAbstractItemModel::rowsRemoved, this,
                [this](const QModelIndex&, int first, int last) { note("remove", first, last); });
        connect(model, &QAbstractItemModel::modelReset, this,
                [this] { changes_.append(QStringLiteral("reset")); });
        connect(model, &QAbstractItemModel::dataChanged, this,
                [this](const QModelIndex& first, const QModelIndex& last, QVector<int> roles) {
                    note("change", first.row(), last.row());
                    for (const int role : roles) {
                        changes_.last() += ' ' + QString::fromUtf8(model_->roleNames()[role]);
                    }
                });
        Q_EMIT modelChanged();
    }

    /// The changes since the last call, as ["insert 0-1", "change 2-2 label"].
    Q_INVOKABLE QStringList takeChanges() { return std::exchange(changes_, {}); }
    /// What the rows hold in a role.
    Q_INVOKABLE QVariantList values(const QString& role) const {
        QVariantList values;
        const int number = model_->roleNames().key(role.toUtf8(), -1);
        for (int row = 0; row < model_->rowCount(); ++row) {
            values.append(model_->index(row, 0).data(number));
        }
        return values;
    }
    /// The names of the roles, sorted.
    Q_INVOKABLE QStringList roles() const {
        QStringList names;
        for (const QByteArray& name : model_->roleNames()) {
            names.append(QString::fromUtf8(name));
        }
        names.sort();
        return names;
    }

Q_SIGNALS:
    void modelChanged();

private:
    void note(const char* change, int first, int last) {
        changes_.append(QStringLiteral("%1 %2-%3").arg(QLatin1String(change)).arg(first).arg(last));
    }

    QAbstractItemModel* model_ = nullptr;
    std::unique_ptr<QAbstractItemModelTester> tester_;
    QStringList changes_;
};
