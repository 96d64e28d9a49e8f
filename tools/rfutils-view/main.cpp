// The viewer: reads the options and shows the page. All else is QML on the module RfUtils.
#include <QApplication>
#include <QCommandLineParser>
#include <QFileInfo>
#include <QIcon>
#include <QLocale>
#include <QQmlApplicationEngine>
#include <QTranslator>
#include <QUrl>
#include <QVariant>

#include <rfUtils/detail/qtVersion.h>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <optional>

#include "options.h"

namespace {

constexpr int kFailed = 1;
constexpr int kWrongUsage = 2;

using namespace rfu::viewer;

QUrl urlOf(const QString& file) {
    return QUrl::fromLocalFile(QFileInfo(file).absoluteFilePath());
}

/// The arguments before "--", and the recording program with its arguments behind it.
struct Arguments {
    QStringList own;
    QStringList program;
};

Arguments split(const QStringList& all) {
    const auto dashes = std::find(all.begin(), all.end(), QStringLiteral("--"));
    Arguments split;
    std::copy(all.begin(), dashes, std::back_inserter(split.own));
    if (dashes != all.end()) {
        std::copy(dashes + 1, all.end(), std::back_inserter(split.program));
    }
    return split;
}

void describe(QCommandLineParser& parser) {
    const auto text = [](const char* latin) { return QString::fromLatin1(latin); };
    parser.setApplicationDescription(
        QStringLiteral("%1\n%2\n%3")
            .arg(text(kDescription), text(kProgramDescription), text(kProgramExample)));
    parser.addPositionalArgument(text(kArgument), text(kArgumentHelp), text(kSyntax));
    const auto add = [&](const Option& option) {
        QStringList names(text(option.name));
        if (option.letter != 0) {
            names.prepend(QChar::fromLatin1(option.letter));
        }
        parser.addOption({names, text(option.help), text(option.value)});
    };
    std::for_each(std::begin(kTexts), std::end(kTexts), add);
    std::for_each(std::begin(kFiles), std::end(kFiles), add);
    std::for_each(std::begin(kNumbers), std::end(kNumbers), add);
    std::for_each(std::begin(kFlags), std::end(kFlags), add);
}

/// The numbers of an option; nothing, with a message, where one is none.
std::optional<QVariantList> numbersOf(const QStringList& texts, const Option& option) {
    QVariantList numbers;
    for (const QString& text : texts) {
        bool isNumber = false;
        numbers.append(text.toDouble(&isNumber));
        if (!isNumber) {
            std::fprintf(stderr, "rfutils-view: --%s: \"%s\" is not a number\n", option.name,
                         qPrintable(text));
            return {};
        }
    }
    return numbers;
}

/// What the page starts with; nothing, with a message, where the usage is wrong.
std::optional<QVariantMap> startOf(QCommandLineParser& parser, const Arguments& arguments) {
    if (!parser.parse(arguments.own)) {
        std::fprintf(stderr, "rfutils-view: %s\n", qPrintable(parser.errorText()));
        return {};
    }
    const QStringList files = parser.positionalArguments();
    if (files.size() + (arguments.program.isEmpty() ? 0 : 1) > 1) {
        std::fprintf(stderr, "rfutils-view: give one recording: a file, - or a program\n");
        return {};
    }
    QVariantMap start;
    if (!files.isEmpty()) {
        const QString& file = files.front();
        start[QStringLiteral("source")] =
            file == QLatin1String("-") ? QUrl(QStringLiteral("file:-")) : urlOf(file);
    }
    if (!arguments.program.isEmpty()) {
        start[QStringLiteral("program")] = arguments.program.front();
        start[QStringLiteral("programArguments")] = QStringList(arguments.program.mid(1));
    }
    for (const Option& option : kTexts) {
        if (const QString name = QString::fromLatin1(option.name); parser.isSet(name)) {
            start[QString::fromLatin1(option.property)] = parser.value(name);
        }
    }
    for (const Option& option : kFiles) {
        if (const QString name = QString::fromLatin1(option.name); parser.isSet(name)) {
            start[QString::fromLatin1(option.property)] = urlOf(parser.value(name));
        }
    }
    for (const Option& option : kNumbers) {
        const auto numbers = numbersOf(parser.values(QString::fromLatin1(option.name)), option);
        if (!numbers) {
            return {};
        }
        const QString property = QString::fromLatin1(option.property);
        if (property == QLatin1String("startMarkers")) {
            start[property] = *numbers;
        } else if (!numbers->isEmpty()) {
            start[property] = numbers->back();
        }
    }
    start[QStringLiteral("startDark")] = !parser.isSet(QStringLiteral("light"));
    return start;
}

/// Runs the page, and says why it ends without what the command line asks for.
int run(const QQmlApplicationEngine& engine) {
    const int status = QCoreApplication::exec();
    const QString failure = engine.rootObjects().front()->property("failure").toString();
    if (!failure.isEmpty()) {
        std::fprintf(stderr, "rfutils-view: %s\n", qPrintable(failure));
    }
    return status;
}

/// Help and version need no display.
bool onlyTells(int argc, char** argv) {
    return std::any_of(argv + std::min(argc, 1), argv + argc, [](const char* argument) {
        const QLatin1String text(argument);
        return text == QLatin1String("-h") || text == QLatin1String("--help") ||
               text == QLatin1String("-v") || text == QLatin1String("--version");
    });
}

std::unique_ptr<QCoreApplication> application(int& argc, char** argv) {
    QCoreApplication::setApplicationName(QStringLiteral("rfutils-view"));
    QCoreApplication::setApplicationVersion(QStringLiteral(RFUTILS_VERSION));
    if (onlyTells(argc, argv)) {
        return std::make_unique<QCoreApplication>(argc, argv);
    }
    rfu::qt::scaleToScreen();
    // With widgets: the dialogs for files are theirs where the desktop has none of its own.
    auto graphical = std::make_unique<QApplication>(argc, argv);
    QGuiApplication::setDesktopFileName(QStringLiteral(RFUTILS_PROGRAM));
    QGuiApplication::setWindowIcon(QIcon(QStringLiteral(":/rfutils-view.svg")));
    return graphical;
}

}  // namespace

int main(int argc, char* argv[]) {
    const auto running = application(argc, argv);
    QCommandLineParser parser;
    describe(parser);
    const Arguments arguments = split(QCoreApplication::arguments());
    const std::optional<QVariantMap> start = startOf(parser, arguments);
    if (!start) {
        return kWrongUsage;
    }
    if (parser.isSet(QStringLiteral("version"))) {
        parser.showVersion();
    }
    if (parser.isSet(QStringLiteral("help"))) {
        parser.showHelp();
    }

    QTranslator ofQt;
    if (ofQt.load(QLocale(), QStringLiteral("qt"), QStringLiteral("_"),
                  rfu::qt::translationsFolder())) {
        QCoreApplication::installTranslator(&ofQt);
    }
    QTranslator ofViewer;
    if (ofViewer.load(QLocale(), QStringLiteral("rfutils-view"), QStringLiteral("_"),
                      QStringLiteral(":/translations"))) {
        QCoreApplication::installTranslator(&ofViewer);
    }

    QQmlApplicationEngine engine;
    engine.addImportPath(QCoreApplication::applicationDirPath() +
                         QStringLiteral("/" RFUTILS_QML_FOLDER));
    engine.setInitialProperties(*start);
    engine.load(QUrl(QStringLiteral("qrc:/qml/Main.qml")));
    return engine.rootObjects().isEmpty() ? kFailed : run(engine);
}
