// The world file beside a picture of a map: GDAL places the picture where it places the map.
#include <analysis/maps/cellGrid.h>
#include <analysis/maps/rasterFile.h>
#include <analysis/maps/worldFile.h>
#include <gdal.h>
#include <gtest/gtest.h>

#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <array>
#include <string>

namespace {

using Place = std::array<double, 6>;

Place placeOf(const QString& path) {
    Place place = {};
    const GDALDatasetH file = GDALOpen(path.toStdString().c_str(), GA_ReadOnly);
    EXPECT_NE(file, nullptr) << path.toStdString();
    if (file != nullptr) {
        EXPECT_EQ(GDALGetGeoTransform(file, place.data()), CE_None) << path.toStdString();
        GDALClose(file);
    }
    return place;
}

}  // namespace

TEST(CrossWorldFile, PlacesThePictureWhereTheMapIs) {
    GDALAllRegister();
    const QTemporaryDir folder;
    for (const char* name : {"/terrain.asc", "/terrain_bil.bil"}) {
        const QString map = QStringLiteral(RFUTILS_SAMPLES) + QLatin1String(name);
        const rfu::CellGrid grid = rfu::requireGrid(rfu::loadRaster(map), map);
        const QString picture = folder.path() + QStringLiteral("/map.png");
        QImage image(grid.columns, grid.rows, QImage::Format_RGB32);
        image.fill(Qt::white);
        ASSERT_TRUE(image.save(picture));
        QFile world(rfu::worldFileName(picture));
        ASSERT_TRUE(world.open(QIODevice::WriteOnly));
        world.write(QByteArray::fromStdString(rfu::worldFileOf(grid)));
        world.close();
        const Place expected = placeOf(map);
        const Place found = placeOf(picture);
        for (std::size_t i = 0; i < expected.size(); ++i) {
            EXPECT_NEAR(found[i], expected[i], 1e-6) << name << ' ' << i;
        }
    }
}
