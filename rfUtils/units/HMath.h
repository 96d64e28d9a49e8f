#pragma once

#include <rfUtils/rfUtilsExport.h>

#include <QObject>
#include <QString>
#include <QVariant>

/// Unit service of a user interface: converts power levels in dBm to texts in display units and
/// display values back to dBm, and remembers the unit that it last showed.
class RFUTILS_EXPORT HMath : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString unit READ unit WRITE setUnit NOTIFY unitChanged)

public:
    explicit HMath(QObject* parent = nullptr);
    ~HMath() override;

    Q_INVOKABLE double getUnitTodBm(QString sUnit, double fVal);
    Q_INVOKABLE double getFieldTodBm(QString sUnit, double fVal, double fCenter, double fGain);
    Q_INVOKABLE QString getdBmToUnit(QString sUnit, double fVal, bool isUnitText);
    Q_INVOKABLE QString getdBmToField(QString sUnit, double fVal, double fCenter, double fGain,
                                      bool isUnitText);
    Q_INVOKABLE QString getDBmToW(double fTemp);
    Q_INVOKABLE QString convertValUnit(QVariant base, int dec = 2,
                                       QString unit = QStringLiteral("dBm"));
    Q_INVOKABLE int getStringWidth(const int& pixelSize, const QString& str);

    QString getdBmToVolt(double dBm, bool isUnitText);
    QString getdBmToWatt(double dBm, bool isUnitText);
    double getVoltTodBm(const QString& unit, const double& value);
    double getWattTodBm(const QString& unit, const double& value);
    double getVoltmtodBm(const QString& unit, const double& value);
    double getWattmmTodBm(const QString& unit, const double& value);
    QString getFieldChangeUnit(QString unit, float value, bool isUnitText);
    double mathRoundOff(double value, int digits);

public Q_SLOTS:
    QString unit();
    void setUnit(const QString& val);

Q_SIGNALS:
    void unitChanged();

private:
    QString unit_;
};
