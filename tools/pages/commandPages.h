#pragma once

#include <string>
#include <vector>

#include "tools/pages/documentPages.h"
#include "tools/pages/manualPage.h"
#include "tools/pages/programs.h"

namespace rfu::pages {

/// What all pages have at their edges.
struct Edition {
    std::string date;     // "2026-11-21"
    std::string version;  // "1.0.0"
};

std::string commandPage(const std::vector<Command>& commands, const Document& document,
                        const Edition& edition);
std::string subcommandPage(const Command& command, const Edition& edition);
std::string viewerPage(const Command& viewer, const Document& document, const Edition& edition);
std::string formatsPage(const Document& document, const Edition& edition);
/// @param readme  its conventions are those of the library
/// @param example the lines of a program
std::string libraryPage(const Document& document, const Document& readme,
                        const std::vector<std::string>& example, const Edition& edition);

}  // namespace rfu::pages
