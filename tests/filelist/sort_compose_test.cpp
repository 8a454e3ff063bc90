// The sort order as stored and composed, the texts around a sort, and the
// marks that header captions get for their place in the order.
#include <gtest/gtest.h>

#include "filelist/SortCompose.h"
#include "grid_test_rows.h"

using namespace tav;

namespace {

TEST(SortOrderText, ReadsNumbersAndDropsTheRest) {
    EXPECT_EQ(ParseSortOrder("6|7| 1 |x||-3"), (std::vector<int>{6, 7, 1, -3}));
    EXPECT_TRUE(ParseSortOrder("").empty());
    EXPECT_EQ(JoinSortOrder({6, 7, 1}), "6|7|1");
    EXPECT_EQ(ParseSortOrder(JoinSortOrder({3, 27, 0})), (std::vector<int>{3, 27, 0}));
}

TEST(NewSortOrder, AddsEachColumnOnceInTheOrderOfAdding) {
    std::vector<int> ns;
    EXPECT_TRUE(AddToNewSortOrder(ns, col::Date));
    EXPECT_TRUE(AddToNewSortOrder(ns, col::FileName));
    EXPECT_FALSE(AddToNewSortOrder(ns, col::Date));
    EXPECT_FALSE(AddToNewSortOrder(ns, -1));
    EXPECT_EQ(ns, (std::vector<int>{col::Date, col::FileName}));
    EXPECT_EQ(NewSortOrderMessage(gridtest::gridColumns(), ns),
              "New Sort Order now >>Date FileName<< - Use Alt_Ctrl to add another column and sort.");
}

TEST(SortTexts, DescribeTheOrderByCaptions) {
    const auto columns = gridtest::gridColumns();
    EXPECT_EQ(SortDescription(columns, {col::Size, col::Number}), "Sort File List by: Size No.");
    EXPECT_EQ(SortDoneStatus(columns, {col::Date}), "Done: Sort File List by: Date");
    // A column that is not in the grid is named by its number.
    EXPECT_EQ(SortCaption(columns, col::Title), "10");
}

struct MarkCase {
    const char* name;
    const char* setting;
    std::vector<std::string> marksByPosition;  // positions 0, 1, 2, 3
};

class SortMarksTest : public ::testing::TestWithParam<MarkCase> {};

TEST_P(SortMarksTest, EachPositionGetsItsMarkAndTheLastRepeats) {
    const MarkCase& c = GetParam();
    const auto marks = ParseSortMarks(c.setting);
    for (std::size_t i = 0; i < c.marksByPosition.size(); ++i)
        EXPECT_EQ(SortMarkFor(i, marks), c.marksByPosition[i]) << "position " << i;
}

INSTANTIATE_TEST_SUITE_P(
    Settings, SortMarksTest,
    ::testing::Values(MarkCase{"Characters", "*+", {"*", "+", "+", "+"}},
                      MarkCase{"List", "(1)|(2)|..", {"(1)", "(2)", "..", ".."}},
                      MarkCase{"Utf8Characters", "\xC2\xB9\xC2\xB2", {"\xC2\xB9", "\xC2\xB2", "\xC2\xB2", "\xC2\xB2"}},
                      MarkCase{"Default", "\xC2\xB9|\xC2\xB2|\xC2\xB3|+", {"\xC2\xB9", "\xC2\xB2", "\xC2\xB3", "+"}},
                      MarkCase{"None", "", {"", "", "", ""}}),
    [](const auto& p) { return std::string(p.param.name); });

TEST(SortMarks, OnlyColumnsInTheOrderAreMarked) {
    const auto marks = ParseSortMarks("*|+");
    const std::vector<int> order{col::Date, col::Size, col::FileName};
    EXPECT_EQ(MarkedCaption("Date", col::Date, order, marks), "Date*");
    EXPECT_EQ(MarkedCaption("FileName", col::FileName, order, marks), "FileName+");
    EXPECT_EQ(MarkedCaption("Type", col::Type, order, marks), "Type");
}

}  // namespace
