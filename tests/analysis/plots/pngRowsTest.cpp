#include "analysis/plots/pngRows.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QImage>
#include <vector>

using rfu::PixelRows;

namespace {

/// A palette of greys with a first entry that is transparent, and the entry 3 * x + y at each pixel.
PixelRows sample(QSize size) {
    PixelRows picture = {size, {qRgba(0, 0, 0, 0)}, {}};
    for (int i = 1; i < 256; ++i) {
        picture.colors.push_back(qRgb(i, i, i));
    }
    picture.forEachRow = [size](const PixelRows::Use& use) {
        std::vector<uchar> row(static_cast<std::size_t>(size.width()));
        for (int y = 0; y < size.height(); ++y) {
            for (int x = 0; x < size.width(); ++x) {
                row[static_cast<std::size_t>(x)] = static_cast<uchar>(3 * x + y);
            }
            if (!use(row.data())) {
                break;
            }
        }
    };
    return picture;
}

/// Takes some bytes and no more, at most ten at a time.
class FullDevice : public QIODevice {
public:
    explicit FullDevice(qint64 room) : room_(room) { open(WriteOnly | Unbuffered); }

protected:
    qint64 readData(char*, qint64) override { return -1; }
    qint64 writeData(const char*, qint64 count) override {
        const qint64 taken = std::min<qint64>({count, room_, 10});
        room_ -= taken;
        return taken > 0 ? taken : -1;
    }

private:
    qint64 room_;
};

}  // namespace

TEST(PngRows, ArePng) {
    for (const QSize size : {QSize(1, 1), QSize(40, 50), QSize(3000, 700)}) {
        QBuffer buffer;
        ASSERT_TRUE(buffer.open(QIODevice::WriteOnly));
        ASSERT_TRUE(writePng(buffer, sample(size)));
        QImage image;
        ASSERT_TRUE(image.loadFromData(buffer.data(), "PNG"));
        EXPECT_EQ(image.size(), size);
        EXPECT_EQ(image.pixel(0, 0), qRgba(0, 0, 0, 0));
        const int entry = (3 * (size.width() - 1) + size.height() - 1) % 256;
        EXPECT_EQ(image.pixelIndex(size.width() - 1, size.height() - 1), entry);
    }
}

TEST(PngRows, SayWhereTheyCannotBeWritten) {
    QBuffer buffer;
    ASSERT_TRUE(buffer.open(QIODevice::WriteOnly));
    ASSERT_TRUE(writePng(buffer, sample({40, 50})));
    FullDevice enough(buffer.size());
    EXPECT_TRUE(writePng(enough, sample({40, 50})));
    for (const qint64 room : {qint64{0}, qint64{30}, buffer.size() - 1}) {
        FullDevice full(room);
        EXPECT_FALSE(writePng(full, sample({40, 50}))) << room;
    }
}
