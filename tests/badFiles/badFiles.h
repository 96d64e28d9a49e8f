#pragma once

#include "formats.h"

#include <string>
#include <vector>

/// A bad file of a format, and what its loader makes of it.
struct BadFile {
    const Format& format;
    const char* what;
    std::string bytes;
    bool done;
    std::string said;
    std::string holds;
};

std::vector<BadFile> badFiles();
