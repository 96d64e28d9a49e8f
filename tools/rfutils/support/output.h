#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace rfu::command {

/// Standard output, buffered in large blocks. main() flushes it after every subcommand, also after
/// one that failed.
class Output {
public:
    void write(std::string_view text) {
        held_.append(text);
        if (held_.size() >= kBlock) {
            flush();
        }
    }
    void write(char c) { held_.push_back(c); }

    /// Writes the beginning of a structure that close() ends, or closeAll() if the command fails in
    /// between.
    void open(std::string_view beginning, std::string_view ending) {
        write(beginning);
        endings_.emplace_back(ending);
    }
    /// Changes the ending of the innermost open structure.
    void setEnding(std::string_view ending) { endings_.back() = ending; }
    void close();
    /// Ends all open structures, so that the output stays valid.
    void closeAll();

    /// @throw Failure if writing fails (a full disk, a closed descriptor)
    void flush();

private:
    static constexpr std::size_t kBlock = 65536;
    std::string held_;
    std::vector<std::string> endings_;  // of what is open, the innermost last
};

/// The one standard output of the process.
Output& standardOutput();

}  // namespace rfu::command
