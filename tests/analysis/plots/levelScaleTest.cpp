#include "analysis/plots/levelScale.h"

#include <gtest/gtest.h>

using rfu::LevelRange;
using rfu::LevelScale;

namespace {

/// "-90=10 uV ..."
std::string ticksOf(const LevelScale& scale, const LevelRange& range, int wanted) {
    std::string text;
    for (const rfu::LevelTick& tick : levelTicks(scale, range, wanted)) {
        text += (text.empty() ? "" : " ") + QString::number(tick.level, 'g', 6).toStdString() +
                '=' + tick.label.toStdString();
    }
    return text;
}

}  // namespace

TEST(LevelScale, PutsTicksOnRoundNumbersOfTheUnit) {
    const LevelScale dBm;
    const LevelScale dBuV = {"dBuV", 107.0, 0.0};
    const LevelScale volts = {"V", 0.1, 20.0};    // 0 dBm are 0.1 V
    const LevelScale watts = {"W", 0.001, 10.0};  // and 1 mW
    const struct {
        const char* name;
        LevelScale scale;
        LevelRange range;
        int wanted;
        const char* ticks;
    } kRows[] = {
        {"dBm",
         dBm,
         {-97.4, -60.0},
         10,
         "-95=-95 -90=-90 -85=-85 -80=-80 -75=-75 -70=-70 -65=-65 -60=-60"},
        {"few", dBm, {-97.4, -60.0}, 3, "-80=-80 -60=-60"},
        {"another level", dBuV, {-97.4, -60.0}, 4, "-97=10 -87=20 -77=30 -67=40"},
        {"amplitudes", volts, {-81.0, -19.0}, 4, "-80=10 µV -60=100 µV -40=1 mV -20=10 mV"},
        {"powers", watts, {-31.0, 31.0}, 4, "-30=1 µW -10=100 µW 10=10 mW 30=1 W"},
        {"within a decade",
         volts,
         {-62.0, -39.0},
         10,
         "-60=100 µV -53.9794=200 µV -46.0206=500 µV -40=1 mV"},
        {"the unit itself and thousands", volts, {19.0, 61.0}, 4, "20=1 V 40=10 V 60=100 V"},
        {"beyond the smallest prefix",
         watts,
         {-250.0, -245.0},
         9,
         "-250=0.0001 yW -246.99=0.0002 yW"},
    };
    for (const auto& row : kRows) {
        EXPECT_EQ(ticksOf(row.scale, row.range, row.wanted), row.ticks) << row.name;
    }
}

TEST(LevelScale, ConvertsBothWays) {
    const LevelScale volts = {"V", 0.2, 20.0};
    EXPECT_DOUBLE_EQ(volts.shown(-40.0), 0.002);
    EXPECT_DOUBLE_EQ(volts.dBm(0.002), -40.0);
    const LevelScale dBuV = {"dBuV", 107.0, 0.0};
    EXPECT_EQ(dBuV.shown(-30.0), 77.0);
    EXPECT_EQ(dBuV.dBm(77.0), -30.0);
}
