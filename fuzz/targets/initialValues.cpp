// A sequence of operations on itemInitial against a model: a vector of 5120 entries, the guard slot
// and a count. Each operation answers like the model; at the end of the sequence the guard slot,
// every entry that an operation has reached and the one after it are the model's.
#include <rfUtils/initial/itemInitial.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <typeinfo>
#include <vector>

#include "support/input.h"
#include "support/require.h"

using namespace rfu::fuzz;

namespace {

constexpr int kCapacity = 5120;

bool sameEntry(const initialValue_t& a, const initialValue_t& b) {
    return a.id == b.id && a.type == b.type && a.iValue == b.iValue && same(a.dValue, b.dValue) &&
           a.sValue == b.sValue;
}

std::string idOf(Input& input) {
    static const std::array<std::string, 6> kIds = {"",     "a", "b",
                                                    "span", "A", std::string("a\0b", 3)};
    const int kind = input.below(8);
    return kind < 6 ? kIds[static_cast<std::size_t>(kind)] : input.text();
}

initialValue_t entryOf(Input& input) {
    initialValue_t entry;
    entry.id = idOf(input);
    entry.type = input.integer();
    entry.iValue = input.integer();
    entry.dValue = input.real();
    entry.sValue = input.text();
    return entry;
}

/// Around the bounds of the table, or near its beginning.
int indexOf(Input& input) {
    const int kind = input.below(8);
    return kind == 0 ? kCapacity - 2 + input.below(4) : input.integer();
}

class Session {
public:
    Session() : table_(std::make_unique<itemInitial>()), entries_(kCapacity) {
        REQUIRE(table_->setInitialVal("probe", 0));
        first_ = table_->findInitialVal("probe");
        REQUIRE(first_ != nullptr);
        REQUIRE(table_->delInitialVal("probe"));
    }

    /// Empties the table if that is cheaper than making a new one; false otherwise.
    bool restart() {
        constexpr int kMaxReached = 64;
        if (reached_ > kMaxReached) {
            return false;
        }
        for (int i = 0; i <= reached_; ++i) {
            clear(i);
        }
        while (count_ > 0) {
            remove("no such id");
        }
        if (count_ < 0) {
            add({});
        }
        reached_ = 0;
        return true;
    }

    void step(Input& input) {
        const int operation = input.below(16);
        if (operation < 9) {
            stepById(operation, idOf(input), input);
        } else {
            stepByIndex(operation, indexOf(input), input);
        }
    }

    void requireAll() const {
        REQUIRE(sameEntry(first_[-1], guard_));
        for (int i = 0; i < std::min(reached_ + 2, kCapacity); ++i) {
            REQUIRE(sameEntry(first_[i], entries_[static_cast<std::size_t>(i)]));
        }
        for (const char* id : {"", "a", "b", "span", "A"}) {
            REQUIRE(table_->findInitialVal(id) == (has(id) ? first_ : nullptr));
        }
    }

private:
    void stepById(int operation, const std::string& id, Input& input) {
        switch (operation) {
            case 0:
                return append(id, 1, &initialValue_t::iValue, input.integer());
            case 1:
                return append(id, 2, &initialValue_t::dValue, input.real());
            case 2:
                return append(id, 3, &initialValue_t::sValue, input.text());
            case 3:
                return modify(id, &initialValue_t::iValue, input.integer());
            case 4:
                return modify(id, &initialValue_t::dValue, input.real());
            case 5:
                return modify(id, &initialValue_t::sValue, input.text());
            case 6:
                return find(id);
            default:
                return remove(id);
        }
    }

    void stepByIndex(int operation, int index, Input& input) {
        switch (operation) {
            case 9:
                return add(entryOf(input));
            case 10:
                return fill(index, entryOf(input));
            case 11:
                return clear(index);
            case 12:
                return copy(index, indexOf(input));
            case 13:
                return input.byte() == 1 ? fillUp() : find("");
            default:
                return setType(input.below(4));
        }
    }

    initialValue_t& entry(int index) {
        reached_ = std::max(reached_, index);
        return index < 0 ? guard_ : entries_[static_cast<std::size_t>(index)];
    }

    static bool isIndex(int index) { return index >= 0 && index < kCapacity; }

    int matchOf(const std::string& id) const {
        int i = 0;
        while (i < count_ && entries_[static_cast<std::size_t>(i)].id != id) {
            ++i;
        }
        return i;
    }

    bool has(const std::string& id) const { return matchOf(id) < count_; }

    template <typename T>
    void append(const std::string& id, int type, T initialValue_t::*field, const T& value) {
        const bool fits = count_ < kCapacity;
        if (fits) {
            initialValue_t& slot = entry(count_++);
            slot.id = id;
            slot.type = type;
            slot.*field = value;
        }
        REQUIRE(table_->setInitialVal(id, value) == fits);
    }

    void add(const initialValue_t& value) {
        const bool fits = count_ < kCapacity;
        if (fits) {
            entry(count_++) = value;
        }
        REQUIRE(table_->addInitialVal(value) == fits);
    }

    void fill(int index, const initialValue_t& value) {
        if (isIndex(index)) {
            entry(index) = value;
        }
        REQUIRE(table_->fillInitialVal(index, value) == isIndex(index));
    }

    void clear(int index) {
        if (isIndex(index)) {
            entry(index) = {};
        }
        REQUIRE(table_->emptyInitialVal(index) == isIndex(index));
    }

    void copy(int from, int to) {
        const bool both = isIndex(from) && isIndex(to);
        if (both) {
            const initialValue_t value = entry(from);
            entry(to) = value;
        }
        REQUIRE(table_->copyInitialVal(from, to) == both);
    }

    void remove(const std::string& id) {
        const bool counts = count_ >= 0;
        const int match = matchOf(id);
        if (counts && match < count_) {
            entries_.erase(entries_.begin() + match);
            entries_.insert(entries_.begin() + count_ - 1, initialValue_t());
        }
        count_ -= counts ? 1 : 0;
        REQUIRE(table_->delInitialVal(id) == counts);
    }

    void find(const std::string& id) {
        REQUIRE(table_->findInitialVal(id) == (has(id) ? first_ : nullptr));
    }

    template <typename T>
    void modify(const std::string& id, T initialValue_t::*field, const T& value) {
        const bool found = has(id);
        if (found) {
            entry(0).*field = value;
        }
        REQUIRE(table_->modifyInitialVal(id, value) == found);
    }

    /// Appends until two places are left.
    void fillUp() {
        while (count_ < kCapacity - 2) {
            append("n", 1, &initialValue_t::iValue, count_);
        }
    }

    void setType(int kind) {
        const std::type_info* const kTypes[] = {&typeid(int), &typeid(double), &typeid(std::string),
                                                &typeid(float)};
        const int type = kind < 2 ? kind + 1 : 0;
        REQUIRE(table_->getTypeId(*kTypes[kind]) == type);
        const bool sets = type != 0 && count_ < kCapacity;
        if (sets) {
            entry(count_).type = type;
        }
        REQUIRE(table_->setTypeId(*kTypes[kind]) == sets);
    }

    std::unique_ptr<itemInitial> table_;
    const initialValue_t* first_ = nullptr;  // entry 0 of the table
    std::vector<initialValue_t> entries_;
    initialValue_t guard_;
    int count_ = 0;
    int reached_ = 0;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static auto session = std::make_unique<Session>();
    Input input(data, size);
    while (!input.atEnd()) {
        session->step(input);
    }
    session->requireAll();
    if (!session->restart()) {
        session = std::make_unique<Session>();
    }
    return 0;
}
