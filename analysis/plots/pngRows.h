#pragma once

#include <QIODevice>
#include <QRgb>
#include <QSize>
#include <QVector>
#include <functional>

namespace rfu {

/// A picture that is made row by row, so that it is never held. Each pixel is an index of its colours.
struct PixelRows {
    using Use = std::function<bool(const uchar* row)>;

    QSize size;  // sides from 1 to 1000000
    QVector<QRgb> colors;
    /// Calls use(row) with each row, the topmost first, until it returns false.
    std::function<void(const Use& use)> forEachRow;
};

/// Writes a picture as PNG, compressed as fast as possible.
/// @return false where it cannot be written
bool writePng(QIODevice& output, const PixelRows& picture);

}  // namespace rfu
