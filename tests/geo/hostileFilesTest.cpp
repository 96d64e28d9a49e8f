#include "mapFiles.h"

#include <support/messageLog.h>

#include <unistd.h>

#include <vector>

namespace {

struct Loader {
    const char* file;
    bool (veltaGEO::*load)(const QString&);
    const char* notFound;
};

constexpr Loader kLoaders[] = {
    {"map.hdr", &veltaGEO::loadHDRFile, "HDR file not found"},
    {"map.asc", &veltaGEO::loadASCFile, "ASC file not found"},
    {"map.bil", &veltaGEO::loadBILFile, "BIL file not found"},
    {"map.clr", &veltaGEO::LoadColorTable, "CLR file not found. Unable to display in color."},
    {"map.tab", &veltaGEO::loadTabFile, ""},
};

using HostileFiles = MapFiles;

TEST_F(HostileFiles, LinksToRegularFilesOpen) {
    write("target", "");
    for (const Loader& loader : kLoaders) {
        ASSERT_EQ(symlink("target", path(loader.file).toStdString().c_str()), 0);
        EXPECT_TRUE((map.get()->*loader.load)(path(loader.file))) << loader.file;
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
    for (const Loader& loader : kLoaders) {
        for (const QString& name : names) {
            map->setErrMsg(QString());
            EXPECT_FALSE((map.get()->*loader.load)(name)) << loader.file;
            EXPECT_EQ(message(), loader.notFound) << loader.file;
            EXPECT_EQ(MessageLog::take(), std::vector<LoggedMessage>())
                << loader.file << ' ' << name.toStdString();
        }
    }
}

}  // namespace
