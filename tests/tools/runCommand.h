// Runs the real rfutils and compares everything it says.
#pragma once

#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <string>
#include <utility>
#include <vector>

struct CommandResult {
    int exitStatus = -1;
    std::string output;
    std::string errors;
};

/// What follows "rfutils": a line, split at blanks with the quoting of a shell, or its words.
struct Words {
    Words(const char* line);
    Words(QStringList words) : list(std::move(words)) {}

    QStringList list;
};

/// One run and all that it prints.
struct CommandCase {
    const char* name;
    QStringList arguments;
    std::string input;
    int exitStatus;
    std::string output;
    std::string errors;

    /// The same with a standard input.
    CommandCase given(const std::string& standardInput) const;
    /// The same with output that precedes the error.
    CommandCase after(const std::string& earlierOutput) const;
    /// The same with a note on standard error.
    CommandCase noting(const std::string& note) const;
};

CommandCase shows(const char* name, const Words& words, const std::string& output);
/// @param error without "rfutils: " and the line end
CommandCase fails(const char* name, const Words& words, const std::string& error);
/// Wrong usage; the error names the help of the subcommand.
CommandCase misuses(const char* name, const Words& words, const std::string& error);

/// A folder for the files of a test; the command runs in it, so that its messages name the files
/// without a path.
class SampleFolder {
public:
    SampleFolder();

    QString path() const { return folder_.path(); }
    void add(const char* fileName, const std::string& bytes) const;
    /// The sample files that come with the command.
    void addSamples() const;
    std::string read(const char* fileName) const;

private:
    QTemporaryDir folder_;
};

/// The command runs under the C locale and, in the test run under a comma locale, under that.
CommandResult runCommand(const QStringList& arguments, const std::string& input = {},
                         const SampleFolder& folder = {});

/// What the commands that have ended took of the processor so far, in seconds.
double commandSeconds();

/// Runs each case and compares its exit status, standard output and standard error whole.
void expectCommands(const std::vector<CommandCase>& cases, const SampleFolder& folder = {});

/// "rfutils convert -30 --to V" as words, split at blanks with the quoting of a shell.
QStringList splitWords(const std::string& line);
/// The lines of a help text below "Examples:".
std::vector<std::string> examplesOf(const std::string& help);
