#include "analysis/checks/checkFiles.h"

#include <analysis/maps/mapFiles.h>

#include <QDir>
#include <QFileInfo>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "analysis/checks/rules.h"

namespace rfu::test {
namespace {

using Expected = std::vector<std::string>;

const std::string kAsc =
    "ncols 4\nnrows 2\nxllcorner 0\nyllcorner 0\ncellsize 30\nNODATA_value -9999\n"
    "1 2 3 4\n5 6 7 8\n";
const std::string kHdr =
    "NCOLS 2\nNROWS 1\nULXMAP 0\nULYMAP 0\nXDIM 30\nNODATA -9999\nPIXELTYPE FLOAT\n";
const std::string kClr = "0 0 0 255\n100 0 255 0\n";
const std::string kTab =
    "  File \"map.asc\"\n  Type \"RASTER\"\n"
    "  (0,60) (0,0) Label \"Pt 1\",\n  (120,60) (4,0) Label \"Pt 2\",\n"
    "  (120,0) (4,2) Label \"Pt 3\",\n  (0,0) (0,2) Label \"Pt 4\"\n"
    "  Units \"degree\"\n";

class CheckFilesTest : public MapFiles {
protected:
    /// "FILE LINE:COLUMN severity rule: text" for each finding, "FILE" for a file without any.
    Expected found(const QStringList& names, const CheckOptions& options = {}) const {
        Expected result;
        checkFiles(names, options, [&](const CheckedFile& file) {
            const std::string name = QDir(named("")).relativeFilePath(file.file).toStdString();
            for (const std::string& finding : listed(file.findings)) {
                result.push_back(std::string(name).append(" ").append(finding));
            }
            if (file.findings.kept().empty()) {
                result.push_back(name);
            }
        });
        return result;
    }
    Expected found(const char* name, const CheckOptions& options = {}) const {
        return found(QStringList(named(name)), options);
    }
};

TEST_F(CheckFilesTest, TakesWhatBelongsTogether) {
    write("map.asc", kAsc);
    write("map.clr", kClr);
    write("map.tab", kTab);
    EXPECT_EQ(found("map.asc"), (Expected{"map.asc", "map.clr"}));
    EXPECT_EQ(found("map.tab"), (Expected{"map.tab", "map.clr", "map.asc"}));
    EXPECT_EQ(found({named("map.asc"), named("map.tab"), named("map.asc")}),
              (Expected{"map.asc", "map.clr", "map.tab"}));
    EXPECT_EQ(found("map.clr"), Expected{"map.clr"});
    write("grid.hdr", kHdr);
    write("grid.bil", bytesOf({1.0F, 2.0F}));
    write("grid.clr", kClr);
    EXPECT_EQ(found("grid.bil"), (Expected{"grid.bil", "grid.clr", "grid.hdr"}));
    EXPECT_EQ(found("grid.hdr"), (Expected{"grid.hdr", "grid.clr", "grid.bil"}));
}

TEST_F(CheckFilesTest, WalksFoldersByKinds) {
    QDir(named("")).mkpath(QStringLiteral("b/c"));
    write("b/map.asc", kAsc);
    write("b/map.clr", kClr);
    write("b/c/GRID.HDR", kHdr);
    write("a.csv", "2024-05-04, 21:15:00, 100, 130, 10, 1, -80.1, -80.2, -80.3\n");
    write("mask.csv", "88,-30\n");
    write("notes.txt", "");
    write("b/.rfutils-check", "# here\n\nextension-case\npart-missing *.asc other.hdr\n");
    EXPECT_EQ(found(""),
              (Expected{"a.csv",
                        "b/c/GRID.HDR error extension-case: not found: the library opens GRID.hdr",
                        "b/c/GRID.HDR error part-missing: refused: there is no GRID.bil beside it",
                        "b/map.asc", "b/map.clr"}));
}

TEST_F(CheckFilesTest, ChecksTheOthersBesideFilesOfNoKnownKind) {
    write("map.asc", kAsc);
    write("map.clr", kClr);
    write("notes.txt", kAsc);
    EXPECT_EQ(found({named("notes.txt"), named("missing.csv"), named("map.asc")}),
              (Expected{"notes.txt error kind-unknown: not checked: its kind cannot be told from "
                        "its name or content; name it with --as",
                        "missing.csv error file-unreadable: refused: No such file or directory",
                        "map.asc", "map.clr"}));
    EXPECT_EQ(found("notes.txt", {{}, {"kind-unknown"}}), Expected{"notes.txt"});
    EXPECT_EQ(found("notes.txt", {FileKind::Asc}),
              Expected{"notes.txt note colors-missing: no notes.clr: one colour from black, for "
                       "-9999 to 9999"});
}

TEST_F(CheckFilesTest, FindsFilesThatCannotBeRead) {
    EXPECT_EQ(found("missing.asc"),
              Expected{"missing.asc error file-unreadable: refused: No such file or directory"});
    files.makeFifo("pipe.asc");
    EXPECT_EQ(found("pipe.asc"),
              Expected{"pipe.asc error file-unreadable: refused: is not a regular file"});
    write("grid.bil", bytesOf({1.0F, 2.0F}));
    files.makeFolder("grid.hdr");
    EXPECT_EQ(found("grid.bil", {FileKind::Bil}),
              Expected{"grid.bil error file-unreadable: refused: grid.hdr: Is a directory"});
    EXPECT_EQ(listed(checkFile(named("grid.hdr"), FileKind::Hdr)),
              Expected{"error file-unreadable: refused: Is a directory"});
    EXPECT_EQ(listed(checkFile(QStringLiteral("/proc/self/status"), FileKind::Tab)),
              Expected{"error file-unreadable: refused: is made up by the system as it is read; "
                       "copy it first"});
}

TEST_F(CheckFilesTest, LeavesOutWhatDoesNotCount) {
    write("map.asc", "unit m\nunits m\n" + kAsc);
    write("other.asc", "unit m\n" + kAsc);
    const Expected all = {"map.asc 1:1 warning key-unknown: \"unit\" is not read",
                          "map.asc 2:1 warning key-unknown: \"units\" is not read",
                          "map.asc note colors-missing: no map.clr: one colour from black, for "
                          "-9999 to 9999"};
    EXPECT_EQ(found("map.asc"), all);
    EXPECT_EQ(found("map.asc", {{}, {"colors-missing"}}), Expected(all.begin(), all.begin() + 2));
    write(".rfutils-check", "key-unknown m?p.asc\ncolors-missing\n");
    EXPECT_EQ(found("map.asc"), Expected{"map.asc"});
    EXPECT_EQ(found("other.asc"),
              Expected{"other.asc 1:1 warning key-unknown: \"unit\" is not read"});
    write(".rfutils-check", "colors-missing\nkey-unknwon\n");
    EXPECT_EQ(refusal([&] { found("map.asc"); }),
              ".rfutils-check:2: there is no rule \"key-unknwon\"");
}

TEST_F(CheckFilesTest, ComparesGridsWithTheirParts) {
    write("map.asc", kAsc.substr(0, 16) + kAsc.substr(40));  // without the origin
    EXPECT_EQ(found("map.asc"),
              (Expected{"map.asc note keys-missing: no xllcorner, yllcorner: kept from the map "
                        "before, at first 0",
                        "map.asc note colors-missing: no map.clr: one colour from black, for "
                        "-9999 to 9999"}));
    write("grid.bil", bytesOf({1.0F}));
    EXPECT_EQ(found("grid.bil", {FileKind::Bil, {"colors-missing"}}),
              Expected{"grid.bil error part-missing: refused: there is no grid.hdr beside it"});
    write("grid.hdr", kHdr);
    EXPECT_EQ(found("grid.bil", {FileKind::Bil, {"colors-missing"}}),
              Expected{"grid.bil error cells-missing: holds 4 bytes, while 2 x 1 cells take 8"});
    write("grid.hdr", "NCOLS 2\nNROWS 1\nPIXELTYPE SIGNEDINT\n");
    EXPECT_EQ(found("grid.hdr", {FileKind::Hdr, {"keys-missing"}}),
              Expected{"grid.hdr 3: error integer-cells: holds integers (PIXELTYPE is not FLOAT), "
                       "which are not read; gdal_translate -of EHdr -ot Float32 converts them"});
}

TEST_F(CheckFilesTest, ComparesGeoreferencesWithTheirRasters) {
    const auto with = [](const std::string& was, const std::string& is) {
        std::string text = kTab;
        return text.replace(text.find(was), was.size(), is);
    };
    const struct {
        const char* name;
        std::string tab;
        Expected findings;
    } rows[] = {
        {"no such raster",
         with("map.asc", "map2.asc"),
         {"map.tab 1: error raster-missing: not shown: there is no \"map2.asc\" beside it"}},
        {"a name with backslashes",
         with("map.asc", "C:\\maps\\map.asc"),
         {"map.tab 1: error raster-missing: not shown: there is no \"C:\\maps\\map.asc\" beside "
          "it"}},
        {"another case",
         with("map.asc", "Map.asc"),
         {"map.tab 1: error raster-missing: not shown: there is no \"Map.asc\" beside it, but "
          "\"map.asc\""}},
        {"a kind that is not loaded",
         with("map.asc", "map.tif"),
         {"map.tab 1: error raster-unknown: not shown: the library loads ASC and BIL grids, not "
          "\"map.tif\""}},
        {"another place",
         with("(0,60)", "(0,160)"),
         {"map.tab 3: warning place-differs: shown here: Pt 1 lies more than a cell from where "
          "\"map.asc\" has it"}},
        {"a pixel outside",
         with("(120,60) (4,0)", "(150,60) (5,0)"),
         {"map.tab 4: note point-outside: Pt 2 lies outside the 4 x 2 cells of \"map.asc\""}},
        {"no units",
         with("  Units \"degree\"\n", ""),
         {"map.tab warning units-missing: not converted: no Units line follows the control "
          "points"}}};
    write("map.asc", kAsc);
    for (const auto& row : rows) {
        write("map.tab", row.tab);
        EXPECT_EQ(found("map.tab", {FileKind::Tab}), row.findings) << row.name;
    }
}

TEST_F(CheckFilesTest, SaysThatTextIsUtf16) {
    const auto wide = [](const std::string& text, bool isBig) {
        std::string bytes;
        for (const char c : text) {
            bytes += isBig ? '\0' : c;
            bytes += isBig ? c : '\0';
        }
        return bytes;
    };
    for (const std::string& bytes : {"\xFF\xFE" + wide(kAsc, false), "\xFE\xFF" + wide(kAsc, true),
                                     wide(kAsc, false), wide(kAsc, true)}) {
        for (const FileKind kind : {FileKind::Asc, FileKind::Hdr, FileKind::Clr, FileKind::Tab}) {
            write("map.asc", bytes);
            EXPECT_EQ(found("map.asc", {kind}),
                      Expected{"map.asc 1:1 error utf-16: UTF-16: the library reads bytes, and "
                               "finds nothing in the file"});
        }
    }
}

TEST_F(CheckFilesTest, SaysThatLinesEndInCr) {
    for (const FileKind kind :
         {FileKind::Asc, FileKind::Hdr, FileKind::Clr, FileKind::Tab, FileKind::Recording}) {
        write("map.asc", "ncols 4\rnrows 2\r");
        EXPECT_EQ(found("map.asc", {kind}),
                  Expected{"map.asc 1:1 error line-ends: lines end in CR alone: the library reads "
                           "the whole file as one line"});
    }
}

TEST_F(CheckFilesTest, NotesAByteOrderMark) {
    const std::pair<FileKind, std::string> rows[] = {
        {FileKind::Asc, kAsc}, {FileKind::Hdr, kHdr}, {FileKind::Clr, kClr}, {FileKind::Tab, kTab}};
    for (const auto& [kind, text] : rows) {
        write("map.asc", "\xEF\xBB\xBF" + text);
        EXPECT_EQ(found("map.asc", {kind, {"colors-missing", "part-missing"}}),
                  Expected{"map.asc 1:1 note byte-order-mark: passed over: a byte-order mark"});
    }
}

TEST(Rules, AreExplainedOnceForAllKinds) {
    const std::vector<KnownRule> known = knownRules();
    EXPECT_GT(known.size(), 50U);
    for (const KnownRule& rule : known) {
        EXPECT_NE(std::string_view(rule.rule.explanation), "") << rule.rule.name;
        EXPECT_NE(std::string_view(rule.rule.example), "") << rule.rule.name;
        EXPECT_NE(std::string_view(rule.rule.mend), "") << rule.rule.name;
        EXPECT_EQ(std::set<FileKind>(rule.kinds.begin(), rule.kinds.end()).size(),
                  rule.kinds.size())
            << rule.rule.name << " stands in a table twice";
        for (const FileKind kind : rule.kinds) {
            const RuleTable table = fileRules().with(kindOf(kind).rules());
            EXPECT_STREQ(table.find(rule.rule.name)->explanation, rule.rule.explanation)
                << rule.rule.name << " has two meanings";
        }
    }
    EXPECT_FALSE(findRule("none"));
}

}  // namespace
}  // namespace rfu::test
