#pragma once

#include <QString>
#include <cstddef>
#include <memory>
#include <string_view>

#include "analysis/support/inputError.h"

namespace rfu {

/// Unpacks compressed data piece by piece: streams of one kind, one after another, with or without
/// zeros behind them. It holds at most kMaxMemory, however far the data expands.
class Unpacker {
public:
    static constexpr std::size_t kMaxMemory = std::size_t{128} << 20U;

    /// @param file for messages
    explicit Unpacker(const QString& file) : file_(file) {}
    virtual ~Unpacker() = default;
    Unpacker(const Unpacker&) = delete;
    Unpacker& operator=(const Unpacker&) = delete;

    /// @param packed  what was used is taken from its front
    /// @param room    above zero
    /// @return number of bytes unpacked, at most room; 0 where more packed ones are needed
    /// @throw InputError for damaged data, and where unpacking takes more memory
    std::size_t unpack(std::string_view& packed, char* unpacked, std::size_t room);

    /// Whether the data may end here.
    bool isComplete() const { return !isOpen_; }

protected:
    enum class State { Open, Ended, Damaged, TooLarge };
    struct Step {
        std::size_t written;
        State state;
    };

private:
    /// Begins a stream. @throw std::bad_alloc
    virtual void begin() = 0;
    virtual Step advance(std::string_view& packed, char* unpacked, std::size_t room) = 0;

    QString file_;
    bool isOpen_ = false;
};

/// A kind of compressed data.
struct Packing {
    std::string_view firstBytes;
    const char* name;  // also of the program that unpacks it
    /// Null where the library for it was not found.
    std::unique_ptr<Unpacker> (*makeUnpacker)(const QString& file);
};

/// Null for what is not compressed as gzip, xz and zstd do it.
const Packing* packingOf(std::string_view firstBytes);

/// Compressed input where the library for it was not found. The message ends in the command that
/// writes the text to a pipe.
class CompressedInput : public InputError {
public:
    CompressedInput(const QString& file, const char* unpacker);
};

}  // namespace rfu
