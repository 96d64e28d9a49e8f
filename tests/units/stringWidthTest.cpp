#include "hmathProbe.h"

#include <QFont>
#include <QFontMetrics>
#include <QtGlobal>

#include <gtest/gtest.h>

#include <limits>

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

/// The font is hardly installed anywhere; one that stands in for it tells by which name it is asked
/// for.
TEST(StringWidth, IsThatOfTheInstrumentsFont) {
    constexpr int kPixelSize = 37;  // not in the font cache yet
    const QString string = text("iiiii");
    const QString standIn = QStringLiteral("DejaVu Sans Mono");
    QFont mono(standIn);
    mono.setPixelSize(kPixelSize);
    QFont other(QStringLiteral("DejaVu Sans"));
    other.setPixelSize(kPixelSize);
    const int expected = widthInFont(mono, string);
    ASSERT_NE(expected, widthInFont(other, string));
    QFont::insertSubstitution(QStringLiteral("Noto Sans UI"), standIn);
    HMath math;
    EXPECT_EQ(math.getStringWidth(kPixelSize, string), expected);
    QFont::removeSubstitutions(QStringLiteral("Noto Sans UI"));
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
