#pragma once

#include <QColor>
#include <QFont>
#include <QPainter>
#include <QRectF>
#include <QString>
#include <string>

namespace rfu {

// Colours, fonts and texts that the pictures share.

inline const QColor kPaper(0xfa, 0xfb, 0xfc);
inline const QColor kInk(0x2b, 0x33, 0x3d);
inline const QColor kFaint(0x6b, 0x75, 0x80);
inline const QColor kGrid(0xe2, 0xe6, 0xea);
inline const QColor kFrame(0xa9, 0xb2, 0xbb);

inline constexpr double kTickLength = 5.0;  // pixels

/// Sans serif. Needs a QGuiApplication.
QFont fontOf(int pixels, bool bold = false);

/// Control characters, which neither a font nor XML has, are replaced.
QString qtText(const std::string& utf8);

/// A title that is too long for the line is shortened in its middle.
void drawTitle(QPainter& painter, const QRectF& line, const QString& title);

/// The centre of the pixel at a position: a thin vertical or horizontal line is sharp there.
double sharp(double position);

}  // namespace rfu
