#pragma once

#include <rfUtils/rfUtilsExport.h>

#include <cstdint>
#include <string>
#include <unordered_map>

/// One choice of a setting (a sub-item of an item). All strings are UTF-8.
struct subItem {
    std::string itemId;          ///< id of the item that owns the choice
    std::string id;              ///< id of the choice, letter case as written in the file
    std::string label;           ///< text shown to the operator
    std::int32_t enumValue = 0;  ///< numeric code of the choice (file key "enum")
    std::int32_t dispSeq = 0;    ///< display sequence; 0: the choice is not offered
};

/// The choices of each setting, loaded from JSON files and found by id, code or label.
///
/// **Ids.** Item ids are compared exactly. Sub-item ids are compared by their upper-case copy, made
/// byte by byte with the upper-casing of the process's global locale at the time of the call
/// (std::locale(), its ctype<char>): "Manual", "manual" and "MANUAL" name one choice, and the one
/// added last replaces the earlier one. In the classic locale and in UTF-8 locales only the letters
/// a to z change, so ids that differ in the case of an accented letter are different. Under a
/// Turkish UTF-8 locale the letter i stays as it is, because its capital there takes two bytes:
/// "dist" and "DIST" are then two choices. In an 8-bit locale accented letters change too. An
/// application that changes the global locale between loading and asking may no longer find its
/// choices. This is by design; apart from the text codec, which encodes file names and decodes the
/// cells of veltaGEO::loadBILFile(), nothing else in the library depends on the locale.
///
/// **Absence.** Each query has its own answer for "not found", the only sign of absence: "None" for
/// an id by code, "" for an id by label and for a label by id, -999 for a code by id.
///
/// **Order.** In the names getSubItemIdFromOrder and getOrderFromSubItemId it means the code
/// (`enumValue`), not the display sequence.
///
/// Not synchronised: serialise access from several threads. Const queries may run concurrently
/// while nothing changes the catalogue.
///
/// When memory runs out, std::bad_alloc reaches the caller and the operation has changed nothing,
/// with two exceptions: loadJson() keeps the choices stored so far, and getSubItemsById() leaves
/// its result empty. If memory runs out while Qt 5.15 parses a file, Qt ends the process.
class RFUTILS_EXPORT subItemList {
public:
    /// An empty catalogue.
    subItemList() = default;

    /// Merges a catalogue file into the catalogue; nothing is cleared first.
    ///
    /// The file is a JSON object. Each member with an array is an item: its key is the item id,
    /// each object in the array one choice:
    ///
    ///     {"attenuation": [
    ///         {"label": "Auto",   "id": "auto", "enum": 0, "dispSeq": 1},
    ///         {"label": "Manual", "id": "man",  "enum": 1, "dispSeq": 2}]}
    ///
    /// All four members are required, of any type; a choice that lacks one is skipped silently, as
    /// is an element that is not an object. Other members, and top-level members that are not
    /// arrays, are ignored. A file with an array at the top level is accepted and loads nothing.
    ///
    /// "label" and "id" read as "" unless they are strings. "enum" and "dispSeq" read as 0 unless
    /// they are numbers with a whole value that fits 32 bits: 2.0 and 2e0 are 2; 2.5, "2", true and
    /// 2147483648 are 0. A lone half of a surrogate pair in a string becomes a question mark.
    ///
    /// Items are taken in the ascending key order of QJsonObject, choices in the order of the file.
    /// A later choice with the same id replaces the earlier one, within a file and across files;
    /// the record keeps the letter case of the later id. An item without a usable choice is not
    /// created. Of members with the same key the last one counts.
    ///
    /// @param path file or Qt resource in UTF-8; invalid UTF-8 names no file
    /// @return false, with the catalogue unchanged and nothing logged, when the file does not exist
    ///         or cannot be parsed; true otherwise, also when the file holds no usable choice
    bool loadJson(const std::string& path);

    /// Adds one choice, or replaces the choice of the same item and id.
    ///
    ///     addSubItem("freq", "Manual", "man", 1, 2) -> {"freq", "man", "Manual", 1, 2}
    ///
    /// @param itemId,label,id,enumValue,dispSeq the fields of the record; note that the label comes
    ///        before the id
    /// @return true
    bool addSubItem(const std::string& itemId, const std::string& label, const std::string& id,
                    int enumValue, int dispSeq);

    /// The same with a whole record.
    /// @param item goes under `item.itemId` and the upper-case copy of `item.id`
    /// @return true
    bool addFromSubItem(const subItem& item);

    /// Copies the choices of an item.
    /// @param itemId item to look up
    /// @param out receives the choices, keyed by upper-case id, each with its own copy of the item
    ///        id; its former content is dropped, also when the copy runs out of memory
    /// @return false, with `out` untouched, for an unknown item; true with an empty `out` for an
    ///         item whose last choice was deleted
    bool getSubItemsById(const std::string& itemId,
                         std::unordered_map<std::string, subItem>& out) const;

    /// Finds an id by code.
    /// @param itemId,order item and code to look up
    /// @return the id, as stored, of a choice with this code (any of them, if there are several);
    ///         "None" for an unknown item or code
    std::string getSubItemIdFromOrder(const std::string& itemId, int order) const;

    /// Finds an id by label.
    /// @param itemId,label item and label to look up; unlike ids, labels are case-sensitive
    /// @return the id, as stored, of a choice with this label (any of them, if there are several);
    ///         "" for an unknown item or label
    std::string getSubItemIdFromLabel(const std::string& itemId, const std::string& label) const;

    /// Finds a code by id.
    /// @param itemId,subItemId item and choice to look up
    /// @return the code; -999 for an unknown item or choice, although a choice may have that code
    int getOrderFromSubItemId(const std::string& itemId, const std::string& subItemId) const;

    /// Finds a label by id.
    /// @param itemId,subItemId item and choice to look up
    /// @return the label; "" for an unknown item or choice
    std::string getLabelFromSubItemId(const std::string& itemId,
                                      const std::string& subItemId) const;

    /// Finds the id as stored and the code of a choice that is offered.
    /// @param itemId,subItemId item and choice to look up
    /// @param id,enumValue receive the answer
    /// @return false, with both untouched, for an unknown item or choice, and for a choice with
    ///         `dispSeq` 0, which every other query finds
    bool getSubItemEnumDataFromId(const std::string& itemId, const std::string& subItemId,
                                  std::string& id, int& enumValue) const;

    /// Removes an item with all its choices.
    /// @param itemId item to remove
    /// @return whether it existed
    bool deleteItemById(const std::string& itemId);

    /// Removes one choice. The item stays, even without choices.
    /// @param itemId,subItemId item and choice to remove
    /// @return whether the choice existed
    bool deleteSubItemById(const std::string& itemId, const std::string& subItemId);

    /// Prints one line per choice to standard output (C's stdout): a running number from 1 across
    /// all items, upper-case id, item id, label, id as stored, code and display sequence, with a
    /// blank before the line end:
    ///
    ///     1 "MAN" "freq" "Manual" "man" 1 2
    ///
    /// Items and choices come in no defined order. Strings end at their first NUL; quotes in them
    /// are not escaped.
    /// @return true
    bool checkAllSubitem();

private:
    // By upper-case sub-item id. `itemId` of these records is empty: the map of items has it once,
    // and a copy for each choice would take memory beyond all proportion to a file with a long id.
    using Choices = std::unordered_map<std::string, subItem>;

    void store(subItem item);
    const Choices* findItem(const std::string& itemId) const;
    const subItem* findSubItem(const std::string& itemId, const std::string& subItemId) const;

    std::unordered_map<std::string, Choices> itemList;  // by item id
    // Arrays that loadJson has processed, usable or not; never reset, nothing reads it.
    std::int32_t itemListCount = 0;
};
