#include "support/kinds.h"

#include <QString>
#include <algorithm>
#include <cstddef>
#include <iterator>
#include <optional>

#include "analysis/support/inputError.h"
#include "analysis/support/numbers.h"
#include "recordings/parseSpur.h"
#include "support/errors.h"
#include "support/named.h"
#include "support/nearest.h"
#include "support/units.h"
#include "trace/parseMarker.h"

namespace rfu::command {

namespace {

struct NamedFormat {
    const char* name;
    Format format;
};

constexpr NamedFormat kFormats[] = {
    {"text", Format::Text}, {"csv", Format::Csv}, {"json", Format::Json}};

std::optional<Format> parseFormat(std::string_view text) {
    const auto* const found =
        std::find_if(std::begin(kFormats), std::end(kFormats),
                     [text](const NamedFormat& known) { return text == known.name; });
    return found == std::end(kFormats) ? std::nullopt : std::optional(found->format);
}

/// Two numbers with a separator between them.
template <typename Pair, auto parse, char separator = ','>
std::optional<Pair> parsePair(std::string_view text) {
    const std::size_t at = text.find(separator);
    if (at == std::string_view::npos) {
        return std::nullopt;
    }
    const auto first = parse(text.substr(0, at));
    const auto second = parse(text.substr(at + 1));
    return first && second ? std::optional(Pair(*first, *second)) : std::nullopt;
}

std::optional<NumberRange> parseRange(std::string_view text) {
    const auto ends = parsePair<QPointF, parseNumber, ':'>(text);
    return ends && ends->x() < ends->y() ? std::optional(NumberRange{ends->x(), ends->y()})
                                         : std::nullopt;
}

std::optional<const rfu::Unit*> parseUnit(std::string_view text) {
    return &unitToShow(text);
}

std::optional<double> parsePercent(std::string_view text) {
    return parseNumberOf("%", text);
}

std::optional<double> parseGain(std::string_view text) {
    return parseNumberOf("dBi", text);
}

std::optional<double> parseDecibels(std::string_view text) {
    return parseNumberOf("dB", text);
}

std::optional<Quantity> parseQuantity(std::string_view text) {
    const auto split = splitValue(text);
    if (!split) {
        return std::nullopt;
    }
    const rfu::Unit& unit = unitToRead(split->unit.empty() ? "dBm" : split->unit);
    requireLevel(unit, split->value);
    return Quantity{split->value, &unit};
}

template <auto parse>
std::optional<Value> readBy(std::string_view text) {
    const auto value = parse(text);
    return value ? std::optional<Value>(*value) : std::nullopt;
}

struct Reader {
    Kind kind;
    const char* expected;
    std::optional<Value> (*read)(std::string_view text);
};

// clang-format off
constexpr Reader kReaders[] = {
    {Kind::Number,    "a number",                                             readBy<parseNumber>},
    {Kind::Gain,      "a gain such as 3dBi or a number of dBi",               readBy<parseGain>},
    {Kind::Decibels,  "a difference such as 6dB or a number of dB",           readBy<parseDecibels>},
    {Kind::Integer,   "a whole number",                                       readBy<parseInteger>},
    {Kind::Code,      "a whole number",                                       readBy<parseInteger>},
    {Kind::Frequency, "a frequency such as 88.1MHz or a number of MHz",       readBy<parseFrequency>},
    {Kind::FrequencyRange, "a frequency and a higher one such as 88MHz:108MHz", readBy<parseFrequencyRange>},
    {Kind::WindowTime, "a time such as \"2024-05-04 21:15\", 21:15:30 or, before the end, -10m", readBy<parseWindowTime>},
    {Kind::Percent,   "a percentage such as 99% or 99",                       readBy<parsePercent>},
    {Kind::Unit,      "a unit",                                               readBy<parseUnit>},
    {Kind::Format,    "text, csv or json",                                    readBy<parseFormat>},
    {Kind::Marker,    "a frequency such as 88.1MHz or the number of a point", readBy<parseMarker>},
    {Kind::Cell,      "a column and a row such as 128,40",                    readBy<parsePair<QPoint, parseInteger>>},
    {Kind::Pair,      "two numbers such as 47.5,8.2",                         readBy<parsePair<QPointF, parseNumber>>},
    {Kind::Range,     "a number and a larger one such as -100:-30",           readBy<parseRange>},
    {Kind::Spur,      "a range such as 98.3MHz:50kHz or hops:50kHz",          readBy<parseSpur>},
    {Kind::Quantity,  "a level such as -60dBm, 47dBuV or a number of dBm",    readBy<parseQuantity>},
    {Kind::Channels,  "channels such as 446MHz:12.5kHz:16",                   readBy<parseChannelRaster>},
};
// clang-format on

const Reader* readerOf(Kind kind) {
    const auto found = std::find_if(std::begin(kReaders), std::end(kReaders),
                                    [&](const Reader& reader) { return reader.kind == kind; });
    return found == std::end(kReaders) ? nullptr : found;
}

}  // namespace

bool isRead(Kind kind) {
    return readerOf(kind) != nullptr;
}

const char* expectedOf(Kind kind) {
    return readerOf(kind)->expected;
}

std::vector<std::string> wordsOf(const Option& option) {
    return option.kind == Kind::Format ? namesOf(kFormats)
           : option.words != nullptr   ? option.words()
                                       : std::vector<std::string>();
}

std::string readWord(const Option& option, std::string_view text) {
    const std::vector<std::string> words = wordsOf(option);
    std::string list;
    for (const std::string& word : words) {
        if (text == word) {
            return word;
        }
        list += list.empty() ? "" : &word == &words.back() ? " or " : ", ";
        list += word;
    }
    constexpr std::size_t kMaxListed = 12;
    if (words.size() > kMaxListed) {
        const QString wrong = QString::fromUtf8(text.data(), static_cast<int>(text.size()));
        throw BadValue("there is no " + rfu::quoted(text) + didYouMean(wrong, words));
    }
    throw BadValue(rfu::quoted(text) + " is not " + list);
}

Value readValue(Kind kind, std::string_view text) {
    const Reader& reader = *readerOf(kind);
    const auto value = reader.read(text);
    if (!value) {
        throw BadValue(rfu::quoted(text) + " is not " + reader.expected);
    }
    return *value;
}

}  // namespace rfu::command
