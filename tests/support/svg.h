// What an SVG file shows, by an XML reader of its own.
#pragma once

#include <gtest/gtest.h>

#include <QByteArray>
#include <QPointF>
#include <QString>
#include <QXmlStreamReader>
#include <algorithm>
#include <set>
#include <string>
#include <vector>

namespace rfu::test {

struct Svg {
    using Line = std::vector<QPointF>;

    explicit Svg(const QByteArray& bytes) {
        QXmlStreamReader reader(bytes);
        while (!reader.atEnd()) {
            if (reader.readNext() != QXmlStreamReader::StartElement) {
                continue;
            }
            const auto name = reader.name();
            const QXmlStreamAttributes attributes = reader.attributes();
            if (attributes.hasAttribute(QLatin1String("font-family"))) {
                fonts.insert(attributes.value(QLatin1String("font-family")).toUtf8().toStdString());
            }
            if (attributes.hasAttribute(QLatin1String("stroke"))) {
                stroke = attributes.value(QLatin1String("stroke")).toUtf8().toStdString();
            }
            if (name == QLatin1String("svg")) {
                viewBox = attributes.value(QLatin1String("viewBox")).toUtf8().toStdString();
            } else if (name == QLatin1String("title")) {
                title = reader.readElementText().toStdString();
            } else if (name == QLatin1String("text")) {
                texts.push_back(reader.readElementText().trimmed().toStdString());
            } else if (name == QLatin1String("polyline")) {
                addLine(attributes.value(QLatin1String("points")).toString());
            } else if (name == QLatin1String("path")) {
                addPath(attributes.value(QLatin1String("d")).toString());
            }
        }
        EXPECT_FALSE(reader.hasError()) << reader.errorString().toStdString();
    }

    bool hasText(const std::string& text) const {
        return std::find(texts.begin(), texts.end(), text) != texts.end();
    }

    /// The lines of a colour such as "#c8553d".
    std::vector<Line> linesOf(const std::string& color) const {
        std::vector<Line> found;
        for (std::size_t i = 0; i < lines.size(); ++i) {
            if (strokes[i] == color) {
                found.push_back(lines[i]);
            }
        }
        return found;
    }

    std::string viewBox;
    std::string title;
    std::vector<std::string> texts;
    std::vector<Line> lines;  // polylines and the pieces of paths
    std::set<std::string> fonts;

private:
    void addPath(const QString& commands) {
        for (const QString& piece : commands.split(QLatin1Char('M'), Qt::SkipEmptyParts)) {
            if (!piece.contains(QLatin1Char('C'))) {  // not round
                addLine(QString(piece).remove(QLatin1Char('L')));
            }
        }
    }

    void addLine(const QString& points) {
        Line line;
        for (const QString& pair : points.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
            const QStringList numbers = pair.split(QLatin1Char(','));
            ASSERT_EQ(numbers.size(), 2) << pair.toStdString();
            bool isNumber[2] = {};
            line.emplace_back(numbers[0].toDouble(&isNumber[0]), numbers[1].toDouble(&isNumber[1]));
            EXPECT_TRUE(isNumber[0] && isNumber[1]) << pair.toStdString();
        }
        lines.push_back(line);
        strokes.push_back(stroke);
    }

    std::string stroke;  // of what follows
    std::vector<std::string> strokes;
};

}  // namespace rfu::test
