#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "tools/pages/completions.h"

namespace rfu::pages {

const char kItemsOfCsv[] =
    R"sed('1d; s/^"\(\([^"]\{1,\}\|""\)*\)",.*/\1/; t quoted; s/,.*//; b; :quoted; s/""/"/g')sed";

namespace {

// What both scripts use; @ stands for the name of the program in names of functions.
constexpr char kShared[] = R"(
# Offers those of its arguments that begin like the current word.
_@_offer()
{
    local word
    for word; do
        [[ $word == "$cur"* ]] && COMPREPLY+=("$word")
    done
}

# Offers files that match a pattern of endings, or all where none does.
_@_files()
{
    _filedir "$1"
    [[ ${#COMPREPLY[@]} -gt 0 || ! $1 ]] || _filedir
}
)";

constexpr char kItems[] = R"(
# Offers the items of the catalogue that is the first argument.
_rfutils_items()
{
    local file=${arguments[0]-} item
    file=${file//[\\\"\']/}
    [[ $file == \~/* ]] && file=$HOME/${file#\~/}
    cur=${cur#[\"\']}
    compopt -o filenames
    while IFS= read -r item; do
        _rfutils_offer "$item"
    done < <("$program" catalogue "$file" --format csv 2>/dev/null | LC_ALL=C sed @ | uniq)
}
)";

// Finds out where the current word stands: behind an option that takes a value, or as argument.
constexpr char kPlace[] = R"(
    local arguments=() pending= over= i
    for ((i = first; i < cword; i++)); do
        if [[ $pending ]]; then
            pending=
        elif [[ $over || ${words[i]} != -[-[:alpha:]]* ]]; then
            arguments+=("${words[i]}")
        elif [[ ${words[i]} == -- ]]; then
            over=1
        elif [[ " $valued " == *" ${words[i]} "* ]]; then
            pending=${words[i]}
        fi
    done
    $split && pending=$prev
)";

std::string named(std::string text, const std::string& name) {
    for (std::size_t at = text.find('@'); at != std::string::npos; at = text.find('@', at)) {
        text.replace(at, 1, name);
    }
    return text;
}

/// Long names, and short ones.
std::string namesOf(const std::vector<Option>& options, bool areFlags) {
    std::string names;
    for (const Option& option : options) {
        if (option.isFlag() == areFlags) {
            names += names.empty() ? "" : " ";
            names += option.letter == 0 ? "" : std::string("-") + option.letter + " ";
            names += "--" + option.name;
        }
    }
    return names;
}

/// The call that offers a value; empty for none.
std::string callFor(const Completion& completion, const std::string& program) {
    std::string call;
    switch (completion.kind) {
        case Completion::Kind::Words:
            call = "_" + program + "_offer";
            for (const Completion::Word& word : completion.words) {
                call += " " + shellQuoted(word.text);
            }
            return call;
        case Completion::Kind::Files:
            for (const std::string& ending : completion.endings) {
                call += (call.empty() ? "" : "|") + ending;
            }
            return "_" + program + "_files " +
                   shellQuoted(call.empty() || completion.endings.size() == 1 ? call
                                                                              : "@(" + call + ")");
        case Completion::Kind::Items:
            return "_" + program + "_items";
        case Completion::Kind::Nothing:
            break;
    }
    return {};
}

/// Places with the same values, such as "trace--unit", by what is offered there.
using Offers = std::map<std::string, std::vector<std::string>>;

void addOffer(Offers& offers, const std::string& place, const Completion& completion,
              const std::string& program) {
    const std::string call = callFor(completion, program);
    if (!call.empty()) {
        offers[call].push_back(place);
    }
}

void addOffers(Offers& values, Offers& arguments, const Command& command, const std::string& prefix,
               const std::string& program) {
    for (const Option& option : command.options) {
        addOffer(values, prefix + "--" + option.name, option.completion, program);
        if (option.letter != 0) {
            addOffer(values, prefix + "-" + option.letter, option.completion, program);
        }
    }
    for (std::size_t i = 0; i < command.arguments.size(); ++i) {
        const Argument& argument = command.arguments[i];
        addOffer(arguments, prefix + ":" + (argument.isRepeated ? "*" : std::to_string(i)),
                 argument.completion, program);
    }
}

std::string cases(const Offers& offers) {
    std::string text;
    for (const auto& [call, places] : offers) {
        std::string patterns;
        std::string line;
        for (const std::string& place : places) {
            const std::string next = place + (&place == &places.back() ? ")" : " | ");
            if (line.size() + next.size() > 80) {
                patterns += line + "\\\n            ";
                line.clear();
            }
            line += next;
        }
        text.append("            ").append(patterns).append(line);
        text.append("\n                ").append(call).append("\n                ;;\n");
    }
    return text;
}

/// Offers at the place that kPlace found.
std::string offering(const Offers& values, const Offers& arguments, const std::string& program) {
    return R"(
    if [[ $pending ]]; then
        case $command$pending in
)" + cases(values) +
           R"(        esac
    else
        case $command:${#arguments[@]} in
)" + cases(arguments) +
           R"(        esac
        if [[ ! $over && ($cur == -* || ${#COMPREPLY[@]} -eq 0) ]]; then
            _)" +
           program + R"(_offer $flags $valued
        fi
    fi
    __ltrim_colon_completions "$cur"
}
)";
}

std::string head(const std::string& program) {
    return "# bash completion for " + program +
           "                          -*- shell-script -*-\n"
           "# Made from the options of the program.\n" +
           named(kShared, program);
}

}  // namespace

std::string shellQuoted(const std::string& text) {
    std::string quoted = "'";
    for (const char c : text) {
        quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    }
    return quoted + "'";
}

std::string bashOfCommand(const std::vector<Command>& commands) {
    std::string names;
    std::string lists;
    Offers values;
    Offers arguments;
    for (const Command& command : commands) {
        names += " " + command.name;
        lists += "        " + command.name + ")\n            flags='" +
                 namesOf(command.options, true) + "'\n            valued='" +
                 namesOf(command.options, false) + "'\n            ;;\n";
        addOffers(values, arguments, command, command.name, "rfutils");
    }
    return head("rfutils") + named(kItems, kItemsOfCsv) + R"(
_rfutils()
{
    local cur prev words cword split
    _init_completion -s -n : || return

    local program=$1 commands=')" +
           names.substr(1) + R"('
    if ((cword == 1)); then
        _rfutils_offer $commands help
        [[ $cur != -* ]] || _rfutils_offer )" +
           namesOf(commonOptions(), true) + R"(
        return
    fi

    local command=${words[1]} first=2 flags= valued=
    case $command in
        help)
            ((cword > 2)) || _rfutils_offer $commands
            return
            ;;
)" + lists +
           R"(        *)
            return
            ;;
    esac
)" + (kPlace + 1) +
           offering(values, arguments, "rfutils") + R"(
complete -F _rfutils rfutils
)";
}

std::string bashOfViewer(const Command& viewer) {
    Offers values;
    Offers arguments;
    addOffers(values, arguments, viewer, "", "rfutils_view");
    std::string text = head("rfutils_view");
    text.replace(text.find("rfutils_view"), 12, "rfutils-view");
    return text + R"(
_rfutils_view()
{
    local cur prev words cword split
    _init_completion -s || return

    local command= first=1 flags=')" +
           namesOf(viewer.options, true) + "'\n    local valued='" +
           namesOf(viewer.options, false) + R"('
    # The program that records, and its arguments.
    local word
    for ((word = 1; word < cword; word++)); do
        if [[ ${words[word]} == -- ]]; then
            _command_offset $((word + 1))
            return
        fi
    done
)" + kPlace +
           offering(values, arguments, "rfutils_view") + R"(
complete -F _rfutils_view rfutils-view
)";
}

}  // namespace rfu::pages
