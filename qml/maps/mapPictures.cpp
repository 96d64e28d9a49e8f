#include "qml/maps/mapPictures.h"

#include <qqml.h>
#include <QQmlEngine>

namespace rfu::qml {

namespace {

/// Pictures are made smaller where a page asks for it, never larger. A side of 0 follows from the other.
QImage reduced(const QImage& picture, QSize wanted) {
    if (wanted.width() <= 0 && wanted.height() <= 0) {
        return picture;
    }
    const QSize bounds(wanted.width() > 0 ? wanted.width() : picture.width(),
                       wanted.height() > 0 ? wanted.height() : picture.height());
    const QSize size = picture.size().scaled(bounds, Qt::KeepAspectRatio).expandedTo(QSize(1, 1));
    return size.width() < picture.width() ? picture.scaled(size) : picture;
}

}  // namespace

QString PictureStore::newName() {
    const std::lock_guard lock(mutex_);
    return QString::number(++names_);
}

void PictureStore::hold(const QString& name, const QImage& picture) {
    const std::lock_guard lock(mutex_);
    pictures_[name] = picture;
}

void PictureStore::drop(const QString& name) {
    const std::lock_guard lock(mutex_);
    pictures_.erase(name);
}

QImage PictureStore::picture(const QString& name) const {
    const std::lock_guard lock(mutex_);
    const auto found = pictures_.find(name);
    return found != pictures_.end() ? found->second : QImage();
}

std::shared_ptr<PictureStore> MapPictures::storeOf(const QObject* object) {
    const QQmlEngine* const engine = qmlEngine(object);
    const auto* const provider =
        engine != nullptr
            ? dynamic_cast<MapPictures*>(engine->imageProvider(QLatin1String(kProvider)))
            : nullptr;
    return provider != nullptr ? provider->store_ : nullptr;
}

QString MapPictures::urlOf(const QString& name) {
    return QStringLiteral("image://%1/%2").arg(QLatin1String(kProvider), name);
}

QImage MapPictures::requestImage(const QString& name, QSize* size, const QSize& requestedSize) {
    QImage picture = store_->picture(name);
    if (picture.isNull()) {
        picture = QImage(1, 1, QImage::Format_ARGB32_Premultiplied);
        picture.fill(Qt::transparent);
    }
    if (size != nullptr) {
        *size = picture.size();
    }
    return reduced(picture, requestedSize);
}

}  // namespace rfu::qml
