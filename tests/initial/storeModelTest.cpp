// Long random use of the table against a vector of slots that follows the same rules. Its first
// slot is the one before entry 0, which an append reaches after deleting from an empty table.
#include "storeFixture.h"

#include <support/samples.h>

#include <algorithm>

namespace {

using rfu::test::Samples;

class Model {
public:
    int count = 0;

    initialValue_t& at(int index) { return slots_[static_cast<std::size_t>(index + 1)]; }

    bool isFull() const { return count == 5120; }

    /// The slot of an append, which counts it.
    initialValue_t& appended(const std::string& id, int type) {
        initialValue_t& slot = at(count++);
        slot.id = id;
        slot.type = type;
        return slot;
    }

    bool finds(const std::string& id) {
        for (int i = 0; i < count; ++i) {
            if (at(i).id == id) {
                return true;
            }
        }
        return false;
    }

    bool remove(const std::string& id) {
        if (count < 0) {
            return false;
        }
        for (int i = 0; i < count; ++i) {
            if (at(i).id == id) {
                for (int j = i; j < count - 1; ++j) {
                    at(j) = at(j + 1);
                }
                at(count - 1) = initialValue_t();
                break;
            }
        }
        count = count - 1;
        return true;
    }

private:
    std::vector<initialValue_t> slots_{5121};
};

class StoreModel : public Store {
protected:
    std::string randomId() {
        static const std::vector<std::string> kIds = {
            "", "a", "b", "span", "Span", "c", "d", "\xC2\xB5", "e", std::string("a\0b", 3)};
        return samples.oneOf(kIds);
    }

    initialValue_t randomEntry() {
        return {randomId(), static_cast<int>(samples.below(6)) - 1, samples.anyInteger(),
                static_cast<double>(samples.below(1000)) / 8.0, samples.text("xyz", 20)};
    }

    int randomIndex() {
        switch (samples.below(4)) {
            case 0:
                return static_cast<int>(samples.below(5)) - 2;
            case 1:
                return 5117 + static_cast<int>(samples.below(6));
            case 2:
                return samples.anyInteger();
            default:
                return static_cast<int>(samples.below(static_cast<unsigned>(model.count + 3)));
        }
    }

    static bool isIndex(int index) { return index >= 0 && index <= 5119; }

    void append() {
        const bool fits = !model.isFull();
        const std::string id = randomId();
        const initialValue_t value = randomEntry();
        switch (samples.below(4)) {
            case 0:
                ASSERT_EQ(table->setInitialVal(id, value.iValue), fits);
                if (fits) {
                    model.appended(id, 1).iValue = value.iValue;
                }
                break;
            case 1:
                ASSERT_EQ(table->setInitialVal(id, value.dValue), fits);
                if (fits) {
                    model.appended(id, 2).dValue = value.dValue;
                }
                break;
            case 2:
                ASSERT_EQ(table->setInitialVal(id, value.sValue), fits);
                if (fits) {
                    model.appended(id, 3).sValue = value.sValue;
                }
                break;
            default:
                ASSERT_EQ(table->addInitialVal(value), fits);
                if (fits) {
                    model.appended(value.id, value.type) = value;
                }
                break;
        }
    }

    void modify() {
        const std::string id = randomId();
        const initialValue_t value = randomEntry();
        const bool found = model.finds(id);
        switch (samples.below(3)) {
            case 0:
                ASSERT_EQ(table->modifyInitialVal(id, value.iValue), found);
                model.at(0).iValue = found ? value.iValue : model.at(0).iValue;
                break;
            case 1:
                ASSERT_EQ(table->modifyInitialVal(id, value.dValue), found);
                model.at(0).dValue = found ? value.dValue : model.at(0).dValue;
                break;
            default:
                ASSERT_EQ(table->modifyInitialVal(id, value.sValue), found);
                model.at(0).sValue = found ? value.sValue : model.at(0).sValue;
                break;
        }
    }

    void edit() {
        const int from = randomIndex();
        const int to = randomIndex();
        const initialValue_t value = randomEntry();
        switch (samples.below(3)) {
            case 0:
                ASSERT_EQ(table->fillInitialVal(to, value), isIndex(to));
                if (isIndex(to)) {
                    model.at(to) = value;
                }
                break;
            case 1:
                ASSERT_EQ(table->emptyInitialVal(to), isIndex(to));
                if (isIndex(to)) {
                    model.at(to) = initialValue_t();
                }
                break;
            default:
                ASSERT_EQ(table->copyInitialVal(from, to), isIndex(from) && isIndex(to));
                if (isIndex(from) && isIndex(to)) {
                    const initialValue_t copy = model.at(from);
                    model.at(to) = copy;
                }
                break;
        }
        touched = {from, to};
    }

    void setType() {
        const bool fits = !model.isFull();
        ASSERT_FALSE(table->setTypeId(typeid(std::string)));
        const bool integer = samples.coin();
        ASSERT_EQ(table->setTypeId(integer ? typeid(int) : typeid(double)), fits);
        if (fits) {
            model.at(model.count).type = integer ? 1 : 2;
        }
    }

    void remove() {
        const std::string id = randomId();
        ASSERT_EQ(table->delInitialVal(id), model.remove(id));
    }

    void step(std::uint64_t removals) {
        touched.clear();
        const std::uint64_t choice = samples.below(20);
        if (choice < removals) {
            remove();
        } else if (choice < 13) {
            append();
        } else if (choice < 16) {
            modify();
        } else if (choice < 19) {
            edit();
        } else {
            setType();
        }
    }

    void expectSameSlot(int index) {
        ASSERT_TRUE(stored[index] == model.at(index))
            << index << ": " << testing::PrintToString(stored[index]) << " instead of "
            << testing::PrintToString(model.at(index));
    }

    /// The slots in reach of the last step.
    void expectSameNearby() {
        const std::string id = randomId();
        ASSERT_EQ(table->findInitialVal(id), model.finds(id) ? stored : nullptr) << id;
        for (const int index : touched) {
            if (isIndex(index)) {
                expectSameSlot(index);
            }
        }
        for (int index = -1; index < std::min(model.count + 2, 5120); ++index) {
            expectSameSlot(index);
        }
    }

    void expectSame() {
        ASSERT_EQ(countOf(*table), model.count);
        for (int index = -1; index < 5120; ++index) {
            expectSameSlot(index);
        }
    }

    void use(int steps, std::uint64_t removals) {
        for (int i = 0; i < steps && !HasFatalFailure(); ++i) {
            step(removals);
            expectSameNearby();
        }
        expectSame();
    }

    Model model;
    Samples samples{20241003};
    std::vector<int> touched;
};

TEST_F(StoreModel, AnAlmostEmptyTableIsThatOfTheModel) {
    model.at(0) = stored[0];  // the first slot was used to find the others
    for (int round = 0; round < 60 && !HasFatalFailure(); ++round) {
        use(500, round % 2 == 0 ? 6 : 9);
    }
}

TEST_F(StoreModel, AnAlmostFullTableIsThatOfTheModel) {
    model.at(0) = stored[0];
    fillUp();
    for (int index = 0; index < 5120; ++index) {
        model.appended(std::to_string(index), 1).iValue = index;
    }
    for (int round = 0; round < 4 && !HasFatalFailure(); ++round) {
        for (int i = 0; i < 500 && !HasFatalFailure(); ++i) {
            step(5);
        }
        expectSame();
    }
}

}  // namespace
