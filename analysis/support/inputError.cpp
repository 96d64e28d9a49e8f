#include "analysis/support/inputError.h"

#include <cstddef>

#include "analysis/support/words.h"

namespace rfu {
namespace {

constexpr std::size_t kMaxQuote = 60;

/// Largest length up to `length` that splits no UTF-8 sequence.
std::size_t cutBefore(std::string_view text, std::size_t length) {
    while (length > 0 && (static_cast<unsigned char>(text[length]) & 0xC0u) == 0x80u) {
        --length;
    }
    return length;
}

}  // namespace

InputError::InputError(const QString& file, std::string_view problem)
    : InputError(file, 0, problem) {}

InputError::InputError(const QString& file, long long line, std::string_view problem)
    : file_(file),
      line_(line),
      problem_(problem),
      message_(file.toStdString() + (line > 0 ? ":" + std::to_string(line) : "") + ": " +
               problem_) {}

std::string quoted(std::string_view text) {
    const bool isWhole = text.size() <= kMaxQuote;
    return '"' + withEscapedQuotes(isWhole ? text : text.substr(0, cutBefore(text, kMaxQuote))) +
           (isWhole ? "\"" : "...\"");
}

}  // namespace rfu
