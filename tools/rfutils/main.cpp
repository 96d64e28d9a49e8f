#include <QString>
#include <QStringList>
#include <QTextCodec>
#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <new>
#include <string>
#include <vector>

#include "analysis/support/compression.h"
#include "analysis/support/inputError.h"
#include "subcommands.h"
#include "support/commandLine.h"
#include "support/errors.h"
#include "support/fileValues.h"
#include "support/help.h"
#include "support/interruption.h"
#include "support/nearest.h"
#include "support/output.h"

#include <fcntl.h>
#include <unistd.h>

namespace rfu::command {
namespace {

/// The library and Qt log diagnostics; the command reports errors itself, in one line.
void dropMessage(QtMsgType, const QMessageLogContext&, const QString&) {}

const Subcommand& subcommandNamed(const QString& name) {
    std::vector<std::string> known = {"help", "--help", "--version"};
    for (const Subcommand* subcommand : kSubcommands) {
        known.emplace_back(subcommand->name);
        if (name == QLatin1String(subcommand->name)) {
            return *subcommand;
        }
    }
    throw UsageError("there is no command " + rfu::quoted(name.toStdString()) +
                     didYouMean(name, known) + " (rfutils --help lists them)");
}

bool takesFile(const Subcommand& subcommand) {
    return std::any_of(subcommand.arguments.begin(), subcommand.arguments.end(),
                       [](const Argument& argument) {
                           const FileValue* const file = fileValueOf(argument.kind);
                           return file != nullptr && file->isRead;
                       });
}

void runSubcommand(const Subcommand& subcommand, const QStringList& arguments) {
    try {
        const CommandLine line(subcommand, arguments);
        if (line.isSet("help")) {
            standardOutput().write(helpOf(subcommand));
        } else {
            subcommand.run(line);
        }
    } catch (const CompressedInput& error) {
        throw Failure(error.message() + " | rfutils " + subcommand.name +
                      (takesFile(subcommand) ? " -" : ""));
    } catch (UsageError& error) {
        error.message += std::string(" (see rfutils ") + subcommand.name + " --help)";
        throw;
    }
}

void dispatch(const QStringList& arguments) {
    if (arguments.isEmpty()) {
        throw UsageError("a command is missing (rfutils --help lists them)");
    }
    const std::string name = arguments.first().toStdString();
    if (name == "help" && arguments.size() > 1) {
        standardOutput().write(helpOf(subcommandNamed(arguments[1])));
    } else if (name == "help" || name == "--help" || name == "-h") {
        standardOutput().write(overview());
    } else if (name == "--version" || name == "-V") {
        standardOutput().write("rfutils " RFUTILS_VERSION "\n");
    } else {
        runSubcommand(subcommandNamed(arguments.first()), arguments.mid(1));
    }
}

void run(int argc, char** argv) {
    // Arguments, file names and texts are UTF-8 whatever the locale says.
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    QStringList arguments;
    for (int i = 1; i < argc; ++i) {
        arguments += QString::fromUtf8(argv[i]);
    }
    try {
        dispatch(arguments);
    } catch (...) {
        // Output that precedes the error stays, as valid JSON.
        standardOutput().closeAll();
        standardOutput().flush();
        throw;
    }
    standardOutput().flush();
}

/// Prints one line about the exception in flight, unless that is no error.
/// @return the exit status
int report() {
    try {
        throw;
    } catch (const Ended& ended) {
        return ended.exitStatus;
    } catch (const InputError& error) {
        printError(error.message());
    } catch (const Failure& failure) {
        printError(failure.message);
        return failure.exitStatus;
    } catch (const std::bad_alloc&) {
        std::fputs("rfutils: out of memory\n", stderr);  // without asking for more
    } catch (const std::exception& error) {
        printError(std::string("unexpected error: ") + error.what());
    }
    return kExitBadInput;
}

/// Mostly where memory runs out inside a function that must not throw, or once more in report().
void terminate() {
    std::fputs("rfutils: out of memory or an unexpected error\n", stderr);
    std::_Exit(kExitBadInput);
}

/// A file beyond the limit of its size is an error like a full disk, and warnings of Qt end nothing,
/// whatever the caller of the command has set.
void ignoreSettings() {
    std::signal(SIGXFSZ, SIG_IGN);
    qunsetenv("QT_FATAL_WARNINGS");
    qunsetenv("QT_FATAL_CRITICALS");
}

/// A closed standard stream would become the first file that is opened. The null device takes its
/// place, opened the other way round, so that reading or writing fails.
void fillClosedStreams() {
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (::fcntl(descriptor, F_GETFD) < 0 && errno == EBADF) {
            ::open("/dev/null", descriptor == STDIN_FILENO ? O_WRONLY : O_RDONLY);
        }
    }
}

}  // namespace

}  // namespace rfu::command

int main(int argc, char** argv) {
    rfu::command::fillClosedStreams();
    rfu::command::ignoreSettings();
    std::set_terminate(rfu::command::terminate);
    qInstallMessageHandler(rfu::command::dropMessage);
    try {
        rfu::command::run(argc, argv);
        return EXIT_SUCCESS;
    } catch (...) {
        return rfu::command::report();
    }
}
