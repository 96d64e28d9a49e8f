#pragma once

#include <string>
#include <string_view>

namespace rfu::command {

/// What ends a subcommand early: one line on standard error and the exit status.
struct Failure {
    std::string message;
    int exitStatus;
};

inline constexpr int kExitBadInput = 1;
inline constexpr int kExitBadUsage = 2;

/// What is wrong, where there is no file to name; rfu::InputError names one.
Failure inputError(std::string_view what);
/// Wrong usage: the command line itself cannot be understood.
Failure usageError(std::string_view what);

/// Prints "rfutils: message" as a single line on standard error.
void printError(const std::string& message);

/// Prints "rfutils: note: what" as a single line on standard error; the command goes on.
void printNote(const std::string& what);

}  // namespace rfu::command
