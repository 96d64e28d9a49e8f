// What writing a picture costs apart from making it.
//
// usage: encode_picture unpack IN.png PIXELS     keeps the pixels of a picture as they are in memory
//        encode_picture encode PIXELS OUT.png    writes them as a waterfall
#include "support/picture.h"

#include <QFile>
#include <QImage>
#include <QString>
#include <cstdint>
#include <string>

namespace {

struct Head {
    std::int32_t width;
    std::int32_t height;
    std::int32_t format;
    std::int32_t colors;
};

bool unpack(const QString& picture, const QString& pixels) {
    const QImage image(picture);
    QFile file(pixels);
    const Head head = {image.width(), image.height(), image.format(), image.colorCount()};
    const qint64 table = head.colors * static_cast<qint64>(sizeof(QRgb));
    return !image.isNull() && file.open(QIODevice::WriteOnly) &&
           file.write(reinterpret_cast<const char*>(&head), sizeof head) == sizeof head &&
           file.write(reinterpret_cast<const char*>(image.colorTable().constData()), table) ==
               table &&
           file.write(reinterpret_cast<const char*>(image.constBits()), image.sizeInBytes()) ==
               image.sizeInBytes();
}

bool encode(const QString& pixels, const QString& picture) {
    QFile file(pixels);
    Head head = {};
    if (!file.open(QIODevice::ReadOnly) ||
        file.read(reinterpret_cast<char*>(&head), sizeof head) != sizeof head) {
        return false;
    }
    QImage image(head.width, head.height, static_cast<QImage::Format>(head.format));
    QVector<QRgb> table(head.colors);
    file.read(reinterpret_cast<char*>(table.data()),
              head.colors * static_cast<qint64>(sizeof(QRgb)));
    image.setColorTable(table);
    if (file.read(reinterpret_cast<char*>(image.bits()), image.sizeInBytes()) !=
        image.sizeInBytes()) {
        return false;
    }
    rfu::command::savePicture(image, picture, {}, rfu::command::Encoding::Fast);
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 4) {
        return 2;
    }
    const bool isUnpacked = argv[1] == std::string("unpack");
    const QString from = QString::fromLocal8Bit(argv[2]);
    const QString to = QString::fromLocal8Bit(argv[3]);
    return (isUnpacked ? unpack(from, to) : encode(from, to)) ? 0 : 1;
}
