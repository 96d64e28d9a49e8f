#include <string>
#include <vector>

#include "tools/pages/completions.h"

namespace rfu::pages {

namespace {

constexpr char kItems[] = R"zsh(
# The items of the catalogue that is the first argument.
_rfutils_items() {
  local file=${(Q)line[1]} item
  local -a items
  [[ $file == \~/* ]] && file=$HOME/${file#\~/}
  items=(${(f)"$("$program" catalogue "$file" --format csv 2>/dev/null | LC_ALL=C sed @ | uniq)"})
  compadd -a items
}
)zsh";

/// With a backslash before each of some characters.
std::string escaped(const std::string& text, const char* characters) {
    std::string result;
    for (const char c : text) {
        if (std::string(characters).find(c) != std::string::npos) {
            result += '\\';
        }
        result += c;
    }
    return result;
}

/// A word within "(...)", which the shell reads once more.
std::string listed(const std::string& word) {
    std::string result;
    for (const char c : word) {
        const bool isPlain = (static_cast<unsigned char>(c) >= 0x80) ||
                             std::string("-_./+%").find(c) != std::string::npos ||
                             (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') ||
                             (c >= 'A' && c <= 'Z');
        result += isPlain ? "" : "\\";
        result += c;
    }
    return result;
}

/// What follows the colon of a spec of _arguments, as the manual of zsh calls it.
std::string actionFor(const Completion& completion) {
    std::string action;
    switch (completion.kind) {
        case Completion::Kind::Words:
            for (const Completion::Word& word : completion.words) {
                action += action.empty() ? "" : " ";
                action += word.meaning.empty()
                              ? listed(word.text)
                              : listed(word.text) + "\\:" + shellQuoted(escaped(word.meaning, ":"));
            }
            return completion.words.front().meaning.empty() ? "(" + action + ")"
                                                            : "((" + action + "))";
        case Completion::Kind::Files:
            for (const std::string& ending : completion.endings) {
                action += (action.empty() ? "" : "|") + ending;
            }
            return action.empty() ? "_files" : "_files -g \"*.(" + action + ")(-.)\"";
        case Completion::Kind::Items:
            return "_rfutils_items";
        case Completion::Kind::Nothing:
            break;
    }
    return " ";
}

std::string messageOf(const std::string& name, const std::string& expected) {
    return escaped(name + (expected.empty() ? "" : " (" + expected + ")"), ":\\");
}

/// Those of an option: one, or one for each of its names.
std::vector<std::string> specsOf(const Option& option) {
    const std::string help = "[" + escaped(shortHelp(option), "[]\\") + "]";
    const std::string value = option.isFlag() ? ""
                                              : ":" + messageOf(option.valueName, option.expected) +
                                                    ":" + actionFor(option.completion);
    const std::string name = "--" + option.name;
    const std::string sign = option.isFlag() ? "" : "=";
    if (option.letter == 0) {
        return {(option.isRepeated ? "*" : "") + name + sign + help + value};
    }
    const std::string letter = std::string("-") + option.letter;
    const bool ends = option.name == "help" || option.name == "version";
    const std::string others = "(" + letter + " " + name + (ends ? " *)" : ")");
    return {others + letter + (option.isFlag() ? "" : "+") + help + value,
            others + name + sign + help + value};
}

std::string specOf(const Argument& argument) {
    const std::string place = argument.isRepeated ? "*" : argument.isRequired ? "" : ":";
    return place + ":" + escaped(argument.name, ":") + ":" + actionFor(argument.completion);
}

/// Each on a line of its own, with a mark that it goes on.
std::string lines(const std::vector<std::string>& specs, const std::string& indent) {
    std::string text;
    for (const std::string& spec : specs) {
        text += " \\\n" + indent + shellQuoted(spec);
    }
    return text;
}

std::vector<std::string> specsOf(const std::vector<Option>& options) {
    std::vector<std::string> all;
    for (const Option& option : options) {
        const std::vector<std::string> some = specsOf(option);
        all.insert(all.end(), some.begin(), some.end());
    }
    return all;
}

std::vector<std::string> specsOf(const Command& command) {
    std::vector<std::string> all = specsOf(command.options);
    for (const Argument& argument : command.arguments) {
        all.push_back(specOf(argument));
    }
    return all;
}

}  // namespace

std::string zshOfCommand(const std::vector<Command>& commands) {
    std::string names;
    std::string cases;
    for (const Command& command : commands) {
        names += "    " + shellQuoted(command.name + ":" + escaped(command.summary, ":")) + "\n";
        cases += "    " + command.name + ")\n      _arguments -S" +
                 lines(specsOf(command), "        ") + " && ret=0\n      ;;\n";
    }
    std::string items = kItems;
    items.replace(items.find('@'), 1, kItemsOfCsv);
    return R"(#compdef rfutils
# Made from the options of the program.

_rfutils_commands() {
  local -a commands=(
)" + names +
           R"(    'help:Show the commands, or the options of one'
  )
  _describe -t commands command commands
}
)" + items +
           R"(
_rfutils() {
  local curcontext=$curcontext program=$words[1] state line ret=1
  local -A opt_args

  _arguments -C)" +
           lines(specsOf(commonOptions()), "    ") + R"( \
    ': :_rfutils_commands' \
    '*:: :->command' && ret=0
  [[ $state == command ]] || return ret

  curcontext=${curcontext%:*:*}:rfutils-$words[1]:
  case $words[1] in
    help)
      _arguments ': :_rfutils_commands' && ret=0
      ;;
)" + cases +
           R"(  esac
  return ret
}

_rfutils "$@"
)";
}

std::string zshOfViewer(const Command& viewer) {
    std::vector<std::string> specs = specsOf(viewer);
    return R"(#compdef rfutils-view
# Made from the options of the program.

# Behind "--" stands a program that records, with its arguments.
local dashes=${words[(i)--]}
if ((dashes < CURRENT)); then
  shift $dashes words
  ((CURRENT -= dashes))
  _normal
  return
fi

_arguments)" +
           lines(specs, "  ") + "\n";
}

}  // namespace rfu::pages
