// A table of initial values and access to all its slots, in use or not.
#pragma once

#include <rfUtils/initial/itemInitial.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

inline bool operator==(const initialValue_t& a, const initialValue_t& b) {
    return a.id == b.id && a.type == b.type && a.iValue == b.iValue && a.dValue == b.dValue &&
           a.sValue == b.sValue;
}

inline void PrintTo(const initialValue_t& entry, std::ostream* out) {
    *out << '{' << entry.id << ", " << entry.type << ", " << entry.iValue << ", " << entry.dValue
         << ", " << entry.sValue << '}';
}

inline std::string dumpOf(const itemInitial& table) {
    testing::internal::CaptureStdout();
    EXPECT_TRUE(table.checkInitialVal());
    return testing::internal::GetCapturedStdout();
}

inline int countOf(const itemInitial& table) {
    int count = -12345;
    EXPECT_EQ(std::sscanf(dumpOf(table).c_str(), "***** Total Num: %d", &count), 1);
    return count;
}

class Store : public testing::Test {
protected:
    Store() {
        // A lookup returns the address of entry 0 and so gives access to all slots.
        table->setInitialVal("first slot", 0);
        stored = table->findInitialVal("first slot");
        table->delInitialVal("first slot");
    }

    void append(const std::vector<std::string>& ids) {
        for (const std::string& id : ids) {
            EXPECT_TRUE(table->setInitialVal(id, static_cast<int>(id[0])));
        }
    }

    /// Appends entries "0" to "5119" with their number as the value.
    void fillUp() {
        for (int index = 0; index < 5120; ++index) {
            ASSERT_TRUE(table->setInitialVal(std::to_string(index), index));
        }
    }

    void expectFilledUp() const {
        EXPECT_EQ(countOf(*table), 5120);
        for (int index = 0; index < 5120; ++index) {
            ASSERT_EQ(stored[index], (initialValue_t{std::to_string(index), 1, index, 0.0, ""}));
        }
    }

    void expectAllEmpty() const {
        for (int index = 0; index < 5120; ++index) {
            ASSERT_EQ(stored[index], kEmpty) << index;
        }
    }

    std::vector<std::string> idsInUse() const {
        std::vector<std::string> ids;
        for (int index = 0; index < countOf(*table); ++index) {
            ids.push_back(stored[index].id);
        }
        return ids;
    }

    using Ids = std::vector<std::string>;

    const std::unique_ptr<itemInitial> table = std::make_unique<itemInitial>();
    initialValue_t* stored = nullptr;  // entry 0; the guard slot is stored[-1]
    const initialValue_t kEmpty;
    const initialValue_t kFull{"old", 9, 11, 2.5, "text"};
};
