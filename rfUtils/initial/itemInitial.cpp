#include <rfUtils/initial/itemInitial.h>

#include <rfUtils/detail/fixedText.h>

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <utility>

namespace {

constexpr std::int32_t kNone = 0;
constexpr std::int32_t kInteger = 1;
constexpr std::int32_t kDouble = 2;
constexpr std::int32_t kText = 3;

bool isIndex(int index) {
    return index >= 0 && index < itemInitial::kCapacity;
}

/// Writes an entry to the next slot and counts it; false when the table is full (null slot).
template <typename Value>
bool append(initialValue_t* slot, std::int32_t& count, const std::string& id, std::int32_t type,
            Value initialValue_t::*field, const Value& v) {
    if (slot == nullptr) {
        return false;
    }
    slot->id = id;
    slot->type = type;
    slot->*field = v;
    ++count;
    return true;
}

template <typename Value>
bool modify(initialValue_t* entry, Value initialValue_t::*field, const Value& v) {
    if (entry == nullptr) {
        return false;
    }
    entry->*field = v;
    return true;
}

std::uint64_t wordAt(const char* bytes) {
    std::uint64_t word{};
    std::memcpy(&word, bytes, sizeof word);
    return word;
}

/// Fast path for ids of equal size: compares their first and last eight bytes (which overlap in a
/// short id) as two words. That covers most ids completely and tells nearly all others apart
/// without calling memcmp.
bool sameBytes(const char* a, const char* b, std::size_t size) {
    constexpr std::size_t kWord = sizeof(std::uint64_t);
    if (size < kWord) {
        return std::equal(a, a + size, b);
    }
    const std::size_t lastWord = size - kWord;
    return wordAt(a) == wordAt(b) && wordAt(a + lastWord) == wordAt(b + lastWord) &&
           (size <= 2 * kWord || std::memcmp(a, b, size) == 0);
}

/// The first entry with an id, or `end`.
initialValue_t* firstWithId(initialValue_t* begin, initialValue_t* end, const std::string& id) {
    return std::find_if(begin, end, [&id](const initialValue_t& entry) {
        return entry.id.size() == id.size() && sameBytes(entry.id.data(), id.data(), id.size());
    });
}

void print(const initialValue_t& entry) {
    const rfu::detail::FixedText number(entry.dValue, 6);
    std::printf("***** ID: %s \n", entry.id.c_str());
    std::printf("***** Type: %d \n", entry.type);
    std::printf("***** integer: %d \n", entry.iValue);
    // Not "%f": its decimal point depends on the process's locale.
    std::printf("***** double: %.*s \n", static_cast<int>(number.view().size()),
                number.view().data());
    std::printf("***** String: %s \n", entry.sValue.c_str());
}

}  // namespace

itemInitial::itemInitial() = default;

/// The target of the next append: the guard slot at a count of -1, null when the table is full.
initialValue_t* itemInitial::nextSlot() {
    return count < kCapacity ? values() + count : nullptr;
}

bool itemInitial::setInitialVal(const std::string& id, const int& v) {
    return append(nextSlot(), count, id, kInteger, &initialValue_t::iValue, v);
}

bool itemInitial::setInitialVal(const std::string& id, const double& v) {
    return append(nextSlot(), count, id, kDouble, &initialValue_t::dValue, v);
}

bool itemInitial::setInitialVal(const std::string& id, const std::string& v) {
    return append(nextSlot(), count, id, kText, &initialValue_t::sValue, v);
}

bool itemInitial::addInitialVal(initialValue_t v) {
    initialValue_t* const slot = nextSlot();
    if (slot == nullptr) {
        return false;
    }
    *slot = std::move(v);
    ++count;
    return true;
}

bool itemInitial::fillInitialVal(int index, initialValue_t v) {
    if (!isIndex(index)) {
        return false;
    }
    values()[index] = std::move(v);
    return true;
}

bool itemInitial::emptyInitialVal(int index) {
    return fillInitialVal(index, {});
}

bool itemInitial::copyInitialVal(int from, int to) {
    // Passes a copy by value, so that running out of memory never leaves half an entry behind.
    return isIndex(from) && fillInitialVal(to, values()[from]);
}

bool itemInitial::delInitialVal(const std::string& id) {
    if (count < 0) {
        return false;
    }
    initialValue_t* const end = values() + count;
    initialValue_t* const match = firstWithId(values(), end, id);
    if (match != end) {
        std::move(match + 1, end, match);
        emptyInitialVal(count - 1);
    }
    --count;
    return true;
}

initialValue_t* itemInitial::findInitialVal(const std::string& id) {
    initialValue_t* const end = values() + std::max(count, 0);  // the count may be -1
    return firstWithId(values(), end, id) != end ? values() : nullptr;
}

bool itemInitial::modifyInitialVal(const std::string& id, const int& v) {
    return modify(findInitialVal(id), &initialValue_t::iValue, v);
}

bool itemInitial::modifyInitialVal(const std::string& id, const double& v) {
    return modify(findInitialVal(id), &initialValue_t::dValue, v);
}

bool itemInitial::modifyInitialVal(const std::string& id, const std::string& v) {
    return modify(findInitialVal(id), &initialValue_t::sValue, v);
}

int itemInitial::getTypeId(const std::type_info& t) const {
    if (t == typeid(int)) {
        return kInteger;
    }
    return t == typeid(double) ? kDouble : kNone;
}

bool itemInitial::setTypeId(const std::type_info& t) {
    const int type = getTypeId(t);
    initialValue_t* const slot = nextSlot();
    if (type == kNone || slot == nullptr) {
        return false;
    }
    slot->type = type;
    return true;
}

bool itemInitial::checkInitialVal() const {
    std::printf("***** Total Num: %d \n", count);
    for (std::int32_t index = 0; index < count; ++index) {
        print(values()[index]);
    }
    return true;
}
