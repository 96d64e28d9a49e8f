// The rules that catalogues and setups share.
#pragma once

#include "analysis/support/finding.h"

namespace rfu {

// clang-format off
inline constexpr Rule kJsonEncoding = {
    "json-encoding", Severity::Error,
    "The library reads JSON in UTF-8. It refuses a file in UTF-16 or UTF-32, and a file with bytes "
    "that are no UTF-8, such as an accented letter in an 8-bit encoding. Nothing of it is loaded.",
    "{\"unit\": [{\"label\": \"dB\xC2\xB5V\", ...   saved in UTF-16",
    "Save the file in UTF-8, without a byte-order mark."};

inline constexpr Rule kJsonSyntax = {
    "json-syntax", Severity::Error,
    "The library refuses a file that is no JSON; nothing of it is loaded. It names no line; the one "
    "given here is where reading ends, the fault may stand in front of it. Further faults behind it "
    "show once this one is mended.",
    "{\"attenuation\": [\n"
    "  {\"label\": \"Auto\", \"id\": \"auto\", \"enum\": 0, \"dispSeq\": 1},\n"
    "]}",
    "Mend the text at this place: here the comma in front of the bracket goes."};

inline constexpr Rule kJsonTopLevel = {
    "json-top-level", Severity::Error,
    "The library takes an object at the top of the file. An array is accepted without a message, and "
    "nothing of it is loaded.",
    "[{\"label\": \"Auto\", \"id\": \"auto\", \"enum\": 0, \"dispSeq\": 1}]",
    "Put the list into an object, under the id that it belongs to: {\"attenuation\": [...]}."};

inline constexpr Rule kJsonOddity = {
    "json-oddity", Severity::Warning,
    "The library reads this, but it is no JSON: a control character or an unknown escape in a text, or "
    "a number without a digit on either side of its point. Other programs refuse the file.",
    "{\"label\": \"Auto\t(fast)\", ...   with a tab",
    "Write it as JSON does: \\t, \\n or \\u and four digits, 0.5 for .5."};

inline constexpr Rule kJsonByteOrderMark = {
    "json-byte-order-mark", Severity::Note,
    "The library skips a byte-order mark at the start of a file. JSON has none, and other programs "
    "refuse it.",
    "the bytes EF BB BF in front of {",
    "Save the file in UTF-8 without a byte-order mark (\"UTF-8\", not \"UTF-8 with BOM\")."};

inline constexpr Rule kTextMarkDropped = {
    "text-mark-dropped", Severity::Warning,
    "A text or key begins with an invisible byte-order mark (U+FEFF). The library drops it from texts; "
    "a key with it is another key than the one without it.",
    "{\"\xEF\xBB\xBFlabel\": \"Auto\", ...",
    "Delete the character; in texts that need it write \\ufeff."};

inline constexpr Rule kNothingLoaded = {
    "nothing-loaded", Severity::Error,
    "The library accepts the file, and holds nothing afterwards.",
    "{}",
    "Put lists of objects with all members that are read into the top-level object."};

inline constexpr Rule kListIgnored = {
    "list-ignored", Severity::Warning,
    "A member of the top-level object that is no array is ignored. \"$schema\" with a text, which "
    "editors read, is not reported.",
    "{\"version\": 3, \"attenuation\": {\"label\": \"Auto\", ...}}",
    "Put objects into a list, [{...}], and leave out what the instrument does not read."};

inline constexpr Rule kElementSkipped = {
    "element-skipped", Severity::Warning,
    "An element of a list that is no object is skipped.",
    "{\"attenuation\": [\"auto\", \"manual\"]}",
    "Write an object with all members: {\"label\": \"Auto\", \"id\": \"auto\", ...}."};

inline constexpr Rule kMemberMissing = {
    "member-missing", Severity::Warning,
    "An object without all members that are read is skipped. Keys are compared letter by letter; a "
    "member of any type will do.",
    "{\"label\": \"Auto\", \"id\": \"auto\", \"enum\": 0}",
    "Add the missing member, or mend the key that stands for it."};

inline constexpr Rule kMemberMisspelt = {
    "member-misspelt", Severity::Warning,
    "A member is not read, and its key is almost that of a member that is missing, or another word "
    "for it, as code for enum.",
    "{\"lable\": \"Auto\", \"ID\": \"auto\", \"enum\": 0, \"dispSeq\": 1}",
    "Spell the key as the library does."};

inline constexpr Rule kMemberUnknown = {
    "member-unknown", Severity::Warning,
    "A member that the library does not know is not read.",
    "{\"label\": \"Auto\", \"id\": \"auto\", \"enum\": 0, \"dispSeq\": 1, \"default\": true}",
    "Leave it out, or suppress this rule if other programs read it."};

inline constexpr Rule kMemberRepeated = {
    "member-repeated", Severity::Warning,
    "Of members with the same key the last one counts, in an object of a list as at the top, where a "
    "whole list gets lost.",
    "{\"label\": \"Auto\", \"id\": \"auto\", \"enum\": 0, \"enum\": 1, \"dispSeq\": 1}",
    "Delete the one that is wrong, or join the two lists."};

inline constexpr Rule kElementReplaced = {
    "element-replaced", Severity::Note,
    "What stands here is not on the instrument: a later element with the same id takes its place, or "
    "its whole list is replaced by a later one with the same key.",
    "{\"label\": \"Fast\", \"id\": \"auto\", ...},\n{\"label\": \"Slow\", \"id\": \"Auto\", ...}",
    "See the finding at the place that replaces it."};

inline constexpr Rule kTextNotRead = {
    "text-not-read", Severity::Error,
    "A label or an id that is no text is read as an empty text.",
    "{\"label\": 10, \"id\": null, ...",
    "Put it between double quotes: \"10\"."};
// clang-format on

}  // namespace rfu
