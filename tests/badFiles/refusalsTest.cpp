// Every refusal of every loader: the content of a new object afterwards, the content of one that had
// loaded a good file, and that all other operations still work. Fields are either read completely
// before the refusal or unchanged.
#include "formats.h"

#include <support/deadline.h>
#include <support/scopedCodec.h>
#include <support/tempFiles.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <sys/stat.h>
#include <unistd.h>

namespace {

using namespace std::string_literals;

struct Refusal {
    const Format& format;
    const char* what;
    std::function<bool(Subject&, const std::string& path)> load;
    std::string said;
    std::string newHolds;
    std::string goodHolds;  // of an object that held the good file
};

using Load = std::function<bool(Subject&, const std::string&)>;

Load bytes(const std::string& content) {
    return [content](Subject& subject, const std::string& path) {
        std::remove(path.c_str());  // rewriting in place makes some file systems wait for the disk
        std::ofstream(path, std::ios::binary) << content;
        return subject.load(path);
    };
}

/// Loads a path at which `make` has created something other than a regular file.
Load made(int (*make)(const char* path)) {
    return [make](Subject& subject, const std::string& path) {
        EXPECT_EQ(make(path.c_str()), 0) << path;
        const bool done = subject.load(path);
        EXPECT_EQ(std::remove(path.c_str()), 0) << path;
        return done;
    };
}

Load missing() {
    return [](Subject& subject, const std::string& path) { return subject.load(path); };
}

Load sized(int columns, int rows) {
    return [columns, rows](Subject& subject, const std::string& path) {
        std::ofstream(path, std::ios::binary) << kBil.good;
        return dynamic_cast<CellsSubject&>(subject).loadSized(path, columns, rows);
    };
}

constexpr char kColumns[] = "Too many columns in the file. Unable to open";
constexpr char kRows[] = "Too many rows in the file. Unable to open";

void addNoFiles(std::vector<Refusal>& refusals, const Format& format, const std::string& newHolds) {
    constexpr char kMissing[] = "Not found json file. -> \"%\"";
    constexpr char kNotRegular[] = "\"not a regular file\"";
    const struct {
        const char* what;
        Load load;
        const char* setupsSay;
    } kNoFiles[] = {
        {"missing", missing(), kMissing},
        {"dangling link", made([](const char* path) { return symlink("none", path); }), kMissing},
        {"link to itself", made([](const char* path) { return symlink(path, path); }), kMissing},
        {"folder", made([](const char* path) { return mkdir(path, 0700); }), kNotRegular},
        {"link to a folder", made([](const char* path) { return symlink("/", path); }),
         kNotRegular},
        {"FIFO", made([](const char* path) { return mkfifo(path, 0600); }), kNotRegular},
        {"link to a FIFO", made([](const char* path) {
             const std::string fifo = path + ".fifo"s;
             unlink(fifo.c_str());
             return mkfifo(fifo.c_str(), 0600) != 0 ? -1 : symlink(fifo.c_str(), path);
         }),
         kNotRegular},
        {"device", made([](const char* path) { return symlink("/dev/zero", path); }), kNotRegular},
        {"terminal", made([](const char* path) { return symlink("/dev/tty", path); }), kNotRegular},
    };
    for (const auto& noFile : kNoFiles) {
        refusals.push_back({format, noFile.what, noFile.load,
                            &format == &kSetups ? noFile.setupsSay : format.missing, newHolds,
                            format.missingHolds});
    }
}

void addBadJson(std::vector<Refusal>& refusals) {
    const struct {
        const char* what;
        std::string content;
        const char* reason;
    } kBad[] = {
        {"empty", "", "illegal value"},
        {"cut", kGoodJson.substr(0, kGoodJson.size() - 1), "unterminated object"},
        {"cut in a text", kGoodJson.substr(0, 12), "unterminated string"},
        {"number", "1", "illegal value"},
        {"more behind it", kGoodJson + kGoodJson, "garbage at the end of the document"},
        {"good choices, then a bad one",
         R"({"item":[{"label":"x","id":"x","enum":1,"dispSeq":1},}]})",
         "object is missing after a comma"},
        {"good item, then a bad escape", R"({"item":[],"x":"\u12"})", "invalid escape sequence"},
        {"no UTF-8", "{\"\xFF\":1}", "invalid UTF8 string"},
        {"nested 1025 deep", std::string(1025, '[') + std::string(1025, ']'),
         "too deeply nested document"},
    };
    for (const auto& bad : kBad) {
        refusals.push_back({kItems, bad.what, bytes(bad.content), "", "", kItems.goodHolds});
        refusals.push_back(
            {kSetups, bad.what, bytes(bad.content), '"' + std::string(bad.reason) + '"', "", ""});
    }
}

std::vector<Refusal> refusals() {
    const std::string sizes = "nCols=3 nRows=2 noData=-9 isFloat=1";
    const std::string asc = " originX=1.5 originY=2.5 cellSize=0.5 noData=-9" + kDefault;
    const std::string hdr = " originX=1.5 originY=2.5 cellSize=0.5 noData=-9 isFloat=1";
    const std::string cells = " noData=-9" + kDefault + " isFloat=1 row0=1,2,3 row1=4,5,6";
    std::vector<Refusal> all = {
        {kHdr, "columns", bytes("NROWS 7\nNCOLS 2049\nXDIM 9\n"), kColumns, "nCols=2049 nRows=7",
         "nCols=2049 nRows=7" + hdr},
        {kHdr, "rows", bytes("NCOLS 7\nNROWS 2147483648\n"), kRows, "nCols=7 nRows=2147483647",
         "nCols=7 nRows=2147483647" + hdr},
        {kAsc, "columns", bytes("nrows 7\nncols 2049\ncellsize 9\n"), kColumns,
         "nCols=2049 nRows=7", "isValid=1 nCols=2049 nRows=7" + asc + " row0=1,2,3 row1=4,5,6"},
        {kAsc, "rows behind a row", bytes("ncols 3\nNODATA_value -9\n7 8 9\nnrows 2049\n4 4 4\n"),
         kRows, "nCols=3 nRows=2049 noData=-9 row0=7,8,9",
         "isValid=1 nCols=3 nRows=2049" + asc + " row0=7,8,9 row1=4,5,6"},
        {kBil, "columns", sized(2049, 2), kColumns, "nCols=2049 nRows=2 noData=-9 isFloat=1",
         kLoaded + " nCols=2049 nRows=2" + cells},
        {kBil, "rows", sized(3, 2049), kRows, "nCols=3 nRows=2049 noData=-9 isFloat=1",
         kLoaded + " nCols=3 nRows=2049" + cells},
        {kTab, "type", bytes("File \"other.asc\"\nType \"NATIVE\"\nUnits \"degree\"\n"),
         "File not supported", "file=other.asc",
         "utmZone=19 centralMeridian=-69 falseEasting=500000 file=other.asc point0=-69,0 "
         "point1=-69,0 point2=-69,0 point3=-69,0 unitKind=2"},
    };
    addBadJson(all);
    for (const Format* format : kFormats) {
        addNoFiles(all, *format,
                   format == &kBil   ? sizes
                   : format == &kClr ? kDefault.substr(1)
                                     : "");
    }
    return all;
}

class Refusals : public testing::Test {
protected:
    Refusals() {
        for (const Format* format : kFormats) {
            const std::string name = format->file;
            files_.write("all" + name.substr(name.find('.')), format->good);
        }
    }

    /// An object that is new or has loaded the good file, after the refusal.
    std::unique_ptr<Subject> refused(const Refusal& refusal, bool heldGood) const {
        auto subject = refusal.format.make();
        if (heldGood) {
            EXPECT_TRUE(loadGood(*subject, refusal.format));
        }
        const std::string path = files_.path(refusal.format.file);
        EXPECT_FALSE(refusal.load(*subject, path));
        std::string said = refusal.said;
        if (const std::size_t name = said.find('%'); name != std::string::npos) {
            said.replace(name, 1, path);
        }
        EXPECT_EQ(subject->said(), said);
        EXPECT_EQ(subject->holds(), heldGood ? refusal.goodHolds : refusal.newHolds);
        unlink(path.c_str());
        return subject;
    }

    bool loadGood(Subject& subject, const Format& format) const {
        const std::string path = files_.write(format.file, format.good);
        const bool done = subject.load(path);
        unlink(path.c_str());
        return done;
    }

    TempFiles files_;

private:
    Deadline deadline_{300};
    ScopedCodec codec_{"ISO 8859-1"};
};

TEST_F(Refusals, LeaveNothingHalfDescribedAndEverythingUsable) {
    for (const Refusal& refusal : refusals()) {
        for (const bool heldGood : {false, true}) {
            SCOPED_TRACE(std::string(refusal.format.file) + ", " + refusal.what +
                         (heldGood ? ", after a good file" : ", new"));
            refused(refusal, heldGood)->useEverything(files_.path("all"));
            const auto again = refused(refusal, heldGood);
            EXPECT_TRUE(loadGood(*again, refusal.format));
            EXPECT_EQ(again->holdsInUse(), refusal.format.goodHolds);
        }
    }
}

}  // namespace
