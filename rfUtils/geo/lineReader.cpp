#include "detail/lineReader.h"

#include <QIODevice>

#include <algorithm>
#include <cstring>

namespace rfu::detail {

namespace {

constexpr std::size_t kSmallestBuffer = 65536;

char* findLineEnd(char* begin, char* end) {
    return static_cast<char*>(std::memchr(begin, '\n', static_cast<std::size_t>(end - begin)));
}

}  // namespace

LineReader::LineReader(QIODevice& device, std::size_t limit)
    : device_(device),
      limit_(limit),
      capacity_(std::max(limit + 1, kSmallestBuffer)),  // a line and its terminator
      buffer_(new char[capacity_]),
      unread_(buffer_.get()),
      end_(buffer_.get()) {}

char* LineReader::next() {
    if (inDroppedRest_) {
        dropRestOfLine();
    }
    char* searched = unread_;
    for (;;) {
        if (char* const lineEnd = findLineEnd(searched, end_)) {
            return takeLine(lineEnd);
        }
        const auto held = static_cast<std::size_t>(end_ - unread_);
        if (held > limit_) {
            return takeCutLine();
        }
        if (!fill()) {
            return held > 0 ? takeLine(end_) : nullptr;
        }
        searched = unread_ + held;
    }
}

/// Moves what is unread to the front and reads on behind it; false at the end of the device.
bool LineReader::fill() {
    const auto held = static_cast<std::size_t>(end_ - unread_);
    std::memmove(buffer_.get(), unread_, held);
    unread_ = buffer_.get();
    end_ = unread_ + held;
    const qint64 got = device_.read(end_, static_cast<qint64>(capacity_ - held));
    if (got <= 0) {
        return false;
    }
    end_ += got;
    return true;
}

char* LineReader::takeLine(char* lineEnd) {
    char* const line = unread_;
    unread_ = lineEnd == end_ ? end_ : lineEnd + 1;
    return terminateLine(line, std::min(limit_, static_cast<std::size_t>(lineEnd - line)));
}

char* LineReader::terminateLine(char* line, std::size_t length) {
    line[length] = '\0';
    lineEnd_ = line + length;
    return line;
}

/// What is held is more than a line may have and has no line end; the rest is dropped by the next
/// call, when the caller is done with the buffer.
char* LineReader::takeCutLine() {
    inDroppedRest_ = true;
    char* const line = unread_;
    unread_ = end_;
    return terminateLine(line, limit_);
}

void LineReader::dropRestOfLine() {
    inDroppedRest_ = false;
    do {
        if (char* const lineEnd = findLineEnd(unread_, end_)) {
            unread_ = lineEnd + 1;
            return;
        }
        unread_ = end_;
    } while (fill());
}

}  // namespace rfu::detail
