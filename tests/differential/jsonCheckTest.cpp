// The checks of catalogues and setups against the library and Python's JSON parser, on random and mutated files:
// neither error nor warning exactly where the library loads the file and then holds everything that Python reads in
// it, and at least one choice or setup; a finding at the line of each of them that it does not hold.
#include "analysis/catalogues/catalogueCheck.h"

#include <support/messageLog.h>
#include <support/samples.h>
#include <support/tempFiles.h>

#include <rfUtils/catalogues/ResultSetup.h>
#include <rfUtils/catalogues/subItemList.h>

#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "analysis/catalogues/setupsCheck.h"

namespace {

using namespace rfu::test;

int fileCount() {
    if (isWished("RFUTILS_SHORT_TESTS")) {
        return 300;
    }
    return isLongRun() ? 100000 : 3000;
}

/// Files of a kind: mostly almost right, and some of them changed byte by byte.
class JsonFiles {
public:
    JsonFiles(Samples& samples, bool isCatalogue) : samples_(samples), isCatalogue_(isCatalogue) {
        isStrict_ = samples.below(3) == 0;
    }

    std::string next() {
        if (rarely(80)) {
            return samples_.text(kAny, 30);
        }
        std::string text = rarely(40) ? "\xEF\xBB\xBF" : "";
        text += document();
        if (!isStrict_ && samples_.below(3) == 0) {
            for (std::uint64_t changes = samples_.below(3); changes > 0 && !text.empty();
                 --changes) {
                change(text);
            }
        }
        return text;
    }

private:
    inline static const std::string kAny =
        "{}[]:,\"\\ \n\t0123456789.-+eEtruefalsnidb\xC3\xA4\x80\xEF\xBB\xBF";

    bool rarely(std::uint64_t times) { return !isStrict_ && samples_.below(times) == 0; }

    std::string blank() {
        static const std::vector<std::string> kBlanks = {"", "", " ", "\n", "\n  ", "\r\n", "\t"};
        return samples_.oneOf(kBlanks);
    }

    void change(std::string& text) {
        const std::size_t at = samples_.below(text.size());
        switch (samples_.below(4)) {
            case 0:
                text.erase(at, 1 + samples_.below(3));
                break;
            case 1:
                text.insert(at, 1, samples_.oneOf(kAny));
                break;
            case 2:
                text[at] = samples_.oneOf(kAny);
                break;
            default:
                text.insert(samples_.below(text.size()), text, at, samples_.below(60));
        }
    }

    template <typename Part>
    std::string listOf(char begin, char end, std::uint64_t most, Part part) {
        std::string text(1, begin);
        const std::uint64_t count = samples_.below(most + 1);
        for (std::uint64_t i = 0; i < count; ++i) {
            text += (i == 0 ? "" : ",") + blank() + part(i);
        }
        if (rarely(200)) {
            text += ',';
        }
        return text + blank() + end;
    }

    std::string document() {
        const auto list = [&] {
            return listOf('[', ']', 5, [&](std::uint64_t) { return element(); });
        };
        if (rarely(100)) {
            return list();
        }
        return blank() +
               listOf('{', '}', 4,
                      [&](std::uint64_t i) {
                          const bool isNew = isStrict_ || samples_.below(8) != 0;
                          return (isNew ? '"' + std::string(1, static_cast<char>('a' + i)) + '"'
                                        : key()) +
                                 blank() + ':' + blank() + (rarely(15) ? value() : list());
                      }) +
               blank();
    }

    std::string key() {
        static const std::vector<std::string> kKeys = {"\"a\"",
                                                       "\"b\"",
                                                       "\"A\"",
                                                       "\"\\u0061\"",
                                                       "\"\xEF\xBB\xBF"
                                                       "a\"",
                                                       "\"$schema\"",
                                                       "\"\xC3\xA4\"",
                                                       "\"\"",
                                                       "\"\\ud800\"",
                                                       "\"\\ufeffa\""};
        return samples_.oneOf(kKeys);
    }

    std::string element() {
        if (rarely(25)) {
            return value();
        }
        std::vector<std::string> members;
        const std::vector<std::string> names =
            isCatalogue_ ? std::vector<std::string>{"label", "id", "enum", "dispSeq"}
                         : std::vector<std::string>{"label", "id"};
        for (const std::string& name : names) {
            if (!rarely(30)) {
                members.push_back('"' + (rarely(40) ? misspelt(name) : name) + '"' + blank() + ':' +
                                  blank() + valueOf(name));
            }
            if (rarely(60)) {
                members.push_back('"' + samples_.oneOf(names) + "\":" + valueOf(name));
            }
        }
        std::string text = "{";
        for (std::size_t i = members.size(); i > 0; --i) {
            const std::size_t at = samples_.below(i);
            text += (text.size() == 1 ? "" : ",") + blank() + members[at];
            members.erase(members.begin() + static_cast<std::ptrdiff_t>(at));
        }
        return text + blank() + '}';
    }

    std::string misspelt(std::string name) {
        switch (samples_.below(4)) {
            case 0:
                return "\xEF\xBB\xBF" + name;
            case 1:
                return "\\u00" + std::string(name[0] == 'l' ? "6c" : "69") + name.substr(1);
            case 2:
                name[samples_.below(name.size())] = 'X';
                return name;
            default:
                return samples_.text("abc", 5);
        }
    }

    std::string valueOf(const std::string& name) {
        if (rarely(20)) {
            return value();
        }
        if (name == "enum" || name == "dispSeq") {
            return rarely(10) ? number() : std::to_string(samples_.below(1000));
        }
        return text(name == "id" && isStrict_ ? 20 : 4);
    }

    std::string number() {
        static const std::vector<std::string> kNumbers = {"0",
                                                          "-1",
                                                          "2147483647",
                                                          "2147483648",
                                                          "-2147483648",
                                                          "-2147483649",
                                                          "2.0",
                                                          "2e0",
                                                          "20e-1",
                                                          "1.5",
                                                          ".5",
                                                          "5.",
                                                          "-.5",
                                                          "1e400",
                                                          "1e-400",
                                                          "0e400",
                                                          "-0",
                                                          "1E2",
                                                          "01",
                                                          "4294967296",
                                                          "-999",
                                                          "1e",
                                                          "+1",
                                                          "2147483647.5",
                                                          "0.9999999999999999999999",
                                                          "123456789012345678901234567890"};
        return samples_.oneOf(kNumbers);
    }

    std::string text(std::size_t longest) {
        static const std::vector<std::string> kPieces = {"x",
                                                         "X",
                                                         "y",
                                                         "\xC3\xA4",
                                                         "\\u00e4",
                                                         "\\n",
                                                         "\\q",
                                                         "\t",
                                                         "\xEF\xBB\xBF",
                                                         "\\ud83d\\ude00",
                                                         "\\ud83d",
                                                         "\xF0\x9F\x98\x80",
                                                         "?",
                                                         "\xE4",
                                                         "\n",
                                                         "\\ufeff"};
        std::string text = "\"";
        for (std::uint64_t left = samples_.below(longest + 1); left > 0; --left) {
            text += rarely(12)
                        ? samples_.oneOf(kPieces)
                        : std::string(1, samples_.oneOf(std::string("abcdefghijklmnopqrstuvw")));
        }
        return text + '"';
    }

    std::string value() {
        switch (samples_.below(6)) {
            case 0:
                return number();
            case 1:
                return text(3);
            case 2:
                return samples_.coin() ? "true" : "false";
            case 3:
                return "null";
            case 4:
                return samples_.coin() ? "[]" : "[[1,{\"id\":2}]]";
            default:
                return samples_.coin() ? "{}"
                                       : "{\"label\":\"L\",\"id\":\"i\",\"enum\":1,\"dispSeq\":1}";
        }
    }

    Samples& samples_;
    const bool isCatalogue_;
    bool isStrict_;
};

using Entries = std::map<std::string, int>;  // with how often each is there

std::string hexOf(const std::string& bytes) {
    std::string text = "=";
    for (const char byte : bytes) {
        char digits[3] = "";
        std::snprintf(digits, sizeof digits, "%02x", static_cast<unsigned char>(byte));
        text += digits;
    }
    return text;
}

std::string hexOf(const QString& text) {
    std::string bytes;
    for (const QChar character : text) {
        bytes += static_cast<char>(character.row());
        bytes += static_cast<char>(character.cell());
    }
    return hexOf(bytes);
}

/// What the library holds after loading; nothing where it refuses the file.
struct Loaded {
    bool isLoaded;
    Entries entries;
};

Loaded loadCatalogue(const std::string& file, const std::string& bytes) {
    subItemList list;
    Loaded loaded = {list.loadJson(file), {}};
    std::set<std::string> items;
    for (const QString& key :
         QJsonDocument::fromJson(QByteArray::fromStdString(bytes)).object().keys()) {
        items.insert(key.toStdString());
    }
    for (const std::string& item : items) {
        std::unordered_map<std::string, subItem> choices;
        list.getSubItemsById(item, choices);
        for (const auto& entry : choices) {
            const subItem& choice = entry.second;
            ++loaded
                  .entries[hexOf(item) + ' ' + hexOf(choice.label) + ' ' + hexOf(choice.id) + ' ' +
                           std::to_string(choice.enumValue) + ' ' + std::to_string(choice.dispSeq)];
        }
    }
    return loaded;
}

/// @param most setups that there can be: nothing tells their number, and texts may be null
Loaded loadSetups(const std::string& file, std::size_t most) {
    ResultSetup setups;
    Loaded loaded = {setups.loadJson(QString::fromStdString(file)), {}};
    for (int i = 0; i < static_cast<int>(most); ++i) {
        if (!setups.setupId(i).isNull() || !setups.setupLabel(i).isNull()) {
            ++loaded.entries[hexOf(setups.setupLabel(i)) + ' ' + hexOf(setups.setupId(i))];
        }
    }
    return loaded;
}

/// What stands where a choice or setup is expected.
struct ReadEntry {
    long long firstLine;
    long long lastLine;
    std::string text;  // empty if the library cannot hold it
};

/// What Python reads in a file.
struct Reading {
    bool isWhole = false;  // whether there is nothing but choices or setups in it
    std::vector<ReadEntry> entries;
};

std::vector<Reading> readByPython(const std::vector<std::string>& documents, char kind,
                                  const TempFiles& files) {
    std::string all;
    for (const std::string& document : documents) {
        all += std::string(1, kind) + '\n' + std::to_string(document.size()) + '\n' + document;
    }
    const std::string answers = files.path("answers");
    const std::string command = "'" RFUTILS_PYTHON "' '" RFUTILS_JSON_READING "' '" +
                                files.write("documents", all) + "' > '" + answers + "'";
    EXPECT_EQ(std::system(command.c_str()), 0);
    std::vector<Reading> readings;
    std::ifstream lines(answers);
    for (std::string line; std::getline(lines, line);) {
        std::istringstream fields(line);
        std::string what;
        fields >> what;
        if (what == "W" || what == "w") {
            readings.push_back({what == "W", {}});
            continue;
        }
        ReadEntry entry = {0, 0, ""};
        fields >> entry.firstLine >> entry.lastLine >> std::ws;
        std::getline(fields, entry.text);
        readings.back().entries.push_back(entry);
    }
    return readings;
}

bool isClean(const rfu::Findings& findings) {
    return std::all_of(
        findings.kept().begin(), findings.kept().end(),
        [](const rfu::Finding& finding) { return finding.severity == rfu::Severity::Note; });
}

std::string textOf(const rfu::Findings& findings) {
    std::string text;
    for (const rfu::Finding& finding : findings.kept()) {
        text += "\n  " + std::to_string(finding.line) + ':' + std::to_string(finding.column) + ' ' +
                std::string(finding.rule) + ": " + finding.text;
    }
    return text;
}

Entries entriesOf(const Reading& reading) {
    Entries entries;
    for (const ReadEntry& entry : reading.entries) {
        ++entries[entry.text];
    }
    return entries;
}

bool holdsEverything(const Loaded& loaded, const Reading& reading) {
    return loaded.isLoaded && reading.isWhole && !loaded.entries.empty() &&
           entriesOf(reading) == loaded.entries;
}

/// Without the id of the item, in which the library may drop a mark: that is reported at the key of the item.
std::string withoutItem(const std::string& entry) {
    return entry.substr(entry.find(' ') + 1);
}

bool isFoundWithin(const ReadEntry& entry, const rfu::Findings& findings) {
    return std::any_of(findings.kept().begin(), findings.kept().end(),
                       [&](const rfu::Finding& finding) {
                           return finding.line >= entry.firstLine && finding.line <= entry.lastLine;
                       });
}

/// Something that the library holds less often than the file has it, although it loaded the file, with fewer findings
/// in its lines than are missing; empty where there is nothing.
std::string silentlyLost(const Loaded& loaded, const Reading& reading,
                         const rfu::Findings& findings, bool isCatalogue) {
    const auto nameOf = [&](const std::string& text) {
        return isCatalogue ? withoutItem(text) : text;
    };
    Entries missing;
    for (const ReadEntry& entry : reading.entries) {
        ++missing[nameOf(entry.text)];
    }
    for (const auto& [text, count] : loaded.entries) {
        missing[nameOf(text)] -= count;
    }
    for (const ReadEntry& entry : reading.entries) {
        missing[nameOf(entry.text)] -= isFoundWithin(entry, findings) ? 1 : 0;
    }
    const auto lost = std::find_if(missing.begin(), missing.end(),
                                   [](const auto& entry) { return entry.second > 0; });
    return !loaded.isLoaded || lost == missing.end() ? std::string() : "lost: " + lost->first;
}

void compare(char kind, std::uint64_t seed) {
    const bool isCatalogue = kind == 'c';
    const MessageLog log;
    const TempFiles files;
    Samples samples(seed);
    std::vector<std::string> documents;
    for (int i = fileCount(); i > 0; --i) {
        documents.push_back(JsonFiles(samples, isCatalogue).next());
    }
    const std::vector<Reading> readings = readByPython(documents, kind, files);
    ASSERT_EQ(readings.size(), documents.size());
    int whole = 0;
    int loadable = 0;
    for (std::size_t i = 0; i < documents.size(); ++i) {
        const std::string file = files.write("file.json", documents[i]);
        const Loaded loaded = isCatalogue ? loadCatalogue(file, documents[i])
                                          : loadSetups(file, readings[i].entries.size());
        const QString name = QString::fromStdString(file);
        const rfu::Findings findings =
            isCatalogue ? rfu::checkCatalogue(name) : rfu::checkSetups(name);
        MessageLog::take();
        const bool isWhole = holdsEverything(loaded, readings[i]);
        whole += isWhole ? 1 : 0;
        loadable += loaded.isLoaded ? 1 : 0;
        ASSERT_EQ(isClean(findings), isWhole) << testing::PrintToString(documents[i]) << '\n'
                                              << documents[i] << textOf(findings);
        ASSERT_EQ(silentlyLost(loaded, readings[i], findings, isCatalogue), "")
            << testing::PrintToString(documents[i]) << '\n'
            << documents[i] << textOf(findings);
        ASSERT_TRUE(loaded.isLoaded || findings.hasError()) << documents[i];
    }
    // There are enough of each: whole files, and files that load with something left out.
    EXPECT_GT(whole, fileCount() / 10);
    EXPECT_GT(loadable - whole, fileCount() / 10);
    EXPECT_GT(fileCount() - loadable, fileCount() / 20);
}

TEST(DifferentialJsonCheck, Catalogues) {
    compare('c', 20240930);
}

TEST(DifferentialJsonCheck, Setups) {
    compare('s', 20241001);
}

}  // namespace
