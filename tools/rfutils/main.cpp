#include <QGuiApplication>
#include <QTextCodec>
#include <algorithm>
#include <clocale>
#include <cstdlib>
#include <iterator>
#include <memory>

#include "analysis/support/inputError.h"
#include "subcommands.h"
#include "support/errors.h"
#include "support/output.h"

namespace rfu::command {
namespace {

struct Subcommand {
    const char* name;
    const char* summary;
    void (*run)(const QStringList& arguments);
    const char* drawingOption;  // with it a picture is drawn; nullptr: never
};

// clang-format off
constexpr Subcommand kSubcommands[] = {
    {"convert",   "Convert levels, voltages, powers and field values",    runConvert,   nullptr},
    {"units",     "List the units",                                       runUnits,     nullptr},
    {"scale",     "Convert between dBm and a numeric scale",              runScale,     nullptr},
    {"freq",      "Show frequencies as the instrument does",              runFreq,      nullptr},
    {"width",     "Show frequency widths as the instrument does",         runWidth,     nullptr},
    {"range",     "Show the limits of an entry as the instrument does",   runRange,     nullptr},
    {"catalogue", "Show the items of a catalogue file and their choices", runCatalogue, nullptr},
    {"setups",    "Show the result setups of a file",                     runSetups,    nullptr},
    {"trace",     "Statistics of markers and points over recorded sweeps", runTrace,    "plot"},
    {"raster",    "Show or draw a raster map",                            runRaster,    nullptr},
    {"tab",       "Show the georeference of a raster map",                runTab,       "png"},
    {"dms",       "Decimal degrees to degrees, minutes and seconds",      runDms,       nullptr},
    {"dd",        "Degrees, minutes and seconds to decimal degrees",      runDd,        nullptr},
};
// clang-format on

const Subcommand* findSubcommand(const QString& name) {
    const auto found =
        std::find_if(std::begin(kSubcommands), std::end(kSubcommands),
                     [&](const Subcommand& s) { return name == QLatin1String(s.name); });
    return found == std::end(kSubcommands) ? nullptr : found;
}

void printOverview() {
    Output& output = standardOutput();
    output.write("Usage: rfutils COMMAND [options] [arguments]\n\nCommands:\n");
    for (const Subcommand& subcommand : kSubcommands) {
        std::string name = subcommand.name;
        name.resize(12, ' ');
        output.write("  " + name + subcommand.summary + "\n");
    }
    output.write(
        "\n"
        "rfutils COMMAND --help shows the options of a command with examples.\n"
        "rfutils --version shows the version.\n");
}

/// The library and Qt write diagnostics to Qt's log; an error of ours is one line of our own.
void dropMessage(QtMsgType, const QMessageLogContext&, const QString&) {}

bool draws(const Subcommand& subcommand, const QStringList& arguments) {
    if (subcommand.drawingOption == nullptr) {
        return false;
    }
    const QString option = QStringLiteral("--") + QLatin1String(subcommand.drawingOption);
    return std::any_of(arguments.begin(), arguments.end(), [&](const QString& argument) {
        return argument == option || argument.startsWith(option + QLatin1Char('='));
    });
}

void runSubcommand(const Subcommand& subcommand, const QStringList& arguments) {
    // Qt's help text opens with the program's name, which here consists of two words.
    std::string programName = std::string("rfutils ") + subcommand.name;
    char* programArguments[] = {programName.data(), nullptr};
    int count = 1;
    // Only fonts need the graphical application; without it the command starts faster.
    const std::unique_ptr<QCoreApplication> application(
        draws(subcommand, arguments) ? new QGuiApplication(count, programArguments)
                                     : new QCoreApplication(count, programArguments));
    // The system's part of a message is English like the rest of it.
    std::setlocale(LC_MESSAGES, "C");
    try {
        subcommand.run(arguments);
    } catch (const InputError& error) {
        throw inputError(error.message());
    } catch (Failure& failure) {
        if (failure.exitStatus == kExitBadUsage) {
            failure.message += std::string(" (see rfutils ") + subcommand.name + " --help)";
        }
        throw;
    }
}

void dispatch(const QStringList& arguments) {
    if (arguments.isEmpty()) {
        throw usageError("a command is missing (rfutils --help lists them)");
    }
    const QString& name = arguments.first();
    if (name == QLatin1String("--help") || name == QLatin1String("-h")) {
        printOverview();
    } else if (name == QLatin1String("--version")) {
        standardOutput().write("rfutils " RFUTILS_VERSION "\n");
    } else if (const Subcommand* subcommand = findSubcommand(name)) {
        runSubcommand(*subcommand, arguments.mid(1));
    } else {
        throw usageError("there is no command " + quoted(name.toStdString()) +
                         " (rfutils --help lists them)");
    }
}

int run(const QStringList& arguments) {
    try {
        try {
            dispatch(arguments);
        } catch (const Failure&) {
            // Output that precedes the error stays, as valid JSON.
            standardOutput().closeAll();
            standardOutput().flush();
            throw;
        }
        standardOutput().flush();
    } catch (const Failure& failure) {
        printError(failure.message);
        return failure.exitStatus;
    }
    return EXIT_SUCCESS;
}

}  // namespace

}  // namespace rfu::command

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "minimal:enable_fonts");  // pictures and their texts, no display
    qInstallMessageHandler(rfu::command::dropMessage);
    // Arguments, file names and texts are UTF-8 whatever the locale says.
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    QStringList arguments;
    for (int i = 1; i < argc; ++i) {
        arguments += QString::fromUtf8(argv[i]);
    }
    return rfu::command::run(arguments);
}
