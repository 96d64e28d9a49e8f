#include <gtest/gtest.h>

#include <string>

#include "analysis/units/relatedUnits.h"
#include "runCommand.h"

TEST(Units, takesNoArgument) {
    expectCommands({
        misuses("argument", "units V", "unexpected argument \"V\""),
    });
}

TEST(Units, listsFieldsWithEveryPrefix) {
    const std::string csv = runCommand({"units", "--format", "csv"}).output;
    EXPECT_NE(csv.find("\nW/m^2,power density,name,true,true\n"
                       "GW/m^2,power density,prefix,false,true\n"
                       "MW/m^2,power density,prefix,false,true\n"
                       "kW/m^2,power density,prefix,false,true\n"
                       "mW/m^2,power density,prefix,true,true\n"
                       "uW/m^2,power density,prefix,true,true\n"
                       "nW/m^2,power density,prefix,true,true\n"
                       "pW/m^2,power density,prefix,true,true\n"
                       "fW/m^2,power density,prefix,false,true\n"
                       "aW/m^2,power density,prefix,false,true\n"
                       "zW/m^2,power density,prefix,false,true\n"
                       "yW/m^2,power density,prefix,false,true\n"
                       "dBm/m^2,"),
              std::string::npos);
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
    EXPECT_GT(rows.size(), 40);
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

TEST(Units, relatedOnesFollowFromUnitsThatAreShownAndRead) {
    for (const rfu::RelatedUnit& unit : rfu::kRelatedUnits) {
        SCOPED_TRACE(unit.relation);
        EXPECT_EQ(rfu::findUnit(unit.name), nullptr);
        const rfu::Unit* const known = rfu::findUnit(unit.known);
        ASSERT_NE(known, nullptr);
        EXPECT_TRUE(known->canBeShown());
        EXPECT_TRUE(known->canBeRead());
    }
}
