// SARIF 2.1.0, as code review systems read it.
#include <QString>
#include <QUrl>
#include <map>
#include <string>
#include <string_view>

#include "analysis/checks/rules.h"
#include "check/findingWriter.h"
#include "check/sourceLines.h"
#include "support/output.h"
#include "support/text.h"

namespace rfu::command {

namespace {

std::string member(const char* name, std::string_view text) {
    return jsonString(name) + ": " + jsonString(text);
}

std::string textMember(const char* name, std::string_view text) {
    return jsonString(name) + ": {" + member("text", text) + "}";
}

std::string ruleText(const Rule& rule) {
    return "{" + member("id", rule.name) + ", " + textMember("shortDescription", rule.name) + ", " +
           textMember("fullDescription", rule.explanation) + ", " +
           textMember("help", std::string(rule.mend) + "\n\nExample:\n" + rule.example) +
           ", \"defaultConfiguration\": {" + member("level", nameOf(rule.severity)) + "}}";
}

/// Relative names stay relative, so that a review system finds the files in its own checkout.
std::string uriOf(const QString& file) {
    return file.startsWith(QLatin1Char('/')) ? QUrl::fromLocalFile(file).toEncoded().toStdString()
                                             : QUrl::toPercentEncoding(file, "/").toStdString();
}

class SarifFindings : public FindingWriter {
public:
    SarifFindings() {
        output_.open(
            "{\"$schema\": \"https://json.schemastore.org/sarif-2.1.0.json\",\n"
            "\"version\": \"2.1.0\",\n"
            "\"runs\": [{\"tool\": {\"driver\": {\"name\": \"rfutils check\",\n  \"rules\": [",
            "]}]}\n");
        const char* separator = "\n    ";
        int index = 0;
        for (const KnownRule& known : knownRules()) {
            output_.write(separator + ruleText(known.rule));
            indexOfRule_.emplace(known.rule.name, index++);
            separator = ",\n    ";
        }
        output_.write("]}},\n\"columnKind\": \"unicodeCodePoints\",\n\"results\": [");
    }

    void add(const CheckedFile& file) override {
        SourceLines source(file.file);
        for (const Finding& finding : listedFindings(file)) {
            output_.write(separator_);
            output_.write(resultOf(finding, source));
            separator_ = ",\n  ";
        }
    }
    void finish() override { output_.close(); }

private:
    /// A finding without a place stands at the beginning of its file, because results need one.
    std::string resultOf(const Finding& finding, SourceLines& source) const {
        const long long line = finding.line > 0 ? finding.line : 1;
        return "{" + member("ruleId", finding.rule) +
               ", \"ruleIndex\": " + std::to_string(indexOfRule_.at(finding.rule)) + ", " +
               member("level", nameOf(finding.severity)) + ", " +
               textMember("message", finding.text) +
               ", \"locations\": [{\"physicalLocation\": {\"artifactLocation\": {" +
               member("uri", uriOf(finding.file)) +
               "}, \"region\": {\"startLine\": " + std::to_string(line) +
               ", \"startColumn\": " + std::to_string(columnOf(finding, source)) + "}}}]}";
    }

    /// Counts characters where the line is there, else bytes.
    static std::size_t columnOf(const Finding& finding, SourceLines& source) {
        if (finding.column <= 1) {
            return 1;
        }
        const auto bytes = static_cast<std::size_t>(finding.column - 1);
        const auto text = source.line(finding.line);
        return 1 + (text ? widthOf(std::string_view(*text).substr(0, bytes)) : bytes);
    }

    Output& output_ = standardOutput();
    std::map<std::string_view, int> indexOfRule_;
    const char* separator_ = "\n  ";
};

}  // namespace

std::unique_ptr<FindingWriter> sarifFindings() {
    return std::make_unique<SarifFindings>();
}

}  // namespace rfu::command
