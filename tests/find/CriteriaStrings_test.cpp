#include <gtest/gtest.h>

#include "find/ComplexCriteria.h"
#include "find/EscapeSequence.h"
#include "find/FileFindRecord.h"
#include "find/FindCriteria.h"
#include "find/FindOptions.h"
#include "find/LastSearches.h"
#include "find/LookInItem.h"

using namespace tav;

namespace {

ComplexCriteria sample() {
    ComplexCriteria c;
    c.values = {"Smyth", "Smithe"};
    c.exclude = {"Peter Smith"};
    c.excludeLineStarts = {"REM"};
    c.excludeSameLine = {"//"};
    c.excludeRange = {"Jones"};
    c.includeLineStarts = {"  Dim"};
    c.includeSameLine = {"="};
    c.includeRange = {"Peter"};
    c.restrictLine = 200;
    c.excludeRangeBytes = 5;
    c.includeRangeBytes = 20;
    c.excludeStartIgnoreSpaces = true;
    return c;
}

}  // namespace

class DelimiterInValue : public testing::TestWithParam<std::string> {};

TEST_P(DelimiterInValue, SurvivesFullStoreAndReload) {
    const std::string v = GetParam();
    ComplexCriteria c = sample();
    c.values.push_back(v);
    c.exclude.push_back("x" + v + "x");
    c.includeRange.push_back(v + v);
    FindCriteria f;
    f.text = v;
    f.exclude = "a" + v;
    f.matchCase = true;
    f.complex = buildComplexCriteria(c);
    f.switches = "-1|0|";
    FindCriteria back = parseFindCriteria(buildFindCriteria(f));
    EXPECT_EQ(back, f);
    EXPECT_EQ(parseComplexCriteria(back.complex), c);
}

INSTANTIATE_TEST_SUITE_P(Values, DelimiterInValue,
                         testing::Values("`", "#", "~", "[", "]", "a`b#c~d[e]f", "[x]~[y]", "!!`", "!!#~[]``",
                                         "{|}", "!!\"!!!", "~~~###"));

TEST(CriteriaRecord, SubstituteNeverOverlapsItself) {
    // "!!!" would turn "!!`" into "!!!!!" and read back wrongly.
    std::string s = escapeSequence("text without it");
    EXPECT_EQ(s, "!!\"");
    EXPECT_NE(s.front(), s.back());
    EXPECT_EQ(escapeSequence("!!\""), "!!$");
}

TEST(CriteriaRecord, OldRecordWithFewerFieldsReadsEmpty) {
    FindCriteria c = parseFindCriteria("abc`def");
    EXPECT_EQ(c.text, "abc");
    EXPECT_EQ(c.exclude, "def");
    EXPECT_FALSE(c.matchCase);
    EXPECT_EQ(c.wordRanges, kDefaultWordRanges);
    EXPECT_TRUE(c.ignoreCase());
    EXPECT_TRUE(parseFindCriteria("x`y`True`-1``").wholeWord);
    EXPECT_TRUE(parseFindCriteria("x`y`True`-1``").matchCase);
}

TEST(CriteriaRecord, SectionsWithoutLinesKeepOnlyValuesAndExclusions) {
    FindCriteria f;
    f.text = "Smith";
    f.complex = buildComplexCriteria(sample());
    const std::string rec = buildFindCriteria(f);
    for (auto section : {kSectionFileList, kSectionTopList, kSectionDirs}) {
        ComplexCriteria c = parseComplexCriteria(parseFindCriteria(rec, section).complex);
        EXPECT_EQ(c.values, sample().values);
        EXPECT_EQ(c.exclude, sample().exclude);
        EXPECT_TRUE(c.excludeLineStarts.empty() && c.includeSameLine.empty() && c.includeRange.empty());
        EXPECT_EQ(complexPartsNote(section, f.complex), kComplexPartsNote);
    }
    EXPECT_EQ(parseComplexCriteria(parseFindCriteria(rec, kSectionText).complex), sample());
    EXPECT_EQ(complexPartsNote(kSectionText, f.complex), "");
}

TEST(ComplexString, LayoutOfFields) {
    ComplexCriteria c;
    c.exclude = {"a", "b"};
    c.values = {"v"};
    c.restrictLine = 7;
    EXPECT_EQ(buildComplexCriteria(c), "a#b~~~~~7~0~0~0~v~~~0");
    EXPECT_EQ(buildComplexCriteria(ComplexCriteria{}), "");
    EXPECT_TRUE(parseComplexCriteria("").empty());
    // Group characters of the top level are honoured on reading.
    EXPECT_EQ(parseComplexCriteria("[x#y]~~~~~0~0~0~0~z").exclude, (std::vector<std::string>{"x", "y"}));
}

TEST(ComplexString, TildeEscapeRecordsFlagAndSubstitute) {
    ComplexCriteria c;
    c.values = {"a~b"};
    std::string s = buildComplexCriteria(c);
    EXPECT_EQ(s.find("a~b"), std::string::npos);
    EXPECT_EQ(parseComplexCriteria(s), c);
    EXPECT_EQ(std::count(s.begin(), s.end(), '~'), 18);  // fields 0..18
}

TEST(FileFindRecord, RoundTripWithPatternHoldingBar) {
    FileFindRecord r;
    r.mode = FindSearchMode::CurrentListNamed;
    r.options.includeSubdirs = true;
    r.options.maxBytes = 20000;
    r.options.showFoundText = true;
    r.options.lastCriteriaRow = 3;
    r.minSize = 10;
    r.maxSize = 3000000000LL;
    r.modified = {true, 36000, std::nullopt};
    r.accessed = {false, std::nullopt, 40000};
    r.pattern = "*.htm|*.txt";
    std::string s = buildFileFindRecord(r);
    EXPECT_EQ(s, "2|-1__20000_0_0_0_-1_3|10|3000000000|0|-1|36000||0|||0||40000|*.htm|*.txt");
    EXPECT_EQ(parseFileFindRecord(s), r);
    EXPECT_EQ(parseFileFindRecord("").pattern, "");
    EXPECT_FALSE(parseFileFindRecord("0||||||||||||||*.*").hasNamePattern());
}

TEST(FindSwitches, RoundTrip) {
    FindSwitches s{true, false, "x"};
    EXPECT_EQ(parseFindSwitches(buildFindSwitches(s)), s);
    EXPECT_FALSE(parseFindSwitches("").showPopup);
}

struct RoundRow {
    int64_t in, out;
};
class MaxBytes : public testing::TestWithParam<RoundRow> {};
TEST_P(MaxBytes, RoundsUpToBlocks) { EXPECT_EQ(roundMaxBytes(GetParam().in), GetParam().out); }
INSTANTIATE_TEST_SUITE_P(Values, MaxBytes,
                         testing::Values(RoundRow{0, 0}, RoundRow{-5, -5}, RoundRow{1, 10000}, RoundRow{10000, 10000},
                                         RoundRow{10001, 20000}, RoundRow{2147473647, 2147480000},
                                         RoundRow{2147473648, 2147483647}, RoundRow{5000000000LL, 2147483647}));

TEST(LastSearches, NewEntryGoesToHeadOnce) {
    std::vector<std::string> list = parseLastSearches(buildLastSearches({"a", "b|c", "d"}));
    EXPECT_EQ(list, (std::vector<std::string>{"a", "b|c", "d"}));
    addLastSearch(list, "d");
    EXPECT_EQ(list, (std::vector<std::string>{"d", "a", "b|c"}));
    auto shown = lastSearchesForDialog({"w1", ""}, list);
    EXPECT_EQ(shown.size(), 5u);
    EXPECT_EQ(shown[1], std::string(55, '-'));
    EXPECT_TRUE(parseLastSearches("").empty());
}

TEST(LookIn, ItemRoundTrip) {
    LookInItem item{"c:\\a|{d:\\b}", false};
    std::string s = buildLookInItem(item);
    EXPECT_EQ(s, "c:\\a\"::**d:\\b**::|0");
    EXPECT_EQ(parseLookInItem(s), item);
    EXPECT_TRUE(parseLookInItem("-----|-1").divider);
}

TEST(ListSearchValue, MaximumThenRecord) {
    FindCriteria f;
    f.text = "a|b`c";
    const std::string rec = buildFindCriteria(f);
    int64_t max = -1;
    std::string back;
    parseListSearchValue(buildListSearchValue(20000, rec), max, back);
    EXPECT_EQ(max, 20000);
    EXPECT_EQ(parseFindCriteria(back), f);
    parseListSearchValue("-1|x", max, back);
    EXPECT_EQ(max, 0);
    EXPECT_EQ(back, "x");
}
