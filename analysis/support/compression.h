#pragma once

#include <QString>

#include <string_view>

#include "analysis/support/inputError.h"

namespace rfu {

/// The program that unpacks what begins with these bytes ("gzip", "xz", "zstd"); null for what is not
/// compressed by one of them.
const char* unpackerOf(std::string_view firstBytes);

/// A compressed file where text is expected. The message ends in the command that writes the text to
/// a pipe.
class CompressedInput : public InputError {
public:
    CompressedInput(const QString& file, const char* unpacker);
};

}  // namespace rfu
