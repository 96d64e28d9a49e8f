#pragma once

// What the viewer is told on its command line: for its parser, its manual page and its completions.

namespace rfu::viewer {

struct Option {
    const char* name;
    const char* value;     // its name in the help; empty for an option without
    const char* property;  // of the page, which takes the value; null for options of the program
    const char* help;
    const char* endings = "";  // of the files that completions offer, with blanks between them
    char letter = 0;           // of its short name; 0 for none
};

// clang-format off
/// Options whose text the page takes as it is.
inline constexpr Option kTexts[] = {
    {"unit", "UNIT", "startUnit", "Unit of all levels, such as dBuV or V/m"}};
inline constexpr Option kFiles[] = {
    {"catalogue", "FILE", "catalogueFile", "Offer the choices of this catalogue among the settings too", "json"},
    {"map", "FILE", "mapFile", "Show this raster map on the page of maps", "asc bil hdr"},
    {"mask", "FILE", "maskFile", "Judge the levels by this mask: lines of MHz,dBm", "csv"},
    {"screenshot", "FILE", "pictureFile", "Write a picture (PNG) once the recording is read, and end", "png"}};
inline constexpr Option kNumbers[] = {
    {"gain", "DBI", "startGain", "Gain of the antenna in dBi, for units of field strength"},
    {"limit", "DBM", "startLimit", "Judge the levels by this limit in dBm"},
    {"marker", "MHZ", "startMarkers", "Set a marker at this frequency in MHz; up to six times"},
    {"width", "PIXELS", "startWidth", "Width of the window"},
    {"height", "PIXELS", "startHeight", "Height of the window"}};
inline constexpr Option kFlags[] = {
    {"light", "", nullptr, "Dark on light"},
    {"dark", "", nullptr, "Light on dark, as without option"},
    {"help", "", nullptr, "Show this help", "", 'h'},
    {"version", "", nullptr, "Show the version", "", 'v'}};
// clang-format on

inline constexpr char kDescription[] = "Shows a recording of sweeps: spectrum, waterfall, markers.";
inline constexpr char kProgramDescription[] =
    "Behind -- follows a program that records to its standard output, such as";
inline constexpr char kProgramExample[] = "rfutils-view -- rtl_power -f 88M:108M:50k -i 1 -";
inline constexpr char kArgument[] = "FILE";
inline constexpr char kArgumentHelp[] = "Recording to show; - for standard input";
inline constexpr char kSyntax[] = "[FILE | - | -- PROGRAM [ARGUMENT...]]";

}  // namespace rfu::viewer
