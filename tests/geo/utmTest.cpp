#include <support/csvRows.h>

#include <rfUtils/geo/veltaGEO.h>

#include <gtest/gtest.h>

#include <QByteArray>
#include <QFile>
#include <QList>

#include <cmath>
#include <limits>
#include <memory>
#include <vector>

namespace {

constexpr float kInf = std::numeric_limits<float>::infinity();
constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

class Utm : public testing::Test {
protected:
    std::unique_ptr<veltaGEO> map = std::make_unique<veltaGEO>();
};

TEST_F(Utm, TellsTheZoneOfALongitude) {
    const struct {
        float longitude;
        int zone;
    } kCases[] = {
        {-180.0F, 1},
        {-174.00002F, 1},
        {-174.0F, 2},
        {-69.0F, 19},
        {-0.00002F, 30},
        {-1e-30F, 31},  // absorbed by 180 even in double precision
        {0.0F, 31},
        {5.9999995F, 31},
        {6.0F, 32},
        {179.99998F, 60},
        {180.0F, 61},
        {186.0F, 62},
        {-180.00002F, 0},
        {-186.0F, 0},
        {-186.00002F, -1},
        {1e30F, 2147483647},
        {-1e30F, -2147483647 - 1},
        {kInf, 2147483647},
        {-kInf, -2147483647 - 1},
        {kNan, 0},
    };
    for (const auto& row : kCases) {
        for (const float latitude : {0.0F, 60.0F, 78.0F, -90.0F, kNan}) {
            EXPECT_EQ(map->LatLngToUTMZone(latitude, row.longitude), row.zone)
                << row.longitude << " at latitude " << latitude;
        }
    }
}

TEST_F(Utm, TheCrossingOfEquatorAndCentralMeridian) {
    for (const int zone : {1, 31, 60}) {
        float latitude = 9.0F;
        float longitude = 9.0F;
        map->utmToLatLng(500000.0F, 0.0F, zone, 0, &latitude, &longitude);
        EXPECT_EQ(latitude, 0.0F);
        EXPECT_EQ(longitude, static_cast<float>(6 * zone - 183)) << zone;
    }
}

TEST_F(Utm, AKnownPlace) {
    // the Eiffel Tower: 48 degrees 51' 29.6" north, 2 degrees 17' 40.2" east
    float latitude = 0.0F;
    float longitude = 0.0F;
    map->utmToLatLng(448251.9F, 5411943.8F, 31, 0, &latitude, &longitude);
    EXPECT_NEAR(latitude, 48.85822, 2e-4);
    EXPECT_NEAR(longitude, 2.29450, 2e-4);
}

/// One line of the table, see tests/golden/generate_utm.py.
struct Row {
    float easting;
    float northing;
    int zone;
    int south;
    double microDegrees;
    bool steady;
    double longitude;
};

std::vector<Row> goldenTable() {
    QFile file(QStringLiteral(GOLDEN_UTM));
    std::vector<Row> rows;
    if (file.open(QIODevice::ReadOnly)) {
        file.readLine();  // the names of the columns
        while (!file.atEnd()) {
            const QList<QByteArray> f = file.readLine().trimmed().split(',');
            rows.push_back({f.at(0).toFloat(), f.at(1).toFloat(), f.at(2).toInt(), f.at(3).toInt(),
                            f.at(4).toDouble(), f.at(5) == "1", f.at(6).toDouble()});
        }
    }
    return rows;
}

void expectWithinAnUlp(float value, double exact) {
    const float nearest = static_cast<float>(exact);
    EXPECT_LE(value, std::nextafter(nearest, kInf));
    EXPECT_GE(value, std::nextafter(nearest, -kInf));
}

TEST_F(Utm, AgreesWithTheTableOfFiftyDigits) {
    const std::vector<Row> rows = goldenTable();
    ASSERT_EQ(rows.size(), 217U);
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::Message()
                     << row.easting << ' ' << row.northing << ' ' << row.zone << ' ' << row.south);
        float latitude = 0.0F;
        float longitude = 0.0F;
        map->utmToLatLng(row.easting, row.northing, row.zone, row.south, &latitude, &longitude);
        if (row.steady) {
            EXPECT_EQ(latitude, static_cast<float>(row.microDegrees * 1e-06));
        } else {
            EXPECT_NEAR(latitude, row.microDegrees * 1e-06, 1.01e-6);
        }
        expectWithinAnUlp(longitude, row.longitude);
    }
}

TEST_F(Utm, ZonesAgreeWithTheTableOfTheirBorders) {
    const auto rows = rfu::test::csvRows(GOLDEN_ZONES);
    ASSERT_EQ(rows.size(), 336U);
    for (const auto& row : rows) {
        const auto longitude = static_cast<float>(rfu::test::number(row[0]));
        EXPECT_EQ(map->LatLngToUTMZone(0.0F, longitude), rfu::test::number(row[1])) << row[0];
    }
}

TEST_F(Utm, AnySouthFlagButZeroIsSouth) {
    float expected = 0.0F;
    float latitude = 0.0F;
    map->utmToLatLng(600000.0F, 4000000.0F, 31, 1, &expected, nullptr);
    for (const int south : {2, -1, 2147483647}) {
        map->utmToLatLng(600000.0F, 4000000.0F, 31, south, &latitude, nullptr);
        EXPECT_EQ(latitude, expected);
    }
    EXPECT_LT(expected, 0.0F);
}

TEST_F(Utm, SkipsNullOutputs) {
    float latitude = 9.0F;
    float longitude = 9.0F;
    map->utmToLatLng(500000.0F, 5000000.0F, 31, 0, &latitude, nullptr);
    EXPECT_NEAR(latitude, 45.15, 0.01);
    map->utmToLatLng(500000.0F, 5000000.0F, 31, 0, nullptr, &longitude);
    EXPECT_EQ(longitude, 3.0F);
    map->utmToLatLng(500000.0F, 5000000.0F, 31, 0, nullptr, nullptr);
}

TEST_F(Utm, IsSafeFarOutsideTheEarth) {
    for (const float x : {0.0F, -1e38F, 1e38F, kInf, -kInf, kNan}) {
        for (const float y : {0.0F, -1e38F, 1e38F, kInf, -kInf, kNan}) {
            for (const int zone : {-2147483647 - 1, 0, 2147483647}) {
                for (const int south : {0, 1}) {
                    float latitude = 0.0F;
                    float longitude = 0.0F;
                    map->utmToLatLng(x, y, zone, south, &latitude, &longitude);
                }
            }
        }
    }
    float longitude = 0.0F;
    map->utmToLatLng(500000.0F, 0.0F, -2147483647 - 1, 0, nullptr, &longitude);
    EXPECT_EQ(longitude, static_cast<float>(6.0 * -2147483648.0 - 183.0));
}

}  // namespace
