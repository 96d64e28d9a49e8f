#include "qml/maps/mapMarks.h"

#include <QJSValue>

#include <cmath>

namespace rfu::qml {

namespace {

constexpr const char* kRoles[] = {"x", "y", "latitude", "longitude", "label", "detail"};

std::optional<double> numberOf(const QVariantMap& row, const char* key) {
    bool isNumber = false;
    const double number = row.value(QLatin1String(key)).toDouble(&isNumber);
    return isNumber && std::isfinite(number) ? std::optional(number) : std::nullopt;
}

/// By map coordinates or, without them, by latitude and longitude.
std::optional<QPointF> pointOf(const QVariantMap& row, const MapContents& map) {
    const auto x = numberOf(row, "x");
    const auto y = numberOf(row, "y");
    if (x && y) {
        return QPointF(*x, *y);
    }
    const auto latitude = numberOf(row, "latitude");
    const auto longitude = numberOf(row, "longitude");
    if (latitude && longitude) {
        return pointAt({*latitude, *longitude}, map.projection, map.grid.middle());
    }
    return std::nullopt;
}

QVariantMap rowOf(const QAbstractItemModel& model, int row) {
    const QHash<int, QByteArray> names = model.roleNames();
    QVariantMap values;
    for (const char* const role : kRoles) {
        const int number = names.key(role, -1);
        if (number >= 0) {
            values.insert(QLatin1String(role), model.index(row, 0).data(number));
        }
    }
    return values;
}

}  // namespace

MapMarks::~MapMarks() {
    if (model_ != nullptr) {
        model_->disconnect(&context_);
    }
}

bool MapMarks::set(const QVariant& marks) {
    const QVariant value =
        marks.canConvert<QJSValue>() && marks.userType() == qMetaTypeId<QJSValue>()
            ? marks.value<QJSValue>().toVariant()
            : marks;
    if (value == value_) {
        return false;
    }
    value_ = value;
    if (model_ != nullptr) {
        model_->disconnect(&context_);
    }
    model_ = qobject_cast<QAbstractItemModel*>(value.value<QObject*>());
    if (model_ != nullptr) {
        follow();
    }
    return true;
}

void MapMarks::follow() {
    const auto changed = [this] { changed_(); };
    QObject::connect(model_, &QAbstractItemModel::dataChanged, &context_, changed);
    QObject::connect(model_, &QAbstractItemModel::rowsInserted, &context_, changed);
    QObject::connect(model_, &QAbstractItemModel::rowsRemoved, &context_, changed);
    QObject::connect(model_, &QAbstractItemModel::rowsMoved, &context_, changed);
    QObject::connect(model_, &QAbstractItemModel::modelReset, &context_, changed);
    QObject::connect(model_, &QAbstractItemModel::layoutChanged, &context_, changed);
    QObject::connect(model_, &QObject::destroyed, &context_, [this] {
        value_ = QVariant();
        changed_();
    });
}

std::vector<QVariantMap> MapMarks::rows() const {
    std::vector<QVariantMap> rows;
    if (model_ != nullptr) {
        for (int row = 0; row < model_->rowCount(); ++row) {
            rows.push_back(rowOf(*model_, row));
        }
        return rows;
    }
    for (const QVariant& row : value_.toList()) {
        rows.push_back(row.toMap());
    }
    return rows;
}

std::vector<MapMarks::Mark> MapMarks::on(const MapContents& map) const {
    std::vector<Mark> marks;
    for (const QVariantMap& row : rows()) {
        if (const auto point = pointOf(row, map)) {
            marks.push_back({*point,
                             {{},
                              row.value(QStringLiteral("label")).toString(),
                              row.value(QStringLiteral("detail")).toString()}});
        }
    }
    return marks;
}

}  // namespace rfu::qml
