#include "detail/textAsBytes.h"

#include <QIODevice>

#include <algorithm>
#include <iterator>

namespace rfu::detail {

namespace {

constexpr int kUtf8 = 106;  // IANA MIBenum
constexpr char kUnknown = '?';

using Byte = unsigned char;

constexpr Byte kMinLead = 0xC2;  // lower lead bytes encode overlong sequences
constexpr Byte kMinLeadBeyondLatin1 = 0xC4;
constexpr Byte kMaxLead = 0xF4;  // of U+10FFFF

constexpr bool isAscii(char c) noexcept {
    return static_cast<Byte>(c) < 0x80;
}

constexpr bool isContinuation(char c) noexcept {
    return (static_cast<Byte>(c) & 0xC0) == 0x80;
}

/// Whether a multi-byte character may begin with these two bytes. Branch-free: the bytes of cells
/// are unpredictable.
constexpr bool mayBeCharacter(char lead, char next) noexcept {
    constexpr Byte kLeads = kMaxLead - kMinLead;
    const bool isLead = static_cast<Byte>(static_cast<Byte>(lead) - kMinLead) <= kLeads;
    return (static_cast<int>(isLead) & static_cast<int>(isContinuation(next))) != 0;
}

/// Length of the sequence that a lead byte announces.
constexpr std::ptrdiff_t sequenceLength(Byte lead) noexcept {
    return lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
}

/// Whether the sequence is overlong, a surrogate or beyond U+10FFFF.
constexpr bool isForbidden(Byte lead, Byte second) noexcept {
    return (lead == 0xE0 && second < 0xA0) || (lead == 0xED && second >= 0xA0) ||
           (lead == 0xF0 && second < 0x90) || (lead == 0xF4 && second >= 0x90);
}

/// Length of the character that begins with a lead and a continuation byte; 1 for an invalid
/// sequence, whose first byte is decoded alone.
std::ptrdiff_t characterLength(const char* bytes, const char* end) noexcept {
    const auto lead = static_cast<Byte>(bytes[0]);
    const std::ptrdiff_t length = sequenceLength(lead);
    const bool complete = length <= end - bytes &&
                          std::all_of(bytes + 2, bytes + length, isContinuation) &&
                          !isForbidden(lead, static_cast<Byte>(bytes[1]));
    return complete ? length : 1;
}

}  // namespace

char* utf8AsBytes(const char* bytes, const char* end, char* to) noexcept {
    while (bytes != end) {
        const char next = bytes + 1 != end ? bytes[1] : '\0';
        if (!mayBeCharacter(*bytes, next)) {
            *to++ = isAscii(*bytes) ? *bytes : kUnknown;
            ++bytes;
            continue;
        }
        const std::ptrdiff_t length = characterLength(bytes, end);
        const unsigned lead = static_cast<Byte>(*bytes);
        const bool isLatin1 = length == 2 && lead < kMinLeadBeyondLatin1;
        const unsigned lowBits = static_cast<Byte>(next) & 0x3FU;
        *to++ = isLatin1 ? static_cast<char>((lead & 3U) << 6U | lowBits) : kUnknown;
        if (length == 4) {
            *to++ = kUnknown;
        }
        bytes += length;
    }
    return to;
}

TextAsBytes::TextAsBytes(QIODevice& device, const QTextCodec& codec)
    : device_(device), codec_(codec) {}

qint64 TextAsBytes::read(char* to, qint64 size) {
    qint64 written = 0;
    while (written < size && (!rest_.empty() || decodeNextBlock())) {
        const std::size_t count =
            rest_.copy(to + written, static_cast<std::size_t>(size - written));
        rest_.remove_prefix(count);
        written += static_cast<qint64>(count);
    }
    return written;
}

/// Decodes the next block; it may give no byte, if it ends within a character.
/// @return false at the end of the device
bool TextAsBytes::decodeNextBlock() {
    const qint64 got = device_.read(block_.data(), qint64{kBlock});
    if (got <= 0) {
        return false;
    }
    decoded_.resize(0);
    const char* const end = block_.data() + got;
    // Qt's decoder has to skip a byte-order mark first; after how many bytes depends on its
    // version.
    const bool headerIsDone = (state_.flags & QTextCodec::IgnoreHeader) != 0;
    if (codec_.mibEnum() == kUtf8 && headerIsDone) {
        decodeUtf8(block_.data(), end);
    } else {
        decode(block_.data(), end);
    }
    rest_ = {decoded_.constData(), static_cast<std::size_t>(decoded_.size())};
    return true;
}

void TextAsBytes::decode(const char* bytes, const char* end) {
    decoded_ += codec_.toUnicode(bytes, static_cast<int>(end - bytes), &state_).toLatin1();
}

/// No sequence spans an ASCII character: between the first and the last one in the block, decoding
/// needs no state. Qt's decoder takes the two ends and keeps incomplete sequences between blocks.
void TextAsBytes::decodeUtf8(const char* bytes, const char* end) {
    const char* const first = std::find_if(bytes, end, isAscii);
    if (first == end) {
        decode(bytes, end);
        return;
    }
    const char* const afterLast =
        std::find_if(std::make_reverse_iterator(end), std::make_reverse_iterator(first), isAscii)
            .base();
    decode(bytes, first + 1);
    const QByteArray::size_type before = decoded_.size();
    decoded_.resize(before + static_cast<QByteArray::size_type>(afterLast - first - 1));
    const char* const written = utf8AsBytes(first + 1, afterLast, decoded_.data() + before);
    decoded_.resize(static_cast<QByteArray::size_type>(written - decoded_.constData()));
    decode(afterLast, end);
}

}  // namespace rfu::detail
