#include <gtest/gtest.h>

#include <QFile>
#include <cstddef>
#include <sstream>
#include <string>
#include <vector>

#include "runCommand.h"

namespace {

struct Example {
    std::string command;  // "rfutils convert --to W < levels.txt"
    std::string output;   // standard output, then standard error; "..." stands for lines left out
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

/// The output with the lines left out that the example leaves out.
std::string shortened(std::string output, const std::string& example) {
    const std::string gap = "...\n";
    const std::size_t at = example.find(gap);
    const std::size_t behind = at == std::string::npos ? at : example.size() - at - gap.size();
    if (at != std::string::npos && output.size() >= at + behind) {
        output.replace(at, output.size() - at - behind, gap);
    }
    return output;
}

}  // namespace

TEST(Document, examplesShowWhatTheCommandPrints) {
    const SampleFolder folder;
    folder.addSamples();
    const std::string readme = readFile(QStringLiteral(RFUTILS_README));
    const auto examples =
        examplesOfDocument(readme + readFile(QStringLiteral(RFUTILS_COMMAND_DOCUMENT)));
    EXPECT_EQ(examplesOfDocument(readme).size(), 2U);
    EXPECT_GE(examples.size(), 32U);
    for (const Example& example : examples) {
        SCOPED_TRACE(example.command);
        QStringList words = splitWords(example.command).mid(1);
        const std::string input = takeInput(words, folder);
        const CommandResult result = runCommand(words, input, folder);
        EXPECT_EQ(shortened(result.output + result.errors, example.output), example.output);
    }
}
