#pragma once

#include "analysis/support/finding.h"

// Rules that several formats of maps share.

namespace rfu::map_rules {

inline constexpr Rule kLineCut = {"line-cut", Severity::Error,
                                  "A line is longer than the loader reads: 1,023,999 characters in "
                                  "ASC and TAB files, 10,239 in HDR files, 1,023 in "
                                  "CLR files. The rest of the line is not read.",
                                  "a data row of 300,000 cells of four characters each",
                                  "Shorten the line. Such a line often holds all rows of a grid: "
                                  "give each row a line of its own."};

inline constexpr Rule kTextAfterNul = {
    "text-after-nul", Severity::Error,
    "A line ends for the loader at a NUL character. What stands behind it in the line is not read. "
    "Text in UTF-16 has a "
    "NUL beside each letter.",
    "ncols\\0 4", "Save the file as ASCII or UTF-8, or delete the NUL characters."};

inline constexpr Rule kTokenCut = {
    "token-cut", Severity::Error,
    "A number or a name counts with its first 63 characters. An exponent behind them is lost, and "
    "so are digits.",
    "1 2 1.2340000000000000000000000000000000000000000000000000000000000e2 4",
    "Write the number with fewer decimals, or the name shorter."};

inline constexpr Rule kNoNumber = {"no-number", Severity::Error,
                                   "The loader reads the longest beginning that is a decimal "
                                   "number: \"12.5abc\" as 12.5, \"abc\" and \"*\" as 0.",
                                   "cellsize 30m", "Write a decimal number with a point: 30."};

inline constexpr Rule kNoWholeNumber = {
    "no-whole-number", Severity::Error,
    "The loader reads a whole number up to the first other character: \"12.5\" as 12, \"1e3\" as "
    "1. "
    "The size of a grid or the colour is then not the one that is written.",
    "ncols 12.5", "Write the number in digits."};

inline constexpr Rule kNumberInfinite = {
    "number-infinite", Severity::Warning,
    "Cells and places are single-precision numbers. One beyond about 3.4e38 becomes infinite; the "
    "map shows no value "
    "there.",
    "1 2 1e39 4",
    "Write the no-data value where nothing is known, else a number within the range."};

inline constexpr Rule kKeyCase = {"key-case", Severity::Error,
                                  "The loaders know each key in one spelling: in lower case but "
                                  "for NODATA_value in ASC files, in capitals in HDR "
                                  "files, Type, File, Units and CoordSys in TAB files. A key in "
                                  "another case is ignored with its value.",
                                  "NCOLS 4",
                                  "Spell the key as the loader knows it: ncols 4 in an ASC file."};

inline constexpr Rule kKeyNeedsOneValue = {
    "key-needs-one-value", Severity::Error,
    "A header line is a key and one value. A known key with no value or with several is ignored; "
    "in an ASC file a line "
    "of three words is even taken for a row of cells.",
    "cellsize", "Write the key and its value in one line, and nothing else: cellsize 30."};

inline constexpr Rule kKeyUnknown = {
    "key-unknown", Severity::Warning,
    "The loader ignores keys that it does not know, with their values.", "projection UTM",
    "Correct the key if it is misspelt, else delete the line."};

inline constexpr Rule kKeyRepeated = {
    "key-repeated", Severity::Warning,
    "A key stands in the file more than once. The last value counts.", "ncols 4\nncols 5",
    "Delete the line that does not hold."};

inline constexpr Rule kSizeRefused = {
    "size-refused", Severity::Error,
    "A map has at most 2048 columns and 2048 rows. The loader refuses a larger one as a whole.",
    "ncols 4096",
    "Cut the part out that is needed (gdal_translate -srcwin), or make the cells larger."};

inline constexpr Rule kSizeUnusable = {"size-unusable", Severity::Error,
                                       "Without a number of columns and of rows above 0 the map "
                                       "has no cells. It counts as loaded and shows nothing.",
                                       "ncols -4",
                                       "Give the number of columns and the number of rows."};

inline constexpr Rule kCellSize = {
    "cell-size", Severity::Note,
    "The size of a cell is kept as it is written, also where it is 0 or below: the map then has no "
    "extent, or a negative one.",
    "cellsize -30", "Write the length of a cell's side, above 0."};

inline constexpr Rule kByteOrderMark = {
    "byte-order-mark", Severity::Note,
    "The file begins with the byte-order mark of UTF-8. The loaders pass over it, but a comment of "
    "a TAB file that follows "
    "it is none to them, and other programs take it for a part of the first word.",
    "\\xEF\\xBB\\xBFncols 4", "Save the file without the mark."};

inline constexpr Rule kLineSkipped = {"line-skipped", Severity::Warning,
                                      "The loader reads nothing from a line that is neither a key "
                                      "with its value nor a row of at least three cells.",
                                      "1 2", "Delete the line, or complete it."};

}  // namespace rfu::map_rules
