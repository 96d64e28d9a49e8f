#pragma once

#include <string>
#include <vector>

namespace rfu::pages {

// The options of the command and the viewer, in one form for all pages and shells.

/// What a shell may offer for a value.
struct Completion {
    enum class Kind { Nothing, Words, Files, Items };
    struct Word {
        std::string text;
        std::string meaning;  // empty where the word says it
    };

    Kind kind = Kind::Nothing;
    std::vector<Word> words;
    /// Of files; without any, all files are offered.
    std::vector<std::string> endings;
};

struct Option {
    std::string name;       // without its dashes
    char letter;            // 0 for none
    std::string valueName;  // empty for a flag
    std::string help;       // with its default
    std::string expected;   // "a whole number"; empty where nothing is said
    bool isRequired;
    bool isRepeated;
    Completion completion;

    bool isFlag() const { return valueName.empty(); }
};

struct Argument {
    std::string name;
    bool isRequired;
    bool isRepeated;
    Completion completion;
};

struct Command {
    std::string name;
    std::string summary;
    /// Paragraphs; lines that begin with a blank stay as they are.
    std::vector<std::string> description;
    std::vector<Completion::Word> choices;
    std::vector<Argument> arguments;
    std::vector<Option> options;
    std::vector<std::string> examples;
};

/// In the order of the overview.
std::vector<Command> subcommands();

/// The options of the command itself.
std::vector<Option> commonOptions();

/// Behind "--" it takes a program with its arguments.
Command viewer();

/// What a list of options has room for: the first clause of a help text.
std::string shortHelp(const Option& option);

}  // namespace rfu::pages
