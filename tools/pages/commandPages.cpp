#include "tools/pages/commandPages.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <set>
#include <string>
#include <string_view>

namespace rfu::pages {

namespace {

constexpr char kProgram[] = "rfutils";

/// What texts speak of: options, values by their names, and commands.
class Vocabulary {
public:
    explicit Vocabulary(const Command& command) {
        for (const Argument& argument : command.arguments) {
            values_.insert(argument.name);
        }
        for (const Option& option : command.options) {
            // A single letter may be a unit, small letters are to be typed as they are.
            if (option.valueName.size() > 1 &&
                std::isupper(static_cast<unsigned char>(option.valueName.front())) != 0) {
                values_.insert(option.valueName);
            }
        }
    }

    /// A text of the help, with what it speaks of set as such.
    Text marked(std::string_view text) const {
        Text spans;
        while (!text.empty()) {
            const std::size_t blank = std::min(text.find(' '), text.size());
            addWord(spans, text.substr(0, blank));
            spans.push_back({" "});
            text.remove_prefix(std::min(text.size(), blank + 1));
        }
        return spans;
    }

private:
    void addWord(Text& spans, std::string_view word) const {
        const std::size_t begin = std::min(word.find_first_not_of("(\""), word.size());
        const std::size_t last = word.find_last_not_of(",.;:)\"");
        const std::size_t end = std::max(begin, last == std::string_view::npos ? 0 : last + 1);
        spans.push_back({std::string(word.substr(0, begin))});
        const std::string core(word.substr(begin, end - begin));
        spans.push_back({core, styleOf(core)});
        spans.push_back({std::string(word.substr(end))});
    }

    Style styleOf(const std::string& word) const {
        const bool isOption = word.size() > 2 && word.compare(0, 2, "--") == 0;
        return isOption || word == kProgram ? Style::Bold
               : values_.count(word) > 0    ? Style::Italic
                                            : Style::Plain;
    }

    std::set<std::string> values_;
};

std::string nameOf(const Command& command) {
    return std::string(kProgram) + "-" + command.name;
}

const char* manualOf(char section) {
    return section == '1' ? "User Commands" : section == '3' ? "Library Functions" : "File Formats";
}

ManualPage begin(const std::string& name, char section, const std::string& summary,
                 const Edition& edition) {
    ManualPage page(name, section, edition.date, std::string(kProgram) + " " + edition.version,
                    manualOf(section));
    page.section("Name");
    page.paragraph({{name}, {" "}, {"-"}, {" " + summary}});
    return page;
}

/// "Convert levels" within a line; "RF levels" stays.
std::string uncapitalised(std::string summary) {
    if (summary.size() > 1 && std::islower(static_cast<unsigned char>(summary[1])) != 0) {
        summary[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(summary[0])));
    }
    return summary;
}

Text valueText(const Option& option) {
    const bool isLiteral = std::islower(static_cast<unsigned char>(option.valueName.front())) != 0;
    return {{option.valueName, isLiteral ? Style::Bold : Style::Italic}};
}

Text term(const Option& option) {
    Text text;
    if (option.letter != 0) {
        text = {{std::string("-") + option.letter, Style::Bold}, {", "}};
    }
    text.push_back({"--" + option.name, Style::Bold});
    if (!option.isFlag()) {
        text.push_back({" "});
        text = joined({text, valueText(option)});
    }
    return text;
}

/// The required options, and the arguments: "INDEX [VALUE...]", "[MINUTES [SECONDS]]".
Text syntax(const Command& command) {
    Text text;
    for (const Option& option : command.options) {
        if (option.isRequired) {
            text = joined({text, {{" "}}, bold("--" + option.name), {{" "}}, valueText(option)});
        }
    }
    text = joined({text, {{" ["}, {"options", Style::Italic}, {"]"}}});
    std::string closing;
    for (const Argument& argument : command.arguments) {
        text = joined({text, {{argument.isRequired ? " " : " ["}, {argument.name, Style::Italic}}});
        text.push_back({argument.isRepeated ? "..." : ""});
        closing += argument.isRequired ? "" : "]";
    }
    text.push_back({closing});
    return text;
}

void addDescription(ManualPage& page, const Command& command, const Vocabulary& vocabulary) {
    std::vector<std::string> literal;
    for (const std::string& line : command.description) {
        if (!line.empty() && line.front() == ' ') {
            literal.push_back(line.substr(line.find_first_not_of(' ')));
            continue;
        }
        if (!literal.empty()) {
            page.literal(literal);
            literal.clear();
        }
        if (!line.empty()) {
            page.paragraph(vocabulary.marked(line));
        }
    }
    if (!literal.empty()) {
        page.literal(literal);
    }
    for (const Completion::Word& choice : command.choices) {
        page.item(bold(choice.text), {{choice.meaning}});
    }
}

void addOptions(ManualPage& page, const std::vector<Option>& options,
                const Vocabulary& vocabulary) {
    page.section("Options");
    for (const Option& option : options) {
        page.item(term(option), vocabulary.marked(option.help));
    }
}

void addReferences(ManualPage& page, const std::vector<Text>& references) {
    page.section("See also");
    Text text;
    for (const Text& page_ : references) {
        text = joined({text, text.empty() ? Text{} : Text{{", "}}, page_});
    }
    page.paragraph(text);
}

bool takesFiles(const Command& command) {
    return std::any_of(command.arguments.begin(), command.arguments.end(),
                       [](const Argument& argument) {
                           return argument.completion.kind == Completion::Kind::Files;
                       });
}

/// Examples as they are typed; those too wide for a page are broken between options.
void addExamples(ManualPage& page, const Command& command) {
    constexpr std::size_t kWidth = 68;
    page.section("Examples");
    if (takesFiles(command)) {
        page.paragraph(
            {{"The files are samples: examples/data in the folder of the documentation "
              "(/usr/share/doc/librfutils-doc of the package librfutils-doc on Debian)."}});
    }
    for (std::string_view example : command.examples) {
        std::vector<std::string> lines;
        while (example.size() > kWidth) {
            const std::size_t option = example.rfind(" --", kWidth);
            if (option == std::string_view::npos || option == 0) {
                break;
            }
            lines.push_back(std::string(lines.empty() ? "" : "    ") +
                            std::string(example.substr(0, option)) + " \\");
            example.remove_prefix(option + 1);
        }
        lines.push_back(std::string(lines.empty() ? "" : "    ") + std::string(example));
        page.literal(lines);
    }
}

}  // namespace

std::string commandPage(const std::vector<Command>& commands, const Document& document,
                        const Edition& edition) {
    ManualPage page =
        begin(kProgram, '1', "numbers, texts and pictures of RF signal measurements", edition);
    page.section("Synopsis");
    page.paragraph({{kProgram, Style::Bold},
                    {" "},
                    {"command", Style::Italic},
                    {" ["},
                    {"options", Style::Italic},
                    {"] ["},
                    {"arguments", Style::Italic},
                    {"]"}});
    page.paragraph({{std::string(kProgram) + " help", Style::Bold},
                    {" ["},
                    {"command", Style::Italic},
                    {"]"}});
    page.section("Description");
    page.paragraph(
        {{kProgram, Style::Bold},
         {" converts levels and shows the texts of an RF measurement instrument, reads what "
          "receivers record, and draws recordings and maps. Each command has a page of its own."}});
    page.section("Commands");
    for (const Command& command : commands) {
        page.item(reference(nameOf(command), '1'), {{command.summary + "."}});
    }
    addOptions(page, commonOptions(), Vocabulary({}));
    addPart(page, *document, QStringLiteral("What all commands share"));
    std::vector<Text> references = {reference("rfutils-view", '1'), reference("librfUtils", '3'),
                                    reference("rfutils-formats", '5')};
    addReferences(page, references);
    return page.text();
}

std::string subcommandPage(const Command& command, const Edition& edition) {
    const Vocabulary vocabulary(command);
    ManualPage page = begin(nameOf(command), '1', uncapitalised(command.summary), edition);
    page.section("Synopsis");
    page.paragraph(joined({bold(std::string(kProgram) + " " + command.name), syntax(command)}));
    page.section("Description");
    addDescription(page, command, vocabulary);
    addOptions(page, command.options, vocabulary);
    page.section("Exit status");
    page.paragraph(joined(
        {reference(kProgram, '1'), {{" lists them; 0 stands for success, 2 for wrong usage."}}}));
    addExamples(page, command);
    addReferences(page, {reference(kProgram, '1'), reference("rfutils-formats", '5')});
    return page.text();
}

std::string viewerPage(const Command& viewer, const Document& document, const Edition& edition) {
    const Vocabulary vocabulary(viewer);
    ManualPage page = begin(viewer.name, '1', viewer.summary, edition);
    page.section("Synopsis");
    page.paragraph({{viewer.name, Style::Bold},
                    {" ["},
                    {"options", Style::Italic},
                    {"] ["},
                    {"FILE", Style::Italic},
                    {" | "},
                    {"-", Style::Bold},
                    {"]"}});
    page.paragraph({{viewer.name, Style::Bold},
                    {" ["},
                    {"options", Style::Italic},
                    {"] "},
                    {"--", Style::Bold},
                    {" "},
                    {"PROGRAM", Style::Italic},
                    {" ["},
                    {"ARGUMENT", Style::Italic},
                    {"...]"}});
    page.section("Description");
    addDescription(page, viewer, vocabulary);
    addOptions(page, viewer.options, vocabulary);
    addSections(page, *document);
    addReferences(page, {reference(kProgram, '1'), reference("rfutils-formats", '5')});
    return page.text();
}

std::string formatsPage(const Document& document, const Edition& edition) {
    ManualPage page = begin("rfutils-formats", '5', "files that rfutils reads and writes", edition);
    page.section("Description");
    addDocument(page, *document);
    addReferences(page, {reference(kProgram, '1'), reference("librfUtils", '3')});
    return page.text();
}

std::string libraryPage(const Document& document, const Document& readme,
                        const std::vector<std::string>& example, const Edition& edition) {
    ManualPage page =
        begin("librfUtils", '3', "numbers and texts behind the views of an RF instrument", edition);
    page.section("Description");
    addDocument(page, *document);
    page.section("Conventions");
    addPart(page, *readme, QStringLiteral("Conventions"));
    page.section("Example");
    page.literal(example);
    addReferences(page, {reference(kProgram, '1'), reference("rfutils-formats", '5')});
    return page.text();
}

}  // namespace rfu::pages
