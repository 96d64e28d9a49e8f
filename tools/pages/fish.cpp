#include <string>
#include <vector>

#include "tools/pages/completions.h"

namespace rfu::pages {

namespace {

// @ stands for the name of the program in names of functions.
constexpr char kFiles[] = R"(
# Files with one of these endings, or all where there are none.
function __@_files
    set -l all (__fish_complete_path (string replace -r '^--[^=]*=' '' -- (commandline -ct)) | string split -f1 \t)
    set -l found
    for ending in $argv
        set -a found (string match -- "*.$ending" $all)
    end
    if test -n "$found"
        printf '%s\n' $found (string match -- '*/' $all)
    else
        printf '%s\n' $all
    end
end
)";

constexpr char kCommand[] = R"(
function __rfutils_first
    test (count (commandline -opc)) -eq 1
end

function __rfutils_command --argument-names command
    set -l words (commandline -opc)
    test (count $words) -gt 1 -a "$words[2]" = $command
end

# The arguments before the current word. The names of options that take a value are those of valued.
function __rfutils_arguments
    set -l words (commandline -opc)
    set -l valued (__rfutils_valued $words[2])
    set -l pending 0
    set -l over 0
    for word in $words[3..]
        if test $pending = 1
            set pending 0
        else if test $over = 1; or not string match -qr -- '^-[-[:alpha:]]' $word
            echo $word
        else if test "$word" = --
            set over 1
        else if contains -- $word $valued
            set pending 1
        end
    end
end

function __rfutils_argument --argument-names command place
    __rfutils_command $command; or return
    test -z "$place"; or test (count (__rfutils_arguments)) -eq $place
end

# The items of the catalogue that is the first argument.
function __rfutils_items
    set -l words (commandline -opc)
    set -l file (string replace -r '^~/' "$HOME/" -- (__rfutils_arguments)[1])
    $words[1] catalogue $file --format csv 2>/dev/null | LC_ALL=C sed @ | uniq
end
)";

std::string replaced(std::string text, const std::string& with) {
    for (std::size_t at = text.find('@'); at != std::string::npos; at = text.find('@', at)) {
        text.replace(at, 1, with);
        at += with.size();
    }
    return text;
}

/// In single quotes.
std::string quoted(const std::string& text) {
    std::string result = "'";
    for (const char c : text) {
        result += c == '\'' || c == '\\' ? "\\" : "";
        result += c;
    }
    return result + "'";
}

/// A word of a list that the shell expands.
std::string listed(const std::string& word) {
    std::string result;
    for (const char c : word) {
        const bool isPlain = static_cast<unsigned char>(c) >= 0x80 ||
                             std::string("-_./+,").find(c) != std::string::npos ||
                             (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') ||
                             (c >= 'A' && c <= 'Z');
        result += isPlain ? "" : "\\";
        result += c;
    }
    return result;
}

/// The switches of `complete` for a value.
std::string switchesFor(const Completion& completion, const std::string& program) {
    std::string list;
    switch (completion.kind) {
        case Completion::Kind::Words:
            for (const Completion::Word& word : completion.words) {
                list += (list.empty() ? "" : " ") + listed(word.text);
                list += word.meaning.empty() ? "" : "\\t" + listed(word.meaning);
            }
            return " -a " + quoted(list);
        case Completion::Kind::Files:
            for (const std::string& ending : completion.endings) {
                list += " " + ending;
            }
            return " -a " + quoted("(__" + program + "_files" + list + ")");
        case Completion::Kind::Items:
            return " -a " + quoted("(__" + program + "_items)");
        case Completion::Kind::Nothing:
            break;
    }
    return {};
}

/// @param begin "complete -c rfutils" with a condition
std::string optionLine(const std::string& begin, const Option& option, const std::string& program) {
    return begin + (option.letter == 0 ? "" : std::string(" -s ") + option.letter) + " -l " +
           option.name + (option.isFlag() ? "" : " -x" + switchesFor(option.completion, program)) +
           " -d " + quoted(shortHelp(option)) + "\n";
}

std::string argumentLine(const std::string& begin, const Completion& completion,
                         const std::string& program) {
    const std::string switches = switchesFor(completion, program);
    return switches.empty() ? "" : begin + switches + "\n";
}

std::string valuedOptions(const Command& command) {
    std::string names;
    for (const Option& option : command.options) {
        if (!option.isFlag()) {
            names += option.letter == 0 ? "" : std::string(" -") + option.letter;
            names += " --" + option.name;
        }
    }
    return names;
}

}  // namespace

std::string fishOfCommand(const std::vector<Command>& commands) {
    std::string valued =
        "\nfunction __rfutils_valued --argument-names command\n    switch $command\n";
    std::string lines;
    const std::string first = "complete -c rfutils -n __rfutils_first";
    const std::string help = "complete -c rfutils -n '__rfutils_argument help 0'";
    for (const Option& option : commonOptions()) {
        lines += optionLine(first, option, "rfutils");
    }
    for (const Command& command : commands) {
        const std::string offer = " -a " + command.name + " -d " + quoted(command.summary) + "\n";
        lines += first + offer;
        lines += help + offer;
        valued += "        case " + command.name + "\n            printf '%s\\n'" +
                  valuedOptions(command) + "\n";
    }
    lines += first + " -a help -d 'Show the commands, or the options of one'\n";
    valued += "    end\nend\n";
    for (const Command& command : commands) {
        lines += "\n";
        for (std::size_t i = 0; i < command.arguments.size(); ++i) {
            const Argument& argument = command.arguments[i];
            const std::string place = argument.isRepeated ? "" : " " + std::to_string(i);
            lines += argumentLine(
                "complete -c rfutils -n '__rfutils_argument " + command.name + place + "'",
                argument.completion, "rfutils");
        }
        const std::string begin = "complete -c rfutils -n '__rfutils_command " + command.name + "'";
        for (const Option& option : command.options) {
            lines += optionLine(begin, option, "rfutils");
        }
    }
    return "# Made from the options of the program.\n" + replaced(kFiles, "rfutils") +
           replaced(kCommand, kItemsOfCsv) + valued + "\ncomplete -c rfutils -f\n" + lines;
}

std::string fishOfViewer(const Command& viewer) {
    std::string text =
        "# Made from the options of the program.\n" + replaced(kFiles, "rfutils_view") + R"(
# The words behind "--": a program that records, with its arguments.
function __rfutils_view_program
    set -l words (commandline -opc) (commandline -ct)
    set -l dashes (contains -i -- -- $words[1..-2]); or return
    set -e words[1..$dashes]
    string join ' ' -- (string escape -- $words[1..-2]) $words[-1]
end

complete -c rfutils-view -f
complete -c rfutils-view -n '__rfutils_view_program >/dev/null' -a '(complete -C (__rfutils_view_program))'
)";
    const std::string begin = "complete -c rfutils-view -n 'not __rfutils_view_program >/dev/null'";
    for (const Argument& argument : viewer.arguments) {
        text += argumentLine(begin, argument.completion, "rfutils_view");
    }
    for (const Option& option : viewer.options) {
        text += optionLine(begin, option, "rfutils_view");
    }
    return text;
}

}  // namespace rfu::pages
