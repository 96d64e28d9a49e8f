#pragma once

#include <string>
#include <string_view>

/// Standard output, written in large blocks. What is still held is written by flush(), which the
/// frame calls at the end of every subcommand, also of a failing one.
class Output {
public:
    void write(std::string_view text) {
        held_.append(text);
        if (held_.size() >= kBlock) {
            flush();
        }
    }
    void write(char c) { held_.push_back(c); }

    /// @throw Failure when standard output takes no more (a full disk, a closed descriptor)
    void flush();

private:
    static constexpr std::size_t kBlock = 65536;
    std::string held_;
};

/// The one standard output of the process.
Output& standardOutput();
