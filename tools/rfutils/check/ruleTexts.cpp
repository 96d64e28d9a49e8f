#include "check/ruleTexts.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include "analysis/checks/checkFiles.h"
#include "analysis/checks/rules.h"
#include "support/help.h"
#include "support/table.h"

namespace rfu::command {

namespace {

/// "asc hdr", or "other files" than those of known kinds
std::string kindsOf(const KnownRule& rule) {
    if (rule.kinds.empty()) {
        return "other files";
    }
    std::string names;
    for (const FileKind kind : rule.kinds) {
        names += (names.empty() ? "" : " ") + std::string(kindOf(kind).name);
    }
    return names;
}

}  // namespace

void writeRules(Format format) {
    const bool isText = format == Format::Text;
    Table<KnownRule> table(
        format,
        {{"rule", [](const KnownRule& known) { return known.rule.name; }},
         {"severity", [](const KnownRule& known) { return nameOf(known.rule.severity); }},
         {"kinds", kindsOf},
         {"explanation", [](const KnownRule& known) { return known.rule.explanation; }, !isText},
         {"example", [](const KnownRule& known) { return known.rule.example; }, !isText},
         {"mend", [](const KnownRule& known) { return known.rule.mend; }, !isText}});
    for (const KnownRule& known : knownRules()) {
        table.add(known);
    }
    table.finish();
}

std::string explanationOf(const std::string& rule) {
    const KnownRule known = *findRule(rule);
    std::string text = std::string(known.rule.name) + " (" + nameOf(known.rule.severity) +
                       " in: " + kindsOf(known) + ")\n\n";
    appendWrapped(text, known.rule.explanation);
    text += "\nExample:\n\n";
    std::string_view example = known.rule.example;
    while (!example.empty()) {
        const std::string_view line = example.substr(0, example.find('\n'));
        text += "    " + std::string(line) + '\n';
        example.remove_prefix(std::min(example.size(), line.size() + 1));
    }
    text += '\n';
    appendWrapped(text, std::string("Mend: ") + known.rule.mend);
    return text;
}

std::vector<std::string> ruleNames() {
    std::vector<std::string> names;
    for (const KnownRule& known : knownRules()) {
        names.emplace_back(known.rule.name);
    }
    return names;
}

}  // namespace rfu::command
