// Members that change an object or read a file, called from several threads, each with objects of its own: the objects
// share no hidden state.
#include "severalThreads.h"

#include <rfUtils/catalogues/ResultSetup.h>
#include <rfUtils/catalogues/subItemList.h>
#include <rfUtils/geo/veltaGEO.h>
#include <rfUtils/initial/itemInitial.h>
#include <rfUtils/platform/ElfItem.h>
#include <rfUtils/presentation/rfUtils.h>
#include <rfUtils/trace/traceRssiBuffer.h>
#include <rfUtils/units/HMath.h>
#include <rfUtils/units/calculateUnit.h>

#include <memory>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

using rfu::test::expectTheSameAnswers;
using rfu::test::inSeveralThreads;

namespace {

TEST(OwnObjects, Units) {
    expectTheSameAnswers("HMath", [] {
        HMath math;
        const QString volts = math.getdBmToUnit(QStringLiteral("dBuV"), -30.0, true);
        const QString field = math.getdBmToField(QStringLiteral("V/m"), -30.0, 1000.0, 3.0, true);
        return std::tuple(volts, field, math.unit(), math.getUnitTodBm(QStringLiteral("W"), 0.001),
                          math.getFieldTodBm(QStringLiteral("dBuV/m"), 87.2, 100.0, 0.0),
                          math.convertValUnit(-12.25, 2, QStringLiteral("dB")));
    });
    expectTheSameAnswers("scales", [] {
        double there = 0.0;
        double back = 0.0;
        const bool known = calculateUnit().actdBm2OtherScale(-30.0, 1000.0, 10, 3.0, there) &&
                           actOtherScale2dBm(there, 1000.0, 10, 3.0, back);
        return std::tuple(known, there, back);
    });
}

TEST(OwnObjects, TextsAndFormatters) {
    expectTheSameAnswers("rfUtils", [] {
        rfUtils texts;
        texts.setToastMessage("first");
        texts.setToastMessage("second");
        double decimal = 0.0;
        rfUtils::convertDdFromDms(-1, 33.0, 52.0, 7.68, decimal);
        return std::tuple(texts.makeBoundaryMsg(-10, -30, 16), texts.makeBoundaryMsg(2.5, 0.5, 1),
                          texts.toastMessages, decimal);
    });
    expectTheSameAnswers("items", [] {
        ServerItem server;
        rfUtils::setPropertyFreq(std::make_shared<DoubleElfItem>(&server));
        return server.formatter();
    });
}

TEST(OwnObjects, CataloguesAndSetups) {
    expectTheSameAnswers("subItemList", [] {
        subItemList list;
        const bool loaded = list.loadJson(RFUTILS_SAMPLES "/catalogue.json");
        list.addSubItem("detector", "Fastest", "fastest", 7, 8);
        list.deleteSubItemById("detector", "rms");
        return std::tuple(loaded, list.getLabelFromSubItemId("detector", "FASTEST"),
                          list.getSubItemIdFromOrder("detector", 5));
    });
    // Loading logs the names of the groups.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    expectTheSameAnswers("ResultSetup", [] {
        ResultSetup setups;
        const bool loaded = setups.loadJson(QStringLiteral(RFUTILS_SAMPLES "/setups.json"));
        return std::pair(loaded, setups.setupLabel(0));
    });
    qInstallMessageHandler(nullptr);
}

TEST(OwnObjects, InitialValues) {
    inSeveralThreads([] {
        const auto table = std::make_unique<itemInitial>();
        for (int index = 0; index < 300; ++index) {
            EXPECT_TRUE(table->setInitialVal(std::to_string(index), index));
        }
        EXPECT_TRUE(table->delInitialVal("0"));
        EXPECT_EQ(table->findInitialVal("299")[298].iValue, 299);  // a find returns entry 0
    });
}

TEST(OwnObjects, Traces) {
    expectTheSameAnswers("traceRssiBuffer", [] {
        traceRssiBuffer buffer(4, 4, 2);
        for (int sweep = 0; sweep < 10; ++sweep) {
            std::vector<double> trace = {-90.0, -80.0 + sweep};
            buffer.push_back(trace);
            buffer.calcMarkerPower(0, 1);
        }
        double average = 0.0;
        const bool known = buffer.getAverageMarkerPower(0, &average);
        return std::pair(known, average);
    });
}

TEST(OwnObjects, Maps) {
    inSeveralThreads([] {
        const auto map = std::make_unique<veltaGEO>();
        EXPECT_TRUE(map->loadASCFile(QStringLiteral(RFUTILS_SAMPLES "/terrain.asc")));
        const float corner = map->grid[0][0];
        EXPECT_TRUE(map->loadHDRFile(QStringLiteral(RFUTILS_SAMPLES "/terrain_bil.hdr")));
        EXPECT_TRUE(map->loadBILFile(QStringLiteral(RFUTILS_SAMPLES "/terrain_bil.bil")));
        EXPECT_TRUE(map->loadTabFile(QStringLiteral(RFUTILS_SAMPLES "/terrain.tab")));
        EXPECT_TRUE(map->LoadColorTable(QStringLiteral(RFUTILS_SAMPLES "/terrain.clr")));
        EXPECT_NE(corner, 0.0F);
    });
}

}  // namespace
