#include "runCommand.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTextCodec>
#include <cstddef>
#include <sstream>
#include <utility>

#include <sys/resource.h>

namespace {

constexpr int kPatienceMs = 60000;

QProcessEnvironment environment() {
    QProcessEnvironment result = QProcessEnvironment::systemEnvironment();
    result.insert(QStringLiteral("LC_ALL"),
                  result.value(QStringLiteral("RFUTILS_TEST_LOCALE"), QStringLiteral("C")));
    result.remove(QStringLiteral("DISPLAY"));
    result.remove(QStringLiteral("WAYLAND_DISPLAY"));
    result.remove(QStringLiteral("QT_QPA_PLATFORM"));
    return result;
}

}  // namespace

// Arguments and file names go out in the encoding of the locale; the command reads UTF-8.
SampleFolder::SampleFolder() {
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
}

void SampleFolder::add(const char* fileName, const std::string& bytes) const {
    QFile file(QDir(path()).filePath(QString::fromUtf8(fileName)));
    file.remove();  // rewriting in place makes some file systems wait for the disk
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << fileName;
    ASSERT_EQ(file.write(bytes.data(), static_cast<qint64>(bytes.size())),
              static_cast<qint64>(bytes.size()));
}

void SampleFolder::addSamples() const {
    const QDir samples(QStringLiteral(RFUTILS_SAMPLES));
    for (const QString& name : samples.entryList(QDir::Files)) {
        ASSERT_TRUE(QFile::copy(samples.filePath(name), QDir(path()).filePath(name)))
            << name.toStdString();
    }
}

std::string SampleFolder::read(const char* fileName) const {
    QFile file(QDir(path()).filePath(QString::fromUtf8(fileName)));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << fileName;
    return file.readAll().toStdString();
}

CommandResult runCommand(const QStringList& arguments, const std::string& input,
                         const SampleFolder& folder) {
    QProcess process;
    process.setProcessEnvironment(environment());
    process.setWorkingDirectory(folder.path());
    process.start(QStringLiteral(RFUTILS_COMMAND), arguments);
    EXPECT_TRUE(process.waitForStarted(kPatienceMs)) << "rfutils does not start";
    process.write(input.data(), static_cast<qint64>(input.size()));
    process.closeWriteChannel();
    CommandResult result;
    if (process.waitForFinished(kPatienceMs) && process.exitStatus() == QProcess::NormalExit) {
        result.exitStatus = process.exitCode();
    } else {
        ADD_FAILURE() << "rfutils crashed or did not end";
        process.kill();
        process.waitForFinished();
    }
    result.output = process.readAllStandardOutput().toStdString();
    result.errors = process.readAllStandardError().toStdString();
    return result;
}

double commandSeconds() {
    rusage used = {};
    getrusage(RUSAGE_CHILDREN, &used);
    return static_cast<double>(used.ru_utime.tv_sec + used.ru_stime.tv_sec) +
           static_cast<double>(used.ru_utime.tv_usec + used.ru_stime.tv_usec) / 1e6;
}

Words::Words(const char* line) : list(splitWords(line)) {}

CommandCase CommandCase::given(const std::string& standardInput) const {
    return {name, arguments, standardInput, exitStatus, output, errors};
}

CommandCase CommandCase::after(const std::string& earlierOutput) const {
    return {name, arguments, input, exitStatus, earlierOutput, errors};
}

CommandCase CommandCase::noting(const std::string& note) const {
    return {name, arguments, input, exitStatus, output, "rfutils: note: " + note + "\n"};
}

CommandCase shows(const char* name, const Words& words, const std::string& output) {
    return {name, words.list, "", 0, output, ""};
}

CommandCase fails(const char* name, const Words& words, const std::string& error) {
    return {name, words.list, "", 1, "", "rfutils: " + error + "\n"};
}

CommandCase misuses(const char* name, const Words& words, const std::string& error) {
    const std::string subcommand = words.list.value(0).toStdString();
    return {name, words.list, "",
            2,    "",         "rfutils: " + error + " (see rfutils " + subcommand + " --help)\n"};
}

void expectCommands(const std::vector<CommandCase>& cases, const SampleFolder& folder) {
    for (const CommandCase& c : cases) {
        SCOPED_TRACE(std::string(c.name) + ": rfutils " +
                     c.arguments.join(QLatin1Char(' ')).left(200).toStdString());
        const CommandResult result = runCommand(c.arguments, c.input, folder);
        EXPECT_EQ(result.exitStatus, c.exitStatus);
        EXPECT_EQ(result.output, c.output);
        EXPECT_EQ(result.errors, c.errors);
    }
}

QStringList splitWords(const std::string& line) {
    return QProcess::splitCommand(QString::fromStdString(line));
}

std::vector<std::string> examplesOf(const std::string& help) {
    std::vector<std::string> examples;
    const std::string heading = "\nExamples:\n";
    const std::size_t start = help.find(heading);
    if (start == std::string::npos) {
        return examples;
    }
    std::istringstream lines(help.substr(start + heading.size()));
    bool isContinued = false;
    for (std::string line; std::getline(lines, line);) {
        line.erase(0, line.find_first_not_of(' '));
        if (isContinued) {
            examples.back().back() = ' ';
            line.insert(0, std::exchange(examples.back(), {}));
            examples.pop_back();
        }
        isContinued = line.back() == '\\';
        examples.push_back(line);
    }
    return examples;
}
