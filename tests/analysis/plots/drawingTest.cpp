#include "analysis/plots/drawing.h"

#include <gtest/gtest.h>
#include <support/svg.h>

using rfu::Drawing;
using rfu::test::Svg;

namespace {

/// A line from 10,20 to 110,70 and two texts.
Drawing sample(const std::string& title) {
    return {QSize(320, 200), title, [](QPainter& painter) {
                painter.setPen(QPen(Qt::red, 3));
                painter.drawLine(QPointF(10, 20), QPointF(110, 70));
                painter.drawText(QPointF(50, 150), QString::fromUtf8("3.0 µV <&>"));
                painter.drawText(QPointF(50, 180), QStringLiteral("second"));
            }};
}

}  // namespace

TEST(Drawing, IsAnImage) {
    const QImage image = imageOf(sample(""));
    ASSERT_EQ(image.size(), QSize(320, 200));
    EXPECT_EQ(image.pixel(60, 45), qRgb(255, 0, 0)) << "the middle of the line";
    EXPECT_EQ(image.pixel(315, 5), qRgb(0xfa, 0xfb, 0xfc)) << "the paper";
}

TEST(Drawing, IsSvgWithItsTexts) {
    if (!rfu::canWriteSvg()) {
        GTEST_SKIP() << "a build without Qt SVG";
    }
    const Svg svg(svgOf(sample("fm <1> & \"2\" µ.csv")));
    EXPECT_EQ(svg.viewBox, "0 0 320 200");
    EXPECT_EQ(svg.title, "fm <1> & \"2\" µ.csv");
    EXPECT_EQ(svg.texts, (std::vector<std::string>{"3.0 µV <&>", "second"}));
    EXPECT_EQ(svg.lines, (std::vector<Svg::Line>{{{10, 20}, {110, 70}}}));
    EXPECT_EQ(svg.fonts, std::set<std::string>{"DejaVu Sans"}) << "none of the system";
}

TEST(Drawing, IsTheSameSvgAgain) {
    if (!rfu::canWriteSvg()) {
        GTEST_SKIP() << "a build without Qt SVG";
    }
    EXPECT_EQ(svgOf(sample("a")), svgOf(sample("a")));
    EXPECT_NE(svgOf(sample("a")), svgOf(sample("b")));
}

TEST(Drawing, IsValidSvgWithAnyTitle) {
    if (!rfu::canWriteSvg()) {
        GTEST_SKIP() << "a build without Qt SVG";
    }
    EXPECT_EQ(Svg(svgOf(sample("a\x1b]\tb\x7f\xef\xbf\xbf"))).title,
              "a\xef\xbf\xbd]\xef\xbf\xbd"
              "b\xef\xbf\xbd\xef\xbf\xbd");
}
