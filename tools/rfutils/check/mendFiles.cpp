#include "check/mendFiles.h"

#include <cstddef>
#include <string>
#include <string_view>

#include "analysis/checks/mendFile.h"
#include "analysis/support/edits.h"
#include "analysis/support/fileWatch.h"
#include "analysis/support/inputError.h"
#include "support/errors.h"
#include "support/output.h"
#include "support/outputFile.h"
#include "support/text.h"

#include <unistd.h>

namespace rfu::command {

namespace {

bool isRefused(const CheckedFile& file, const FileMend& mend) {
    for (const Doubt& doubt : mend.mend.doubts) {
        printError(InputError(file.file, doubt.line, "not mended: " + doubt.text).message());
    }
    return mend.isRefused();
}

/// Lines as `patch` wants them; on a terminal without what would steer it.
void writeDiff(std::string_view diff) {
    const bool isShown = ::isatty(STDOUT_FILENO) == 1;
    while (!diff.empty()) {
        const std::string_view line = diff.substr(0, diff.find('\n'));
        standardOutput().write(isShown ? printable(line) : std::string(line));
        standardOutput().write('\n');
        diff.remove_prefix(line.size() + 1);
    }
}

}  // namespace

bool mendInPlace(const CheckedFile& file) {
    const FileWatch watch({file.file});
    const FileMend mend = mendFile(file);
    if (isRefused(file, mend)) {
        return true;
    }
    const std::string mended = mend.mended();
    if (std::string_view(mended) !=
        std::string_view(mend.bytes.constData(), static_cast<std::size_t>(mend.bytes.size()))) {
        OutputFile output(file.file, {});
        output.write(mended);
        watch.requireUnchanged();
        output.commit();
    }
    return false;
}

bool showMend(const CheckedFile& file) {
    const FileMend mend = mendFile(file);
    if (isRefused(file, mend)) {
        return true;
    }
    writeDiff(unifiedDiff(file.file.toStdString(),
                          {mend.bytes.constData(), static_cast<std::size_t>(mend.bytes.size())},
                          mend.mend.edits));
    return false;
}

}  // namespace rfu::command
