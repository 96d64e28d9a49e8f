#pragma once

#include <QString>
#include <functional>
#include <string>
#include <string_view>

namespace rfu {

/// The lines of a file or, for the name "-", of standard input. What a pipe delivers is handed on
/// as soon as it comes, so that a live source is followed without delay.
class LineReader {
public:
    static constexpr std::size_t kMaxLine = 1u << 20;

    /// @param beforeRead is called before each read from the file, which may wait for a live
    ///        source: the place to show what is known so far
    /// @throw InputError when the file is missing, a directory or not readable
    explicit LineReader(const QString& file, std::function<void()> beforeRead = {});
    ~LineReader();
    LineReader(const LineReader&) = delete;
    LineReader& operator=(const LineReader&) = delete;

    /// The next line without its end ("\n" or "\r\n"), the first one without a UTF-8 byte-order mark;
    /// it stays valid until the next call.
    /// @return false at the end
    /// @throw InputError when reading fails or a line is longer than kMaxLine bytes; CompressedInput
    bool next(std::string_view& line);

    /// Of the line read last, counted from 1.
    long long number() const { return number_; }
    /// Whether the line read last has a line end; the last one of a file may have none.
    bool hasLineEnd() const { return hasLineEnd_; }
    const QString& file() const { return file_; }

private:
    bool fill();
    void refuseCompressed() const;

    QString file_;
    int descriptor_;
    std::function<void()> beforeRead_;
    std::string held_;
    std::size_t begin_ = 0;    // of the first line not yet handed out
    std::size_t scanned_ = 0;  // no line end in held_ between begin_ and here
    long long number_ = 0;
    bool hasLineEnd_ = false;
    bool atEnd_ = false;
};

/// Names standard input where a file is expected.
inline const QString kStandardInput = QStringLiteral("-");

}  // namespace rfu
