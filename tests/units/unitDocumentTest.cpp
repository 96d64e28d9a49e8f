#include <rfUtils/units/unitTable.h>

#include <gtest/gtest.h>

#include <QByteArray>
#include <QFile>
#include <QLocale>
#include <QString>
#include <QStringList>

// docs/units.md shows the rows of kUnits with their formulas, as a reader writes them.

namespace {

/// 0.0026525823848649226, 10^{-6}, 3.77 \cdot 10^{8}
QString number(double value) {
    QString text = QString::number(value, 'g', QLocale::FloatingPointShortest);
    const auto exponent = text.indexOf(u'e');
    if (exponent < 0) {
        return text;
    }
    const QString power =
        QStringLiteral("10^{%1}").arg(text.mid(exponent + 1).toInt());  // e-06 is -6
    const QString mantissa = text.left(exponent);
    return mantissa == u"1" ? power : mantissa + QStringLiteral(" \\cdot ") + power;
}

/// "P + 107 + K"
QString sum(const QString& first, double offset, const char* antenna) {
    QString text = first;
    if (offset != 0.0) {
        text +=
            (offset < 0.0 ? QStringLiteral(" - ") : QStringLiteral(" + ")) + number(qAbs(offset));
    }
    return text + QString::fromLatin1(antenna);
}

/// " \cdot 0.001"
QString times(double factor) {
    return factor == 1.0 ? QString() : QStringLiteral(" \\cdot ") + number(factor);
}

QString formula(const rfu::Unit::Forward& way, bool needsAntenna) {
    QString level = sum(QStringLiteral("P"), way.offset, needsAntenna ? " + K" : "");
    switch (way.formula) {
        case rfu::FromDbm::None:
            return {};
        case rfu::FromDbm::Unchanged:
        case rfu::FromDbm::Sum:
            return level;
        case rfu::FromDbm::Amplitude:
            return QStringLiteral("10^{(%1)/20}%2").arg(level, times(way.factor));
        case rfu::FromDbm::Power:
            return QStringLiteral("10^{(%1)/10}%2").arg(level, times(way.factor));
        case rfu::FromDbm::PowerLevel:
            return QStringLiteral("10 \\lg(10^{(%1)/10}%2) + 30").arg(level, times(way.factor));
    }
    return {};
}

QString formula(const rfu::Unit::Backward& way, bool needsAntenna) {
    const char* const antenna = needsAntenna ? " + G - D" : "";
    switch (way.formula) {
        case rfu::ToDbm::None:
            return {};
        case rfu::ToDbm::Unchanged:
        case rfu::ToDbm::Sum:
            return sum(QStringLiteral("v"), way.offset, antenna);
        case rfu::ToDbm::Amplitude:
            return sum(QStringLiteral("20 \\lg(v%1)").arg(times(way.factor)), way.offset, antenna);
        case rfu::ToDbm::Power:
            return sum(QStringLiteral("10 \\lg(v%1)").arg(times(way.factor)), way.offset, antenna);
        case rfu::ToDbm::PowerDensity:
            return sum(QStringLiteral("10 \\lg(120 \\pi v%1)").arg(times(way.factor)), way.offset,
                       antenna);
    }
    return {};
}

QString cell(const QString& text) {
    return text.isEmpty() ? QString() : QStringLiteral("$`%1`$").arg(text);
}

QString expectedRow(const rfu::Unit& unit) {
    const int scale = rfu::scaleOf(unit);
    const QStringList cells{
        QStringLiteral("`%1`").arg(unit.name),
        unit.traits().name.toString(),
        cell(formula(unit.fromDbm, unit.needsAntenna())),
        cell(formula(unit.toDbm, unit.needsAntenna())),
        scale < 0 ? QString() : QString::number(scale),
    };
    return QStringLiteral("| ") + cells.join(QStringLiteral(" | ")) + QStringLiteral(" |");
}

QStringList rowsOfDocument() {
    QFile file(QStringLiteral(RFUTILS_UNITS_DOCUMENT));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    QStringList rows;
    bool inTable = false;
    for (const QString& line : QString::fromUtf8(file.readAll()).split(u'\n')) {
        if (line.startsWith(u"| unit |")) {
            inTable = true;
        } else if (inTable && line.startsWith(u"| ")) {
            rows.append(line);
        } else if (inTable && !line.startsWith(u"|-")) {
            inTable = false;
        }
    }
    return rows;
}

}  // namespace

TEST(UnitDocument, tableShowsEveryRowWithItsFormulas) {
    QStringList expected;
    for (const rfu::Unit& unit : rfu::kUnits) {
        expected.append(expectedRow(unit));
    }
    EXPECT_EQ(rowsOfDocument().join(u'\n').toStdString(), expected.join(u'\n').toStdString());
}
