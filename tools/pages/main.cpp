// Writes the manual pages and the completions, as they are installed below share/, into a folder for each component.
#include <QDate>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QSaveFile>

#include <cstdio>
#include <exception>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "tools/pages/commandPages.h"
#include "tools/pages/completions.h"

namespace {

using namespace rfu::pages;

void write(const QString& file, const std::string& text) {
    QDir().mkpath(QFileInfo(file).path());
    QSaveFile output(file);
    if (!output.open(QIODevice::WriteOnly) ||
        output.write(text.data(), static_cast<qint64>(text.size())) < 0 || !output.commit()) {
        throw std::runtime_error(file.toStdString() + ": " + output.errorString().toStdString());
    }
}

std::string contentOf(const QString& file) {
    QFile source(file);
    if (!source.open(QIODevice::ReadOnly)) {
        throw std::runtime_error(file.toStdString() + ": " + source.errorString().toStdString());
    }
    return source.readAll().toStdString();
}

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream source(text);
    for (std::string line; std::getline(source, line);) {
        lines.push_back(line);
    }
    return lines;
}

Document documentIn(const QString& sources, const char* name) {
    const QString file = sources + QLatin1Char('/') + QLatin1String(name);
    return documentOf(file, contentOf(file));
}

/// The day of SOURCE_DATE_EPOCH, so that the same sources give the same pages at any time.
std::string dateOf(const QString& versionDate) {
    bool isSet = false;
    const qint64 seconds = qEnvironmentVariable("SOURCE_DATE_EPOCH").toLongLong(&isSet);
    return isSet ? QDateTime::fromSecsSinceEpoch(seconds, Qt::UTC)
                       .date()
                       .toString(Qt::ISODate)
                       .toStdString()
                 : versionDate.toStdString();
}

QString pathOf(const QString& folder, const QString& page) {
    return folder + QStringLiteral("/man/man") + page.back() + QLatin1Char('/') + page;
}

void writeTools(const QString& folder, const QString& sources, const Edition& edition) {
    const std::vector<Command> commands = subcommands();
    write(pathOf(folder, QStringLiteral("rfutils.1")),
          commandPage(commands, documentIn(sources, "docs/command.md"), edition));
    for (const Command& command : commands) {
        write(pathOf(folder,
                     QStringLiteral("rfutils-%1.1").arg(QString::fromStdString(command.name))),
              subcommandPage(command, edition));
    }
    write(pathOf(folder, QStringLiteral("rfutils-formats.5")),
          formatsPage(documentIn(sources, "docs/formats.md"), edition));
    write(folder + QStringLiteral("/bash-completion/completions/rfutils"), bashOfCommand(commands));
    write(folder + QStringLiteral("/zsh/site-functions/_rfutils"), zshOfCommand(commands));
    write(folder + QStringLiteral("/fish/vendor_completions.d/rfutils.fish"),
          fishOfCommand(commands));
}

void writeViewer(const QString& folder, const QString& sources, const Edition& edition) {
    const Command command = viewer();
    write(pathOf(folder, QStringLiteral("rfutils-view.1")),
          viewerPage(command, documentIn(sources, "docs/viewer.md"), edition));
    write(folder + QStringLiteral("/bash-completion/completions/rfutils-view"),
          bashOfViewer(command));
    write(folder + QStringLiteral("/zsh/site-functions/_rfutils-view"), zshOfViewer(command));
    write(folder + QStringLiteral("/fish/vendor_completions.d/rfutils-view.fish"),
          fishOfViewer(command));
}

void writeLibrary(const QString& folder, const QString& sources, const Edition& edition) {
    const std::string program = contentOf(sources + QStringLiteral("/examples/minimal/main.cpp"));
    write(pathOf(folder, QStringLiteral("librfUtils.3")),
          libraryPage(documentIn(sources, "docs/library.md"), documentIn(sources, "README.md"),
                      linesOf(program), edition));
}

}  // namespace

int main(int argc, char* argv[]) {
    if (argc != 5) {
        std::fputs("usage: rfutils_pages FOLDER SOURCES VERSION DATE\n", stderr);
        return 2;
    }
    // Documents ask for fonts; no display is needed.
    qputenv("QT_QPA_PLATFORM", "minimal");
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    const QGuiApplication application(argc, argv);
    try {
        const QString folder = QString::fromLocal8Bit(argv[1]);
        const QString sources = QString::fromLocal8Bit(argv[2]);
        const Edition edition{dateOf(QString::fromLocal8Bit(argv[4])), argv[3]};
        QDir(folder).removeRecursively();
        writeTools(folder + QStringLiteral("/tools"), sources, edition);
        writeViewer(folder + QStringLiteral("/viewer"), sources, edition);
        writeLibrary(folder + QStringLiteral("/dev"), sources, edition);
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "rfutils_pages: %s\n", error.what());
        return 1;
    }
}
