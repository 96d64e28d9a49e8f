#pragma once

#include <rfUtils/rfUtilsExport.h>

#include <cstdint>
#include <string>
#include <typeinfo>

/// One named initial value; by default the empty entry.
struct initialValue_t {
    std::string id;           ///< name of the entry; compared byte for byte
    std::int32_t type = 0;    ///< 0 none (empty entry), 1 integer, 2 double, 3 string
    std::int32_t iValue = 0;  ///< the value of type 1
    double dValue = 0.0;      ///< the value of type 2
    std::string sValue;       ///< the value of type 3
};

/// A table of up to 5120 named initial values in the order of insertion. An application fills it at
/// start-up, one entry per parameter that needs an initial value.
///
/// The entries are embedded: an object takes about 400 KiB, so make it static or allocate it with
/// `new`, not on the stack. All searches are linear. The entries in use are the first `count` ones;
/// a new table holds 5120 empty entries and a count of 0. Use a table from one thread at a time;
/// copies are independent.
///
/// **Surprises that callers rely on**
///  - findInitialVal() only tells *whether* an id exists: it returns the address of entry 0, not
///    of the matching entry.
///  - modifyInitialVal() therefore always writes to entry 0.
///  - delInitialVal() of an unknown id still takes the last entry out of use.
///  - delInitialVal() on an empty table returns true and leaves the count at -1. The next append
///    goes to a guard slot, index -1, and brings the count to 0: that entry is lost, neither found
///    nor printed, and the append after it is the first to be kept. The guard slot lies right
///    before entry 0; only findInitialVal(id)[-1] reads it.
///  - An append sets the fields of its type only: a slot that was in use before keeps the others.
///
/// Ids may be empty and may repeat; the first match counts.
///
/// When memory runs out (only strings allocate), std::bad_alloc reaches the caller and the entries
/// in use are unchanged; a free slot may hold part of the new entry.
class RFUTILS_EXPORT itemInitial {
public:
    /// Capacity of the table.
    static constexpr std::int32_t kCapacity = 5120;

    /// A table of 5120 empty entries, none in use.
    itemInitial();

    /// Appends an entry of type 1; the slot's dValue and sValue stay as they are.
    /// @param id,v id and iValue of the entry
    /// @return false, and nothing changes, when 5120 entries are in use
    bool setInitialVal(const std::string& id, const int& v);
    /// Appends an entry of type 2; the slot's iValue and sValue stay as they are.
    /// @param id,v id and dValue of the entry
    /// @return false, and nothing changes, when 5120 entries are in use
    bool setInitialVal(const std::string& id, const double& v);
    /// Appends an entry of type 3; the slot's iValue and dValue stay as they are.
    /// @param id,v id and sValue of the entry
    /// @return false, and nothing changes, when 5120 entries are in use
    bool setInitialVal(const std::string& id, const std::string& v);

    /// Appends a complete entry.
    /// @param v all five fields, with any type code
    /// @return false, and nothing changes, when 5120 entries are in use
    bool addInitialVal(initialValue_t v);

    /// Overwrites an entry, in use or not; the count stays.
    /// @param index,v place and new content
    /// @return false, and nothing changes, when index is outside 0 to 5119 (-1 included)
    bool fillInitialVal(int index, initialValue_t v);

    /// Clears an entry; the count stays, so an entry in use remains in use, with an empty id.
    /// @param index place of the entry
    /// @return false, and nothing changes, when index is outside 0 to 5119 (-1 included)
    bool emptyInitialVal(int index);

    /// Copies all five fields of one entry to another; the count stays.
    /// @param from,to places of the two
    /// @return false, and nothing changes, when an index is outside 0 to 5119 (-1 included)
    bool copyInitialVal(int from, int to);

    /// Removes the first entry with this id: later entries move up by one place, and the slot that
    /// becomes free is cleared. Without a match the last entry goes out of use, uncleared.
    ///
    /// | entries       | delInitialVal | entries afterwards | answer                  |
    /// |---------------|---------------|--------------------|-------------------------|
    /// | "a", "b", "c" | "a"           | "b", "c"           | true                    |
    /// | "a", "b"      | "x"           | "a"                | true                    |
    /// | none          | "a"           | none, the count -1 | true; once more false   |
    ///
    /// @param id id to remove
    /// @return false, and nothing changes, only when the count is negative already
    bool delInitialVal(const std::string& id);

    /// Tells whether an entry in use has this id.
    /// @param id id to look up
    /// @return the address of **entry 0** (of 5120 contiguous ones, after the guard slot) if any
    ///         entry matches, otherwise null; valid as long as the table lives
    initialValue_t* findInitialVal(const std::string& id);

    /// Writes the iValue of **entry 0** if an entry in use, any of them, has this id. The types
    /// stay.
    ///
    /// After modifyInitialVal("b", 7) the entries "a" with 1 and "b" with 2 have 7 and 2.
    ///
    /// @param id,v id to look up and new iValue
    /// @return false, and nothing changes, when no entry has this id
    bool modifyInitialVal(const std::string& id, const int& v);
    /// The same with the dValue of entry 0.
    /// @param id,v id to look up and new dValue
    /// @return false, and nothing changes, when no entry has this id
    bool modifyInitialVal(const std::string& id, const double& v);
    /// The same with the sValue of entry 0.
    /// @param id,v id to look up and new sValue
    /// @return false, and nothing changes, when no entry has this id
    bool modifyInitialVal(const std::string& id, const std::string& v);

    /// @param t a C++ type
    /// @return its type code: 1 for int, 2 for double, 0 for any other, also for std::string
    int getTypeId(const std::type_info& t) const;

    /// Sets the type of the next free slot: 1 for int, 2 for double. The count stays, and the next
    /// append overwrites the type. At a count of -1 the next slot is the guard slot.
    /// @param t int or double
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
    /// The first line holds the count (0 and -1 included); the others repeat for each entry in use.
    /// Each line ends in a blank and a newline; strings end at their first NUL.
    /// @return true
    bool checkInitialVal() const;

private:
    /// Entry 0.
    initialValue_t* values() { return entries + 1; }
    const initialValue_t* values() const { return entries + 1; }
    initialValue_t* nextSlot();

    // The guard slot and the entries are one array: values()[-1] is a valid element.
    initialValue_t entries[1 + kCapacity];
    std::int32_t count = 0;
};
