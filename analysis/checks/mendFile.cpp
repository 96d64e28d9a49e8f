#include "analysis/checks/mendFile.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "analysis/support/compression.h"
#include "analysis/support/files.h"
#include "analysis/support/plainText.h"

namespace rfu {

std::string FileMend::mended() const {
    return withEdits(viewOf(bytes), mend.edits);
}

Mend mendRecordingFile(std::string_view bytes) {
    const auto text = packingOf(bytes) == nullptr ? inPlainText(bytes) : std::nullopt;
    return text ? Mend{{{0, static_cast<std::int64_t>(bytes.size()), *text}}, {}} : Mend();
}

FileMend mendFile(const QString& file, FileKind kind, const Findings& findings) {
    // What a note is about stays, unless the note has a mend.
    const auto hasMend = [](const Finding& finding) {
        return finding.severity != Severity::Note || !finding.mend.empty();
    };
    if (std::none_of(findings.kept().begin(), findings.kept().end(), hasMend)) {
        return {};
    }
    FileMend result{readWhole(file), {findings.mends(), {}}};
    if (const auto mend = kindOf(kind).mend) {
        result.mend = mend(viewOf(result.bytes));
    }
    return result;
}

}  // namespace rfu
