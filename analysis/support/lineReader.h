#pragma once

#include <QString>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace rfu {

class Unpacker;

/// What a reader does where it may have to wait for a live source.
struct Waiting {
    /// Called before each read: the place to show what is known so far.
    std::function<void()> before;
    /// A descriptor that becomes readable when reading is to stop, also while it waits; negative for
    /// none.
    int stop = -1;
    /// Told how many bytes of the file a read gave, packed ones where it is compressed.
    std::function<void(std::size_t)> after = {};
    /// A descriptor to read from, which stays open; the file only names it then. Negative for none.
    int input = -1;
};

/// The lines of a file or, for the name "-", of standard input, compressed by gzip, xz or zstd or not.
/// What a pipe delivers is handed on as soon as it comes, so that a live source is followed without
/// delay.
class LineReader {
public:
    static constexpr std::size_t kMaxLine = 1u << 20;

    /// @throw InputError when the file is missing, a directory or not readable
    explicit LineReader(const QString& file, Waiting waiting = {});
    ~LineReader();
    LineReader(const LineReader&) = delete;
    LineReader& operator=(const LineReader&) = delete;

    /// The next line without its end ("\n" or "\r\n"), the first one without a UTF-8 byte-order mark;
    /// it stays valid until the next call. A line that has only begun is none where reading stops or
    /// compressed data ends early.
    /// @return false at the end
    /// @throw InputError when reading fails or a line is longer than kMaxLine bytes, or where
    /// compressed data is damaged; CompressedInput
    bool next(std::string_view& line);

    /// Of the line read last, counted from 1.
    long long number() const { return number_; }
    /// Whether the line read last has a line end; the last one of a file may have none.
    bool hasLineEnd() const { return hasLineEnd_; }
    /// Whether reading was stopped before the end; see Waiting.
    bool isStopped() const { return isStopped_; }
    /// Whether compressed data was cut; known at the end.
    bool endsEarly() const { return endsEarly_; }
    const QString& file() const { return file_; }

private:
    bool fill();
    bool waitForInput();
    bool read(std::string& bytes);
    bool unpack();

    QString file_;
    int descriptor_;
    Waiting waiting_;
    std::unique_ptr<Unpacker> unpacker_;  // of compressed input
    std::string packed_;
    std::string_view unread_;  // of packed_
    std::string held_;
    std::size_t begin_ = 0;    // of the first line not yet handed out
    std::size_t scanned_ = 0;  // no line end in held_ between begin_ and here
    long long number_ = 0;
    bool hasLineEnd_ = false;
    bool atEnd_ = false;
    bool isStopped_ = false;
    bool endsEarly_ = false;
};

/// Names standard input where a file is expected.
inline const QString kStandardInput = QStringLiteral("-");

}  // namespace rfu
