// The mends of files behind `rfutils check --fix`, of the kind that the first byte chooses. Holds for any bytes behind it:
// - edits lie in the file and do not overlap, and their diff is empty exactly where they change nothing;
// - of a file without findings no byte changes;
// - a mended file is mended no further;
// - where all rules are ignored nothing is mended.
#include "support/input.h"
#include "support/require.h"
#include "support/scratchFile.h"

#include "analysis/checks/checkFiles.h"
#include "analysis/checks/fileKind.h"
#include "analysis/checks/mendFile.h"
#include "analysis/support/edits.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>

using namespace rfu;
using namespace rfu::fuzz;

namespace {

/// The findings themselves have no say in it.
void requireNothingOfIgnoredRules(CheckedFile checked, const KnownKind& kind) {
    for (const Rule& rule : kind.rules()) {
        checked.ignored.emplace(rule.name);
    }
    const FileMend mend = mendFile(checked);
    REQUIRE(!mend.isRefused());
    REQUIRE(kind.mend == nullptr || mend.mend.edits.empty());
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
    CheckedFile checked = {file->path(), kind.kind, checkFile(file->path(), kind.kind)};
    requireNothingOfIgnoredRules(checked, kind);
    const FileMend mend = mendFile(checked);
    if (checked.findings.kept().empty()) {
        REQUIRE(mend.mend.edits.empty() && !mend.isRefused());
        return 0;
    }
    if (mend.isRefused() || mend.mend.edits.empty()) {
        return 0;
    }
    const std::string mended = mend.mended();
    REQUIRE(unifiedDiff("f", bytes, mend.mend.edits).empty() == (mended == bytes));
    file->write(mended.data(), mended.size());
    const FileMend again = mendFile({file->path(), kind.kind, checkFile(file->path(), kind.kind)});
    REQUIRE(!again.isRefused());
    REQUIRE(again.mend.edits.empty() || again.mended() == mended);
    return 0;
}
