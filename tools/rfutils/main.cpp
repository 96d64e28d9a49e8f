#include <QString>
#include <QStringList>
#include <QTextCodec>
#include <cstdlib>
#include <string>
#include <vector>

#include "analysis/support/inputError.h"
#include "subcommands.h"
#include "support/commandLine.h"
#include "support/errors.h"
#include "support/help.h"
#include "support/nearest.h"
#include "support/output.h"

namespace rfu::command {
namespace {

/// The library and Qt write diagnostics to Qt's log; an error of ours is one line of our own.
void dropMessage(QtMsgType, const QMessageLogContext&, const QString&) {}

const Subcommand& subcommandNamed(const QString& name) {
    std::vector<std::string> known = {"help", "--help", "--version"};
    for (const Subcommand* subcommand : kSubcommands) {
        known.emplace_back(subcommand->name);
        if (name == QLatin1String(subcommand->name)) {
            return *subcommand;
        }
    }
    throw UsageError("there is no command " + quoted(name.toStdString()) + didYouMean(name, known) +
                     " (rfutils --help lists them)");
}

void runSubcommand(const Subcommand& subcommand, const QStringList& arguments) {
    try {
        const CommandLine line(subcommand, arguments);
        if (line.isSet("help")) {
            standardOutput().write(helpOf(subcommand));
        } else {
            subcommand.run(line);
        }
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

/// @return the exit status
int run(const QStringList& arguments) {
    try {
        try {
            dispatch(arguments);
        } catch (...) {
            // Output that precedes the error stays, as valid JSON.
            standardOutput().closeAll();
            standardOutput().flush();
            throw;
        }
        standardOutput().flush();
    } catch (const InputError& error) {
        printError(error.message());
        return kExitBadInput;
    } catch (const Failure& failure) {
        printError(failure.message);
        return failure.exitStatus;
    }
    return EXIT_SUCCESS;
}

}  // namespace

}  // namespace rfu::command

int main(int argc, char** argv) {
    qInstallMessageHandler(rfu::command::dropMessage);
    // Arguments, file names and texts are UTF-8 whatever the locale says.
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    QStringList arguments;
    for (int i = 1; i < argc; ++i) {
        arguments += QString::fromUtf8(argv[i]);
    }
    return rfu::command::run(arguments);
}
