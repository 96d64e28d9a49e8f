#include "support/errors.h"

#include <algorithm>
#include <cstdio>

namespace {

constexpr std::size_t kLongestQuote = 60;

/// Where a text may be cut without splitting a UTF-8 sequence.
std::size_t cutBefore(std::string_view text, std::size_t length) {
    while (length > 0 && (static_cast<unsigned char>(text[length]) & 0xC0u) == 0x80u) {
        --length;
    }
    return length;
}

void printMessage(const std::string& message) {
    std::string line = "rfutils: " + message;
    // A file name or a value may hold anything; the message stays one line.
    std::replace_if(
        line.begin(), line.end(),
        [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; }, '?');
    line += '\n';
    std::fwrite(line.data(), 1, line.size(), stderr);
}

}  // namespace

Failure inputError(std::string_view what) {
    return {std::string(what), kExitBadInput};
}

Failure fileError(const QString& file, std::string_view what) {
    return {file.toStdString() + ": " + std::string(what), kExitBadInput};
}

Failure lineError(const QString& file, long long line, std::string_view what) {
    return {file.toStdString() + ":" + std::to_string(line) + ": " + std::string(what),
            kExitBadInput};
}

Failure usageError(std::string_view what) {
    return {std::string(what), kExitBadUsage};
}

std::string quoted(std::string_view text) {
    if (text.size() <= kLongestQuote) {
        return "\"" + std::string(text) + "\"";
    }
    return "\"" + std::string(text.substr(0, cutBefore(text, kLongestQuote))) + "...\"";
}

void printFailure(const Failure& failure) {
    printMessage(failure.message);
}

void printNote(const std::string& what) {
    printMessage("note: " + what);
}
