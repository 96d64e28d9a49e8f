#pragma once

#include <QByteArray>
#include <string>
#include <string_view>

#include "analysis/checks/checkFiles.h"
#include "analysis/support/edits.h"
#include "analysis/support/finding.h"

namespace rfu {

/// What is to be done about a file.
struct FileMend {
    QByteArray bytes;  // of the file as it is
    Mend mend;         // nothing for a file without findings, or with notes about other things

    /// Whether anything has more than one mend; the file stays as it is then.
    bool isRefused() const { return !mend.doubts.empty(); }
    /// The file as it should be. @pre not isRefused()
    std::string mended() const;
};

/// @throw InputError where the file cannot be read
FileMend mendFile(const CheckedFile& file);

/// Of a recording in UTF-16, or one whose lines end in CR alone.
Mend mendRecordingFile(std::string_view bytes, const RuleNames& ignored);

}  // namespace rfu
