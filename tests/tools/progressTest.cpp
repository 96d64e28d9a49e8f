#include <analysis/recordings/hopLines.h>
#include <gtest/gtest.h>

#include <QProcess>
#include <algorithm>
#include <cstdlib>
#include <string>

#include "runCommand.h"

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

using rfu::test::hopLines;

namespace {

constexpr int kPatienceMs = 60000;
constexpr unsigned kBeforeProgressMs = 1200;

/// A terminal of the test's own.
class Terminal {
public:
    Terminal() : master_(::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK)) {
        EXPECT_GE(master_, 0);
        EXPECT_EQ(::grantpt(master_), 0);
        EXPECT_EQ(::unlockpt(master_), 0);
        name_ = ::ptsname(master_);
        slave_ = ::open(name_.c_str(), O_RDWR | O_NOCTTY);  // what is written stays readable
        EXPECT_GE(slave_, 0);
    }
    ~Terminal() {
        ::close(slave_);
        ::close(master_);
    }
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    QString name() const { return QString::fromStdString(name_); }

    /// What was written to it so far.
    std::string bytes() {
        char block[4096];
        for (ssize_t got = 0; (got = ::read(master_, block, sizeof block)) > 0;) {
            bytes_.append(block, static_cast<std::size_t>(got));
        }
        return bytes_;
    }

    /// What it shows: blanks at the end of a line do not count.
    std::string screen() {
        std::string done;
        std::string line;
        std::size_t column = 0;
        const auto finish = [&] {
            line.erase(line.find_last_not_of(' ') + 1);
            done += line;
            line.clear();
        };
        for (const char c : bytes()) {
            if (c == '\r') {
                column = 0;
            } else if (c == '\b') {
                column -= column > 0 ? 1 : 0;
            } else if (c == '\n') {
                finish();
                done += c;
            } else {
                line.resize(std::max(line.size(), column + 1), ' ');
                line[column++] = c;
            }
        }
        finish();
        return done;
    }

private:
    int master_;
    int slave_ = -1;
    std::string name_;
    std::string bytes_;
};

/// The command that reads a recording as it comes.
struct Reader {
    explicit Reader(const char* words) : arguments(splitWords(words)) {}

    void start() {
        process.start(QStringLiteral(RFUTILS_COMMAND), arguments);
        ASSERT_TRUE(process.waitForStarted(kPatienceMs));
    }

    void give(const char* words) {
        process.write(hopLines(words).c_str());
        ASSERT_TRUE(process.waitForBytesWritten(kPatienceMs));
    }

    std::string finish() {
        process.closeWriteChannel();
        EXPECT_TRUE(process.waitForFinished(kPatienceMs));
        EXPECT_EQ(process.exitCode(), 0);
        return process.readAllStandardOutput().toStdString();
    }

    QStringList arguments;
    Terminal terminal;
    QProcess process;
};

const char* const kSeries = "power - --channel 100:101 --series --format csv";
const std::string kHead =
    "sweep,time,fromMHz,toMHz,power,unit,occupiedFromMHz,occupiedToMHz,occupiedMHz\n";

}  // namespace

TEST(Progress, standsOnATerminalUntilThereIsOutput) {
    Reader both(kSeries);
    Reader errors(kSeries);
    Reader quiet("trace - --quiet");
    Reader live("trace - --follow --marker 0");
    Reader elsewhere("trace -");
    both.process.setStandardOutputFile(both.terminal.name());
    for (Reader* run : {&both, &errors, &quiet, &live}) {
        run->process.setStandardErrorFile(run->terminal.name());
    }
    for (Reader* run : {&both, &errors, &quiet, &live, &elsewhere}) {
        run->start();
        run->give("a0 a1 a2 a3 a4 a5");
    }
    ::usleep(kBeforeProgressMs * 1000);
    for (Reader* run : {&both, &errors, &quiet, &live, &elsewhere}) {
        run->give("a6 a7");
    }

    both.finish();
    EXPECT_NE(both.terminal.bytes().find("\rrfutils: 0.0 MB, 0.0 MB/s"), std::string::npos)
        << both.terminal.bytes();
    const std::string screen = both.terminal.screen();
    EXPECT_EQ(screen.substr(0, kHead.size()), kHead);
    EXPECT_EQ(std::count(screen.begin(), screen.end(), '\n'), 9);
    EXPECT_EQ(screen.find("rfutils"), std::string::npos) << screen;

    EXPECT_EQ(errors.finish(), screen);
    EXPECT_NE(errors.terminal.bytes().find("MB/s"), std::string::npos);
    EXPECT_EQ(errors.terminal.screen(), "");

    quiet.finish();
    EXPECT_EQ(quiet.terminal.bytes(), "");
    live.finish();
    EXPECT_EQ(live.terminal.bytes(), "") << "sweeps are progress enough";
    elsewhere.finish();
    EXPECT_EQ(elsewhere.process.readAllStandardError(), "");
}
