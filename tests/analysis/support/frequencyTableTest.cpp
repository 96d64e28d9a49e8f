#include "analysis/support/frequencyTable.h"

#include <gtest/gtest.h>
#include <support/tempFiles.h>

#include <string>

#include "analysis/support/inputError.h"
#include "analysis/support/numbers.h"

namespace {

/// "88.1=-40,- 90=-,-90" for each row, or the problem.
std::string tableOf(const std::string& bytes) {
    const TempFiles files;
    std::string text;
    try {
        const QString file = QString::fromStdString(files.write("table.csv", bytes));
        for (const rfu::FrequencyRow& row : rfu::readFrequencyTable(file, {"upper", "lower"})) {
            text += text.empty() ? "" : " ";
            text += rfu::ShortestText(row.frequency).view();
            for (const auto& number : row.numbers) {
                text += &number == &row.numbers.front() ? '=' : ',';
                text += number ? std::string(rfu::ShortestText(*number).view()) : "-";
            }
        }
        return text;
    } catch (const rfu::InputError& error) {
        EXPECT_EQ(error.file().toStdString(), files.path("table.csv"));
        return std::to_string(error.line()) + ": " + error.problem();
    }
}

}  // namespace

TEST(FrequencyTable, ReadsFrequenciesAndNumbers) {
    const struct {
        const char* name;
        std::string bytes;
        const char* rows;
    } kRows[] = {
        {"two columns", "88,-40,-90\n89,-41,-91\n", "88=-40,-90 89=-41,-91"},
        {"empty and missing fields", "88,,-90\n89,-41\n90,-42,\n91,-43,,,\n",
         "88=-,-90 89=-41,- 90=-42,- 91=-43,-"},
        {"units of frequencies", "88100k,1\n 0.0891 GHz , +2 , .5\n", "88.1=1,- 89.1=2,0.5"},
        {"a step", "88,1\n88,2\n89,3\n89,4\n", "88=1,- 88=2,- 89=3,- 89=4,-"},
        {"header, comments, blank lines and both line ends",
         "\xEF\xBB\xBF# made by hand\r\n\r\nfrequency, upper\r\n88,1\r\n  # more\n\n89,2",
         "88=1,- 89=2,-"},
        {"a quoted header", "\"Frequency (MHz)\",\"upper\"\n88,1\n", "88=1,-"},
    };
    for (const auto& row : kRows) {
        EXPECT_EQ(tableOf(row.bytes), row.rows) << row.name;
    }
}

TEST(FrequencyTable, SaysWhatIsWrong) {
    const struct {
        const char* name;
        std::string bytes;
        const char* problem;
    } kRows[] = {
        {"empty", "", "0: holds no line of a frequency and upper or lower"},
        {"a header alone", "frequency,upper,lower\n# 88,1\n",
         "0: holds no line of a frequency and upper or lower"},
        {"no frequency", "88,1\n,2\n",
         "2: \"\" is not a frequency such as 88.1MHz or a number of MHz"},
        {"a second header", "f,u\nf,u\n",
         "2: \"f\" is not a frequency such as 88.1MHz or a number of MHz"},
        {"a negative frequency", "-1,1\n",
         "1: \"-1\" is not a frequency such as 88.1MHz or a number of MHz"},
        {"a huge frequency", "1e300G,1\n",
         "1: \"1e300G\" is not a frequency such as 88.1MHz or a number of MHz"},
        {"no number", "88,1\n89,low\n", "2: upper is \"low\" instead of a number"},
        {"no finite number", "88,1,inf\n", "1: lower is \"inf\" instead of a number"},
        {"a huge number", "88,1e16\n", "1: upper is \"1e16\" instead of a number"},
        {"no limit", "88,1\n89,,\n", "2: the line has no upper or lower"},
        {"a frequency alone", "88\n", "1: the line has no upper or lower"},
        {"more fields", "88,1,0,5\n", "1: the line goes on behind lower"},
        {"falling", "89,1\n\n88,1\n", "3: 88 MHz comes after 89 MHz"},
        {"three times", "88,1\n88,2\n88,3\n", "3: 88 MHz comes a third time"},
        {"semicolons", "88;-40;-90\n",
         "1: \"88;-40;-90\" is not a frequency such as 88.1MHz or a number of MHz"},
    };
    for (const auto& row : kRows) {
        EXPECT_EQ(tableOf(row.bytes), row.problem) << row.name;
    }
}

TEST(FrequencyTable, WaitsForNobody) {
    const TempFiles files;
    for (const std::string& path :
         {files.makeFifo("fifo"), files.makeFolder("folder"), files.path("none")}) {
        EXPECT_THROW(rfu::readFrequencyTable(QString::fromStdString(path), {"upper"}),
                     rfu::InputError)
            << path;
    }
}
