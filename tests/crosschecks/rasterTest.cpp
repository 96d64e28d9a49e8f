// Grids written by GDAL: the library reads their header and each cell to the last bit.
//
// ASCII grids are written with GDAL's default precision (20 digits) and with SIGNIFICANT_DIGITS=9,
// the minimum that distinguishes all floats. GDAL writes BIL grids in the machine's byte order,
// which the library reads.
#include <geo/mapFiles.h>
#include <support/samples.h>

#include <gdal.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace {

using rfu::test::same;
using rfu::test::Samples;

constexpr float kInf = std::numeric_limits<float>::infinity();
constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

struct Raster {
    int columns = 0;
    int rows = 0;
    double west = 0.0;  // edge of the grid
    double south = 0.0;
    double cell = 1.0;
    double cellHeight = 1.0;
    std::optional<double> noData;
    std::vector<float> cells;

    double north() const { return south + cellHeight * rows; }
    const float* row(int number) const { return cells.data() + number * columns; }
};

float special(Samples& samples) {
    using Limits = std::numeric_limits<float>;
    static constexpr float kSpecial[] = {0.0F,
                                         -0.0F,
                                         kInf,
                                         -kInf,
                                         kNan,
                                         Limits::denorm_min(),
                                         -Limits::denorm_min(),
                                         Limits::min(),
                                         Limits::max(),
                                         Limits::lowest(),
                                         Limits::epsilon(),
                                         16777216.0F,
                                         0.1F,
                                         -9999.0F,
                                         2147483648.0F};
    return samples.oneOf(kSpecial);
}

float cellValue(Samples& samples) {
    switch (samples.below(6)) {
        case 0:
            return special(samples);
        case 1:
        case 2:
            return samples.anySinglePattern();
        case 3:
            return static_cast<float>(samples.below(20001)) - 10000.0F;
        default:
            return static_cast<float>(samples.between(-500.0, 9000.0));
    }
}

/// Edges and cell sizes have few binary digits, so that their texts are exact.
Raster randomRaster(Samples& samples, int minColumns) {
    Raster raster;
    raster.columns = minColumns + static_cast<int>(samples.below(60));
    raster.rows = 1 + static_cast<int>(samples.below(40));
    raster.west = std::nearbyint(samples.between(-2e6, 2e6) * 64.0) / 64.0;
    raster.south = std::nearbyint(samples.between(-2e6, 2e6) * 64.0) / 64.0;
    raster.cell = static_cast<double>(1 + samples.below(6400)) / 64.0;
    raster.cellHeight = raster.cell;
    static constexpr double kNoData[] = {-9999.0, 0.0, -32768.0, 1e20, -3.4028234663852886e38};
    raster.noData = samples.oneOf(kNoData);
    const int count = raster.columns * raster.rows;
    for (int i = 0; i < count; ++i) {
        raster.cells.push_back(cellValue(samples));
    }
    return raster;
}

using Options = std::vector<const char*>;

class CrossRaster : public MapFiles {
protected:
    static void SetUpTestSuite() { GDALAllRegister(); }

    /// Writes a raster to an empty GDAL data set.
    static void fill(GDALDatasetH set, const Raster& raster) {
        double place[] = {raster.west, raster.cell, 0.0, raster.north(), 0.0, -raster.cellHeight};
        ASSERT_EQ(GDALSetGeoTransform(set, place), CE_None);
        const GDALRasterBandH band = GDALGetRasterBand(set, 1);
        if (raster.noData) {
            ASSERT_EQ(GDALSetRasterNoDataValue(band, *raster.noData), CE_None);
        }
        std::vector<float> cells = raster.cells;
        ASSERT_EQ(GDALRasterIO(band, GF_Write, 0, 0, raster.columns, raster.rows, cells.data(),
                               raster.columns, raster.rows, GDT_Float32, 0, 0),
                  CE_None);
    }

    static GDALDatasetH created(const char* driver, const std::string& path, const Raster& raster) {
        return GDALCreate(GDALGetDriverByName(driver), path.c_str(), raster.columns, raster.rows, 1,
                          GDT_Float32, nullptr);
    }

    void writeAscii(const Raster& raster, Options options = {}) {
        const GDALDatasetH memory = created("MEM", "", raster);
        ASSERT_NE(memory, nullptr);
        fill(memory, raster);
        options.push_back(nullptr);
        const GDALDatasetH file =
            GDALCreateCopy(GDALGetDriverByName("AAIGrid"), path("map.asc").toStdString().c_str(),
                           memory, FALSE, const_cast<char**>(options.data()), nullptr, nullptr);
        ASSERT_NE(file, nullptr);
        GDALClose(file);
        GDALClose(memory);
    }

    void writeBil(const Raster& raster) {
        const GDALDatasetH file = created("EHdr", path("map.bil").toStdString(), raster);
        ASSERT_NE(file, nullptr);
        fill(file, raster);
        GDALClose(file);
    }

    void expectSizes(const Raster& raster) const {
        EXPECT_EQ(map->isLoaded, 1);
        EXPECT_EQ(map->isValid, 1);
        EXPECT_EQ(message(), kLoaded);
        EXPECT_EQ(map->nCols, raster.columns);
        EXPECT_EQ(map->nRows, raster.rows);
        EXPECT_EQ(map->cellSize, static_cast<float>(raster.cell));
        EXPECT_EQ(map->noData, static_cast<float>(raster.noData.value_or(0.0)));
    }

    std::unique_ptr<veltaGEO> fresh() const { return std::make_unique<veltaGEO>(); }
};

/// Compares all NaN as equal: a text has no payload.
void expectSameNumbers(const veltaGEO& map, const Raster& raster) {
    for (int row = 0; row < raster.rows; ++row) {
        for (int column = 0; column < raster.columns; ++column) {
            ASSERT_TRUE(same(map.grid[row][column], raster.row(row)[column]))
                << "row " << row << ", column " << column << std::hexfloat << ": "
                << map.grid[row][column] << " instead of " << raster.row(row)[column];
        }
    }
}

void expectSameBytes(const veltaGEO& map, const Raster& raster) {
    const auto bytes = static_cast<std::size_t>(raster.columns) * sizeof(float);
    for (int row = 0; row < raster.rows; ++row) {
        ASSERT_EQ(std::memcmp(map.grid[row], raster.row(row), bytes), 0) << "row " << row;
    }
}

TEST_F(CrossRaster, AsciiGridsOfAnyNumbers) {
    Samples samples(20241130);
    const Options kPrecisions[] = {{}, {"SIGNIFICANT_DIGITS=9"}};
    std::size_t count = 0;
    for (int i = 0; i < 300 && !HasFailure(); ++i) {
        const Raster raster = randomRaster(samples, 3);
        SCOPED_TRACE(testing::Message()
                     << "raster " << i << ", " << raster.columns << " by " << raster.rows);
        writeAscii(raster, samples.oneOf(kPrecisions));
        map = fresh();
        ASSERT_TRUE(map->loadASCFile(path("map.asc")));
        expectSizes(raster);
        EXPECT_EQ(map->originX, static_cast<float>(raster.west));
        EXPECT_EQ(map->originY, static_cast<float>(raster.south));
        expectSameNumbers(*map, raster);
        count += raster.cells.size();
    }
    RecordProperty("cells", static_cast<int>(count));
}

// The library loads the rounded text, not the original number.
TEST_F(CrossRaster, AsciiGridsHaveTheDecimalsOfTheirText) {
    Raster raster{3, 1, 0.0, 0.0, 1.0, 1.0, -9999.0, {1.23456F, -0.0004F, 8848.86F}};
    writeAscii(raster, {"DECIMAL_PRECISION=2"});
    ASSERT_TRUE(map->loadASCFile(path("map.asc")));
    raster.cells = {1.23F, -0.0F, 8848.86F};
    expectSameNumbers(*map, raster);
}

// GDAL writes the no-data line, from which rows are counted, only if there is a value. Without it
// rows are counted from the start of the file: behind five header lines they begin in row 5.
TEST_F(CrossRaster, AsciiGridsWithoutNoDataBeginBelowTheirHeader) {
    const Raster raster{3,   2,   0.0,          0.0,
                        1.0, 1.0, std::nullopt, {1.0F, 2.0F, 3.0F, 4.0F, 5.0F, 6.0F}};
    writeAscii(raster);
    ASSERT_TRUE(map->loadASCFile(path("map.asc")));
    EXPECT_EQ(cells(*map, 0, 3), (std::vector<float>{0.0F, 0.0F, 0.0F}));
    EXPECT_EQ(cells(*map, 5, 3), (std::vector<float>{1.0F, 2.0F, 3.0F}));
    EXPECT_EQ(cells(*map, 6, 3), (std::vector<float>{4.0F, 5.0F, 6.0F}));
}

// GDAL writes the sides of oblong cells as "dx" and "dy", which the library does not read.
TEST_F(CrossRaster, AsciiGridsOfOblongCellsHaveNoCellSize) {
    const Raster raster{3, 1, 0.0, 0.0, 2.0, 5.0, -9999.0, {1.0F, 2.0F, 3.0F}};
    writeAscii(raster);
    ASSERT_TRUE(map->loadASCFile(path("map.asc")));
    EXPECT_EQ(map->cellSize, 0.0F);
    expectSameNumbers(*map, raster);
}

// A line of two numbers is a header line, a line of one is skipped.
TEST_F(CrossRaster, AsciiGridsOfOneOrTwoColumnsHaveNoRows) {
    for (const int columns : {1, 2}) {
        const Raster raster{columns, 1, 0.0, 0.0, 1.0, 1.0, -9999.0, {7.0F, 8.0F}};
        writeAscii(raster);
        map = fresh();
        ASSERT_TRUE(map->loadASCFile(path("map.asc")));
        EXPECT_EQ(map->nCols, columns);
        EXPECT_EQ(cells(*map, 0, 2), (std::vector<float>{0.0F, 0.0F}));
    }
}

TEST_F(CrossRaster, BilGridsOfAnyBits) {
    const ScopedCodec eightBit("ISO 8859-1");
    Samples samples(20241201);
    std::size_t count = 0;
    for (int i = 0; i < 300 && !HasFailure(); ++i) {
        Raster raster = randomRaster(samples, 1);
        for (float& cell : raster.cells) {
            cell = samples.coin() ? samples.anySinglePattern() : cell;
        }
        raster.cellHeight = static_cast<double>(1 + samples.below(6400)) / 64.0;
        raster.cells[0] = 12.5F;  // a byte-order mark would make the bytes Unicode text
        SCOPED_TRACE(testing::Message()
                     << "raster " << i << ", " << raster.columns << " by " << raster.rows);
        writeBil(raster);
        map = fresh();
        ASSERT_TRUE(map->loadHDRFile(path("map.hdr")));
        EXPECT_EQ(map->isFloat, 1);
        ASSERT_TRUE(map->loadBILFile(path("map.bil")));
        expectSizes(raster);
        // a BIL header holds the centre of the first cell
        EXPECT_EQ(map->originX, static_cast<float>(raster.west + raster.cell / 2));
        EXPECT_EQ(map->originY, static_cast<float>(raster.north() - raster.cellHeight / 2));
        expectSameBytes(*map, raster);
        count += raster.cells.size();
    }
    RecordProperty("cells", static_cast<int>(count));
}

/// The maximum size; a column or a row more is refused.
TEST_F(CrossRaster, TheLargestGrids) {
    const ScopedCodec eightBit("ISO 8859-1");
    Samples samples(20241202);
    Raster raster{2048, 2048, 0.0, 0.0, 25.0, 25.0, -9999.0, {}};
    raster.cells.resize(2048 * 2048);
    for (float& cell : raster.cells) {
        cell = samples.anySinglePattern();
    }
    raster.cells[0] = 12.5F;
    writeBil(raster);
    ASSERT_TRUE(map->loadHDRFile(path("map")));
    ASSERT_TRUE(map->loadBILFile(path("map")));
    expectSizes(raster);
    expectSameBytes(*map, raster);

    for (const auto& [columns, rows] : {std::pair{2048, 20}, std::pair{3, 2048}}) {
        raster.columns = columns;
        raster.rows = rows;
        map = fresh();
        writeAscii(raster);
        ASSERT_TRUE(map->loadASCFile(path("map")));
        expectSizes(raster);
        expectSameNumbers(*map, raster);
    }

    const struct {
        int columns;
        int rows;
        const char* refusal;
    } kTooLarge[] = {{2049, 1, kTooManyColumns}, {3, 2049, kTooManyRows}};
    for (const auto& row : kTooLarge) {
        raster.columns = row.columns;
        raster.rows = row.rows;
        writeAscii(raster);
        EXPECT_FALSE(map->loadASCFile(path("map")));
        EXPECT_EQ(message(), row.refusal);
        writeBil(raster);
        EXPECT_FALSE(map->loadHDRFile(path("map")));
        EXPECT_EQ(message(), row.refusal);
    }
}

// Integer rasters count as loaded; the grid stays unchanged.
TEST_F(CrossRaster, IntegerBilGridsAreLoadedWithoutTheirCells) {
    const GDALDatasetH file =
        GDALCreate(GDALGetDriverByName("EHdr"), path("map.bil").toStdString().c_str(), 3, 2, 1,
                   GDT_Int16, nullptr);
    ASSERT_NE(file, nullptr);
    ASSERT_EQ(GDALFillRaster(GDALGetRasterBand(file, 1), 77.0, 0.0), CE_None);
    GDALClose(file);
    map->grid[0][0] = 5.0F;
    ASSERT_TRUE(map->loadHDRFile(path("map")));
    EXPECT_EQ(map->isFloat, 0);
    ASSERT_TRUE(map->loadBILFile(path("map")));
    EXPECT_EQ(message(), kLoaded);
    EXPECT_EQ(cells(*map, 0, 3), (std::vector<float>{5.0F, 0.0F, 0.0F}));
}

Raster readByGdal(const QString& path) {
    Raster raster;
    const GDALDatasetH file = GDALOpen(path.toStdString().c_str(), GA_ReadOnly);
    EXPECT_NE(file, nullptr);
    if (file == nullptr) {
        return raster;
    }
    raster.columns = GDALGetRasterXSize(file);
    raster.rows = GDALGetRasterYSize(file);
    double place[6] = {};
    EXPECT_EQ(GDALGetGeoTransform(file, place), CE_None);
    raster.west = place[0];
    raster.cell = place[1];
    raster.cellHeight = -place[5];
    raster.south = place[3] - raster.cellHeight * raster.rows;
    const GDALRasterBandH band = GDALGetRasterBand(file, 1);
    raster.noData = GDALGetRasterNoDataValue(band, nullptr);
    raster.cells.resize(static_cast<std::size_t>(raster.columns) *
                        static_cast<std::size_t>(raster.rows));
    EXPECT_EQ(GDALRasterIO(band, GF_Read, 0, 0, raster.columns, raster.rows, raster.cells.data(),
                           raster.columns, raster.rows, GDT_Float32, 0, 0),
              CE_None);
    GDALClose(file);
    return raster;
}

TEST_F(CrossRaster, TheSampleMapsAreReadAlike) {
    const QString ascii = QStringLiteral(RFUTILS_SAMPLES "/terrain.asc");
    const Raster terrain = readByGdal(ascii);
    ASSERT_TRUE(map->loadASCFile(ascii));
    expectSizes(terrain);
    EXPECT_EQ(map->originX, static_cast<float>(terrain.west));
    EXPECT_EQ(map->originY, static_cast<float>(terrain.south));
    expectSameNumbers(*map, terrain);

    const QString bil = QStringLiteral(RFUTILS_SAMPLES "/terrain_bil.bil");
    const Raster terrainBil = readByGdal(bil);
    ASSERT_TRUE(map->loadHDRFile(bil));
    {
        const ScopedCodec eightBit("ISO 8859-1");  // also encodes the name
        ASSERT_TRUE(map->loadBILFile(QString::fromLatin1(bil.toUtf8())));
    }
    expectSizes(terrainBil);
    EXPECT_EQ(map->originX, static_cast<float>(terrainBil.west + terrainBil.cell / 2));
    EXPECT_EQ(map->originY, static_cast<float>(terrainBil.north() - terrainBil.cellHeight / 2));
    expectSameBytes(*map, terrainBil);
}

}  // namespace
