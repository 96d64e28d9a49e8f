#include "support/help.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <vector>

#include "subcommands.h"
#include "support/text.h"

namespace rfu::command {

namespace {

constexpr std::size_t kMaxColumns = 80;

void appendDescription(std::string& text, std::string_view description) {
    while (!description.empty()) {
        const std::string_view line = description.substr(0, description.find('\n'));
        if (!line.empty() && line.front() == ' ') {
            text.append(line) += '\n';
        } else {
            appendWrapped(text, line);
        }
        description.remove_prefix(std::min(description.size(), line.size() + 1));
    }
}

/// Appends choices in columns, from top to bottom.
void appendChoices(std::string& text, const std::vector<std::string>& choices) {
    std::size_t width = 0;
    for (const std::string& choice : choices) {
        width = std::max(width, widthOf(choice) + 2);
    }
    const std::size_t columns = std::max(kMaxColumns / width, std::size_t{1});
    const std::size_t rows = (choices.size() + columns - 1) / columns;
    for (std::size_t row = 0; row < rows; ++row) {
        for (std::size_t i = row; i < choices.size(); i += rows) {
            const bool isLast = i + rows >= choices.size();
            text += "  " + choices[i];
            text += isLast ? "\n" : std::string(width - 2 - widthOf(choices[i]), ' ');
        }
    }
}

/// "--to UNIT [options] [VALUE...]", "[options] DEGREES [MINUTES [SECONDS]]"
std::string syntaxOf(const Subcommand& subcommand) {
    std::string syntax;
    for (const Option& option : subcommand.options) {
        if (option.minCount > 0) {
            syntax += std::string("--") + option.name + ' ' + option.valueName + ' ';
        }
    }
    syntax += "[options]";
    std::string closing;
    for (const Argument& argument : subcommand.arguments) {
        const bool optional = argument.minCount == 0;
        syntax += std::string(" ") + (optional ? "[" : "") + argument.name;
        syntax += argument.maxCount > 1 ? "..." : "";
        closing += optional ? "]" : "";
    }
    return syntax + closing;
}

std::string label(const Option& option) {
    const std::string shortName = option.letter == 0 ? "" : std::string("-") + option.letter + ", ";
    return "  " + shortName + "--" + option.name +
           (option.kind == Kind::Flag ? "" : std::string(" ") + option.valueName);
}

void appendOptions(std::string& text, const Subcommand& subcommand) {
    const std::vector<const Option*> options = optionsOf(subcommand);
    std::size_t column = 0;
    for (const Option* option : options) {
        column = std::max(column, label(*option).size() + 2);
    }
    for (const Option* option : options) {
        std::string line = label(*option);
        line.resize(column, ' ');
        text += line;
        const std::string fallback =
            option->fallback == nullptr ? "" : std::string(" Default: ") + option->fallback + ".";
        appendWrapped(text, option->help + fallback, column);
    }
}

/// A command as a shell takes it over several lines, broken between options.
std::string continued(std::string_view command) {
    constexpr std::size_t kWidth = kMaxColumns - 2 - 2;  // indented, and " \\" at the end
    std::string text;
    while (command.size() > kWidth) {
        const std::size_t option = command.rfind(" --", kWidth);
        if (option == std::string_view::npos || option == 0) {
            break;
        }
        text.append(command.substr(0, option)) += " \\\n     ";
        command.remove_prefix(option);
    }
    return text.append(command);
}

}  // namespace

void appendWrapped(std::string& text, std::string_view paragraph, std::size_t column) {
    std::size_t used = column;
    while (!paragraph.empty()) {
        const std::string_view word = paragraph.substr(0, paragraph.find(' '));
        const std::size_t width = widthOf(word);
        if (used > column && used + 1 + width > kMaxColumns) {
            text += '\n' + std::string(column, ' ');
            used = column;
        } else if (used > column) {
            text += ' ';
            ++used;
        }
        text += word;
        used += width;
        paragraph.remove_prefix(std::min(paragraph.size(), word.size() + 1));
    }
    text += '\n';
}

std::string overview() {
    std::string text = "Usage: rfutils COMMAND [options] [arguments]\n\nCommands:\n";
    for (const Subcommand* subcommand : kSubcommands) {
        std::string name = subcommand->name;
        name.resize(12, ' ');
        text += "  " + name + subcommand->summary + "\n";
    }
    return text +
           "\n"
           "rfutils help COMMAND, as rfutils COMMAND --help, shows the options of a command\n"
           "with examples, rfutils --version (-V) the version.\n";
}

std::string helpOf(const Subcommand& subcommand) {
    std::string text = "Usage: ";
    appendWrapped(text, std::string("rfutils ") + subcommand.name + ' ' + syntaxOf(subcommand),
                  text.size());
    text += '\n';
    appendDescription(text, subcommand.description);
    if (subcommand.choices != nullptr) {
        appendChoices(text, subcommand.choices());
    }
    text += "\nOptions:\n";
    appendOptions(text, subcommand);
    text += "\nExamples:\n";
    for (const char* example : subcommand.examples) {
        text += "  " + continued(example) + "\n";
    }
    return text;
}

}  // namespace rfu::command
