// The checks of files behind `rfutils check`, of the kind that the first byte chooses. Holds for any bytes behind it:
// - a check ends without an exception, and says the same again;
// - every finding names the file and a line of it, or no line, and is of a rule in the table of the kind;
// - a map's file of which nothing but notes is said is loaded by the library.
#include "support/input.h"
#include "support/require.h"
#include "support/scratchFile.h"

#include <rfUtils/geo/veltaGEO.h>
#include "analysis/checks/checkFiles.h"
#include "analysis/checks/fileKind.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string_view>
#include <utility>

using namespace rfu;
using namespace rfu::fuzz;

namespace {

bool isSame(const Finding& a, const Finding& b) {
    return a.rule == b.rule && a.line == b.line && a.column == b.column && a.text == b.text;
}

void require(const Findings& findings, const KnownKind& kind, std::string_view bytes) {
    const auto lines = std::count(bytes.begin(), bytes.end(), '\n') + 1;
    const RuleTable rules = kind.rules();
    for (const Finding& finding : findings.kept()) {
        REQUIRE(finding.line >= 0 && finding.line <= lines);
        REQUIRE(finding.column >= 0 && finding.column <= static_cast<long long>(bytes.size()) + 1);
        REQUIRE(!finding.text.empty());
        REQUIRE(rules.find(finding.rule) != nullptr || finding.rule == kFileUnreadable.name);
    }
}

bool isSilent(const Findings& findings) {
    return std::all_of(findings.kept().begin(), findings.kept().end(),
                       [](const Finding& finding) { return finding.severity == Severity::Note; });
}

bool isLoaded(FileKind kind, const QString& file) {
    static const auto map = std::make_unique<veltaGEO>();
    switch (kind) {
        case FileKind::Asc:
            return map->loadASCFile(file) && map->nCols > 0 && map->nRows > 0;
        case FileKind::Hdr:
            return map->loadHDRFile(file) && map->nCols > 0 && map->nRows > 0;
        case FileKind::Tab:
            return map->loadTabFile(file);
        default:
            return true;
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    const auto& kinds = knownKinds();
    const KnownKind& kind = kinds[input.byte() % kinds.size()];
    static std::map<FileKind, std::unique_ptr<ScratchFile>> files;
    std::unique_ptr<ScratchFile>& file = files[kind.kind];
    if (!file) {
        file =
            std::make_unique<ScratchFile>((std::string("file.") + kind.extensions.front()).c_str());
    }
    const std::string_view bytes = input.rest();
    file->write(bytes.data(), bytes.size());
    const Findings findings = checkFile(file->path(), kind.kind);
    require(findings, kind, bytes);
    const Findings again = checkFile(file->path(), kind.kind);
    REQUIRE(std::equal(findings.kept().begin(), findings.kept().end(), again.kept().begin(),
                       again.kept().end(), isSame));
    REQUIRE(!isSilent(findings) || isLoaded(kind.kind, file->path()));
    return 0;
}
