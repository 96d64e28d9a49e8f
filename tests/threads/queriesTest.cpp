// The const members of every class, called from several threads on one unchanging object.
#include "severalThreads.h"

#include <rfUtils/catalogues/ResultSetup.h>
#include <rfUtils/catalogues/subItemList.h>
#include <rfUtils/geo/veltaGEO.h>
#include <rfUtils/initial/itemInitial.h>
#include <rfUtils/platform/ElfItem.h>
#include <rfUtils/platform/VemoJsonDocument.h>
#include <rfUtils/presentation/rfUtils.h>
#include <rfUtils/trace/traceRssiBuffer.h>

#include <QJsonArray>
#include <QVector>

#include <memory>
#include <stdexcept>
#include <string>
#include <tuple>
#include <unordered_map>
#include <utility>
#include <vector>

using rfu::test::expectTheSameAnswers;

namespace {

TEST(Queries, ChoicesOfACatalogue) {
    subItemList list;
    ASSERT_TRUE(list.loadJson(RFUTILS_SAMPLES "/catalogue.json"));
    const subItemList& shared = list;

    expectTheSameAnswers("getSubItemsById", [&] {
        std::unordered_map<std::string, subItem> choices;
        shared.getSubItemsById("detector", choices);
        return std::pair(choices.size(), choices.at("RMS").label);
    });
    expectTheSameAnswers("getSubItemIdFromOrder",
                         [&] { return shared.getSubItemIdFromOrder("detector", 5); });
    expectTheSameAnswers("getSubItemIdFromLabel",
                         [&] { return shared.getSubItemIdFromLabel("detector", "Average"); });
    expectTheSameAnswers("getOrderFromSubItemId",
                         [&] { return shared.getOrderFromSubItemId("detector", "posPeak"); });
    expectTheSameAnswers("getLabelFromSubItemId",
                         [&] { return shared.getLabelFromSubItemId("attenuation", "db10"); });
    expectTheSameAnswers("getSubItemEnumDataFromId", [&] {
        std::string id;
        int code = -1;
        const bool found = shared.getSubItemEnumDataFromId("attenuation", "DB20", id, code);
        return std::tuple(found, id, code);
    });
}

TEST(Queries, ResultSetups) {
    ResultSetup setups;
    ASSERT_TRUE(setups.loadJson(QStringLiteral(RFUTILS_SAMPLES "/setups.json")));
    const ResultSetup& shared = setups;

    expectTheSameAnswers("setupId", [&] { return shared.setupId(3); });
    expectTheSameAnswers("setupLabel", [&] { return shared.setupLabel(4); });
}

TEST(Queries, InitialValues) {
    const auto table = std::make_unique<itemInitial>();
    table->setInitialVal("span", 12.5);
    table->setInitialVal("points", 1001);
    const itemInitial& shared = *table;

    expectTheSameAnswers("getTypeId", [&] { return shared.getTypeId(typeid(double)); });
    testing::internal::CaptureStdout();
    expectTheSameAnswers("checkInitialVal", [&] { return shared.checkInitialVal(); });
    EXPECT_FALSE(testing::internal::GetCapturedStdout().empty());
}

TEST(Queries, TracesAndMarkers) {
    traceRssiBuffer buffer(8, 8, 4);
    for (int sweep = 0; sweep < 12; ++sweep) {
        std::vector<double> trace = {-90.0, -80.0 + sweep, -70.0, -60.0};
        buffer.push_back(trace);
        ASSERT_TRUE(buffer.calcMarkerPower(2, 1));
    }
    const traceRssiBuffer& shared = buffer;

    expectTheSameAnswers("getPointNum", [&] { return shared.getPointNum(); });
    using Statistic = bool (traceRssiBuffer::*)(int, double*) const;
    for (const Statistic statistic :
         {&traceRssiBuffer::getAverageMarkerPower, &traceRssiBuffer::getMaxMarkerPower,
          &traceRssiBuffer::getMinMarkerPower}) {
        expectTheSameAnswers("statistics of a marker", [&] {
            double value = 0.0;
            const bool known = (shared.*statistic)(2, &value);
            return std::pair(known, value);
        });
    }
    expectTheSameAnswers("getCountLimitMarkerPower", [&] {
        int count = 0;
        const bool known = shared.getCountLimitMarkerPower(2, -75.0, &count);
        return std::pair(known, count);
    });
    expectTheSameAnswers("getDataMarkerPower", [&] {
        std::vector<double> values;
        QVector<double> qtValues;
        const bool known = shared.getDataMarkerPower(values, 2);
        return std::tuple(known, values, shared.getDataMarkerPower(qtValues, 2), qtValues);
    });
    expectTheSameAnswers("single points of a marker", [&] {
        return std::tuple(shared.getAverageMarker(0, 1), shared.getMaxMarker(0, 1),
                          shared.getMinMarker(0, 1));
    });
}

TEST(Queries, TextsOfFrequencies) {
    const rfUtils shared;

    expectTheSameAnswers("makeFrequencyUnit", [&] { return shared.makeFrequencyUnit(2400.5); });
    expectTheSameAnswers("convertFreqWidthUnit",
                         [&] { return shared.convertFreqWidthUnit(0.025); });
    expectTheSameAnswers("getOddtoStr", [&] { return shared.getOddtoStr("ch12x"); });
    expectTheSameAnswers("getOddtoStr, no number", [&] {
        try {
            return shared.getOddtoStr("ab7c");
        } catch (const std::invalid_argument&) {
            return -1;
        }
    });
    expectTheSameAnswers("getNoOfToast", [&] { return shared.getNoOfToast(); });
}

TEST(Queries, PiecesOfMaps) {
    const auto map = std::make_unique<veltaGEO>();
    const veltaGEO& shared = *map;

    expectTheSameAnswers("makeToken", [&] {
        const auto record = std::make_unique<stPaser>();
        shared.makeToken(record.get(), "CoordSys Earth Projection 8, 104, \"m\", 9");
        return std::pair(record->count, std::string(record->token[2]));
    });
    expectTheSameAnswers("GetFileNameExt", [&] { return shared.GetFileNameExt("terrain.bil"); });
    expectTheSameAnswers("GetFileNameExtDel", [&] {
        return shared.GetFileNameExtDel(QStringLiteral("terrain.of.2026.bil"));
    });
    expectTheSameAnswers("LatLngToUTMZone", [&] { return shared.LatLngToUTMZone(47.5F, 8.75F); });
    expectTheSameAnswers("utmToLatLng", [&] {
        float latitude = 0.0F;
        float longitude = 0.0F;
        shared.utmToLatLng(465005.0F, 5247000.0F, 32, 0, &latitude, &longitude);
        return std::pair(latitude, longitude);
    });
}

TEST(Queries, Items) {
    ServerItem server;
    server.setProperty(QStringLiteral("precision"), 3);
    server.setFormatter(QStringLiteral("freq"));
    const DoubleElfItem item(&server);

    expectTheSameAnswers("property", [&] {
        return item.serverItem()->property(QStringLiteral("precision")).toInt();
    });
    expectTheSameAnswers("formatter", [&] { return item.serverItem()->formatter(); });
}

TEST(Queries, JsonDocuments) {
    VemoJsonDocument document;
    ASSERT_TRUE(document.readFile(QStringLiteral(RFUTILS_SAMPLES "/setups.json")));
    const VemoJsonDocument& shared = document;

    expectTheSameAnswers("object", [&] {
        return shared.object().value(QStringLiteral("spectrum")).toArray().size();
    });
    expectTheSameAnswers("errorString",
                         [&] { return std::pair(shared.hasError(), shared.errorString()); });
}

}  // namespace
