#pragma once

#include <QByteArray>
#include <QIODevice>
#include <QString>
#include <QTextCodec>
#include <QTextStream>

#include <rfUtils/detail/qtVersion.h>

#include <type_traits>

namespace rfu::test {

/// Decodes a device block by block by a text codec: the part of Qt 5's QTextStream that Qt 6's has
/// lost.
class CodecStream {
public:
    explicit CodecStream(QIODevice* device)
        : device_(device),
          codec_(QTextCodec::codecForUtfText(device->peek(kLongestMark),
                                             QTextCodec::codecForLocale())) {}

    void setCodec(QTextCodec* codec) { codec_ = codec; }

    QString read(qint64 size) {
        while (text_.size() < size && decodeNextBlock()) {
        }
        QString piece = text_.left(static_cast<int>(size));
        text_.remove(0, static_cast<int>(size));
        return piece;
    }

private:
    static constexpr qint64 kLongestMark = 4;
    static constexpr qint64 kBlock = 16384;

    bool decodeNextBlock() {
        const QByteArray bytes = device_->read(kBlock);
        text_ += codec_->toUnicode(bytes.constData(), static_cast<int>(bytes.size()), &state_);
        return !bytes.isEmpty();
    }

    QIODevice* device_;
    QTextCodec* codec_;
    QTextCodec::ConverterState state_;
    QString text_;
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
