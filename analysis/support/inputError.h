#pragma once

#include <QString>
#include <exception>
#include <string>
#include <string_view>

namespace rfu {

/// An input that cannot be used: the file, the line where there is one, and what is wrong there.
class InputError : public std::exception {
public:
    InputError(const QString& file, std::string_view problem);
    /// @param line counted from 1; 0 for the file as a whole
    InputError(const QString& file, long long line, std::string_view problem);

    const QString& file() const { return file_; }
    long long line() const { return line_; }
    const std::string& problem() const { return problem_; }
    /// "FILE: problem" or "FILE:LINE: problem". A quoted input may hold a NUL, which cuts what().
    const std::string& message() const { return message_; }
    const char* what() const noexcept override { return message_.c_str(); }

private:
    QString file_;
    long long line_;
    std::string problem_;
    std::string message_;
};

/// A text from the input for a message: in double quotes, shortened to 60 bytes, with a backslash
/// before its own quotes and backslashes.
std::string quoted(std::string_view text);

}  // namespace rfu
