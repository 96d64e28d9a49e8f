#pragma once

#include <support/scopedCodec.h>

#include <rfUtils/geo/veltaGEO.h>

#include <gtest/gtest.h>

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <cstring>
#include <memory>
#include <string>
#include <vector>

/// A new map and a folder for the files of one test.
class MapFiles : public testing::Test {
protected:
    QString path(const char* name) const { return dir.filePath(QString::fromLatin1(name)); }

    void write(const char* name, const std::string& bytes) {
        QFile file(path(name));
        file.remove();  // rewriting in place makes some file systems wait for the disk
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(bytes.data(), static_cast<qint64>(bytes.size())),
                  static_cast<qint64>(bytes.size()));
    }

    std::string message() const { return map->errMsg.toStdString(); }

    /// No header line was stored.
    void expectNoHeaderField() const {
        EXPECT_EQ(map->nCols, 0);
        EXPECT_EQ(map->nRows, 0);
        EXPECT_EQ(map->originX, 0.0F);
        EXPECT_EQ(map->originY, 0.0F);
        EXPECT_EQ(map->cellSize, 0.0F);
        EXPECT_EQ(map->noData, 0.0F);
    }

    QTemporaryDir dir;
    std::unique_ptr<veltaGEO> map = std::make_unique<veltaGEO>();
};

/// The first cells of a row.
inline std::vector<float> cells(const veltaGEO& map, int row, int count) {
    return {map.grid[row], map.grid[row] + count};
}

inline std::string bytesOf(const std::vector<float>& values) {
    return {reinterpret_cast<const char*>(values.data()), values.size() * sizeof(float)};
}

/// A line of two texts, the second of which begins at character `position`, counted from 1.
inline std::string padded(const std::string& begin, std::size_t position, const std::string& end) {
    return begin + std::string(position - 1 - begin.size(), ' ') + end;
}

constexpr char kTooManyColumns[] = "Too many columns in the file. Unable to open";
constexpr char kTooManyRows[] = "Too many rows in the file. Unable to open";
constexpr char kLoaded[] = "Raster file loaded";
