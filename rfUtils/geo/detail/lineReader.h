// Private to the library: not installed, may change in any release.
#pragma once

#include <QIODevice>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>

namespace rfu::detail {

/// Characters that count in a line of each format.
inline constexpr std::size_t kMaxAscLine = 1023999;
inline constexpr std::size_t kMaxTabLine = 1023999;
inline constexpr std::size_t kMaxHdrLine = 10239;
inline constexpr std::size_t kMaxClrLine = 1023;

/// Reads a device line by line as raw bytes, in memory that does not grow with the file.
/// Only '\n' ends a line. A line longer than the limit is cut and its rest dropped. The last line
/// counts without a '\n' too; a '\n' at the very end begins no further line.
class LineReader {
public:
    /// @param limit characters that count in a line, without its '\n'
    LineReader(QIODevice& device, std::size_t limit)
        : device_(device),
          limit_(limit),
          capacity_(std::max(limit + 1, kMinCapacity)),  // a line and its terminator
          buffer_(new char[capacity_]),
          unread_(buffer_.get()),
          end_(buffer_.get()) {}

    /// The next line without its '\n', NUL-terminated. The caller may write to it until the next
    /// call. Null at the end of the device or at a read error.
    char* next() {
        if (inDroppedRest_) {
            dropRestOfLine();
        }
        char* searched = unread_;
        for (;;) {
            if (char* const lineEnd = findLineEnd(searched)) {
                return takeLine(lineEnd, lineEnd + 1);
            }
            const std::size_t held = unreadBytes();
            inDroppedRest_ = held > limit_;
            if (inDroppedRest_ || !fill()) {
                return held > 0 ? takeLine(end_, end_) : nullptr;
            }
            searched = unread_ + held;
        }
    }

    /// The terminating NUL of the last line. Text behind an earlier NUL is no part of the line.
    const char* lineEnd() const noexcept { return lineEnd_; }

    /// Number of the last line, counted from 1.
    std::int64_t number() const noexcept { return number_; }

    /// Whether the last line was longer than the limit.
    bool isCut() const noexcept { return isCut_; }

private:
    static constexpr std::size_t kMinCapacity = 65536;

    std::size_t unreadBytes() const { return static_cast<std::size_t>(end_ - unread_); }

    char* findLineEnd(char* begin) const {
        return static_cast<char*>(std::memchr(begin, '\n', static_cast<std::size_t>(end_ - begin)));
    }

    char* takeLine(const char* lineEnd, char* nextLine) {
        char* const line = unread_;
        const auto length = static_cast<std::size_t>(lineEnd - line);
        unread_ = nextLine;
        isCut_ = length > limit_;
        ++number_;
        char* const terminator = line + std::min(length, limit_);
        *terminator = '\0';
        lineEnd_ = terminator;
        return line;
    }

    /// Moves the unread bytes to the front and reads on behind them; false at the device's end.
    bool fill() {
        const std::size_t held = unreadBytes();
        std::memmove(buffer_.get(), unread_, held);
        unread_ = buffer_.get();
        end_ = unread_ + held;
        const qint64 got = device_.read(end_, static_cast<qint64>(capacity_ - held));
        end_ += std::max<qint64>(got, 0);
        return got > 0;
    }

    void dropRestOfLine() {
        inDroppedRest_ = false;
        do {
            if (char* const lineEnd = findLineEnd(unread_)) {
                unread_ = lineEnd + 1;
                return;
            }
            unread_ = end_;
        } while (fill());
    }

    QIODevice& device_;
    const std::size_t limit_;
    const std::size_t capacity_;
    const std::unique_ptr<char[]> buffer_;
    char* unread_;
    char* end_;
    const char* lineEnd_ = nullptr;
    std::int64_t number_ = 0;
    bool isCut_ = false;
    bool inDroppedRest_ = false;  // the next call skips to the line end: the caller is done
};

}  // namespace rfu::detail
