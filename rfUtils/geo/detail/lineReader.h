// Private to the library: not installed, may change in any release.
#pragma once

#include <cstddef>
#include <memory>

class QIODevice;

namespace rfu::detail {

/// Most characters of a line of the formats with long or unbounded lines, ASC and TAB.
constexpr std::size_t kMaxLongLineLength = 1023999;

/// Reads a device line by line as raw bytes, in memory that does not grow with the file.
/// Only '\n' ends a line. A longer line than the limit is cut and its rest dropped. The last line
/// counts without a '\n' too; a '\n' at the very end begins no further line.
class LineReader {
public:
    /// @param limit most characters of a line, its end not counted
    LineReader(QIODevice& device, std::size_t limit);

    /// The next line, NUL-terminated and without its '\n', to be changed at will until the next
    /// call; null at the end of the device, which a read error counts as.
    char* next();

    /// The terminating NUL of the last line that next() gave.
    const char* lineEnd() const noexcept { return lineEnd_; }

private:
    bool fill();
    char* takeLine(char* lineEnd);
    char* takeCutLine();
    char* terminateLine(char* line, std::size_t length);
    void dropRestOfLine();

    QIODevice& device_;
    const std::size_t limit_;
    const std::size_t capacity_;
    const std::unique_ptr<char[]> buffer_;
    char* unread_;
    char* end_;
    const char* lineEnd_ = nullptr;
    bool inDroppedRest_ = false;
};

}  // namespace rfu::detail
