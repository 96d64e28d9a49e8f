#include <gtest/gtest.h>

#include <QFile>
#include <QFileInfo>
#include <QString>
#include <string>

#include "runCommand.h"

#include <sys/stat.h>
#include <unistd.h>

namespace {

const std::string kBroken =
    "NCOLS 3\nnrows 2\nNODATA_value -9\nxllcenter 0.1\nyllcorner 0\ncellsize 0.3\n1 2 3\n4 5 6\n";
const std::string kMended =
    "ncols 3\nnrows 2\nxllcorner -0.05\nyllcorner 0\ncellsize 0.3\nNODATA_value -9\n1 2 3\n4 5 6\n";
const std::string kDoubtful = "NCOLS 3\nncols 4\nnrows 1\nNODATA_value -9\n1 2 3 4\n";
const char kDoubt[] =
    "doubtful.asc:1: not mended: NCOLS is meant to be ncols, which stands in another line too";

struct stat statusOf(const SampleFolder& folder, const char* name) {
    struct stat status {};
    EXPECT_EQ(::stat(QFile::encodeName(folder.path() + '/' + name).constData(), &status), 0);
    return status;
}

QString pathOf(const SampleFolder& folder, const char* name) {
    return folder.path() + QLatin1Char('/') + QLatin1String(name);
}

CommandResult check(const QString& words, const SampleFolder& folder) {
    return runCommand(splitWords(("check " + words).toStdString()), {}, folder);
}

}  // namespace

TEST(CheckFix, rewritesWhatHasOneRightMend) {
    const SampleFolder folder;
    folder.add("map.asc", kBroken);
    expectCommands({shows("broken", "check --ignore colors-missing --fix map.asc", "")}, folder);
    EXPECT_EQ(folder.read("map.asc"), kMended);
}

TEST(CheckFix, showsWhatIsLeft) {
    const SampleFolder folder;
    folder.add("map.asc", "NCOLS 3\nnrows 2\nNODATA_value -9\n1 2 3\n4 5\n6 7 8\n");
    const CommandResult result = check("--fix map.asc", folder);
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.output.find("key-case"), std::string::npos) << result.output;
    EXPECT_NE(result.output.find("map.asc:6:1: error: "), std::string::npos) << result.output;
    EXPECT_EQ(folder.read("map.asc").substr(0, 7), "ncols 3");
}

TEST(CheckFix, changesNothingOfACleanFile) {
    const SampleFolder folder;
    folder.add("map.asc", kMended);
    const struct stat before = statusOf(folder, "map.asc");
    expectCommands({shows("clean", "check --ignore colors-missing --fix map.asc", "")}, folder);
    const struct stat after = statusOf(folder, "map.asc");
    EXPECT_EQ(before.st_ino, after.st_ino);
    EXPECT_EQ(before.st_mtim.tv_sec, after.st_mtim.tv_sec);
    EXPECT_EQ(before.st_mtim.tv_nsec, after.st_mtim.tv_nsec);
    EXPECT_EQ(before.st_ctim.tv_nsec, after.st_ctim.tv_nsec);
}

TEST(CheckFix, refusesAFileInDoubtAndMendsTheOthers) {
    const SampleFolder folder;
    folder.add("doubtful.asc", kDoubtful);
    folder.add("map.asc", kBroken);
    const CommandResult result = check("--fix doubtful.asc map.asc", folder);
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.errors, "rfutils: " + std::string(kDoubt) + '\n');
    EXPECT_NE(result.output.find("doubtful.asc:1:1: error: "), std::string::npos) << result.output;
    EXPECT_EQ(folder.read("doubtful.asc"), kDoubtful);
    EXPECT_EQ(folder.read("map.asc"), kMended);
}

TEST(CheckFix, passesOverWhatItCannotRead) {
    const SampleFolder folder;
    folder.add("notes.txt", kBroken);
    folder.add("map.asc", kBroken);
    const CommandResult result = check("--fix missing.asc notes.txt map.asc", folder);
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.errors, "");
    EXPECT_NE(result.output.find("[file-unreadable]"), std::string::npos) << result.output;
    EXPECT_NE(result.output.find("[kind-unknown]"), std::string::npos) << result.output;
    EXPECT_EQ(folder.read("notes.txt"), kBroken);
    EXPECT_EQ(folder.read("map.asc"), kMended);
}

TEST(CheckFix, leavesWhatIsIgnored) {
    const SampleFolder folder;
    folder.add("doubtful.asc", kDoubtful);
    folder.add("map.asc", kBroken);
    expectCommands({shows("a doubt",
                          "check --ignore colors-missing --ignore keys-missing --ignore key-case "
                          "--fix doubtful.asc",
                          "")},
                   folder);
    EXPECT_EQ(folder.read("doubtful.asc"), kDoubtful);
    const CommandResult result =
        check("--ignore key-case --ignore row-misplaced --diff map.asc", folder);
    EXPECT_EQ(result.output,
              "--- map.asc\n+++ map.asc\n@@ -1,7 +1,7 @@\n NCOLS 3\n nrows 2\n NODATA_value -9\n"
              "-xllcenter 0.1\n+xllcorner -0.05\n yllcorner 0\n cellsize 0.3\n 1 2 3\n");
    folder.add(".rfutils-check", "key-not-read\nrow-misplaced map.*\ncolors-missing\n");
    EXPECT_EQ(check("--fix --ignore row-beyond-grid map.asc", folder).exitStatus, 0);
    EXPECT_EQ(folder.read("map.asc"), "ncols" + kBroken.substr(5));
}

TEST(CheckFix, spellsMembersOfJsonAndKeepsTheRest) {
    const SampleFolder folder;
    const std::string rest = "\":\"x\", \"id\":\"y\",\"enum\":1,\t\"dispSeq\":1} ]}\r\n";
    const std::string broken = "\xEF\xBB\xBF{\"a\" : [ {\"Label" + rest;
    folder.add("c.json", broken);
    EXPECT_EQ(
        check("--ignore member-misspelt --ignore json-byte-order-mark --fix --as catalogue c.json",
              folder)
            .exitStatus,
        1);
    EXPECT_EQ(folder.read("c.json"), broken);
    expectCommands({shows("broken", "check --fix --as catalogue c.json", "")}, folder);
    EXPECT_EQ(folder.read("c.json"), "{\"a\" : [ {\"label" + rest);
}

TEST(CheckFix, writesRecordingsInPlainText) {
    const SampleFolder folder;
    const std::string line = "2024-05-04, 21:15:00, 100, 130, 10, 1, -80.1, -80.2, -80.3";
    const std::string text = line + '\r' + line + '\r';
    std::string wide = "\xFF\xFE";
    for (const char c : text) {
        wide += {c, '\0'};
    }
    folder.add("r.csv", wide);
    expectCommands({shows("ignored", "check --ignore utf-16 --fix --as recording r.csv", "")},
                   folder);
    EXPECT_EQ(folder.read("r.csv"), wide);
    expectCommands({shows("UTF-16", "check --fix --as recording r.csv", "")}, folder);
    EXPECT_EQ(folder.read("r.csv"), line + '\n' + line + '\n');
}

TEST(CheckFix, keepsPermissionsAndLinks) {
    const SampleFolder folder;
    folder.add("map.asc", kBroken);
    const QString map = pathOf(folder, "map.asc");
    ASSERT_TRUE(
        QFile::setPermissions(map, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup));
    ASSERT_TRUE(QFile::link(QStringLiteral("map.asc"), pathOf(folder, "link.asc")));
    expectCommands({shows("by its link", "check --ignore colors-missing --fix link.asc", "")},
                   folder);
    EXPECT_TRUE(QFileInfo(pathOf(folder, "link.asc")).isSymLink());
    EXPECT_EQ(folder.read("map.asc"), kMended);
    EXPECT_EQ(statusOf(folder, "map.asc").st_mode & 07777U, 0640U);
}

TEST(CheckFix, leavesFilesThatMayNotBeWritten) {
    const SampleFolder folder;
    folder.add("map.asc", kBroken);
    ASSERT_TRUE(QFile::setPermissions(pathOf(folder, "map.asc"), QFile::ReadOwner));
    if (::access(QFile::encodeName(pathOf(folder, "map.asc")).constData(), W_OK) == 0) {
        GTEST_SKIP() << "root may write it all the same";
    }
    EXPECT_EQ(check("--fix map.asc", folder).exitStatus, 1);
    EXPECT_EQ(folder.read("map.asc"), kBroken);
}

TEST(CheckDiff, showsAndWritesNothing) {
    const SampleFolder folder;
    folder.add("map.asc", kBroken);
    folder.add("clean.asc", kMended);
    folder.add("doubtful.asc", kDoubtful);
    const struct stat before = statusOf(folder, "map.asc");
    const CommandResult result = check("--diff map.asc clean.asc doubtful.asc", folder);
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.output,
              "--- map.asc\n+++ map.asc\n@@ -1,8 +1,8 @@\n-NCOLS 3\n+ncols 3\n nrows 2\n"
              "-NODATA_value -9\n-xllcenter 0.1\n+xllcorner -0.05\n yllcorner 0\n cellsize 0.3\n"
              "+NODATA_value -9\n 1 2 3\n 4 5 6\n");
    EXPECT_EQ(result.errors, "rfutils: " + std::string(kDoubt) + '\n');
    EXPECT_EQ(folder.read("map.asc"), kBroken);
    EXPECT_EQ(before.st_mtim.tv_nsec, statusOf(folder, "map.asc").st_mtim.tv_nsec);
    expectCommands(
        {shows("clean", "check --diff clean.asc", ""),
         misuses("both", "check --fix --diff map.asc", "--fix and --diff exclude each other")},
        folder);
}
