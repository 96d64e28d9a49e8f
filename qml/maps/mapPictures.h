#pragma once

#include <QImage>
#include <QObject>
#include <QQuickImageProvider>
#include <QString>

#include <map>
#include <memory>
#include <mutex>

namespace rfu::qml {

/// Pictures by their names, for all threads.
class PictureStore {
public:
    /// A name that no other picture of this store has had.
    QString newName();
    void hold(const QString& name, const QImage& picture);
    void drop(const QString& name);
    /// Null for a name that holds none.
    QImage picture(const QString& name) const;

private:
    mutable std::mutex mutex_;
    std::map<QString, QImage> pictures_;
    int names_ = 0;
};

/// The pictures of the maps of an engine, as "image://rfutils-map/NAME". Engines ask for them on threads of
/// their own.
class MapPictures : public QQuickImageProvider {
public:
    static constexpr char kProvider[] = "rfutils-map";

    MapPictures() : QQuickImageProvider(QQuickImageProvider::Image) {}

    /// The store of the engine that has made an object; null for an object without engine.
    static std::shared_ptr<PictureStore> storeOf(const QObject* object);
    /// The url of a picture of a store.
    static QString urlOf(const QString& name);

    /// A transparent pixel for a name that holds none: an empty picture would be reported as a failure on the console,
    /// while it only means that the map has changed.
    QImage requestImage(const QString& name, QSize* size, const QSize& requestedSize) override;

private:
    const std::shared_ptr<PictureStore> store_ = std::make_shared<PictureStore>();
};

}  // namespace rfu::qml
