#include "analysis/plots/style.h"

#include <QFontMetricsF>
#include <cmath>

namespace rfu {

QFont fontOf(int pixels, bool bold) {
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setStyleHint(QFont::SansSerif);
    font.setPixelSize(pixels);
    font.setBold(bold);
    return font;
}

QString qtText(const std::string& utf8) {
    QString text = QString::fromUtf8(utf8.data(), static_cast<int>(utf8.size()));
    for (QChar& character : text) {
        const ushort code = character.unicode();
        if (code < 0x20 || code == 0x7f || code >= 0xfffe) {
            character = QChar::ReplacementCharacter;
        }
    }
    return text;
}

void drawTitle(QPainter& painter, const QRectF& line, const QString& title) {
    painter.setPen(kInk);
    painter.setFont(fontOf(19, true));
    const QFontMetricsF metrics(painter.font());
    painter.drawText(line, Qt::AlignLeft | Qt::AlignVCenter,
                     metrics.elidedText(title, Qt::ElideMiddle, line.width()));
}

double sharp(double position) {
    return std::floor(position) + 0.5;
}

}  // namespace rfu
