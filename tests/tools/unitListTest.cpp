#include <gtest/gtest.h>

#include "runCommand.h"

TEST(Units, text) {
    expectCommands({{"text",
                     {"units"},
                     "",
                     0,
                     "unit     quantity              fromDbm  toDbm  antenna\n"
                     "dBm      level                 name     yes    no\n"
                     "dBV      level                 name     yes    no\n"
                     "dBmV     level                 name     yes    no\n"
                     "dBuV     level                 name     yes    no\n"
                     "V        voltage               name     yes    no\n"
                     "mV       voltage               prefix   yes    no\n"
                     "\u00B5V       voltage               prefix   yes    no\n"
                     "nV       voltage               prefix   yes    no\n"
                     "pV       voltage               prefix   yes    no\n"
                     "fV       voltage               prefix   no     no\n"
                     "W        power                 name     yes    no\n"
                     "mW       power                 prefix   yes    no\n"
                     "\u00B5W       power                 prefix   yes    no\n"
                     "nW       power                 prefix   yes    no\n"
                     "pW       power                 prefix   yes    no\n"
                     "fW       power                 prefix   no     no\n"
                     "aW       power                 prefix   no     no\n"
                     "zW       power                 prefix   no     no\n"
                     "yW       power                 prefix   no     no\n"
                     "dBuV/m   field strength level  name     yes    yes\n"
                     "dBmV/m   field strength level  name     yes    yes\n"
                     "dBV/m    field strength level  name     yes    yes\n"
                     "V/m      field strength        name     yes    yes\n"
                     "GV/m     field strength        prefix   no     yes\n"
                     "MV/m     field strength        prefix   no     yes\n"
                     "kV/m     field strength        prefix   no     yes\n"
                     "mV/m     field strength        prefix   yes    yes\n"
                     "uV/m     field strength        prefix   yes    yes\n"
                     "nV/m     field strength        prefix   yes    yes\n"
                     "pV/m     field strength        prefix   yes    yes\n"
                     "fV/m     field strength        prefix   no     yes\n"
                     "aV/m     field strength        prefix   no     yes\n"
                     "zV/m     field strength        prefix   no     yes\n"
                     "yV/m     field strength        prefix   no     yes\n"
                     "W/m^2    power density         name     yes    yes\n"
                     "GW/m^2   power density         prefix   no     yes\n"
                     "MW/m^2   power density         prefix   no     yes\n"
                     "kW/m^2   power density         prefix   no     yes\n"
                     "mW/m^2   power density         prefix   yes    yes\n"
                     "uW/m^2   power density         prefix   yes    yes\n"
                     "nW/m^2   power density         prefix   yes    yes\n"
                     "pW/m^2   power density         prefix   yes    yes\n"
                     "fW/m^2   power density         prefix   no     yes\n"
                     "aW/m^2   power density         prefix   no     yes\n"
                     "zW/m^2   power density         prefix   no     yes\n"
                     "yW/m^2   power density         prefix   no     yes\n"
                     "dBm/m^2  power density level   name     yes    yes\n"
                     "dBW/m^2  power density level   name     yes    yes\n"
                     "A/m      magnetic field        name     yes    yes\n"
                     "GA/m     magnetic field        prefix   no     yes\n"
                     "MA/m     magnetic field        prefix   no     yes\n"
                     "kA/m     magnetic field        prefix   no     yes\n"
                     "mA/m     magnetic field        prefix   no     yes\n"
                     "uA/m     magnetic field        prefix   no     yes\n"
                     "nA/m     magnetic field        prefix   no     yes\n"
                     "pA/m     magnetic field        prefix   no     yes\n"
                     "fA/m     magnetic field        prefix   no     yes\n"
                     "aA/m     magnetic field        prefix   no     yes\n"
                     "zA/m     magnetic field        prefix   no     yes\n"
                     "yA/m     magnetic field        prefix   no     yes\n"
                     "dBA/m    magnetic field level  name     yes    yes\n"
                     "W/cm^2   power density         name     no     yes\n"
                     "GW/cm^2  power density         prefix   no     yes\n"
                     "MW/cm^2  power density         prefix   no     yes\n"
                     "kW/cm^2  power density         prefix   no     yes\n"
                     "mW/cm^2  power density         prefix   no     yes\n"
                     "uW/cm^2  power density         prefix   no     yes\n"
                     "nW/cm^2  power density         prefix   no     yes\n"
                     "pW/cm^2  power density         prefix   no     yes\n"
                     "fW/cm^2  power density         prefix   no     yes\n"
                     "aW/cm^2  power density         prefix   no     yes\n"
                     "zW/cm^2  power density         prefix   no     yes\n"
                     "yW/cm^2  power density         prefix   no     yes\n"
                     "w/cm^2   power density         no       yes    yes\n",
                     ""},
                    {"argument",
                     {"units", "V"},
                     "",
                     2,
                     "",
                     "rfutils: unexpected argument \"V\" (see rfutils units --help)\n"}});
}

TEST(Units, csvAndJson) {
    const std::string csv = runCommand({"units", "--format", "csv"}).output;
    EXPECT_EQ(csv.rfind("unit,quantity,fromDbm,toDbm,antenna\ndBm,level,name,true,false\n", 0), 0U);
    EXPECT_NE(csv.find("\nfV,voltage,prefix,false,false\n"), std::string::npos);
    const std::string json = runCommand({"units", "--format", "json"}).output;
    EXPECT_NE(json.find("\n  {\"unit\": \"w/cm^2\", \"quantity\": \"power density\", "
                        "\"fromDbm\": \"no\", \"toDbm\": true, \"antenna\": true}\n]\n"),
              std::string::npos);
}

// What the list promises is what the conversion does.
TEST(Units, listAgreesWithConversion) {
    const QStringList rows = QString::fromStdString(runCommand({"units", "--format", "csv"}).output)
                                 .split('\n', Qt::SkipEmptyParts)
                                 .mid(1);
    EXPECT_EQ(rows.size(), 38 + 4 * 11 - 8);
    for (const QString& row : rows) {
        SCOPED_TRACE(row.toStdString());
        const QStringList cells = row.split(',');
        QStringList antenna;
        if (cells[4] == "true") {
            antenna = QStringList{"--center", "100"};
        }
        EXPECT_EQ(
            runCommand(QStringList{"convert", "1" + cells[0], "--to", "dBm"} + antenna).exitStatus,
            cells[3] == "true" ? 0 : 1);
        EXPECT_EQ(runCommand(QStringList{"convert", "1", "--to", cells[0]} + antenna).exitStatus,
                  cells[2] == "name" ? 0 : 1);
    }
}
