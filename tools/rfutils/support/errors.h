#pragma once

#include <string>
#include <utility>

namespace rfu::command {

inline constexpr int kExitBadInput = 1;
inline constexpr int kExitBadUsage = 2;
inline constexpr int kExitViolated = 3;

/// Ends a subcommand early with one line on standard error and the exit status. For errors in a
/// file there is rfu::InputError, which names it.
struct Failure {
    Failure(std::string what, int status = kExitBadInput)
        : message(std::move(what)), exitStatus(status) {}

    std::string message;
    int exitStatus;
};

/// Ends a subcommand after its output with an exit status, without a further line.
struct Ended {
    int exitStatus;
};

/// A value that cannot be used. forEachValue() adds the line that it was read from.
struct BadValue : Failure {
    BadValue(std::string what) : Failure(std::move(what)) {}
};

/// The command line itself cannot be understood.
struct UsageError : Failure {
    UsageError(std::string what) : Failure(std::move(what), kExitBadUsage) {}
};

/// Prints "rfutils: message" as a single line on standard error.
void printError(const std::string& message);

/// Prints "rfutils: note: what" as a single line on standard error; the command goes on.
void printNote(const std::string& what);

}  // namespace rfu::command
