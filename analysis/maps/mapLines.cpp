#include "analysis/maps/mapLines.h"

#include <rfUtils/detail/numberPrefix.h>
#include <rfUtils/detail/saturate.h>
#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <utility>

#include "analysis/support/files.h"
#include "analysis/support/inputError.h"
#include "analysis/support/numbers.h"
#include "analysis/support/singles.h"
#include "analysis/support/words.h"

namespace rfu {

namespace {

/// Whether a byte may be part of a token.
bool isText(char c) {
    const detail::CharClass kind = detail::classOf(c);
    return kind == detail::CharClass::Token || kind == detail::CharClass::Quote;
}

}  // namespace

std::vector<MapToken> tokensOf(const char* line, std::size_t count) {
    std::vector<MapToken> tokens;
    while (tokens.size() < count) {
        const detail::RawToken raw = detail::nextRawToken(line);
        if (raw.atLineEnd()) {
            break;
        }
        std::array<char, detail::kMaxTokenLength> text;
        tokens.push_back({raw, {text.data(), detail::copyTokenText(raw, text.data())}});
    }
    return tokens;
}

MapLines::MapLines(Findings& findings, std::size_t limit)
    : findings_(findings), limit_(limit), lines_(file_, limit) {
    openRegular(file_, findings.file());
}

const char* MapLines::next() {
    line_ = lines_.next();
    if (line_ == nullptr && file_.error() != QFileDevice::NoError) {
        throw InputError(findings_.file(), file_.errorString().toStdString());
    }
    return line_;
}

void MapLines::checkLength() {
    if (lines_.isCut()) {
        report("line-cut", line_ + limit_,
               "of a line only the first " + std::to_string(limit_) + " characters are read");
    }
}

void MapLines::checkNul() {
    const auto* const nul = static_cast<const char*>(
        std::memchr(line_, '\0', static_cast<std::size_t>(lineEnd() - line_)));
    if (nul != nullptr && std::any_of(nul, lineEnd(), isText)) {
        report("text-after-nul", nul, "the text behind a NUL in a line is not read");
    }
}

void MapLines::report(std::string_view rule, const char* at, std::string text) {
    findings_.add(rule, number(), at != nullptr ? columnOf(at) : 0, std::move(text));
}

double MapLines::valueOf(const detail::RawToken& token) {
    const std::string_view text = writtenText(token);
    if (const auto value = parseNumberOfAnySize(text)) {
        return *value;
    }
    report("no-number", token.begin,
           rfu::quoted(text) + " is no number: read as " + textOf(singleOf(token)));
    return 0.0;
}

void MapLines::reportInfinite(const detail::RawToken& token, std::string_view rule,
                              const char* kind) {
    report(rule, token.begin,
           rfu::quoted(writtenText(token)) + " is beyond the range of a " + kind +
               ": read as infinite");
}

double MapLines::checkNumber(const detail::RawToken& token, std::string_view beyondRange) {
    const double value = valueOf(token);
    if (std::isinf(value)) {
        reportInfinite(token, beyondRange, "double");
    }
    return value;
}

float MapLines::checkSingle(const detail::RawToken& token, std::string_view beyondRange) {
    const float value = detail::toFloat(valueOf(token));
    if (std::isinf(value)) {
        reportInfinite(token, beyondRange, "single");
    }
    const float asRead = token.isCut() ? singleOf(token) : value;
    if (asRead < value || asRead > value) {  // not where only zeros or small decimals are cut
        reportCut(token, textOf(asRead));
    }
    return value;
}

std::int32_t MapLines::checkInteger(const MapToken& token) {
    const std::int32_t asRead = detail::integerPrefix(token.text);
    const std::string_view text = writtenText(token.raw);
    const auto number = parseNumber(text);
    if (!number || *number != asRead) {
        report("no-whole-number", token.raw.begin,
               rfu::quoted(text) + " is no whole number: read as " + std::to_string(asRead));
        if (token.raw.isCut()) {
            reportCut(token.raw, std::to_string(asRead));
        }
    }
    return asRead;
}

void MapLines::reportCut(const detail::RawToken& token, const std::string& asRead) {
    report("token-cut", token.begin,
           rfu::quoted(writtenText(token)) + " is too long: its first " +
               std::to_string(detail::kMaxTokenLength) + " characters are read as " + asRead);
}

float singleOf(const detail::RawToken& token) {
    std::array<char, detail::kMaxTokenLength> text;
    return detail::toFloat(
        detail::decimalPrefix({text.data(), detail::copyTokenText(token, text.data())}));
}

std::string aboutDecimalComma(const std::vector<MapToken>& tokens) {
    if (tokens.size() < 3) {
        return {};
    }
    const std::string& whole = tokens[1].text;
    const std::string& decimals = tokens[2].text;
    const bool isOne = *tokens[1].raw.end == ',' && tokens[2].raw.begin == tokens[1].raw.end + 1 &&
                       !decimals.empty() && detail::isDigit(decimals.front()) &&
                       parseNumber(whole + '.' + decimals);
    return isOne ? "; " + whole + ',' + decimals + " has a decimal comma, which separates: write " +
                       whole + '.' + decimals
                 : "";
}

std::string_view writtenText(const detail::RawToken& token) {
    return {token.begin, static_cast<std::size_t>(token.end - token.begin)};
}

bool isInfinityOrNan(std::string_view word) {
    if (!word.empty() && (word.front() == '-' || word.front() == '+')) {
        word.remove_prefix(1);
    }
    return isSameWord(word, "inf") || isSameWord(word, "infinity") || isSameWord(word, "nan");
}

}  // namespace rfu
