// HMath as a Qt object: its property, its signal, and what a script sees of it.
#include "hmathProbe.h"

#include <QByteArray>
#include <QMetaMethod>
#include <QMetaProperty>
#include <QVariant>

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <type_traits>

using rfu::test::Probe;
using rfu::test::text;
using rfu::test::utf8;

namespace {

TEST(HMathObject, StartsWithAnEmptyUnitAndTakesAParent) {
    QObject parent;
    auto* const child = new HMath(&parent);
    EXPECT_EQ(child->parent(), &parent);
    EXPECT_EQ(utf8(child->unit()), "");
    EXPECT_TRUE(HMath().unit().isEmpty());
    EXPECT_EQ(HMath().parent(), nullptr);
    static_assert(!std::is_convertible_v<QObject*, HMath>, "the constructor is explicit");
    static_assert(std::has_virtual_destructor_v<HMath>);
}

TEST(HMathObject, GoesWithItsParent) {
    bool destroyed = false;
    auto parent = std::make_unique<QObject>();
    auto* const child = new HMath(parent.get());
    QObject::connect(child, &QObject::destroyed, [&destroyed] { destroyed = true; });
    parent.reset();
    EXPECT_TRUE(destroyed);
}

TEST(HMathObject, SetUnitAlwaysAnnounces) {
    Probe probe;
    probe.math.setUnit(text("dBm"));
    EXPECT_EQ(probe.signalCount, 1);
    EXPECT_EQ(probe.unitAtSignal, "dBm");
    probe.math.setUnit(text("dBm"));
    EXPECT_EQ(probe.signalCount, 2);
    probe.math.setUnit(text("any text, \u00B5 too"));
    EXPECT_EQ(probe.unit(), "any text, \u00B5 too");
    probe.math.setUnit(QString());
    EXPECT_EQ(probe.unit(), "");
    EXPECT_EQ(probe.signalCount, 4);
}

TEST(HMathObject, TheUnitShownIsNotTheUnitChosen) {
    Probe probe;
    probe.math.setUnit(text("V"));
    EXPECT_EQ(utf8(probe.math.getdBmToUnit(probe.math.unit(), -50.0, true)), "0.71 mV");
    EXPECT_EQ(utf8(probe.math.getdBmToUnit(probe.math.unit(), -50.0, true)), "-50.0 dBm");
    EXPECT_EQ(utf8(probe.math.getdBmToUnit(probe.math.unit(), -50.0, true)), "-50.0 dBm");
}

TEST(HMathObject, TheUnitPropertyGoesThroughSetUnit) {
    Probe probe;
    EXPECT_TRUE(probe.math.setProperty("unit", text("dBuV")));
    EXPECT_EQ(probe.unit(), "dBuV");
    EXPECT_EQ(utf8(probe.math.property("unit").toString()), "dBuV");
    EXPECT_TRUE(probe.math.setProperty("unit", text("dBuV")));
    EXPECT_EQ(probe.signalCount, 2);

    const QMetaObject* const meta = probe.math.metaObject();
    ASSERT_EQ(meta->propertyCount() - meta->propertyOffset(), 1);
    const QMetaProperty property = meta->property(meta->propertyOffset());
    EXPECT_STREQ(property.name(), "unit");
    EXPECT_STREQ(property.typeName(), "QString");
    EXPECT_TRUE(property.isReadable());
    EXPECT_TRUE(property.isWritable());
    EXPECT_TRUE(property.isStored());
    EXPECT_TRUE(property.isScriptable());
    EXPECT_TRUE(property.isDesignable());
    EXPECT_FALSE(property.isUser());
    EXPECT_FALSE(meta->userProperty().isValid());
    EXPECT_FALSE(property.isResettable());
    EXPECT_FALSE(property.isConstant());
    EXPECT_FALSE(property.isFinal());
    EXPECT_EQ(property.notifySignal().methodSignature(), QByteArray("unitChanged()"));
}

TEST(HMathObject, MethodsInTheirOrderWithTheirParameterNames) {
    const struct {
        QMetaMethod::MethodType type;
        int attributes;
        const char* result;
        const char* signature;
        const char* parameters;
    } kMethods[] = {
        {QMetaMethod::Signal, 0, "void", "unitChanged()", ""},
        {QMetaMethod::Slot, 0, "QString", "unit()", ""},
        {QMetaMethod::Slot, 0, "void", "setUnit(QString)", "val"},
        {QMetaMethod::Method, 0, "double", "getUnitTodBm(QString,double)", "sUnit,fVal"},
        {QMetaMethod::Method, 0, "double", "getFieldTodBm(QString,double,double,double)",
         "sUnit,fVal,fCenter,fGain"},
        {QMetaMethod::Method, 0, "QString", "getdBmToUnit(QString,double,bool)",
         "sUnit,fVal,isUnitText"},
        {QMetaMethod::Method, 0, "QString", "getdBmToField(QString,double,double,double,bool)",
         "sUnit,fVal,fCenter,fGain,isUnitText"},
        {QMetaMethod::Method, 0, "QString", "getDBmToW(double)", "fTemp"},
        {QMetaMethod::Method, 0, "QString", "convertValUnit(QVariant,int,QString)",
         "base,dec,unit"},
        {QMetaMethod::Method, QMetaMethod::Cloned, "QString", "convertValUnit(QVariant,int)",
         "base,dec"},
        {QMetaMethod::Method, QMetaMethod::Cloned, "QString", "convertValUnit(QVariant)", "base"},
        {QMetaMethod::Method, 0, "int", "getStringWidth(int,QString)", "pixelSize,str"},
    };
    const QMetaObject& meta = HMath::staticMetaObject;
    EXPECT_STREQ(meta.className(), "HMath");
    EXPECT_STREQ(meta.superClass()->className(), "QObject");
    ASSERT_EQ(meta.methodCount() - meta.methodOffset(), 12);
    int index = meta.methodOffset();
    for (const auto& expected : kMethods) {
        const QMetaMethod method = meta.method(index++);
        EXPECT_EQ(method.methodSignature().toStdString(), expected.signature);
        EXPECT_EQ(method.methodType(), expected.type) << expected.signature;
        EXPECT_EQ(method.access(), QMetaMethod::Public) << expected.signature;
        EXPECT_EQ(method.attributes(), expected.attributes) << expected.signature;
        EXPECT_STREQ(method.typeName(), expected.result) << expected.signature;
        EXPECT_EQ(method.parameterNames().join(',').toStdString(), expected.parameters);
    }
    EXPECT_EQ(meta.enumeratorCount() - meta.enumeratorOffset(), 0);
    EXPECT_EQ(meta.constructorCount(), 0);
}

TEST(HMathObject, IsFoundByItsName) {
    HMath math;
    QObject* const object = &math;
    EXPECT_EQ(object->qt_metacast("HMath"), &math);
    EXPECT_EQ(object->qt_metacast("HMathematics"), nullptr);
    EXPECT_EQ(qobject_cast<HMath*>(object), &math);
    EXPECT_TRUE(object->inherits("HMath"));
}

TEST(HMathObject, EveryMethodCanBeInvoked) {
    Probe probe;
    HMath* const math = &probe.math;
    const QString dBuV = text("dBuV");
    const QString dBuVPerMetre = text("dBuV/m");
    QString shown;
    double number = 0.0;
    int width = -1;

    EXPECT_TRUE(QMetaObject::invokeMethod(math, "setUnit", Q_ARG(QString, dBuV)));
    EXPECT_TRUE(QMetaObject::invokeMethod(math, "unit", Q_RETURN_ARG(QString, shown)));
    EXPECT_EQ(utf8(shown), "dBuV");
    EXPECT_EQ(probe.signalCount, 1);
    EXPECT_TRUE(QMetaObject::invokeMethod(math, "unitChanged"));
    EXPECT_EQ(probe.signalCount, 2);
    EXPECT_TRUE(QMetaObject::invokeMethod(math, "getUnitTodBm", Q_RETURN_ARG(double, number),
                                          Q_ARG(QString, dBuV), Q_ARG(double, 207.0)));
    EXPECT_EQ(number, 100.0);
    EXPECT_TRUE(QMetaObject::invokeMethod(math, "getFieldTodBm", Q_RETURN_ARG(double, number),
                                          Q_ARG(QString, dBuVPerMetre), Q_ARG(double, 87.2),
                                          Q_ARG(double, 100.0), Q_ARG(double, 6.5)));
    EXPECT_NEAR(number, -23.5, 1e-12);
    EXPECT_TRUE(QMetaObject::invokeMethod(math, "getdBmToUnit", Q_RETURN_ARG(QString, shown),
                                          Q_ARG(QString, dBuV), Q_ARG(double, -30.0),
                                          Q_ARG(bool, true)));
    EXPECT_EQ(utf8(shown), "77.0 dBuV");
    EXPECT_TRUE(QMetaObject::invokeMethod(
        math, "getdBmToField", Q_RETURN_ARG(QString, shown), Q_ARG(QString, dBuVPerMetre),
        Q_ARG(double, -30.0), Q_ARG(double, 100.0), Q_ARG(double, 6.5), Q_ARG(bool, false)));
    EXPECT_EQ(utf8(shown), "80.70");
    EXPECT_TRUE(QMetaObject::invokeMethod(math, "getDBmToW", Q_RETURN_ARG(QString, shown),
                                          Q_ARG(double, -40.0)));
    EXPECT_EQ(utf8(shown), "0.10 u");
    EXPECT_TRUE(QMetaObject::invokeMethod(math, "convertValUnit", Q_RETURN_ARG(QString, shown),
                                          Q_ARG(QVariant, 1.25), Q_ARG(int, 3),
                                          Q_ARG(QString, text("V"))));
    EXPECT_EQ(utf8(shown), "1.250 V");
    EXPECT_TRUE(QMetaObject::invokeMethod(math, "convertValUnit", Q_RETURN_ARG(QString, shown),
                                          Q_ARG(QVariant, 1.25), Q_ARG(int, 3)));
    EXPECT_EQ(utf8(shown), "1.250 dBm");
    EXPECT_TRUE(QMetaObject::invokeMethod(math, "convertValUnit", Q_RETURN_ARG(QString, shown),
                                          Q_ARG(QVariant, 1.25)));
    EXPECT_EQ(utf8(shown), "1.25 dBm");
    EXPECT_TRUE(QMetaObject::invokeMethod(math, "getStringWidth", Q_RETURN_ARG(int, width),
                                          Q_ARG(int, 12), Q_ARG(QString, QString())));
    EXPECT_EQ(width, 0);
}

TEST(HMathObject, TheUnitMayBeReplacedFromItsSignal) {
    HMath math;
    bool first = true;
    QObject::connect(&math, &HMath::unitChanged, &math, [&] {
        if (first) {
            first = false;
            math.setUnit(text("other"));
        }
    });
    EXPECT_EQ(utf8(math.getdBmToUnit(text("dBuV"), 0.0, true)), "107.0 dBuV");
    EXPECT_EQ(utf8(math.unit()), "other");
}

TEST(HMathObject, MayBeDeletedFromItsSignal) {
    auto* const math = new HMath;
    QObject::connect(math, &HMath::unitChanged, [math] { delete math; });
    EXPECT_EQ(utf8(math->getdBmToField(text("V/m"), -50.0, 100.0, 0.0, true)), "2.29 mV/m");
}

TEST(ConvertValUnit, FormatsWhatIsANumberAndAppendsTheUnit) {
    const struct {
        const char* name;
        QVariant base;
        int decimals;
        const char* unit;
        const char* expected;
    } kCases[] = {
        {"text", text("abc"), 1, "V", "0.0 V"},
        {"numeric text", text("2.5"), 1, "V", "2.5 V"},
        {"a decimal comma is no number", text("2,5"), 1, "V", "0.0 V"},
        {"no value", QVariant(), 2, "V", "0.00 V"},
        {"a list", QVariantList(), 2, "V", "0.00 V"},
        {"integer", 7, 1, "dBm", "7.0 dBm"},
        {"truth", true, 0, "x", "1 x"},
        {"no decimals, no unit", 1.0, 0, "", "1 "},
        {"a tie goes away from zero", 0.125, 2, "V", "0.13 V"},
        {"a tie without decimals too", 2.5, 0, "V", "3 V"},
        {"negative", -0.125, 2, "V", "-0.13 V"},
        {"negative decimals", 0.5, -1, "V", "0.500000 V"},
        {"infinite", rfu::test::kInf, 2, "V", "inf V"},
        {"not a number", -rfu::test::kNan, 2, "V", "nan V"},
    };
    Probe probe;
    for (const auto& row : kCases) {
        EXPECT_EQ(utf8(probe.math.convertValUnit(row.base, row.decimals, text(row.unit))),
                  row.expected)
            << row.name;
    }
    EXPECT_EQ(utf8(probe.math.convertValUnit(3.14159)), "3.14 dBm");
    EXPECT_EQ(utf8(probe.math.convertValUnit(3.14159, 3)), "3.142 dBm");
    EXPECT_EQ(probe.unit(), "");
    EXPECT_EQ(probe.signalCount, 0);
}

TEST(ConvertValUnit, DecimalsBehindTheLastThatADoubleCanHaveAreZeros) {
    HMath math;
    const double smallest = std::numeric_limits<double>::denorm_min();
    const QString longest = math.convertValUnit(smallest, 1074);
    EXPECT_EQ(longest.size(), 2 + 1074 + 4);
    EXPECT_EQ(utf8(longest.right(9)), "65625 dBm");
    const QString digits = longest.left(2 + 1074);
    const struct {
        int decimals;
        int zeros;
    } kCases[] = {{1075, 1},
                  {2000, 2000 - 1074},
                  {1000000, 1000000 - 1074},
                  {1000001, 1000000 - 1074},
                  {std::numeric_limits<int>::max(), 1000000 - 1074}};
    for (const auto& row : kCases) {
        EXPECT_TRUE(math.convertValUnit(smallest, row.decimals) ==
                    digits + QString(row.zeros, '0') + " dBm")
            << row.decimals;
    }
    EXPECT_EQ(utf8(math.convertValUnit(0.5, std::numeric_limits<int>::min())), "0.500000 dBm");
}

}  // namespace
