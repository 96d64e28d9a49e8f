// Private to the library: not installed, may change in any release.
#pragma once

#include <QByteArray>
#include <QTextCodec>

#include <array>
#include <string_view>

class QIODevice;

namespace rfu::detail {

/// The bytes that QTextStream::read() and QString::toLatin1() make of a device: decoded by a codec,
/// a character beyond ISO 8859-1 (and each of the two halves of one beyond 16 bits) as '?'.
/// Without their copies of the whole text, and with a shorter way for UTF-8.
class TextAsBytes {
public:
    /// @param codec that of QTextStream: the one a byte-order mark tells, or the locale's
    TextAsBytes(QIODevice& device, const QTextCodec& codec);

    /// Writes the next `size` bytes; gives how many there were before the device's end or an error.
    qint64 read(char* to, qint64 size);

private:
    bool decodeNextBlock();
    void decode(const char* bytes, const char* end);
    void decodeUtf8(const char* bytes, const char* end);

    static constexpr std::size_t kBlock = 16384;  // as QTextStream reads

    QIODevice& device_;
    const QTextCodec& codec_;
    QTextCodec::ConverterState state_;
    std::array<char, kBlock> block_;
    QByteArray decoded_;
    std::string_view rest_;  // of decoded_, not yet taken
};

/// Decodes UTF-8 that begins and ends between two characters, to at most as many bytes as it has; an
/// invalid byte becomes a '?'. Gives the end of what was written.
char* utf8AsBytes(const char* bytes, const char* end, char* to) noexcept;

}  // namespace rfu::detail
