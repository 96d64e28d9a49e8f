// Plain files of result setups are read without Qt's parser. Whatever the bytes, the list and the
// message log hold what a walk over Qt's document finds: around plain files, where one byte decides,
// most of all.
#include "plainSamples.h"

#include <rfUtils/catalogues/ResultSetup.h>
#include <support/allocations.h>
#include <support/messageLog.h>
#include <support/setupsWalk.h>
#include <support/tempFiles.h>

#include <gtest/gtest.h>

#include <QString>

#include <string>
#include <vector>

namespace {

using namespace std::string_literals;

/// Also tells a null text from an empty one.
void expectText(const QString& text, const QString& expected, const std::string& bytes) {
    ASSERT_EQ(text.toStdString(), expected.toStdString()) << bytes;
    ASSERT_EQ(text.isNull(), expected.isNull()) << bytes;
}

class ResultSetupPlain : public testing::Test {
protected:
    void expectAsQt(const std::string& bytes) {
        const SetupsWalk walk(bytes);
        ResultSetup list;
        MessageLog::take();
        ASSERT_EQ(list.loadJson(QString::fromStdString(files_.write("file.json", bytes))),
                  walk.loads)
            << bytes;
        std::vector<std::string> lines;
        for (const LoggedMessage& message : MessageLog::take()) {
            lines.push_back(message.text);
        }
        ASSERT_EQ(lines, walk.lines) << bytes;
        int index = 0;
        for (const ResultSetup::SetupInfo& setup : walk.setups) {
            expectText(list.setupId(index), setup.id, bytes);
            expectText(list.setupLabel(index), setup.label, bytes);
            ++index;
        }
        ASSERT_TRUE(list.setupId(index).isNull() && list.setupLabel(index).isNull()) << bytes;
    }

private:
    TempFiles files_;
    MessageLog log_;
};

std::string group(const std::string& entries) {
    return "{\"group\": [" + entries + "]}";
}

TEST_F(ResultSetupPlain, ReadsNumbersAndWordsAsQtDoes) {
    forEachOf({kPlainNumbers, kOtherNumbers, kPlainWords, kOtherWords},
              [&](const std::string& value) {
                  for (const char* member : {"label", "id", "other"}) {
                      const std::string first = "{\""s + member + "\":" + value;
                      expectAsQt(group(first + R"(,"id":"chp"})"));
                      expectAsQt(group(first + R"(,"label":"Channel Power"},{})"));
                      expectAsQt(group(first + R"(,"label":"Channel Power","id":"chp"},{})"));
                  }
              });
}

TEST_F(ResultSetupPlain, ReadsTextsAsQtDoes) {
    const auto expectTextAsQt = [&](const std::string& text) {
        expectAsQt(group(R"({"label":")" + text + R"(","id":"chp"})"));
        expectAsQt(group(R"({"label":"Channel Power","id":")" + text + "\"},{}"));
        expectAsQt(group("{\"" + text + R"(":"","label":"Channel Power","id":"chp"})"));
        expectAsQt(R"({"b":[{}],")" + text + R"(":[{"label":"Channel Power"},{}],"a":[{}]})");
    };
    forEachOf({kPlainTexts, kOtherTexts}, expectTextAsQt);
    expectTextAsQt("a\0b"s);
}

TEST_F(ResultSetupPlain, ReadsKeysWithEscapesAsQtDoes) {
    expectAsQt(group(R"({"l\u0061bel":"Channel Power","\u0069d":"chp"})"));
    expectAsQt(R"({"\u0062":[{"label":"B","id":"b"}],"a":[{"label":"A","id":"a"}],"b":[]})");
}

/// A setup takes one allocation in the list, a document another for each element.
TEST_F(ResultSetupPlain, ReadsPlainFilesWithoutADocument) {
    const TempFiles files;
    const auto expectNoDocument = [&](const std::string& element) {
        constexpr std::size_t kElements = 1000;
        const QString name =
            QString::fromStdString(files.write("plain.json", group(listOf(kElements, element))));
        ResultSetup list;
        const Allocations allocations;
        ASSERT_TRUE(list.loadJson(name)) << element;
        EXPECT_LT(allocations.count(), kElements * 3 / 2) << element;
    };
    forEachOf({kPlainNumbers, kPlainWords}, [&](const std::string& value) {
        expectNoDocument(R"({"label":)" + value + R"(,"id":)" + value + '}');
    });
    forEachOf({kPlainTexts}, [&](const std::string& text) {
        expectNoDocument(R"({"label":")" + text + R"(","id":")" + text + "\"}");
        expectNoDocument(R"({"id":"","other":")" + text + R"(","label":""})");
    });
}

TEST_F(ResultSetupPlain, TakesGroupsInTheOrderOfQtsKeys) {
    const std::string entry = R"({"label":"Channel Power","id":"chp"})";
    const std::vector<std::string> keys = {"",
                                           "a",
                                           "aa",
                                           "b",
                                           "Z",
                                           "9",
                                           "10",
                                           "\xC2\xB5",
                                           "z",
                                           "\xE2\x84\xA6",
                                           "\xED\x9F\xBF",
                                           "\xEE\x80\x80"};
    for (const std::string& first : keys) {
        for (const std::string& second : keys) {
            expectAsQt("{\"" + first + "\":[" + entry + R"(,{"label":""}],")" + second +
                       R"(":[{"id":"obw","label":"OBW"},{"id":""}]})");
        }
    }
    std::string all;
    for (const std::string& key : keys) {
        all += (all.empty() ? "{\"" : ",\"") + key + "\":[{}," + entry + ",{}]";
    }
    expectAsQt(all + '}');
}

/// More than a sort would compare one by one.
TEST_F(ResultSetupPlain, ReadsManyGroupsOfOneNameAsQtDoes) {
    std::string all = "{";
    for (int i = 0; i < 1000; ++i) {
        all += R"("group":[{"label":"Channel Power","id":")" + std::to_string(i) + "\"}],";
    }
    expectAsQt(all + R"("other":[]})");
}

TEST_F(ResultSetupPlain, ReadsMembersThatRepeatAsQtDoes) {
    const std::string entry = R"("label":"Channel Power","id":"chp"})";
    for (const char* again : {"label", "id", "other"}) {
        for (const char* value : {"5", "\"five\"", "\"\""}) {
            const std::string member = '"' + std::string(again) + "\":" + value;
            expectAsQt(group('{' + member + ',' + entry + ",{}"));
            expectAsQt(group('{' + entry.substr(0, entry.size() - 1) + ',' + member + "},{}"));
            expectAsQt(group('{' + member + ',' + member + "},{}"));
        }
    }
}

TEST_F(ResultSetupPlain, ReadsMembersThatAreNoGroupsAsQtDoes) {
    for (const char* value : {"{}", "\"text\"", "\"\"", "7", "[]", "[7]", "[\"\"]", "[[]]"}) {
        expectAsQt(R"({"b":)"s + value + R"(,"a":[{"label":"Channel Power","id":"chp"},{}]})");
    }
}

TEST_F(ResultSetupPlain, ReadsChangedFilesAsQtDoes) {
    const std::string base =
        "\t{ \"q\": [{\"label\":\"L\xC2\xB5\",\"id\":\"\\u00e9\",\"x\":-10}, {\"label\": "
        "null},{}],\r\n"
        "\"p\":[],\"o\":[{\"id\":\"I\",\"label\":\"\"},{\"id\":\"\"}]}\n";
    ASSERT_EQ(SetupsWalk(base).setups.size(), 2U);
    ASSERT_EQ(SetupsWalk(base).lines.size(), 6U);
    expectAsQt(base);
    forEachChange(base, [&](const std::string& changed) { expectAsQt(changed); });
}

}  // namespace
