#pragma once

#include <QCommandLineParser>
#include <QStringList>
#include <optional>
#include <vector>

#include "support/tableWriter.h"

namespace rfu::command {

/// What the help of a subcommand says beside its options.
struct Usage {
    const char* description;
    const char* syntax;  ///< what follows "[options]", e.g. "FILE"
    std::vector<const char*> examples;
};

/// Options and arguments of one subcommand. Values are read the same way in every locale; what
/// cannot be read is wrong usage.
class CommandLine {
public:
    explicit CommandLine(const Usage& usage);

    /// An option without a value.
    void addFlag(const char* name, const char* description);
    /// An option with a value.
    /// @param valueName stands for the value in the help text
    void addOption(const char* name, const char* valueName, const char* description);
    /// --format text|csv|json
    void addFormat();
    /// --center FREQ and --gain DBI, the antenna that field units refer to.
    void addAntenna();

    /// @return false when the help was asked for and is printed: there is nothing left to do
    /// @throw Failure on wrong usage
    bool parse(const QStringList& arguments);

    const QStringList& values() const { return values_; }
    /// The single argument of a subcommand that takes exactly one.
    /// @param what names it in the message when it is missing
    QString onlyValue(const char* what) const;

    /// @throw Failure (usage) when there are more arguments
    void requireAtMost(int count) const;

    bool isSet(const char* name) const;
    QString option(const char* name) const;
    /// All values of an option that may be given several times.
    QStringList options(const char* name) const;
    /// Nothing when the option is not given.
    std::optional<double> number(const char* name) const;
    std::optional<int> integer(const char* name) const;
    /// In MHz.
    std::optional<double> frequency(const char* name) const;
    Format format() const { return format_; }

private:
    Format parsedFormat() const;

    QCommandLineParser parser_;
    QStringList optionsWithValue_;
    std::vector<const char*> examples_;
    QStringList values_;
    Format format_ = Format::Text;
};

}  // namespace rfu::command
