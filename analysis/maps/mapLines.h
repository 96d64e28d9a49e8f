#pragma once

#include <rfUtils/geo/detail/lineReader.h>
#include <rfUtils/geo/detail/tokenizer.h>
#include <QFile>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/support/finding.h"

namespace rfu {

/// A token and its text as a loader reads it: without quotes, cut to 63 characters.
struct MapToken {
    detail::RawToken raw;
    std::string text;
};

/// The first tokens of a line, at most `count`.
std::vector<MapToken> tokensOf(const char* line, std::size_t count);

/// The lines of a map's text file as its loader reads them.
class MapLines {
public:
    /// @param limit characters of a line that the loader reads
    /// @throw InputError where the findings' file does not open
    MapLines(Findings& findings, std::size_t limit);

    /// The next line, NUL-terminated; null at the end.
    /// @throw InputError where reading fails
    const char* next();

    long long number() const { return lines_.number(); }
    /// The end of the last line; the line may contain NULs before it.
    const char* lineEnd() const { return lines_.lineEnd(); }

    /// Reports the end of the last line if the loader cuts it (line-cut).
    void checkLength();
    /// Reports text of the last line behind a NUL (text-after-nul).
    void checkNul();

    /// The column of a character in the last line, counted from 1.
    long long columnOf(const char* at) const { return at - line_ + 1; }

    /// Adds a finding about the last line.
    /// @param at the character that the finding is about; null for the whole line
    void report(std::string_view rule, const char* at, std::string text);

    /// The value of a token of the last line. Reports one that is not a decimal number as a whole
    /// (no-number), which has the value 0, and one beyond the range of a double.
    double checkNumber(const detail::RawToken& token,
                       std::string_view beyondRange = "number-infinite");
    /// The same where the loader reads a single: reports a token that is cut (token-cut) or beyond
    /// the range of a single as well.
    float checkSingle(const detail::RawToken& token,
                      std::string_view beyondRange = "number-infinite");

    /// The value of a token of the last line that the loader reads as an integer. Reports one that is no whole
    /// number (no-whole-number) or is cut (token-cut).
    std::int32_t checkInteger(const MapToken& token);

    /// Reports a token of the last line that is cut (token-cut).
    /// @param asRead what the loader makes of it
    void reportCut(const detail::RawToken& token, const std::string& asRead);

private:
    double valueOf(const detail::RawToken& token);
    void reportInfinite(const detail::RawToken& token, std::string_view rule, const char* kind);

    Findings& findings_;
    QFile file_;
    std::size_t limit_;
    detail::LineReader lines_;
    const char* line_ = nullptr;
};

/// What a loader makes of a token that it reads as a number.
float singleOf(const detail::RawToken& token);

/// What a message adds about a value that its decimal comma makes two; empty for other lines.
/// @param tokens of a header line
std::string aboutDecimalComma(const std::vector<MapToken>& tokens);

/// As the file has it, quotes included.
std::string_view writtenText(const detail::RawToken& token);

/// Whether a word, with or without a sign, is one that the loaders read as infinity or NaN.
bool isInfinityOrNan(std::string_view word);

}  // namespace rfu
