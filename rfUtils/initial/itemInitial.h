#pragma once

#include <rfUtils/rfUtilsExport.h>

#include <cstdint>
#include <string>
#include <typeinfo>

/// One named initial value. A new one is the empty entry.
struct initialValue_t {
    std::string id;           ///< name of the entry; compared byte for byte
    std::int32_t type = 0;    ///< 0 none (empty entry), 1 integer, 2 double, 3 text
    std::int32_t iValue = 0;  ///< the value of type 1
    double dValue = 0.0;      ///< the value of type 2
    std::string sValue;       ///< the value of type 3
};

/// A table of up to 5120 named initial values, kept in the order in which they were added. An
/// application fills it while it starts, one entry per parameter that needs a starting value.
///
/// The entries are embedded: an object takes about 400 KiB, so make it static or allocate it with
/// `new`, not on the stack. All searches are linear. A new table holds 5120 empty entries and its
/// count, the number of entries in use, is 0; the used entries are always the first `count` ones.
/// Use one table from one thread at a time; a copy is independent.
///
/// **Rules that surprise, on which callers rely**
///  - findInitialVal() only tells *whether* an id is there: it yields the address of entry 0, not
///    of the entry that matches.
///  - modifyInitialVal() therefore always writes into entry 0.
///  - delInitialVal() of an id that is not there still takes the last entry out of use.
///  - delInitialVal() on an empty table answers true and leaves the count at -1. The next append
///    then goes to a guard slot, index -1, and brings the count to 0: that entry is lost, it is
///    never found nor printed, and the append after it is the first that is kept. The guard slot
///    lies right before entry 0, so only findInitialVal(id)[-1] reads it.
///  - Appending sets only the fields that belong to its type: a slot that was used before keeps
///    its other fields.
///
/// Ids may be empty and may repeat; the first match counts.
///
/// The table itself allocates nothing, its texts do: where memory runs out, std::bad_alloc passes
/// on and the entries in use are as before (a free slot may hold part of the new entry).
class RFUTILS_EXPORT itemInitial {
public:
    /// Number of entries that fit.
    static constexpr std::int32_t kCapacity = 5120;

    /// A table of 5120 empty entries with count 0.
    itemInitial();

    /// Appends an entry of type 1 with iValue v; the slot's dValue and sValue stay as they are.
    /// @return false, and nothing changes, when 5120 entries are in use
    bool setInitialVal(const std::string& id, const int& v);
    /// Appends an entry of type 2 with dValue v; the slot's iValue and sValue stay as they are.
    /// @return false, and nothing changes, when 5120 entries are in use
    bool setInitialVal(const std::string& id, const double& v);
    /// Appends an entry of type 3 with sValue v; the slot's iValue and dValue stay as they are.
    /// @return false, and nothing changes, when 5120 entries are in use
    bool setInitialVal(const std::string& id, const std::string& v);

    /// Appends a copy of all five fields, whatever type they name.
    /// @return false, and nothing changes, when 5120 entries are in use
    bool addInitialVal(initialValue_t v);

    /// Overwrites all five fields of entry `index`, in use or not; the count stays.
    /// @return false, and nothing changes, when index is outside 0 to 5119 (-1 included)
    bool fillInitialVal(int index, initialValue_t v);

    /// Makes entry `index` an empty entry; the count stays, so an entry in use remains in use, with
    /// an empty id.
    /// @return false, and nothing changes, when index is outside 0 to 5119 (-1 included)
    bool emptyInitialVal(int index);

    /// Copies all five fields of entry `from` onto entry `to`; the count stays.
    /// @return false, and nothing changes, when an index is outside 0 to 5119 (-1 included)
    bool copyInitialVal(int from, int to);

    /// Removes the first entry with this id: the later entries move up by one place and the slot
    /// left free at the end becomes an empty entry. When there is no such entry, the last entry
    /// goes out of use all the same, uncleared.
    /// @return false only when the count is negative already, which changes nothing.
    ///   ["a","b","c"] without "a" -> ["b","c"]
    ///   ["a","b"] without "x"     -> ["a"], true
    ///   [] without "a"            -> count -1, true; once more -> false
    bool delInitialVal(const std::string& id);

    /// Tells whether an entry in use has this id.
    /// @return the address of **entry 0** (of 5120 contiguous ones, behind the guard slot) when
    /// there is a match at any place, null when there is none. The pointer lives as long as the
    /// table.
    initialValue_t* findInitialVal(const std::string& id);

    /// Writes v into the iValue of **entry 0** when an entry in use, any of them, has this id; the
    /// types stay.
    /// @return false, and nothing changes, when no entry has this id.
    ///   ["a": 1, "b": 2], modifyInitialVal("b", 7) -> ["a": 7, "b": 2]
    bool modifyInitialVal(const std::string& id, const int& v);
    /// The same with the dValue of entry 0.
    bool modifyInitialVal(const std::string& id, const double& v);
    /// The same with the sValue of entry 0.
    bool modifyInitialVal(const std::string& id, const std::string& v);

    /// Type code of a C++ type: 1 for int, 2 for double, 0 for any other. std::string gives 0,
    /// not 3.
    int getTypeId(const std::type_info& t) const;

    /// Sets the type of the next free slot, which is not yet in use: 1 for int, 2 for double. The
    /// count stays, and the next append overwrites the type again. At a count of -1 that is the
    /// guard slot.
    /// @return false, and nothing changes, for any other type and when 5120 entries are in use
    bool setTypeId(const std::type_info& t);

    /// Prints the table to standard output, with a decimal point in every locale:
    ///
    ///     ***** Total Num: 1
    ///     ***** ID: span
    ///     ***** Type: 2
    ///     ***** integer: 0
    ///     ***** double: 12.500000
    ///     ***** String:
    ///
    /// The first line holds the count (0 and -1 included) and stands alone when no entry is in use;
    /// the other five repeat for each entry. Each line ends in a blank and a newline; a text
    /// that contains a NUL is printed up to it.
    /// @return true
    bool checkInitialVal() const;

private:
    /// Entry 0, which follows the guard slot.
    initialValue_t* values() { return entries + 1; }
    const initialValue_t* values() const { return entries + 1; }
    initialValue_t* nextSlot();

    // One array, so that the guard slot is an entry like the others: that of index -1.
    initialValue_t entries[1 + kCapacity];
    std::int32_t count = 0;
};
