// BLUE selection, hidden rows and moved rows of a list: the counts the
// status bar shows, the warning before a large selection, and marks that
// stay with their rows through sorts, moves and renumbering.
#include <gtest/gtest.h>

#include "filelist/GridMarks.h"
#include "grid_test_rows.h"
#include "support/ScriptedHost.h"

using namespace tav;
using gridtest::Item;

namespace {

std::vector<Item> sample() {
    return {
        {"(docs)", "<DIR>", "", "", "01/02/2020", "2020/02/01"},
        {"alpha", "txt", "1,234", "000000001234", "05/01/2021", "2021/01/05"},
        {"Beta", "htm", "10", "000000000010", "03/03/2019", "2019/03/03"},
        {"(src)", "<DIR>", "", "", "07/07/2022", "2022/07/07"},
        {"gamma", "", "0", "000000000000", "28/02/2021", "2021/02/28"},
    };
}

class GridMarksTest : public ::testing::Test {
protected:
    void SetUp() override { gridtest::fill(table, sample()); }
    std::vector<bool> blue() const {
        std::vector<bool> v;
        for (const Row& r : table.rows()) v.push_back(r.blue);
        return v;
    }
    RowTable table;
    tavtest::ScriptedHost host;
};

TEST_F(GridMarksTest, CountsTellDirectoriesFromFilesAndAddKeyBytesOnlyWhenReversible) {
    SetBlue(table, 0, 2, true);
    EXPECT_EQ(CountSelection(table, true), (SelectionCounts{1, 2, 1244}));
    EXPECT_EQ(CountSelection(table, false), (SelectionCounts{1, 2, 0}));
}

TEST_F(GridMarksTest, SelectAllLeavesHiddenRowsOutOnlyWithBitTwo) {
    HideRows(table, 1, 1);
    SelectionCounts counts;
    SelectOptions options;
    ASSERT_TRUE(SelectRows(table, kSelectAllRows, options, &host, counts));
    EXPECT_EQ(counts.dirs + counts.files, 5);
    ClearSelection(table);
    ASSERT_TRUE(SelectRows(table, kSelectAllRows | kSelectShownRows, options, &host, counts));
    EXPECT_EQ(counts, (SelectionCounts{2, 2, 10}));
    EXPECT_EQ(blue(), (std::vector<bool>{true, false, true, true, true}));
    EXPECT_TRUE(host.asked().empty());
}

TEST_F(GridMarksTest, NoBitOrNoRowsSelectsNothing) {
    SelectionCounts counts;
    EXPECT_FALSE(SelectRows(table, 0, {}, &host, counts));
    EXPECT_EQ(CountBlue(table), 0u);
    RowTable empty;
    empty.begin(gridtest::gridColumns());
    EXPECT_FALSE(SelectRows(empty, kSelectAllRows, {}, &host, counts));
    EXPECT_EQ(counts, SelectionCounts{});
}

TEST_F(GridMarksTest, LargeSelectionAsksWithItsExactLinesAndNoKeepsTheSelection) {
    SetBlue(table, 4, 4, true);
    SelectOptions options;
    options.warnAbove = 4;
    host.answer(2);  // No
    SelectionCounts counts;
    EXPECT_FALSE(SelectRows(table, kSelectAllRows, options, &host, counts));
    ASSERT_EQ(host.asked().size(), 1u);
    EXPECT_EQ(host.asked()[0].message,
              "You have selected a very large number of files.\rFiles Selected: 5\r"
              "This will take some time to process. Do you wish to continue?\rPress Yes to continue.\r"
              "Press No to cancel selection.");
    EXPECT_EQ(host.asked()[0].buttons, "4");
    EXPECT_EQ(blue(), (std::vector<bool>{false, false, false, false, true}));
    EXPECT_EQ(counts, (SelectionCounts{0, 1, 0}));

    host.answer(1);  // Yes
    EXPECT_TRUE(SelectRows(table, kSelectAllRows, options, &host, counts));
    EXPECT_EQ(CountBlue(table), 5u);
}

TEST_F(GridMarksTest, CountAtTheLimitDoesNotAsk) {
    SelectOptions options;
    options.warnAbove = 4;
    HideRows(table, 0, 0);
    SelectionCounts counts;
    EXPECT_TRUE(SelectRows(table, kSelectAllRows | kSelectShownRows, options, &host, counts));
    EXPECT_TRUE(host.asked().empty());
}

TEST_F(GridMarksTest, ToggleTakesRangesInEitherOrderAndIgnoresRowsBeyondTheEnd) {
    ToggleBlue(table, 3, 1);
    EXPECT_EQ(blue(), (std::vector<bool>{false, true, true, true, false}));
    ToggleBlue(table, 2, 99);
    EXPECT_EQ(blue(), (std::vector<bool>{false, true, false, false, true}));
    ToggleBlue(table, 7, 9);
    EXPECT_EQ(CountBlue(table), 2u);
}

TEST_F(GridMarksTest, MarksStayWithTheirRowsThroughSortAndRenumber) {
    SetBlue(table, 1, 1, true);  // alpha
    HideRows(table, 2, 2);       // Beta
    SortOrder order;
    order.colTypes = {col::Size, col::FileName};
    SortRows(table, order);
    EXPECT_EQ(gridtest::names(table), (std::vector<std::string>{"(docs)", "(src)", "gamma", "Beta", "alpha"}));
    Renumber(table);
    EXPECT_TRUE(table.rows()[4].blue);
    EXPECT_TRUE(table.rows()[3].hidden);
    EXPECT_EQ(CountBlue(table), 1u);
    EXPECT_EQ(CountHidden(table), 1u);
    EXPECT_EQ(table.rows()[4].cells[0], "5");
}

struct MoveCase {
    const char* name;
    std::size_t first, last;
    bool up;
    bool moved;
    std::size_t newFirst, newLast;
    std::vector<std::string> order;
};

class MoveRowsTest : public ::testing::TestWithParam<MoveCase> {};

TEST_P(MoveRowsTest, BlockMovesOnePlaceKeepingItsOrderAndItsMarks) {
    const MoveCase& c = GetParam();
    RowTable table;
    gridtest::fill(table, sample());
    SetBlue(table, c.first, c.last, true);
    std::size_t first = c.first, last = c.last;
    EXPECT_EQ(MoveRows(table, first, last, c.up), c.moved);
    EXPECT_EQ(gridtest::names(table), c.order);
    EXPECT_EQ(first, c.newFirst);
    EXPECT_EQ(last, c.newLast);
    for (std::size_t i = 0; i < table.rows().size(); ++i)
        EXPECT_EQ(table.rows()[i].blue, i >= first && i <= last) << "row " << i;
}

INSTANTIATE_TEST_SUITE_P(
    Cases, MoveRowsTest,
    ::testing::Values(
        MoveCase{"BlockUp", 2, 3, true, true, 1, 2, {"(docs)", "Beta", "(src)", "alpha", "gamma"}},
        MoveCase{"BlockDown", 1, 2, false, true, 2, 3, {"(docs)", "(src)", "alpha", "Beta", "gamma"}},
        MoveCase{"OneRowDownToTheEnd", 3, 3, false, true, 4, 4, {"(docs)", "alpha", "Beta", "gamma", "(src)"}},
        MoveCase{"AtTheTopStays", 0, 1, true, false, 0, 1, {"(docs)", "alpha", "Beta", "(src)", "gamma"}},
        MoveCase{"AtTheEndStays", 3, 4, false, false, 3, 4, {"(docs)", "alpha", "Beta", "(src)", "gamma"}}),
    [](const auto& p) { return std::string(p.param.name); });

TEST_F(GridMarksTest, HideAndShowAllCountTheRowsThatChanged) {
    EXPECT_EQ(HideRows(table, 1, 3), 3u);
    EXPECT_EQ(HideRows(table, 3, 4), 1u);
    EXPECT_EQ(CountHidden(table), 4u);
    EXPECT_EQ(ShowAllRows(table), 4u);
    EXPECT_EQ(CountHidden(table), 0u);
    EXPECT_EQ(table.rows()[2].cells[1], "Beta");
}

}  // namespace
