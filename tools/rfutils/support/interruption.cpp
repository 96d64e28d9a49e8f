#include "support/interruption.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <iterator>
#include <string>

#include "support/errors.h"

#include <fcntl.h>
#include <unistd.h>

namespace rfu::command {

namespace {

constexpr int kSignals[] = {SIGINT, SIGTERM};
constexpr int kSignalStatus = 128;  // plus the signal is the exit status

// The handler may use nothing else.
int stopPipe[2] = {-1, -1};
volatile std::sig_atomic_t caughtSignal = 0;

struct sigaction formerActions[std::size(kSignals)];

void stopReading(int signal) {
    if (caughtSignal != 0) {
        ::_exit(kSignalStatus + signal);
    }
    caughtSignal = signal;
    const int error = errno;
    // The pipe is empty: a byte has its place.
    [[maybe_unused]] const ssize_t written = ::write(stopPipe[1], "", 1);
    errno = error;
}

}  // namespace

Interruption::Interruption() {
    stopDescriptor();  // the handler writes to its other end
    struct sigaction action {};
    action.sa_handler = stopReading;
    sigemptyset(&action.sa_mask);
    for (const int signal : kSignals) {
        sigaddset(&action.sa_mask, signal);
    }
    for (std::size_t i = 0; i < std::size(kSignals); ++i) {
        ::sigaction(kSignals[i], nullptr, &formerActions[i]);
        if (formerActions[i].sa_handler != SIG_IGN) {
            ::sigaction(kSignals[i], &action, nullptr);
        }
    }
}

Interruption::~Interruption() {
    for (std::size_t i = 0; i < std::size(kSignals); ++i) {
        ::sigaction(kSignals[i], &formerActions[i], nullptr);
    }
}

int stopDescriptor() {
    if (stopPipe[0] < 0 && ::pipe2(stopPipe, O_CLOEXEC | O_NONBLOCK) != 0) {
        throw Failure(std::string("no pipe for signals: ") + std::strerror(errno));
    }
    return stopPipe[0];
}

int interruptedStatus() {
    return caughtSignal == 0 ? 0 : kSignalStatus + caughtSignal;
}

void throwIfInterrupted() {
    if (const int status = interruptedStatus()) {
        throw Ended{status};
    }
}

}  // namespace rfu::command
