#include "mapFiles.h"

#include <support/messageLog.h>

#include <QFileInfo>

#include <functional>

#include <sys/stat.h>
#include <unistd.h>

namespace {

/// Every loader with a small complete file, and what it says where there is none.
struct Loader {
    const char* name;
    const char* file;
    bool (veltaGEO::*load)(const QString&);
    const char* notFound;
    std::string content;
};

std::vector<Loader> loaders() {
    return {
        {"hdr", "map.hdr", &veltaGEO::loadHDRFile, "HDR file not found",
         "NROWS 12\nNCOLS 9\nPIXELTYPE FLOAT\nULXMAP -69.25\nULYMAP 45\nXDIM 0.1\nNODATA -1e3\n"},
        {"asc", "map.asc", &veltaGEO::loadASCFile, "ASC file not found",
         "ncols 4\nnrows 2\nxllcorner -1\nyllcorner 2\ncellsize 3\nNODATA_value -9\n"
         "1 2 3 4\n5.5 -6e2 \"7 x\" 0x8\n"},
        {"bil", "map.bil", &veltaGEO::loadBILFile, "BIL file not found",
         bytesOf({1, 2, 3, 4, 5, 6, 7, 8})},
        {"clr", "map.clr", &veltaGEO::LoadColorTable,
         "CLR file not found. Unable to display in color.",
         "-10 0 0 255\n0 0 255 0\n0 255 0 0\n1e3 255 255 255\n"},
        {"tab", "map.tab", &veltaGEO::loadTabFile, "",
         "!table\nDefinition Table\nFile \"map.bil\"\nType \"RASTER\"\n"
         "(500000,0) (0,0) Label \"Pt 1\",\n(5e5,9) (0,0) Label \"Pt 4\",\n"
         "CoordSys Earth Projection 8, 104, \"m\", -69, 0, 0.9996, 500000, 10000000\n"
         "Units \"m\"\n"},
    };
}

class HostileFiles : public MapFiles {
protected:
    HostileFiles() {
        map->nCols = 4;
        map->nRows = 2;
        map->isFloat = 1;
    }

    void SetUp() override { alarm(60); }  // a loader that waits ends the program, not the day
    void TearDown() override { alarm(0); }

    std::string localPath(const char* name) const { return path(name).toStdString(); }

    void expectNotFound(const Loader& loader, const char* what) {
        map->setErrMsg(QString());
        EXPECT_FALSE((map.get()->*loader.load)(path(loader.file))) << loader.name << ' ' << what;
        EXPECT_EQ(message(), loader.notFound) << loader.name << ' ' << what;
        ASSERT_EQ(unlink(localPath(loader.file).c_str()) == 0 ||
                      rmdir(localPath(loader.file).c_str()) == 0,
                  true);
    }
};

TEST_F(HostileFiles, OnlyRegularFilesOpen) {
    for (const Loader& loader : loaders()) {
        const std::string file = localPath(loader.file);
        ASSERT_EQ(mkfifo(file.c_str(), 0600), 0);
        expectNotFound(loader, "FIFO");
        ASSERT_EQ(mkdir(file.c_str(), 0700), 0);
        expectNotFound(loader, "folder");
        for (const char* target :
             {"/dev/zero", "/dev/null", "/dev/tty", "/nowhere/at all", "/tmp"}) {
            ASSERT_EQ(symlink(target, file.c_str()), 0);
            expectNotFound(loader, target);
        }
        ASSERT_EQ(symlink(file.c_str(), file.c_str()), 0);
        expectNotFound(loader, "link to itself");
        ASSERT_EQ(mkfifo(localPath("fifo").c_str(), 0600), 0);
        ASSERT_EQ(symlink("fifo", file.c_str()), 0);
        expectNotFound(loader, "link to a FIFO");
        unlink(localPath("fifo").c_str());
    }
}

TEST_F(HostileFiles, LinksToRegularFilesOpen) {
    for (const Loader& loader : loaders()) {
        write("target", loader.content);
        ASSERT_EQ(symlink("target", localPath(loader.file).c_str()), 0);
        EXPECT_TRUE((map.get()->*loader.load)(path(loader.file))) << loader.name;
    }
}

TEST_F(HostileFiles, OddNamesAreNotFound) {
    const QString names[] = {QString(),
                             QStringLiteral(""),
                             QStringLiteral("/nowhere/map.asc"),
                             QString(5000, QLatin1Char('x')),
                             path("map") + QChar(0) + QStringLiteral(".asc"),
                             path("map") + QChar(0),
                             QString(QChar(0))};
    const MessageLog log;
    for (const Loader& loader : loaders()) {
        for (const QString& name : names) {
            map->setErrMsg(QString());
            EXPECT_FALSE((map.get()->*loader.load)(name)) << loader.name;
            EXPECT_EQ(message(), loader.notFound) << loader.name;
            EXPECT_EQ(MessageLog::take(), std::vector<LoggedMessage>())
                << loader.name << ' ' << name.toStdString();
        }
    }
}

void expectSound(const veltaGEO& map) {
    EXPECT_GE(map.colorCount, 0);
    EXPECT_LE(map.colorCount, 32);
    EXPECT_LT(std::string(map.rasterFileName).size(), 64U);
    EXPECT_EQ(map.grid[100][0], 0.0F);
    EXPECT_EQ(map.grid[0][100], 0.0F);
    for (const QChar c : map.errMsg) {
        EXPECT_LT(c.unicode(), 127);
    }
}

TEST_F(HostileFiles, FilesCutAtAnyLengthAreRead) {
    for (const Loader& loader : loaders()) {
        for (std::size_t length = 0; length <= loader.content.size(); ++length) {
            write(loader.file, loader.content.substr(0, length));
            map->nCols = 4;
            map->nRows = 2;
            map->isFloat = 1;
            const bool done = (map.get()->*loader.load)(path(loader.file));
            EXPECT_TRUE(done || message() == "File not supported") << loader.name << ' ' << length;
            expectSound(*map);
        }
    }
}

TEST_F(HostileFiles, FilesWithAnyByteChangedAreRead) {
    for (const Loader& loader : loaders()) {
        for (std::size_t at = 0; at < loader.content.size(); ++at) {
            for (const char byte : {'\0', '\n', '\r', '"', ' ', '9', '-', 'e', '\xFF'}) {
                std::string content = loader.content;
                content[at] = byte;
                write(loader.file, content);
                map->nCols = 4;
                map->nRows = 2;
                map->isFloat = 1;
                (map.get()->*loader.load)(path(loader.file));
                expectSound(*map);
            }
        }
    }
}

}  // namespace
