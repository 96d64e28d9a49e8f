// Private to the library: not installed, may change in any release.
#pragma once

#include <QByteArray>
#include <QTextCodec>

#include <array>
#include <cstddef>
#include <string_view>

class QIODevice;

namespace rfu::detail {

/// Reads a device as QTextStream::read() and QString::toLatin1() do: decodes by a codec and encodes
/// as ISO 8859-1, with '?' for each UTF-16 unit beyond it. Unlike them it makes no copy of the
/// whole text and has a fast path for UTF-8.
class TextAsBytes {
public:
    /// @param codec as QTextStream chooses it: by a byte-order mark, or the locale's
    TextAsBytes(QIODevice& device, const QTextCodec& codec);

    /// Writes up to `size` bytes.
    /// @return less than `size` only at the end of the device or an error
    qint64 read(char* to, qint64 size);

private:
    bool decodeNextBlock();
    void decode(const char* bytes, const char* end);
    void decodeUtf8(const char* bytes, const char* end);

    static constexpr std::size_t kBlock = 16384;  // as QTextStream

    QIODevice& device_;
    const QTextCodec& codec_;
    QTextCodec::ConverterState state_;
    std::array<char, kBlock> block_;
    QByteArray decoded_;
    std::string_view rest_;  // unread part of decoded_
};

/// Converts UTF-8 that begins and ends at a character boundary to at most as many bytes; an invalid
/// byte becomes '?'.
/// @return the end of the output
char* utf8AsBytes(const char* bytes, const char* end, char* to) noexcept;

}  // namespace rfu::detail
