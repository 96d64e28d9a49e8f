#pragma once

#include <QAbstractItemModel>
#include <QObject>
#include <QPointer>
#include <QVariant>
#include <QVariantMap>

#include <functional>
#include <optional>
#include <vector>

#include "analysis/maps/mapSheet.h"
#include "qml/maps/mapContents.h"

namespace rfu::qml {

/// The marks that a page puts on a map: a list of objects, or a list model whose rows have the same names as
/// roles, which is followed.
class MapMarks {
public:
    /// @param changed  is called when the model's rows change
    explicit MapMarks(std::function<void()> changed) : changed_(std::move(changed)) {}
    MapMarks(const MapMarks&) = delete;
    MapMarks& operator=(const MapMarks&) = delete;
    ~MapMarks();

    /// @return whether they are others
    bool set(const QVariant& marks);
    const QVariant& value() const { return value_; }

    struct Mark {
        QPointF point;  // in map coordinates
        MapMark mark;
    };
    /// Those whose place on a map is known.
    std::vector<Mark> on(const MapContents& map) const;

private:
    std::vector<QVariantMap> rows() const;
    void follow();

    std::function<void()> changed_;
    QVariant value_;
    QPointer<QAbstractItemModel> model_;
    QObject context_;  // of the connections to the model
};

}  // namespace rfu::qml
