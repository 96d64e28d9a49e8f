#pragma once

#include <QByteArray>
#include <QIODevice>
#include <QString>
#include <QTextCodec>
#include <QTextStream>

#include <rfUtils/detail/qtVersion.h>

#include <type_traits>

namespace rfu::test {

/// Decodes a device by a text codec: the part of Qt 5's QTextStream that Qt 6's has lost.
class CodecStream {
public:
    explicit CodecStream(QIODevice* device) : bytes_(device->readAll()) {
        constexpr int kLongestMark = 4;
        setCodec(
            QTextCodec::codecForUtfText(bytes_.left(kLongestMark), QTextCodec::codecForLocale()));
    }

    void setCodec(QTextCodec* codec) { text_ = codec->toUnicode(bytes_); }

    QString read(qint64 size) {
        const QString piece = text_.mid(static_cast<int>(at_), static_cast<int>(size));
        at_ += piece.size();
        return piece;
    }

private:
    QByteArray bytes_;
    QString text_;
    qint64 at_ = 0;
};

/// What decodes by text codecs: Qt 5's own class, where there is one.
using TextStream = std::conditional_t<qt::kIsQt6, CodecStream, QTextStream>;

/// Decodes by a codec whatever the first bytes are.
template <typename Stream>
void decodeBy(Stream& stream, QTextCodec* codec) {
    stream.setCodec(codec);
    if constexpr (!qt::kIsQt6) {
        stream.setAutoDetectUnicode(false);
    }
}

}  // namespace rfu::test
