#pragma once

#include <algorithm>
#include <initializer_list>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace rfu::command {

class CommandLine;

// A subcommand as data, used by the parser, the help, the manual pages and the completions.

/// The kind of an option's or argument's value; readValue() reads it.
enum class Kind {
    Flag,  ///< an option without a value
    Text,
    Word,  ///< one of the option's words
    Item,  ///< an item of the catalogue that is the first argument
    Number,
    // Files to read; kFileValues has their endings.
    File,  ///< of any kind
    JsonFile,
    CsvFile,
    SweepFile,  ///< a recording
    RasterFile,
    TabFile,
    StateFile,
    // Files to write
    Recording,
    State,
    Picture,   ///< PNG
    Plot,      ///< PNG or SVG
    Gain,      ///< in dBi
    Decibels,  ///< a difference of levels
    Integer,
    Code,  ///< a whole number; the subcommand's choices say what it means
    Frequency,
    FrequencyRange,  ///< a frequency and a higher one
    WindowTime,      ///< a time, of a day or before the end
    Percent,
    Unit,  ///< a unit that levels can be shown in
    Format,
    Marker,    ///< a frequency or the number of a point
    Cell,      ///< a column and a row
    Pair,      ///< two numbers
    Range,     ///< a number and a larger one
    Spur,      ///< a frequency or the hops, and a width
    Quantity,  ///< a number with the unit of a level, or of dBm
    Channels,  ///< where the first channel begins, the distance of two, and how many
};

struct Option {
    const char* name;       ///< without its dashes
    const char* valueName;  ///< the value's name in the help; empty for a flag
    Kind kind;
    const char* help;
    const char* fallback = nullptr;  ///< the value if the option is not given
    int minCount = 0;
    int maxCount = 1;  ///< if it is 1, the last one counts
    char letter = 0;   ///< of its short name, "-o"; 0 for none
    /// Of an option of Kind::Word, which the parser accepts.
    std::vector<std::string> (*words)() = nullptr;
};

inline constexpr int kAnyCount = std::numeric_limits<int>::max();

struct Argument {
    const char* name;
    Kind kind;
    int minCount = 1;
    int maxCount = 1;
};

struct Subcommand {
    const char* name;
    const char* summary;
    /// One line per paragraph; the help wraps lines that do not begin with a blank.
    const char* description;
    std::initializer_list<Argument> arguments;
    std::initializer_list<Option> options;  ///< beside kCommonOptions, or in their place
    std::initializer_list<const char*> examples;
    /// Prints to standardOutput(). @throw Failure, InputError
    void (*run)(const CommandLine& line);
    /// The values that its option or argument of Kind::Code may have, each with its meaning, shown
    /// behind the description.
    std::vector<std::string> (*choices)() = nullptr;
    /// Options that it has in common with others, behind its own.
    const std::initializer_list<Option>* shared = nullptr;
};

// clang-format off
inline constexpr Option kCommonOptions[] = {
    {"help", "", Kind::Flag, "Show this help.", nullptr, 0, 1, 'h'},
    {"format", "FORMAT", Kind::Format, "text, csv or json.", "text"}};

// The antenna that field units refer to.
inline constexpr Option kCenterOption = {
    "center", "FREQ", Kind::Frequency,
    "Centre frequency for field units: 88.1MHz, 2.4G, 100kHz, 5Hz or a number of MHz."};
inline constexpr Option kGainOption = {
    "gain", "DBI", Kind::Gain, "Antenna gain in dBi for field units.", "0"};
// clang-format on

/// Its own and those common ones that it does not replace.
inline std::vector<const Option*> optionsOf(const Subcommand& subcommand) {
    std::vector<const Option*> options;
    for (const Option& option : subcommand.options) {
        options.push_back(&option);
    }
    if (subcommand.shared != nullptr) {
        for (const Option& option : *subcommand.shared) {
            options.push_back(&option);
        }
    }
    for (const Option& common : kCommonOptions) {
        const bool isReplaced = std::any_of(options.begin(), options.end(), [&](const Option* own) {
            return std::string_view(own->name) == common.name;
        });
        if (!isReplaced) {
            options.push_back(&common);
        }
    }
    return options;
}

}  // namespace rfu::command
