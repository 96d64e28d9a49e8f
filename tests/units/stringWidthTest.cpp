#include "hmathProbe.h"

#include <QFont>
#include <QFontMetrics>
#include <QtGlobal>

#include <gtest/gtest.h>

using rfu::test::text;

namespace {

int widthInFont(const QFont& font, const QString& string) {
    return QFontMetrics(font).horizontalAdvance(string);
}

QFont notoSansUi() {
    return QFont(QStringLiteral("Noto Sans UI"));
}

TEST(StringWidth, IsTheAdvanceInThePixelSize) {
    HMath math;
    const QString string = text("87.20 dBuV/m");
    for (const int pixelSize : {1, 12, 13, 48, 500}) {
        QFont font = notoSansUi();
        font.setPixelSize(pixelSize);
        EXPECT_EQ(math.getStringWidth(pixelSize, string), widthInFont(font, string)) << pixelSize;
        EXPECT_GT(math.getStringWidth(pixelSize, string), 0) << pixelSize;
    }
    EXPECT_GT(math.getStringWidth(48, string), math.getStringWidth(12, string));
    EXPECT_GT(math.getStringWidth(12, string + string), math.getStringWidth(12, string));
}

int messageCount = 0;

TEST(StringWidth, AnEmptyTextHasNoneAndNeedsNoFont) {
    HMath math;
    messageCount = 0;
    const QtMessageHandler before = qInstallMessageHandler(
        [](QtMsgType, const QMessageLogContext&, const QString&) { ++messageCount; });
    EXPECT_EQ(math.getStringWidth(12, QString()), 0);
    EXPECT_EQ(math.getStringWidth(12, text("")), 0);
    EXPECT_EQ(math.getStringWidth(-1, QString()), 0);
    EXPECT_EQ(messageCount, 0);  // no font that could complain of its size
    EXPECT_GT(math.getStringWidth(-1, text("dBm")), 0);
    EXPECT_EQ(messageCount, 1);
    qInstallMessageHandler(before);
}

TEST(StringWidth, WithoutAPixelSizeTheFontKeepsItsPointSize) {
    HMath math;
    const QString string = text("dBm");
    for (const int pixelSize : {0, -1, std::numeric_limits<int>::min()}) {
        EXPECT_EQ(math.getStringWidth(pixelSize, string), widthInFont(notoSansUi(), string));
    }
}

TEST(StringWidth, AbsurdPixelSizesHaveAnAnswer) {
    HMath math;
    for (const int pixelSize : {32767, 65535, 65536, 1000000, std::numeric_limits<int>::max()}) {
        EXPECT_GE(math.getStringWidth(pixelSize, text("dBm")), 0) << pixelSize;
    }
}

}  // namespace
