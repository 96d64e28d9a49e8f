// Random and damaged files, and what a check says about them.
#pragma once

#include <analysis/maps/mapFiles.h>
#include <support/cText.h>
#include <support/samples.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <numeric>
#include <optional>
#include <string>

#include "analysis/support/finding.h"

namespace rfu::test {

/// What a number too near to zero for a double is read as: 0, as one too near for a single is, or not at all.
enum class Tiny { IsZero, IsNone };

/// A whole token as a number, by strtod. A hexadecimal one is none, nor is one too large for a double.
inline std::optional<double> numberOf(const std::string& token, Tiny tiny) {
    const CLocale scope;
    char* end = nullptr;
    errno = 0;
    const double value = std::strtod(token.c_str(), &end);
    const bool isWhole = !token.empty() && *end == '\0';
    const bool isBeyond =
        errno == ERANGE && (std::isinf(value) || (value == 0.0 && tiny == Tiny::IsNone));
    return isWhole && !isBeyond && token.find_first_of("xX(") == std::string::npos
               ? std::optional(value)
               : std::nullopt;
}

inline const std::string kAnyByte = [] {
    std::string bytes(256, '\0');
    std::iota(bytes.begin(), bytes.end(), '\0');
    return bytes;
}();

/// Damages a text in a few places, as editors, transfers and other programs do.
inline void damage(Samples& samples, std::string& text) {
    static const std::string kBytes("0159 \n\r\t\",;.-+ex#\0NO\xC3", 21);
    for (std::uint64_t times = 1 + samples.below(2); times > 0; --times) {
        const std::size_t at = samples.below(text.size() + 1);
        const std::size_t end = std::min(text.find('\n', at), text.size());
        const std::size_t begin = at == 0 ? 0 : text.rfind('\n', at - 1) + 1;
        const std::string line = text.substr(begin, end - begin) + "\n";
        switch (samples.below(10)) {
            case 0:  // another byte
                text.replace(at, 1, 1, samples.oneOf(kBytes));
                break;
            case 1:  // one more
                text.insert(at, 1, samples.oneOf(kBytes));
                break;
            case 2:  // some less
                text.erase(at, 1 + samples.below(3));
                break;
            case 3:  // a line twice
                text.insert(begin, line);
                break;
            case 4:  // a line less
                text.erase(begin, line.size());
                break;
            case 5:  // a line elsewhere
                text.erase(begin, line.size());
                text.insert(samples.coin() ? 0 : text.size(), line);
                break;
            case 6:  // a number too long
                text.insert(text.find_first_of("0123456789", at) == std::string::npos
                                ? 0
                                : text.find_first_of("0123456789", at),
                            std::string(60 + samples.below(8), '0'));
                break;
            case 7:  // a key in another case
                for (std::size_t i = begin; i < std::min(begin + 6, end); ++i) {
                    text[i] = static_cast<char>(samples.coin() ? std::toupper(text[i])
                                                               : std::tolower(text[i]));
                }
                break;
            case 8:  // any bytes
                text.insert(at, samples.text(kAnyByte, 80));
                break;
            default:  // the end cut off
                text.resize(at);
                break;
        }
    }
}

/// How many files of each kind are tried: 100,000 with RFUTILS_LONG_TESTS=1.
inline int fileCount() {
    return isLongRun() ? 100000 : caseCount() / 20;
}

inline bool isSilent(const Findings& findings) {
    return std::all_of(findings.kept().begin(), findings.kept().end(),
                       [](const Finding& finding) { return finding.severity == Severity::Note; });
}

/// The checks say something, more than a note, exactly where not all that a file says is read.
class ReadingTest : public MapFiles {
protected:
    /// Calls isWholeAndSilent(text) with random files, most of them damaged.
    template <typename Make, typename Passes>
    void forEachFile(std::uint64_t seed, Make make, Passes isWholeAndSilent) {
        const int count = fileCount();
        int passed = 0;
        int refused = 0;
        Samples samples(seed);
        for (int i = 0; i < count && !HasFailure(); ++i) {
            std::string text = make(samples);
            const bool isWhole = samples.below(4) == 0;
            if (!isWhole) {
                damage(samples, text);
            }
            SCOPED_TRACE(testing::PrintToString(text));
            const bool isPassed = isWholeAndSilent(text);
            EXPECT_TRUE(isPassed || !isWhole);
            (isPassed ? passed : refused) += isWhole ? 0 : 1;
        }
        if (!HasFailure()) {
            EXPECT_GT(passed, count / 20) << "damaged files";
            EXPECT_GT(refused, count / 4);
        }
    }

    /// Requires that the check says something exactly where the library does not read all of a file.
    static bool expectToSay(const Findings& findings, bool isReadWhole) {
        std::string said;
        for (const std::string& finding : listed(findings)) {
            said += finding + '\n';
        }
        EXPECT_EQ(isSilent(findings), isReadWhole) << said;
        return isReadWhole;
    }

    /// Requires a finding, more than a note, in a line, which may be about those that follow too.
    static void expectFindingAt(const Findings& findings, long long line, const char* what) {
        expectFindingWithin(findings, line, line, what);
    }
    /// The same in a line or one above it.
    static void expectFindingWithin(const Findings& findings, long long first, long long line,
                                    const char* what) {
        EXPECT_TRUE(std::any_of(findings.kept().begin(), findings.kept().end(),
                                [first, line](const Finding& finding) {
                                    return finding.line >= first && finding.line <= line &&
                                           finding.severity != Severity::Note;
                                }))
            << what << " of line " << line << " is not read";
    }
};

}  // namespace rfu::test
