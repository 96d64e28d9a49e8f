#include <string>

#include "check/findingWriter.h"
#include "support/output.h"
#include "support/text.h"

namespace rfu::command {

namespace {

const char* nameOf(Severity severity) {
    return severity == Severity::Error     ? "error"
           : severity == Severity::Warning ? "warning"
                                           : "note";
}

/// "file:line:column", without what a finding has not.
std::string placeOf(const Finding& finding) {
    std::string place = finding.file.toStdString();
    if (finding.line > 0) {
        place += ':' + std::to_string(finding.line);
        place += finding.column > 0 ? ':' + std::to_string(finding.column) : "";
    }
    return place;
}

class TextFindings : public FindingWriter {
public:
    void add(const CheckedFile& file) override {
        for (const Finding& finding : file.findings.kept()) {
            output_.write(printable(placeOf(finding) + ": " + nameOf(finding.severity) + ": " +
                                    finding.text) +
                          " [" + std::string(finding.rule) + "]\n");
        }
    }
    void finish() override {}

private:
    Output& output_ = standardOutput();
};

}  // namespace

std::unique_ptr<FindingWriter> textFindings() {
    return std::make_unique<TextFindings>();
}

}  // namespace rfu::command
