#include "analysis/plots/decimation.h"

#include <gtest/gtest.h>
#include <support/limits.h>
#include <support/samples.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <sstream>
#include <string>

using rfu::ColumnPoints;
using rfu::ColumnValues;
using rfu::test::kNan;

namespace {

using Values = std::vector<double>;

/// "first last minimum maximum", with "-" in front where no line leads to it; "none" where nothing
/// was measured.
std::string textOf(const ColumnValues& column) {
    std::ostringstream text;
    if (column.measured == 0) {
        return std::isnan(column.first + column.last + column.minimum + column.maximum) ? "none"
                                                                                        : "odd";
    }
    text << (column.isJoined ? "" : "- ") << column.first << ' ' << column.last << ' '
         << column.minimum << ' ' << column.maximum;
    return text.str();
}

std::vector<std::string> decimated(const Values& places, const Values& values,
                                   const std::vector<std::size_t>& breaks = {}) {
    const auto groups = rfu::groupByColumn(places.data(), places.size());
    std::vector<std::string> texts;
    for (const ColumnValues& column : rfu::decimate(values.data(), groups, breaks)) {
        texts.push_back(textOf(column));
    }
    return texts;
}

}  // namespace

TEST(Decimation, GroupsPointsByPixelColumn) {
    const Values places = {-0.5, 0.0, 0.9, 1.0, 1.0, 5.25};
    std::string text;
    for (const ColumnPoints& group : rfu::groupByColumn(places.data(), places.size())) {
        text += std::to_string(group.column) + ':' + std::to_string(group.begin) + '-' +
                std::to_string(group.end) + ' ';
    }
    EXPECT_EQ(text, "-1:0-1 0:1-3 1:3-5 5:5-6 ");
    EXPECT_TRUE(rfu::groupByColumn(nullptr, 0).empty());
}

TEST(Decimation, KeepsEndsAndExtremesOfAColumn) {
    using Texts = std::vector<std::string>;
    EXPECT_EQ(decimated({0.0, 0.2, 0.4, 0.6, 1.0}, {3, 9, 1, 4, 5}),
              (Texts{"- 3 4 1 9", "5 5 5 5"}));
    EXPECT_EQ(decimated({0, 1, 2, 3}, {1, kNan, 3, 4}),
              (Texts{"- 1 1 1 1", "none", "- 3 3 3 3", "4 4 4 4"}));
    EXPECT_EQ(decimated({0.0, 0.5, 1.0, 1.5, 2.0}, {1, 2, 3, INFINITY, 5}),
              (Texts{"- 1 2 1 2", "3 3 3 3", "- 5 5 5 5"}))
        << "a gap at the end of a column";
    EXPECT_EQ(decimated({0.0, 1.0, 1.3, 1.6, 2.0}, {1, 2, kNan, 3, 4}),
              (Texts{"- 1 1 1 1", "2 3 2 3", "4 4 4 4"}))
        << "a gap within a column does not show";
    EXPECT_EQ(decimated({0, 1, 2}, {1, 2, 3}, {1}), (Texts{"- 1 1 1 1", "- 2 2 2 2", "3 3 3 3"}))
        << "a break";
    EXPECT_EQ(decimated({0, 1, 2, 3}, {1, kNan, 3, 4}, {1}),
              (Texts{"- 1 1 1 1", "none", "- 3 3 3 3", "4 4 4 4"}))
        << "a break at a point that was not measured";
}

TEST(Decimation, AgreesWithAPlainRestatement) {
    rfu::test::Samples samples(5);
    for (int run = 0; run < 300; ++run) {
        const std::size_t count = 1 + samples.below(200);
        const double columns = static_cast<double>(1 + samples.below(60));
        Values places(count);
        Values values(count);
        for (std::size_t i = 0; i < count; ++i) {
            places[i] = samples.between(0.0, columns);
            values[i] = samples.below(6) == 0 ? kNan : static_cast<double>(samples.below(20));
        }
        std::sort(places.begin(), places.end());
        std::vector<std::size_t> breaks;
        for (std::size_t i = 0; i < count; ++i) {
            if (samples.below(10) == 0) {
                breaks.push_back(i);
            }
        }
        std::map<int, std::vector<std::size_t>> measured;  // points of each column
        for (std::size_t i = 0; i < count; ++i) {
            std::vector<std::size_t>& points = measured[static_cast<int>(places[i])];
            if (std::isfinite(values[i])) {
                points.push_back(i);
            }
        }
        std::vector<std::string> expected;
        for (const auto& [column, points] : measured) {
            if (points.empty()) {
                expected.emplace_back("none");
                continue;
            }
            Values ordered;
            for (const std::size_t i : points) {
                ordered.push_back(values[i]);
            }
            std::sort(ordered.begin(), ordered.end());
            // A line leads from the point before unless that is missing or a break lies here.
            const std::size_t first = points[0];
            const bool isJoined = first > 0 && std::isfinite(values[first - 1]) &&
                                  !std::binary_search(breaks.begin(), breaks.end(), first);
            expected.push_back(textOf({values[first], values[points.back()], ordered.front(),
                                       ordered.back(), points.size(), isJoined}));
        }
        ASSERT_EQ(decimated(places, values, breaks), expected) << run;
    }
}
