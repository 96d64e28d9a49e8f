#pragma once

#include <rfUtils/rfUtilsExport.h>

#include <cstdint>
#include <string>
#include <unordered_map>

/// One choice of a setting (a sub-item of an item). All texts are UTF-8.
struct subItem {
    std::string itemId;          ///< id of the item that owns the choice
    std::string id;              ///< id of the choice, letter case as written in the file
    std::string label;           ///< text shown to the operator
    std::int32_t enumValue = 0;  ///< numeric code of the choice (file key "enum")
    std::int32_t dispSeq = 0;    ///< display sequence; 0: the choice is not offered
};

/// The choices of each setting, read from JSON files and found by id, code or label.
///
/// Ids. An item id is compared exactly. A sub-item id is compared by its upper-case copy, made byte
/// by byte with the upper-casing of the process's global locale at the time of the call
/// (std::locale(), its ctype<char>): "Manual", "manual" and "MANUAL" name one choice, and the
/// choice added last replaces the earlier one. In the classic locale and in UTF-8 locales only the
/// letters a to z change, so ids that differ in the case of an accented letter are different ids;
/// under a Turkish UTF-8 locale the letter i stays as it is, because its capital there is no single
/// byte: "dist" and "DIST" are then two choices. In an 8-bit locale accented letters follow too. An
/// application that changes the global locale between loading and asking may no longer find what it
/// loaded. By design: apart from the text codec, which encodes file names and decodes the cells of
/// veltaGEO::loadBILFile(), nothing else in the library depends on the locale.
///
/// Absence. Each query has its own answer for nothing found, and callers tell absence by it alone:
/// "None" for an id by code, "" for an id by label and for a label by id, -999 for a code by id.
///
/// "Order" in the names of getSubItemIdFromOrder and getOrderFromSubItemId means the code
/// (`enumValue`), not the display sequence.
///
/// Not synchronised: serialise access from several threads; const queries may run together while
/// nothing changes the catalogue.
///
/// Running out of memory passes on as std::bad_alloc. The operation has then changed nothing, but
/// for loadJson(), which keeps the choices that it stored before, and getSubItemsById(), which
/// leaves its result empty. Where memory runs out while Qt parses a file, Qt 5.15 ends the process.
class RFUTILS_EXPORT subItemList {
public:
    subItemList() = default;

    /// Merges a catalogue file into the catalogue; nothing is cleared first.
    ///
    /// @param path UTF-8; a text that is not gives the name of no file
    /// @return false when the file does not exist or cannot be parsed (the catalogue is untouched,
    ///         nothing is written); true otherwise, also when nothing in the file was usable
    ///
    /// The file is a JSON object. Each member with an array is an item: its key the item id, each
    /// object in the array one choice:
    ///   {"attenuation": [
    ///       {"label": "Auto",   "id": "auto", "enum": 0, "dispSeq": 1},
    ///       {"label": "Manual", "id": "man",  "enum": 1, "dispSeq": 2}]}
    /// All four members must be present, of any type; a choice that lacks one is skipped silently,
    /// as is an element that is no object. Other members, and top-level members that are no array,
    /// are ignored. A file with an array at the top is accepted and loads nothing.
    ///
    /// "label" and "id" that are not texts read as "". "enum" and "dispSeq" read as 0 unless they
    /// are numbers with a whole value that fits 32 bits: 2.0 and 2e0 are 2; 2.5, "2", true and
    /// 2147483648 are 0. A lone half of a surrogate pair in a text becomes a question mark.
    ///
    /// Items are taken in the ascending key order of QJsonObject, choices in the order of the file.
    /// A later choice with the same id replaces the earlier one, within a file and across files;
    /// the record keeps the letter case of the id that came last. An item without a usable choice
    /// is not created. Where a key stands twice in an object, the last one counts.
    bool loadJson(const std::string& path);

    /// Adds one choice, or replaces the choice of the same item and id. Mind the argument order:
    /// label before id. Always true.
    ///   addSubItem("freq", "Manual", "man", 1, 2) -> {"freq", "man", "Manual", 1, 2}
    bool addSubItem(const std::string& itemId, const std::string& label, const std::string& id,
                    int enumValue, int dispSeq);

    /// The same with a record: it goes under `item.itemId` and the upper-cased `item.id`.
    bool addFromSubItem(const subItem& item);

    /// Replaces `out` by a copy of the item's choices, keyed by their upper-cased ids.
    /// @return false, `out` untouched, for an unknown item; true with an empty `out` for an item
    ///         whose last choice was deleted. When the copy runs out of memory `out` is left empty.
    bool getSubItemsById(const std::string& itemId,
                         std::unordered_map<std::string, subItem>& out) const;

    /// The id, as stored, of a choice with this code; "None" for an unknown item or code.
    /// Where several choices of the item have the code, any of them may be returned.
    std::string getSubItemIdFromOrder(const std::string& itemId, int order) const;

    /// The id, as stored, of a choice with exactly this label; "" for an unknown item or label.
    /// Unlike ids, labels are compared with their letter case. Where several choices of the item
    /// have the label, any of them may be returned.
    std::string getSubItemIdFromLabel(const std::string& itemId, const std::string& label) const;

    /// The code of a choice; -999 for an unknown item or choice. A choice may have the code -999
    /// itself, which a caller cannot tell from absence.
    int getOrderFromSubItemId(const std::string& itemId, const std::string& subItemId) const;

    /// The label of a choice; "" for an unknown item or choice.
    std::string getLabelFromSubItemId(const std::string& itemId,
                                      const std::string& subItemId) const;

    /// The id as stored and the code of a choice that is offered.
    /// @return false, outputs untouched, for an unknown item or choice, and also for a choice whose
    ///         `dispSeq` is 0: the only query to which such a choice does not exist
    bool getSubItemEnumDataFromId(const std::string& itemId, const std::string& subItemId,
                                  std::string& id, int& enumValue) const;

    /// Removes an item with all its choices; false when there is none.
    bool deleteItemById(const std::string& itemId);

    /// Removes one choice; false when there is none. The item stays, also without any choice left.
    bool deleteSubItemById(const std::string& itemId, const std::string& subItemId);

    /// Prints one line per choice to standard output (C's stdout) and returns true. The fields are
    /// a running number from 1 across all items, upper-cased id, item id, label, id as stored, code
    /// and display sequence; a blank stands before the line end:
    ///   1 "MAN" "freq" "Manual" "man" 1 2
    /// The order of items and choices is not defined. A text ends at its first NUL; quotes in texts
    /// are printed as they are. An empty catalogue prints nothing.
    bool checkAllSubitem();

private:
    using Choices = std::unordered_map<std::string, subItem>;  // by upper-cased sub-item id

    void store(subItem item);
    const Choices* findItem(const std::string& itemId) const;
    const subItem* findSubItem(const std::string& itemId, const std::string& subItemId) const;

    std::unordered_map<std::string, Choices> itemList;  // by item id
    // Arrays that loadJson has worked through, usable or not; never reset. Not readable from
    // outside, and no number of items.
    std::int32_t itemListCount = 0;
};
