// Files of a hundred thousand entries, in long runs of ten million.
#include "formats.h"

#include <support/deadline.h>
#include <support/samples.h>
#include <support/scopedCodec.h>
#include <support/tempFiles.h>

#include <cstddef>
#include <fstream>
#include <string>
#include <vector>

namespace {

const int kEntries = rfu::test::isLongRun() ? 10000000 : rfu::test::caseCount();

/// A file that repeats an entry. A # in the entry is replaced by its number.
struct Many {
    const Format& format;
    const char* what;
    std::string begin;
    std::string entry;
    std::string end;
    std::string holds;
    std::string said = {};
};

std::string lastNumber() {
    return std::to_string(kEntries - 1);
}

std::vector<Many> many() {
    std::string colours = "colours=32";
    for (int i = 0; i < 32; ++i) {
        colours += " [0 1 2 3|0 1 2 3]";
    }
    const std::string choice = R"({"label":"l","id":"last","enum":1,"dispSeq":2})";
    return {
        {kHdr, "lines", "", "NCOLS 3\n", "NROWS 2\n", "nCols=3 nRows=2"},
        {kAsc, "rows", "ncols 3\nnrows 2\nNODATA_value -9\n1 2 3\n", "4 5 6\n", "",
         kLoaded + " nCols=3 nRows=2 noData=-9" + kDefault + " row0=1,2,3 row1=4,5,6",
         "Raster file loaded"},
        {kBil, "cells behind the last", kBil.good, "abcd", "", kBil.goodHolds,
         "Raster file loaded"},
        {kClr, "colours", "", "0 1 2 3\n", "", colours},
        {kTab, "points", "", "(#,2) (3,4) Label \"Pt 1\"\n", "(1,2) (3,4) Label \"Pt 1\"\n",
         "point0=1,2"},
        {kItems, "choices of one id", R"({"item":[)",
         R"({"label":"l","id":"i","enum":#,"dispSeq":2},)", choice + "]}",
         "item.I=i,l," + lastNumber() + ",2 item.LAST=last,l,1,2"},
        {kItems, "elements that are no choices", R"({"item":[)", "[],", choice + "]}",
         "item.LAST=last,l,1,2"},
        {kItems, "members that are no items", "{", R"("k#":0,)", R"("item":[)" + choice + "]}",
         "item.LAST=last,l,1,2"},
        {kItems, "items without choices", "{", R"("k#":[],)", R"("item":[)" + choice + "]}",
         "item.LAST=last,l,1,2"},
        {kSetups, "setups", R"({"item":[)", R"({"label":"l","id":"i"},)",
         R"({"label":"l","id":"i"}]})", std::to_string(kEntries + 1) + " setups", "\"item\""},
    };
}

TEST(ManyEntries, AreReadToTheLast) {
    const Deadline deadline(3600);
    const ScopedCodec codec("ISO 8859-1");
    for (const Many& file : many()) {
        const TempFiles files;
        const std::string path = files.path(file.format.file);
        {
            std::ofstream out(path, std::ios::binary);
            const std::size_t place = file.entry.find('#');
            out << file.begin;
            for (int i = 0; i < kEntries; ++i) {
                if (place == std::string::npos) {
                    out << file.entry;
                } else {
                    out << file.entry.substr(0, place) << std::to_string(i)
                        << file.entry.substr(place + 1);
                }
            }
            out << file.end;
        }
        const auto subject = file.format.make();
        const std::string what = std::string(file.format.file) + ": " + file.what;
        EXPECT_TRUE(subject->load(path)) << what;
        EXPECT_EQ(subject->said(), file.said) << what;
        EXPECT_EQ(subject->holdsInUse(), file.holds) << what;
    }
}

TEST(ManyEntries, AreAllFound) {
    const Deadline deadline(3600);
    const TempFiles files;
    const std::string path = files.path("items.json");
    {
        std::ofstream out(path, std::ios::binary);
        out << R"({"item":[)";
        for (int i = 0; i < kEntries; ++i) {
            out << (i == 0 ? "" : ",") << R"({"label":"l","id":"i)" << std::to_string(i)
                << R"(","enum":)" << std::to_string(i) << R"(,"dispSeq":1})";
        }
        out << "]}";
    }
    subItemList list;
    ASSERT_TRUE(list.loadJson(path));
    for (int i = 0; i < kEntries; ++i) {
        ASSERT_EQ(list.getOrderFromSubItemId("item", 'i' + std::to_string(i)), i);
    }
}

}  // namespace
