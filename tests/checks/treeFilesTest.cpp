// The findings in every file of the tree that is of a kind or could be: samples, fixtures, seeds of the fuzz targets and the
// bad files of the loaders. treeFindings.txt has a row for each, so that a new file needs one. RFUTILS_LONG_TESTS=1
// checks files of more than 16 MiB too.
#include <badFiles/badFiles.h>
#include <gtest/gtest.h>
#include <support/messageLog.h>
#include <support/samples.h>
#include <support/tempFiles.h>

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "analysis/checks/checkFiles.h"
#include "analysis/checks/fileKind.h"
#include "analysis/support/compression.h"

namespace rfu::test {
namespace {

namespace fs = std::filesystem;

const fs::path kTree = RFUTILS_SOURCE_DIR;

/// The kinds that the seeds of a target are checked as; the targets that are not here read other things.
struct SeedKinds {
    const char* target;
    std::vector<FileKind> kinds;  // none: the first byte of a seed chooses it
    std::size_t skipped = 0;      // bytes in front of the file
};

const std::vector<SeedKinds> kSeeds = {
    {"asc", {FileKind::Asc}},
    {"bil", {FileKind::Bil}, 8},
    {"catalogueJson", {FileKind::Catalogue}},
    {"check", {}, 1},
    {"clr", {FileKind::Clr}},
    {"compression", {FileKind::Recording}},
    {"fix", {}, 1},
    {"hdr", {FileKind::Hdr}},
    {"jsonChecks", {FileKind::Catalogue, FileKind::Setups}},
    {"setupsJson", {FileKind::Setups}},
    {"sweeps", {FileKind::Recording}},
    {"tab", {FileKind::Tab}},
    {"window", {FileKind::Recording}},
};

const std::vector<std::pair<std::string, FileKind>> kBadFiles = {
    {kHdr.file, FileKind::Hdr},      {kAsc.file, FileKind::Asc}, {kBil.file, FileKind::Bil},
    {kClr.file, FileKind::Clr},      {kTab.file, FileKind::Tab}, {kItems.file, FileKind::Catalogue},
    {kSetups.file, FileKind::Setups}};

std::string bytesOf(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// "row-width 3-5,8", for each rule; "nothing" where there is no finding. Line 0 is the whole file, and "(1000)" says how
/// many there are where not all are kept.
std::string textOf(const Findings& findings) {
    std::map<std::string_view, std::vector<long long>> lines;
    for (const Finding& finding : findings.kept()) {
        lines[finding.rule].push_back(finding.line);
    }
    std::string text;
    for (auto& [rule, of] : lines) {
        std::sort(of.begin(), of.end());
        text += (text.empty() ? "" : "; ") + std::string(rule);
        const char* separator = " ";
        for (std::size_t i = 0; i < of.size(); ++i) {
            const long long first = of[i];
            while (i + 1 < of.size() && of[i + 1] <= of[i] + 1) {
                ++i;
            }
            text += separator + std::to_string(first) +
                    (of[i] == first ? "" : "-" + std::to_string(of[i]));
            separator = ",";
        }
        const long long count = findings.counts().at(rule);
        text += count > Findings::kMaxKept ? " (" + std::to_string(count) + ")" : "";
    }
    return text.empty() ? "nothing" : text;
}

/// What is found in the files of the tree, by their names.
class TreeFindings {
public:
    /// Nothing for a file that only the long run checks, or only a build that can unpack it.
    using Rows = std::map<std::string, std::optional<std::string>>;

    Rows run() {
        for (const fs::directory_entry& folder : fs::directory_iterator(kTree)) {
            const std::string name = folder.path().filename().string();
            if (folder.is_directory() && name[0] != '.' && name.rfind("build", 0) != 0) {
                addFiles(folder.path());
            }
        }
        addSeeds();
        addBadFiles();
        return std::move(rows_);
    }

private:
    static constexpr std::size_t kLong = 16 * 1024 * 1024;

    static std::string rowName(const std::string& name, FileKind kind) {
        return name + " | " + std::string(kindOf(kind).name);
    }

    void add(const std::string& name, const std::string& file, FileKind kind) {
        rows_[rowName(name, kind)] = textOf(checkFile(QString::fromStdString(file), kind));
    }

    /// Writes the bytes as a file of the kind and checks it, where this build can unpack them.
    void addBytes(const std::string& name, std::string_view bytes, FileKind kind) {
        const Packing* const packing = packingOf(bytes);
        if (packing != nullptr && packing->makeUnpacker == nullptr) {
            rows_[rowName(name, kind)] = std::nullopt;
            return;
        }
        const std::string base = "file.";
        if (kind == FileKind::Bil) {
            files_.write(base + "hdr", "NCOLS 3\nNROWS 2\nPIXELTYPE FLOAT\n");
        }
        add(name, files_.write(base + kindOf(kind).extensions.front(), bytes), kind);
        if (kind == FileKind::Bil) {
            fs::remove(files_.path(base + "hdr"));
        }
        fs::remove(files_.path(base + kindOf(kind).extensions.front()));
    }

    /// Files whose names are those of a kind, whatever is in them.
    void addFiles(const fs::path& folder) {
        for (auto entries = fs::recursive_directory_iterator(folder);
             entries != fs::recursive_directory_iterator(); ++entries) {
            const fs::directory_entry& entry = *entries;
            if (entry.path().filename().string()[0] == '.') {  // caches of tools
                entries.disable_recursion_pending();
                continue;
            }
            const std::string name = fs::relative(entry.path(), kTree).generic_string();
            if (!entry.is_regular_file() || !hasKnownExtension(name) ||
                name.rfind("fuzz/seeds/", 0) == 0) {
                continue;
            }
            const QString file = QString::fromStdString(entry.path().string());
            if (const KnownKind* const kind = kindOf(file)) {
                add(name, entry.path().string(), kind->kind);
            } else {
                rows_[name + " | no kind"] = "";
            }
        }
    }

    static bool hasKnownExtension(const std::string& name) {
        return std::any_of(knownKinds().begin(), knownKinds().end(), [&](const KnownKind& kind) {
            return std::any_of(
                kind.extensions.begin(), kind.extensions.end(), [&](const char* extension) {
                    return name.find(std::string(".") + extension) != std::string::npos;
                });
        });
    }

    void addSeeds() {
        for (const fs::directory_entry& folder : fs::directory_iterator(kTree / "fuzz/seeds")) {
            const std::string target = folder.path().filename().string();
            const auto known =
                std::find_if(kSeeds.begin(), kSeeds.end(),
                             [&](const SeedKinds& seeds) { return seeds.target == target; });
            if (known == kSeeds.end()) {
                rows_["fuzz/seeds/" + target + " | no kind"] = "";
                continue;
            }
            for (const fs::directory_entry& seed : fs::directory_iterator(folder.path())) {
                const std::string bytes = bytesOf(seed.path());
                std::vector<FileKind> kinds = known->kinds;
                if (kinds.empty()) {
                    const auto& all = knownKinds();
                    kinds = {all[static_cast<unsigned char>(bytes.at(0)) % all.size()].kind};
                }
                for (const FileKind kind : kinds) {
                    addBytes("fuzz/seeds/" + target + "/" + seed.path().filename().string(),
                             std::string_view(bytes).substr(std::min(known->skipped, bytes.size())),
                             kind);
                }
            }
        }
    }

    void addBadFiles() {
        for (const BadFile& bad : badFiles()) {
            const auto kind =
                std::find_if(kBadFiles.begin(), kBadFiles.end(),
                             [&](const auto& known) { return known.first == bad.format.file; });
            ASSERT_NE(kind, kBadFiles.end()) << bad.format.file;
            const std::string name = "tests/badFiles, " + std::string(bad.what);
            if (bad.bytes.size() > kLong && !isLongRun()) {
                rows_[rowName(name, kind->second)] = std::nullopt;
            } else {
                addBytes(name, bad.bytes, kind->second);
            }
        }
    }

    TempFiles files_;
    Rows rows_;
};

std::map<std::string, std::string> expectedRows() {
    std::map<std::string, std::string> rows;
    std::ifstream table(kTree / "tests/checks/treeFindings.txt");
    for (std::string line; std::getline(table, line);) {
        if (line.empty() || line[0] == '#') {
            continue;
        }
        const std::size_t kind = line.find(" | ");
        const std::size_t findings = std::min(line.find(" | ", kind + 1), line.size());
        EXPECT_NE(kind, std::string::npos) << line;
        const bool isNew = rows.emplace(line.substr(0, findings),
                                        findings < line.size() ? line.substr(findings + 3) : "")
                               .second;
        EXPECT_TRUE(isNew) << line;
    }
    return rows;
}

TEST(TreeFiles, HaveTheFindingsOfTheTable) {
    const std::map<std::string, std::string> expected = expectedRows();
    const MessageLog log;  // the loaders of setups say what they read
    const TreeFindings::Rows found = TreeFindings().run();
    EXPECT_GT(found.size(), 250U);
    for (const auto& [name, findings] : found) {
        const auto row = expected.find(name);
        if (row == expected.end()) {
            ADD_FAILURE() << "no row in treeFindings.txt: " << name << " | "
                          << findings.value_or("(long)");
        } else if (findings) {
            EXPECT_EQ(*findings, row->second) << name;
        }
    }
    for (const auto& [name, findings] : expected) {
        EXPECT_EQ(found.count(name), 1U) << "no such file: " << name;
    }
}

}  // namespace
}  // namespace rfu::test
