#pragma once

#include <QString>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace rfu {

enum class Severity {
    Error,    // the library refuses the file or reads something else than it says
    Warning,  // the library drops something, and reads the rest as it stands
    Note
};

/// A rule that files of a format are checked against. One that several formats share has one
/// definition.
struct Rule {
    std::string_view name;  ///< in kebab-case
    Severity severity;
    const char* explanation;  ///< what the library does, in whole sentences
    const char* example;      ///< lines of a file that breaks it; of a binary file its description
    const char* mend;         ///< what to do about it, in whole sentences
};

/// Names of rules.
using RuleNames = std::set<std::string, std::less<>>;

/// Of files of all formats.
inline constexpr Rule kFileUnreadable = {
    "file-unreadable", Severity::Error,
    "The file does not open: it is not there, it is a folder or a device, or may not be read. To "
    "the library it is not "
    "there.",
    "terrain.hdr: No such file or directory",
    "Put the file there, beside the one that needs it, and let it be read."};

/// Of files that are named themselves.
inline constexpr Rule kKindUnknown = {
    "kind-unknown", Severity::Error,
    "Neither the name of the file nor what is in it says what the file is to the library, so "
    "nothing in it is checked. In "
    "folders such files are passed over; a note on standard error names those that end as files of "
    "a "
    "kind do.",
    "rfutils check notes.txt",
    "Name the kind with --as, or leave the file out: masks and tables of corrections are of no "
    "kind that is checked."};

/// The rules of a format.
class RuleTable {
public:
    template <std::size_t Count>
    RuleTable(const Rule (&rules)[Count]) : rules_(rules, rules + Count) {}

    auto begin() const { return rules_.begin(); }
    auto end() const { return rules_.end(); }
    /// Null where there is none.
    const Rule* find(std::string_view name) const;

    /// Its rules and those of another table.
    RuleTable with(const RuleTable& others) const;

private:
    std::vector<Rule> rules_;
};

/// What takes the place of some bytes of a file.
struct Edit {
    std::int64_t offset;  ///< of the first byte that is replaced
    std::int64_t length;  ///< of what is replaced; 0 to insert
    std::string replacement;
};

/// A place in a file that breaks a rule.
struct Finding {
    std::string_view rule;
    Severity severity;
    QString file;
    long long line;    // counted from 1; 0 for the file as a whole
    long long column;  // in bytes, counted from 1; 0 for the line as a whole
    std::string text;
    std::vector<Edit> mend = {};  // ascending; empty where there is not one right mend
};

/// The findings in one file.
class Findings {
public:
    /// How many of each rule are kept.
    static constexpr long long kMaxKept = 200;

    /// @param rules the table of the file's format
    Findings(const QString& file, RuleTable rules) : file_(file), rules_(std::move(rules)) {}

    const QString& file() const { return file_; }

    /// @param rule a name of the table
    void add(std::string_view rule, long long line, long long column, std::string text,
             std::vector<Edit> mend = {});
    /// Of the file as a whole.
    void add(std::string_view rule, std::string text) { add(rule, 0, 0, std::move(text)); }

    /// Adds the findings of another check of the file.
    void add(const Findings& others);
    /// Takes all findings of a rule out.
    void remove(std::string_view rule);

    /// In the order of their lines and columns: first what is about a line as a whole, last about the file.
    void sort();

    const std::vector<Finding>& kept() const { return kept_; }
    /// The mends of all findings, kept or not, without those within what another one replaces.
    std::vector<Edit> mends() const;
    /// How many there were of each rule, kept or not.
    const std::map<std::string_view, long long>& counts() const { return counts_; }

    /// How many there were of a severity, kept or not.
    long long count(Severity severity) const;
    bool hasError() const;
    /// @throw InputError with the first error, if there is one
    void throwFirstError() const;

private:
    QString file_;
    RuleTable rules_;
    std::vector<Finding> kept_;
    std::map<std::string_view, std::vector<Edit>> otherMends_;  // by rule, of findings not kept
    std::map<std::string_view, long long> counts_;
};

}  // namespace rfu
