#include <rfUtils/platform/VemoJsonDocument.h>
#include <support/deadline.h>
#include <support/messageLog.h>
#include <support/tempFiles.h>

#include <gtest/gtest.h>

#include <QByteArray>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonValue>
#include <QString>
#include <QStringList>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

namespace {

using namespace std::string_view_literals;

constexpr char kGood[] = R"({"a": [1, 2.5, "x"], "b": {"c": null}})";

QString qString(const std::string& utf8) {
    return QString::fromStdString(utf8);
}

/// Reads a file into a new document and checks that its answers agree with each other.
VemoJsonDocument readFile(const std::string& path) {
    VemoJsonDocument document;
    const bool done = document.readFile(qString(path));
    EXPECT_EQ(done, !document.hasError());
    EXPECT_EQ(document.errorString().isEmpty(), done);
    if (!done) {
        EXPECT_TRUE(document.object().isEmpty());
    }
    return document;
}

std::string textOf(QJsonParseError::ParseError error) {
    QJsonParseError parsed;
    parsed.error = error;
    return parsed.errorString().toStdString();
}

/// The document holds what Qt's parser makes of these bytes, or gives the same error.
void expectQtAnswer(const TempFiles& files, std::string_view bytes, const std::string& what) {
    QJsonParseError parsed;
    const QJsonDocument expected =
        QJsonDocument::fromJson(QByteArray(bytes.data(), static_cast<int>(bytes.size())), &parsed);
    const VemoJsonDocument document = readFile(files.write("any.json", bytes));
    EXPECT_EQ(document.hasError(), parsed.error != QJsonParseError::NoError) << what;
    if (document.hasError()) {
        EXPECT_EQ(document.errorString(), parsed.errorString()) << what;
    } else {
        EXPECT_EQ(document.object(), expected.object()) << what;
    }
}

TEST(VemoJsonDocument, StartsWithoutErrorAndEmpty) {
    const VemoJsonDocument document;
    EXPECT_FALSE(document.hasError());
    EXPECT_TRUE(document.errorString().isEmpty());
    EXPECT_TRUE(document.object().isEmpty());
}

TEST(VemoJsonDocument, HandsOutTheTopLevelObject) {
    const TempFiles files;
    const VemoJsonDocument document = readFile(files.write("good.json", kGood));
    const QJsonObject object = document.object();
    ASSERT_EQ(object.keys(), (QStringList{qString("a"), qString("b")}));
    EXPECT_EQ(object[QLatin1String("a")], (QJsonArray{1, 2.5, qString("x")}));
    EXPECT_TRUE(object[QLatin1String("b")].toObject()[QLatin1String("c")].isNull());
}

TEST(VemoJsonDocument, ReadsFilesWithOddNames) {
    const TempFiles files;
    for (const char* name : {"blank in name.json", "größe µ.json", "'quoted\".json", "no extension",
                             "line\nend", "%1%2", "..json"}) {
        EXPECT_EQ(readFile(files.write(name, kGood)).object().size(), 2) << name;
    }
    const std::string link = files.makeLink("link.json", files.write("target.json", kGood));
    EXPECT_EQ(readFile(link).object().size(), 2);
}

TEST(VemoJsonDocument, ReadsAPathRelativeToTheCurrentFolder) {
    const TempFiles files;
    files.write("good.json", kGood);
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(files.path(""));
    EXPECT_EQ(readFile("good.json").object().size(), 2);
    std::filesystem::current_path(before);
}

TEST(VemoJsonDocument, ReadsQtResources) {
    EXPECT_EQ(readFile(":/platform/resource.json").object()[QLatin1String("from")],
              QJsonValue(QLatin1String("resource")));
    EXPECT_TRUE(readFile(":/platform/none.json").hasError());
    EXPECT_EQ(readFile(":/platform").errorString().toStdString(), "not a regular file");
}

TEST(VemoJsonDocument, AcceptsWhatTheParserAccepts) {
    const struct {
        const char* name;
        std::string_view bytes;
        int members;
    } kCases[] = {
        {"empty object", "{}"sv, 0},
        {"blanks around", " \t\r\n{\"a\" :\n1 } \r\n\t"sv, 1},
        {"byte order mark", "\xEF\xBB\xBF{\"a\":1}"sv, 1},
        {"array at the top", "[{\"a\":1}]"sv, 0},
        {"empty array", "[]"sv, 0},
        {"same key twice", "{\"a\":1,\"a\":2}"sv, 1},
        {"empty key", "{\"\":1}"sv, 1},
        {"escaped NUL in a key", "{\"a\\u0000b\":1}"sv, 1},
        {"lone surrogate", "{\"a\":\"\\ud800\"}"sv, 1},
    };
    const TempFiles files;
    for (const auto& row : kCases) {
        const VemoJsonDocument document = readFile(files.write("accepted.json", row.bytes));
        EXPECT_FALSE(document.hasError()) << row.name;
        EXPECT_EQ(document.object().size(), row.members) << row.name;
        expectQtAnswer(files, row.bytes, row.name);
    }
}

TEST(VemoJsonDocument, KeepsTheLastOfMembersWithTheSameKey) {
    const TempFiles files;
    const auto path = files.write("twice.json", "{\"a\":1,\"b\":3,\"a\":[2]}");
    EXPECT_EQ(readFile(path).object()[QLatin1String("a")], QJsonValue(QJsonArray{2}));
}

TEST(VemoJsonDocument, RefusesWhatTheParserRefusesWithItsText) {
    const struct {
        const char* name;
        std::string_view bytes;
        QJsonParseError::ParseError error;
    } kCases[] = {
        {"empty file", ""sv, QJsonParseError::IllegalValue},
        {"blanks only", " \n"sv, QJsonParseError::IllegalValue},
        {"byte order mark only", "\xEF\xBB\xBF"sv, QJsonParseError::IllegalValue},
        {"number at the top", "1"sv, QJsonParseError::IllegalValue},
        {"text at the top", "\"a\""sv, QJsonParseError::IllegalValue},
        {"null at the top", "null"sv, QJsonParseError::IllegalValue},
        {"UTF-16", "\xFF\xFE{\0}\0"sv, QJsonParseError::IllegalValue},
        {"NUL byte", "\0"sv, QJsonParseError::IllegalValue},
        {"text after the object", "{}x"sv, QJsonParseError::GarbageAtEnd},
        {"second object", "{} {}"sv, QJsonParseError::GarbageAtEnd},
        {"NUL byte after the object", "{}\0"sv, QJsonParseError::GarbageAtEnd},
        {"number at the end", "{\"a\":1"sv, QJsonParseError::TerminationByNumber},
        {"object closed as an array", "{\"a\":\"\"]"sv, QJsonParseError::UnterminatedObject},
        {"array closed as an object", "{\"a\":[\"\"}"sv, QJsonParseError::UnterminatedArray},
        {"text without an end", "{\"a"sv, QJsonParseError::UnterminatedString},
        {"no colon", "{\"a\" 1}"sv, QJsonParseError::MissingNameSeparator},
        {"trailing comma", "{\"a\":1,}"sv, QJsonParseError::MissingObject},
        {"not a number", "{\"a\":NaN}"sv, QJsonParseError::IllegalNumber},
        {"unknown escape", "{\"a\":\"\\u12\"}"sv, QJsonParseError::IllegalEscapeSequence},
        {"invalid UTF-8", "{\"a\":\"\x80\"}"sv, QJsonParseError::IllegalUTF8String},
    };
    const TempFiles files;
    for (const auto& row : kCases) {
        const VemoJsonDocument document = readFile(files.write("refused.json", row.bytes));
        EXPECT_TRUE(document.hasError()) << row.name;
        EXPECT_EQ(document.errorString().toStdString(), textOf(row.error)) << row.name;
        expectQtAnswer(files, row.bytes, row.name);
    }
}

TEST(VemoJsonDocument, RefusesDocumentsNestedTooDeeply) {
    const TempFiles files;
    const auto nested = [&files](std::size_t depth) {
        return readFile(
            files.write("deep.json", std::string(depth, '[') + std::string(depth, ']')));
    };
    EXPECT_FALSE(nested(1024).hasError());
    EXPECT_EQ(nested(1025).errorString().toStdString(), textOf(QJsonParseError::DeepNesting));
    EXPECT_TRUE(nested(1000000).hasError());
}

TEST(VemoJsonDocument, AnswersLikeQtToAFileCutOrDamagedAnywhere) {
    const TempFiles files;
    const std::string good = kGood;
    for (std::size_t size = 0; size <= good.size(); ++size) {
        expectQtAnswer(files, good.substr(0, size), "cut to " + std::to_string(size));
    }
    for (std::size_t place = 0; place < good.size(); ++place) {
        for (const char byte : {'\0', '"', '{', ']', '\\', '\x80', '\xFF'}) {
            std::string damaged = good;
            damaged[place] = byte;
            expectQtAnswer(files, damaged, "damaged at " + std::to_string(place));
        }
    }
}

TEST(VemoJsonDocument, GivesTheFilesErrorTextForAFileThatCannotBeRead) {
    const TempFiles files;
    const std::string file = files.write("file.json", kGood);
    EXPECT_EQ(readFile(files.path("none.json")).errorString(),
              qString("No such file or directory"));
    for (const auto& path :
         {file + "/below", files.makeLink("dangling", files.path("none.json"))}) {
        QFile unreadable(qString(path));
        ASSERT_FALSE(unreadable.open(QIODevice::ReadOnly));
        EXPECT_EQ(readFile(path).errorString(), unreadable.errorString()) << path;
    }
}

TEST(VemoJsonDocument, RefusesWhatIsNoFileName) {
    const TempFiles files;
    const std::string file = files.write("file.json", kGood);
    const MessageLog log;
    for (const std::string& path :
         {std::string(), std::string(1, '\0'), std::string("a\0b", 3), file + '\0'}) {
        EXPECT_EQ(readFile(path).errorString().toStdString(), "not a file name") << path;
    }
    EXPECT_EQ(MessageLog::take(), std::vector<LoggedMessage>());
}

TEST(VemoJsonDocument, ReportsAReadThatFailsAfterTheOpen) {
    const char* const unreadable = "/proc/self/mem";  // opens, but its first byte cannot be read
    if (!std::filesystem::exists(unreadable)) {
        GTEST_SKIP() << "no " << unreadable;
    }
    EXPECT_EQ(readFile(unreadable).errorString(), qString(std::strerror(EIO)));
}

TEST(VemoJsonDocument, RefusesWhatIsNoRegularFileWithoutWaiting) {
    const Deadline deadline;
    const TempFiles files;
    const std::string fifo = files.makeFifo("fifo.json");
    for (const auto& path :
         {files.makeFolder("folder.json"), fifo, files.makeLink("link.json", fifo),
          std::string("/dev/zero"), std::string("/dev/null"), std::string("/")}) {
        EXPECT_EQ(readFile(path).errorString().toStdString(), "not a regular file") << path;
    }
}

TEST(VemoJsonDocument, RefusesAFileTooLargeForOneByteArray) {
    const Deadline deadline;
    const TempFiles files;
    const std::string path = files.write("large.json", kGood);
    std::filesystem::resize_file(path, 0x80000000U);  // sparse: takes no space
    EXPECT_TRUE(readFile(path).hasError());
}

TEST(VemoJsonDocument, StartsAnewWithEveryRead) {
    const TempFiles files;
    const QString good = qString(files.write("good.json", kGood));
    const QString other = qString(files.write("other.json", "{\"z\":1}"));
    const QString bad = qString(files.write("bad.json", "{\"z\":"));
    VemoJsonDocument document;

    EXPECT_TRUE(document.readFile(good));
    EXPECT_TRUE(document.readFile(other));
    EXPECT_EQ(document.object().keys(), QStringList{qString("z")});

    for (const QString& failing : {bad, qString(files.path("none.json")), qString("/dev/null")}) {
        EXPECT_TRUE(document.readFile(good));
        EXPECT_FALSE(document.readFile(failing));
        EXPECT_TRUE(document.hasError());
        EXPECT_TRUE(document.object().isEmpty());
    }
    EXPECT_TRUE(document.readFile(other));
    EXPECT_FALSE(document.hasError());
    EXPECT_TRUE(document.errorString().isEmpty());
    EXPECT_EQ(document.object().keys(), QStringList{qString("z")});
}

TEST(VemoJsonDocument, WritesNoMessages) {
    const MessageLog log;
    const TempFiles files;
    readFile(files.write("good.json", kGood));
    readFile(files.write("bad.json", "{"));
    readFile(files.path("none.json"));
    readFile(files.makeFolder("folder"));
    EXPECT_TRUE(MessageLog::take().empty());
}

// A descriptor that was never opened must not be closed either.
TEST(VemoJsonDocument, LeavesOtherFilesOpenAfterARefusal) {
    for (const char* const name : {"", "missing.json", "."}) {
        VemoJsonDocument document;
        EXPECT_FALSE(document.readFile(qString(name))) << name;
        for (const int number : {STDOUT_FILENO, STDERR_FILENO}) {
            EXPECT_NE(fcntl(number, F_GETFD), -1) << name << ", " << number;
        }
    }
}

}  // namespace
