#include "check/findingWriter.h"

#include "support/format.h"
#include "support/table.h"

namespace rfu::command {

namespace {

Cell numberOrNone(long long number) {
    return number > 0 ? Cell(number) : Cell();
}

class JsonFindings : public FindingWriter {
public:
    void add(const CheckedFile& file) override {
        for (const Finding& finding : listedFindings(file)) {
            table_.add(finding);
        }
    }
    void finish() override { table_.finish(); }

private:
    Table<Finding> table_{
        Format::Json,
        {{"file", [](const Finding& finding) { return finding.file; }},
         {"line", [](const Finding& finding) { return numberOrNone(finding.line); }},
         {"column", [](const Finding& finding) { return numberOrNone(finding.column); }},
         {"severity", [](const Finding& finding) { return nameOf(finding.severity); }},
         {"rule", [](const Finding& finding) { return finding.rule; }},
         {"message", [](const Finding& finding) { return finding.text; }}}};
};

}  // namespace

std::unique_ptr<FindingWriter> jsonFindings() {
    return std::make_unique<JsonFindings>();
}

}  // namespace rfu::command
