#include "analysis/checks/mendFile.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "analysis/support/files.h"
#include "analysis/support/plainText.h"

namespace rfu {

std::string FileMend::mended() const {
    return withEdits(viewOf(bytes), mend.edits);
}

Mend mendRecordingFile(std::string_view bytes, const RuleNames& ignored) {
    const auto text = inPlainText(bytes, ignored);
    return text ? Mend{{{0, static_cast<std::int64_t>(bytes.size()), *text}}, {}} : Mend();
}

FileMend mendFile(const CheckedFile& file) {
    const std::vector<Finding>& findings = file.findings.kept();
    // What a note is about stays, unless the note has a mend.
    const auto hasMend = [](const Finding& finding) {
        return finding.severity != Severity::Note || !finding.mend.empty();
    };
    const bool isRead = file.findings.counts().count(kFileUnreadable.name) == 0;
    if (!file.kind || !isRead || std::none_of(findings.begin(), findings.end(), hasMend)) {
        return {};
    }
    FileMend result{readWhole(file.file), {file.findings.mends(), {}}};
    if (const auto mend = kindOf(*file.kind).mend) {
        result.mend = mend(viewOf(result.bytes), file.ignored);
    }
    return result;
}

}  // namespace rfu
