#pragma once

#include "analysis/checks/checkFiles.h"

namespace rfu::command {

/// Mends a file in its place if it has findings with one right mend: writes a file beside it and puts that in its place,
/// with the same permissions. A link keeps leading where it led.
/// @return whether the file is refused, which is said on standard error: a finding has more than one mend
/// @throw InputError where the file cannot be read or written, and where it changes meanwhile
bool mendInPlace(const CheckedFile& file);

/// Writes what mendInPlace() would change to standardOutput() as a unified diff.
/// @return likewise
bool showMend(const CheckedFile& file);

}  // namespace rfu::command
