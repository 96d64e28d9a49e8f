#include "tools/pages/programs.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string_view>

#include "analysis/units/unitNames.h"
#include "subcommands.h"
#include "support/fileValues.h"
#include "support/kinds.h"
#include "tools/rfutils-view/options.h"

namespace rfu::pages {

namespace {

using command::Kind;

std::vector<std::string> split(std::string_view text, char separator) {
    std::vector<std::string> parts;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(separator), text.size());
        parts.emplace_back(text.substr(0, end));
        text.remove_prefix(std::min(text.size(), end + 1));
    }
    return parts;
}

std::vector<Completion::Word> wordsOf(const std::vector<std::string>& texts) {
    std::vector<Completion::Word> words;
    std::transform(texts.begin(), texts.end(), std::back_inserter(words),
                   [](const std::string& text) {
                       return Completion::Word{text, {}};
                   });
    return words;
}

std::vector<Completion::Word> unitsToShow() {
    std::vector<Completion::Word> words;
    for (const ListedUnit& unit : allUnits()) {
        if (unit.row != nullptr && unit.row->canBeShown() && !unit.row->isPrefixed()) {
            words.push_back({unit.name, {}});
        }
    }
    return words;
}

/// " 2 dBm" as the help shows it.
std::vector<Completion::Word> choicesOf(const command::Subcommand& subcommand) {
    std::vector<Completion::Word> words;
    if (subcommand.choices == nullptr) {
        return words;
    }
    for (const std::string& choice : subcommand.choices()) {
        const std::size_t code = choice.find_first_not_of(' ');
        const std::size_t blank = choice.find(' ', code);
        words.push_back({choice.substr(code, blank - code), choice.substr(blank + 1)});
    }
    return words;
}

Completion offered(std::vector<Completion::Word> words) {
    return {Completion::Kind::Words, std::move(words), {}};
}

Completion files(std::vector<std::string> endings) {
    return {Completion::Kind::Files, {}, std::move(endings)};
}

/// Of a value without words of its own.
Completion completionOf(const command::Subcommand& subcommand, Kind kind) {
    if (const command::FileValue* const file = command::fileValueOf(kind)) {
        return files({file->endings.begin(), file->endings.end()});
    }
    switch (kind) {
        case Kind::Unit:
            return offered(unitsToShow());
        case Kind::Code:
            return offered(choicesOf(subcommand));
        case Kind::Item:
            return {Completion::Kind::Items, {}, {}};
        default:
            return {};
    }
}

Completion completionOf(const command::Subcommand& subcommand, const command::Option& option) {
    const std::vector<std::string> words = command::wordsOf(option);
    return words.empty() ? completionOf(subcommand, option.kind) : offered(wordsOf(words));
}

Option optionOf(const command::Subcommand& subcommand, const command::Option& option) {
    const std::string fallback =
        option.fallback == nullptr ? "" : std::string(" Default: ") + option.fallback + ".";
    return {option.name,
            option.letter,
            option.valueName,
            option.help + fallback,
            command::isRead(option.kind) ? command::expectedOf(option.kind) : "",
            option.minCount > 0,
            option.maxCount > 1,
            completionOf(subcommand, option)};
}

Command commandOf(const command::Subcommand& subcommand) {
    Command command{subcommand.name,
                    subcommand.summary,
                    split(subcommand.description, '\n'),
                    choicesOf(subcommand),
                    {},
                    {},
                    {subcommand.examples.begin(), subcommand.examples.end()}};
    for (const command::Argument& argument : subcommand.arguments) {
        command.arguments.push_back({argument.name, argument.minCount > 0, argument.maxCount > 1,
                                     completionOf(subcommand, argument.kind)});
    }
    for (const command::Option* option : command::optionsOf(subcommand)) {
        command.options.push_back(optionOf(subcommand, *option));
    }
    return command;
}

/// Of the viewer.
Option optionOf(const viewer::Option& option, Completion completion) {
    return {option.name,
            option.letter,
            option.value,
            std::string(option.help) + ".",
            "",
            false,
            std::string(option.name) == "marker",
            std::move(completion)};
}

}  // namespace

std::vector<Command> subcommands() {
    std::vector<Command> commands;
    for (const command::Subcommand* subcommand : command::kSubcommands) {
        commands.push_back(commandOf(*subcommand));
    }
    return commands;
}

std::vector<Option> commonOptions() {
    return {{"help", 'h', "", "List the commands.", "", false, false, {}},
            {"version", 'V', "", "Show the version.", "", false, false, {}}};
}

Command viewer() {
    Command command{"rfutils-view",
                    "show recorded sweeps as spectrum and waterfall, with markers and maps",
                    {viewer::kDescription, std::string(viewer::kProgramDescription) + ":",
                     std::string("  ") + viewer::kProgramExample},
                    {},
                    {{viewer::kArgument, false, false, completionOf({}, Kind::SweepFile)}},
                    {},
                    {}};
    for (const viewer::Option& option : viewer::kTexts) {
        command.options.push_back(optionOf(option, offered(unitsToShow())));
    }
    for (const viewer::Option& option : viewer::kFiles) {
        command.options.push_back(optionOf(option, files(split(option.endings, ' '))));
    }
    for (const viewer::Option& option : viewer::kNumbers) {
        command.options.push_back(optionOf(option, {}));
    }
    for (const viewer::Option& option : viewer::kFlags) {
        command.options.push_back(optionOf(option, {}));
    }
    return command;
}

std::string shortHelp(const Option& option) {
    std::size_t end = option.help.size();
    for (const char* const stop : {". ", "; ", ": "}) {
        end = std::min(end, option.help.find(stop));
    }
    std::string help = option.help.substr(0, end);
    if (!help.empty() && help.back() == '.') {
        help.pop_back();
    }
    return help;
}

}  // namespace rfu::pages
