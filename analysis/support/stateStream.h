#pragma once

#include <QCryptographicHash>
#include <QFile>
#include <QString>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace rfu {

// The numbers and texts of a state, the same bytes on every machine; see docs/state.md.

/// Writes them one behind the other.
class StateWriter {
public:
    /// @param sink takes the bytes in pieces
    explicit StateWriter(std::function<void(std::string_view bytes)> sink);

    void count(std::uint64_t value);
    void integer(std::int64_t value);
    void number(double value);
    void text(std::string_view text);
    /// Bytes as they are.
    void bytes(std::string_view bytes);

    /// How many bytes so far.
    std::uint64_t size() const { return size_; }

    /// Writes the checksum of all bytes so far; nothing may follow.
    void finish();

private:
    void flush();

    std::function<void(std::string_view bytes)> sink_;
    QCryptographicHash hash_{QCryptographicHash::Sha256};
    std::string held_;
    std::uint64_t size_ = 0;
};

inline constexpr char kDamagedState[] = "is damaged or cut";
inline constexpr std::size_t kStateChecksum = 32;  // bytes, behind all others

/// Reads them from a part of a file. Whatever does not make sense ends in an InputError, and nothing is
/// allocated for it.
class StateReader {
public:
    /// @param end where the part ends, from the beginning of the file
    StateReader(const QString& name, std::uint64_t begin, std::uint64_t end);

    /// @param most that makes sense
    std::uint64_t count(std::uint64_t most = UINT64_MAX);
    std::int64_t integer(std::int64_t least, std::int64_t most);
    double number();
    double finite();
    std::string text();
    /// Of things that take so many bytes at least, so that they fit the rest of the part.
    std::size_t countOf(std::size_t bytesOfEach);

    /// Whether the part was read to its end.
    bool isAtEnd() const { return left_ == 0 && at_ == held_.size(); }
    void require(bool makesSense) const {
        if (!makesSense) {
            fail();
        }
    }

    /// Whether the checksum of a file fits its bytes.
    static bool hasChecksum(const QString& name);

private:
    [[noreturn]] void fail() const;
    unsigned char next();
    void fill();

    QFile file_;
    QString name_;
    std::uint64_t left_;  // of the part, in the file
    QByteArray held_;
    int at_ = 0;
};

}  // namespace rfu
