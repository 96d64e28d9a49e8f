#pragma once

#include <QString>
#include <cstddef>
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

/// A rule that files of a format are checked against, its name in kebab-case.
struct Rule {
    std::string_view name;
    Severity severity;
};

/// A place in a file that breaks a rule.
struct Finding {
    std::string_view rule;
    Severity severity;
    QString file;
    long long line;    // counted from 1; 0 for the file as a whole
    long long column;  // in bytes, counted from 1; 0 for the line as a whole
    std::string text;
};

/// The findings in one file.
class Findings {
public:
    /// How many are kept. The first error is kept in any case.
    static constexpr std::size_t kMaxKept = 200;

    /// @param rules the table of the file's format, which has to outlive the findings
    template <std::size_t Count>
    Findings(const QString& file, const Rule (&rules)[Count])
        : file_(file), rules_(rules, rules + Count) {}

    const QString& file() const { return file_; }

    /// @param rule a name of the table
    void add(std::string_view rule, long long line, long long column, std::string text);
    /// Of the file as a whole.
    void add(std::string_view rule, std::string text) { add(rule, 0, 0, std::move(text)); }

    /// In the order of their lines, those of the whole file last.
    void sort();

    const std::vector<Finding>& kept() const { return kept_; }
    /// How many came after there were kMaxKept.
    long long dropped() const { return dropped_; }

    bool hasError() const { return hasError_; }
    /// @throw InputError with the first error, if there is one
    void throwFirstError() const;

private:
    QString file_;
    std::vector<Rule> rules_;
    std::vector<Finding> kept_;
    long long dropped_ = 0;
    bool hasError_ = false;
};

}  // namespace rfu
