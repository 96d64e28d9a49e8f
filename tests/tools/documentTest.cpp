#include <gtest/gtest.h>

#include <QFile>
#include <QRegularExpression>
#include <set>
#include <sstream>

#include "runCommand.h"

namespace {

struct Example {
    std::string command;  // "rfutils convert --to W < levels.txt"
    std::string output;   // standard output, then standard error
};

std::string readFile(const QString& path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll().toStdString();
}

/// The lines after "$ " in the blocks marked as console, each with the lines up to the next.
std::vector<Example> examplesOfDocument(const std::string& document) {
    std::vector<Example> examples;
    std::istringstream lines(document);
    bool inBlock = false;
    for (std::string line; std::getline(lines, line);) {
        if (line.rfind("```", 0) == 0) {
            inBlock = line == "```console";
        } else if (inBlock && line.rfind("$ rfutils ", 0) == 0) {
            examples.push_back({line.substr(2), {}});
        } else if (inBlock && !examples.empty()) {
            examples.back().output += line + "\n";
        }
    }
    return examples;
}

/// Takes "< FILE" off the end of the words and gives what the file holds.
std::string takeInput(QStringList& words, const SampleFolder& folder) {
    const int at = words.indexOf(QStringLiteral("<"));
    if (at < 0) {
        return {};
    }
    std::string input = folder.read(words.value(at + 1).toUtf8().constData());
    words = words.mid(0, at);
    return input;
}

/// The names in the first column of the table of units.
std::set<QString> unitsOfDocument(const std::string& document) {
    std::set<QString> names;
    static const QRegularExpression name(QStringLiteral("`([^`]+)`"));
    const QString text = QString::fromStdString(document);
    const QStringList lines = text.mid(text.indexOf(QStringLiteral("| name |"))).split('\n');
    for (const QString& line : lines) {
        if (!line.startsWith('|')) {
            break;
        }
        for (auto found = name.globalMatch(line.section('|', 1, 1)); found.hasNext();) {
            names.insert(found.next().captured(1));
        }
    }
    return names;
}

}  // namespace

TEST(Document, examplesShowWhatTheCommandPrints) {
    const SampleFolder folder;
    folder.addSamples();
    const auto examples = examplesOfDocument(readFile(QStringLiteral(RFUTILS_COMMAND_DOCUMENT)));
    EXPECT_GE(examples.size(), 30U);
    for (const Example& example : examples) {
        SCOPED_TRACE(example.command);
        QStringList words = splitWords(example.command).mid(1);
        const std::string input = takeInput(words, folder);
        const CommandResult result = runCommand(words, input, folder);
        EXPECT_EQ(result.output + result.errors, example.output);
    }
}

TEST(Document, namesEveryUnitOfTheList) {
    std::set<QString> listed;
    const std::string csv = runCommand({"units", "--format", "csv"}).output;
    for (const QString& row : QString::fromStdString(csv).split('\n', Qt::SkipEmptyParts).mid(1)) {
        listed.insert(row.section(',', 0, 0));
    }
    EXPECT_EQ(unitsOfDocument(readFile(QStringLiteral(RFUTILS_UNITS_DOCUMENT))), listed);
}
