#pragma once

#include <QString>
#include <string>
#include <string_view>

/// What ends a subcommand early: one line on standard error and the exit status.
struct Failure {
    std::string message;
    int exitStatus;
};

inline constexpr int kExitBadInput = 1;
inline constexpr int kExitBadUsage = 2;

/// "what is wrong", where there is neither file nor line.
Failure inputError(std::string_view what);
/// "FILE: what is wrong"
Failure fileError(const QString& file, std::string_view what);
/// "FILE:LINE: what is wrong"; lines count from 1.
Failure lineError(const QString& file, long long line, std::string_view what);
/// Wrong usage: the command line itself cannot be understood.
Failure usageError(std::string_view what);

/// A text of the user's for a message: in double quotes, long texts cut.
std::string quoted(std::string_view text);

/// Prints "rfutils: message" as a single line on standard error.
void printFailure(const Failure& failure);

/// Prints "rfutils: note: what" as a single line on standard error; the command goes on.
void printNote(const std::string& what);
