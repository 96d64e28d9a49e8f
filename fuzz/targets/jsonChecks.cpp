// checkCatalogue and checkSetups on any bytes, and on JSON made from bytes:
// - there is an error where the library refuses the file, and where it holds nothing afterwards;
// - without error and warning it holds as many choices, or setups, as the lists at the top have elements;
// - findings and their edits lie within the file.
#include <rfUtils/catalogues/ResultSetup.h>
#include <rfUtils/catalogues/subItemList.h>

#include <QByteArray>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QString>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "analysis/catalogues/catalogueCheck.h"
#include "analysis/catalogues/setupsCheck.h"
#include "support/jsonText.h"
#include "support/require.h"
#include "support/scratchFile.h"

using namespace rfu::fuzz;

namespace {

int elementsIn(const QJsonObject& lists) {
    int count = 0;
    for (auto list = lists.begin(); list != lists.end(); ++list) {
        count += static_cast<int>(list.value().toArray().size());
    }
    return count;
}

int choicesIn(const subItemList& list, const QJsonObject& items) {
    int count = 0;
    for (const QString& key : items.keys()) {
        std::unordered_map<std::string, subItem> choices;
        list.getSubItemsById(key.toStdString(), choices);
        count += static_cast<int>(choices.size());
    }
    return count;
}

/// @param most setups that there can be
int setupsIn(const ResultSetup& setups, int most) {
    int count = 0;
    for (int i = 0; i < most; ++i) {
        count += setups.setupId(i).isNull() && setups.setupLabel(i).isNull() ? 0 : 1;
    }
    return count;
}

bool isClean(const rfu::Findings& findings) {
    return std::all_of(
        findings.kept().begin(), findings.kept().end(),
        [](const rfu::Finding& finding) { return finding.severity == rfu::Severity::Note; });
}

void requireWithin(const rfu::Findings& findings, const std::string& text) {
    std::vector<long long> lengths = {0};
    for (const char c : text) {
        if (c == '\n') {
            lengths.push_back(0);
        } else {
            ++lengths.back();
        }
    }
    for (const rfu::Finding& finding : findings.kept()) {
        REQUIRE(finding.line >= 0 && finding.line <= static_cast<long long>(lengths.size()));
        REQUIRE(finding.line == 0 ||
                (finding.column >= 1 &&
                 finding.column <= lengths[static_cast<std::size_t>(finding.line) - 1] + 1));
        for (const rfu::Edit& edit : finding.mend) {
            REQUIRE(edit.offset >= 0 && edit.length >= 0 &&
                    edit.offset + edit.length <= static_cast<std::int64_t>(text.size()));
        }
    }
}

void requireAgreement(const rfu::Findings& findings, bool isLoaded, int held, int elements) {
    REQUIRE(findings.hasError() || (isLoaded && elements > 0));
    REQUIRE(!isClean(findings) || held == elements);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static ScratchFile file("file.json");
    static const auto before =
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    static_cast<void>(before);
    const std::string text = jsonTextOf(data, size);
    file.write(text.data(), text.size());
    const QJsonObject lists = QJsonDocument::fromJson(QByteArray::fromStdString(text)).object();
    const int elements = elementsIn(lists);

    const rfu::Findings choiceFindings = rfu::checkCatalogue(file.path());
    requireWithin(choiceFindings, text);
    subItemList choices;
    const bool hasChoices = choices.loadJson(file.path().toStdString());
    requireAgreement(choiceFindings, hasChoices, choicesIn(choices, lists), elements);

    const rfu::Findings setupFindings = rfu::checkSetups(file.path());
    requireWithin(setupFindings, text);
    ResultSetup setups;
    const bool hasSetups = setups.loadJson(file.path());
    requireAgreement(setupFindings, hasSetups, setupsIn(setups, elements), elements);
    return 0;
}
