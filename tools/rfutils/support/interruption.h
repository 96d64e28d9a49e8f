#pragma once

namespace rfu::command {

/// While it lives, the first SIGINT or SIGTERM ends reading and not the command; the second ends the
/// command at once. A signal that the caller of the command ignores stays ignored. There is one at a
/// time.
class Interruption {
public:
    Interruption();
    ~Interruption();
    Interruption(const Interruption&) = delete;
    Interruption& operator=(const Interruption&) = delete;
};

/// Becomes readable with the first signal; see Waiting.
/// @throw Failure where the system gives no descriptor
int stopDescriptor();

/// Ends a subcommand that an Interruption stopped, after its output.
/// @throw Ended if a signal came
void throwIfInterrupted();

/// The status of an interrupted command, as shells give it: 130 or 143; 0 if no signal came.
int interruptedStatus();

}  // namespace rfu::command
