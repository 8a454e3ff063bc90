#include "find/CriteriaText.h"

#include <gtest/gtest.h>

#include "find/ComplexCriteria.h"
#include "find/FindCriteria.h"

using namespace tav;

struct DisplayRow {
    const char* name;
    std::string text, exclude;
    bool matchCase, wholeWord;
    ComplexCriteria complex;
    std::string section;
    std::string shown;
};

class DisplayForm : public testing::TestWithParam<DisplayRow> {};

TEST_P(DisplayForm, Shows) {
    const auto& r = GetParam();
    EXPECT_EQ(criteriaAsText(r.text, r.exclude, r.matchCase, r.wholeWord, buildComplexCriteria(r.complex), r.section),
              r.shown);
}

namespace {
ComplexCriteria smith() {
    ComplexCriteria c;
    c.excludeLineStarts = {"REM"};
    c.includeRange = {"Peter"};
    c.includeRangeBytes = 20;
    return c;
}
ComplexCriteria everything() {
    ComplexCriteria c;
    c.values = {"a", "b"};
    c.exclude = {"c"};
    c.excludeLineStarts = {"d"};
    c.excludeStartIgnoreSpaces = true;
    c.excludeSameLine = {"e"};
    c.excludeRange = {"f"};
    c.excludeRangeBytes = 3;
    c.includeLineStarts = {"g"};
    c.includeSameLine = {"h"};
    c.includeRange = {"i"};
    c.includeRangeBytes = 4;
    c.restrictLine = 0;
    return c;
}
}  // namespace

INSTANTIATE_TEST_SUITE_P(
    Cases, DisplayForm,
    testing::Values(
        DisplayRow{"TextAlone", "Smith", "", false, false, {}, "fFDgrid", "Smith"},
        DisplayRow{"Options", "Smith", "", true, true, {}, "fFDgrid", "(Smith) WW MC"},
        DisplayRow{"SimpleExclude", "Smith", "Peter Smith", false, false, {}, "fText", "(Smith) -(Peter Smith)"},
        DisplayRow{"Example", "Smith", "ignored", false, true, smith(), "fFDgrid", "(Smith) WW -L(REM) +R20(Peter)"},
        DisplayRow{"RestrictInText", "Smith", "", false, true, smith(), "fText",
                   "(Smith) WW -L(REM) +R20(Peter) Restrict Line(0)"},
        DisplayRow{"AllInOrder", "x", "", false, false, everything(), "Find Containing",
                   "(x) or(a) or(b) -(c) -LG(d) -S(e) -R3(f) +L(g) +S(h) +R4(i) Restrict Line(0)"}),
    [](const testing::TestParamInfo<DisplayRow>& row) { return std::string(row.param.name); });

TEST(DateSizeText, SizesAndDates) {
    FileFindRecord r;
    EXPECT_EQ(dateSizeAsText(r), "");
    r.minSize = 10;
    EXPECT_EQ(dateSizeAsText(r), "Sz > 10");
    r.maxSize = 20;
    EXPECT_EQ(dateSizeAsText(r), "Sz > 10, Sz < 20");
    r.modifiedToday = true;
    EXPECT_EQ(dateSizeAsText(r), "Sz > 10, Sz < 20, M: Today");
    r = {};
    r.created = {true, 36000, 36001};
    EXPECT_EQ(dateSizeAsText(r), "C: From 24/07/1998 To 25/07/1998");
    r.created = {true, std::nullopt, 1};
    EXPECT_EQ(dateSizeAsText(r), "C: Before 31/12/1899");
    r.created.on = false;
    r.accessed = {true, 0, std::nullopt};
    r.maxSize = 5;
    EXPECT_EQ(dateSizeAsText(r, [](int64_t b) { return std::to_string(b) + " B"; }), "Sz < 5 B, A: After 30/12/1899");
}

TEST(FileFindText, Statement) {
    FileFindRecord r;
    EXPECT_EQ(fileFindAsText(r, "c:\\a|d:\\b", "\n"), "Look In: c:\\a, d:\\b");
    r.pattern = "*.txt";
    r.minSize = 1;
    r.mode = FindSearchMode::CurrentListNamed;
    r.options.maxBytes = 20000;
    EXPECT_EQ(fileFindAsText(r, "ignored", "\n"),
              "Files Named: *.txt\nDate/Size Criteria: Sz > 1\nLook In: Current List (Only Files Named ...)\n"
              "** NB Only First 20000 bytes of each file will be checked. **");
}

TEST(Legend, RowsInOrder) {
    const Legend& l = findLegend();
    ASSERT_EQ(l.rows.size(), 13u);
    EXPECT_EQ(l.rows[5].second, "Exclude Lines Which Start [l] (Ignore Leading Spaces)");
    EXPECT_EQ(l.rows[7].second, "Exclude When any of following wiThin range (nn bytes) of text to find [t]");
    EXPECT_EQ(l.rows.back().first, "Restrict Line(...)");
    EXPECT_EQ(l.heading.size(), 4u);
}
