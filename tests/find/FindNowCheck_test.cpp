#include "find/FindNowCheck.h"

#include <gtest/gtest.h>

#include "support/ScriptedHost.h"

using namespace tav;

namespace {
FindNowEntries containing() {
    FindNowEntries e;
    e.section = "Find Containing";
    e.text = "Smith";
    e.includeSubdirs = true;
    return e;
}
}  // namespace

TEST(FindNow, EmptyText) {
    tavtest::ScriptedHost host;
    FindNowEntries e;
    e.section = "fText";
    EXPECT_EQ(checkFindNow(e, host).message, "Enter Text to Find");
    e = containing();
    e.text.clear();
    EXPECT_EQ(checkFindNow(e, host).message, "Enter Text to Find or Date / Size Criteria");
    e.minSizeOn = true;
    e.minSize = "10";
    e.exclude = "x";
    e.mode = FindSearchMode::CurrentListAll;
    EXPECT_EQ(checkFindNow(e, host).message,
              "To search for files in Current List, you must specify Text to find.\r"
              "To search By date/size only, select a directory to Look In.");
    EXPECT_EQ(e.exclude, "");
    EXPECT_EQ(host.messages().size(), 3u);
}

struct PatternRow {
    std::string pattern;
    bool ok;
};
class NamePattern : public testing::TestWithParam<PatternRow> {};
TEST_P(NamePattern, Checked) {
    tavtest::ScriptedHost host;
    FindNowEntries e = containing();
    e.pattern = GetParam().pattern;
    auto out = checkFindNow(e, host);
    EXPECT_EQ(out.ok, GetParam().ok);
    if (!out.ok) {
        EXPECT_EQ(out.message.substr(0, 29), "Named criteria not allowed. E");
    }
}
INSTANTIATE_TEST_SUITE_P(Patterns, NamePattern,
                         testing::Values(PatternRow{"*.txt", true}, PatternRow{"a[0-9]*.htm", true},
                                         PatternRow{"[*]x", true}, PatternRow{"a[bc", false},
                                         PatternRow{"a[z-a].txt", false}, PatternRow{"[!a-c]?#", true}));

TEST(FindNow, ExcludeMustHoldText) {
    tavtest::ScriptedHost host;
    FindNowEntries e;
    e.section = "fText";
    e.text = "Smith";
    e.exclude = "Peter SMITH";
    EXPECT_TRUE(checkFindNow(e, host).ok);
    e.matchCase = true;
    auto out = checkFindNow(e, host);
    EXPECT_EQ(out.message,
              "The Exclude Text entered does not contain the Text to be found. Try again.\r"
              "Match case option will be the same for exclude selection and Find Text.\r"
              "E.g. Find: \"Smith\", but exclude \"Peter Smith\".\r"
              "Text to be Excluded from search must contain Text to find.");
    e.complexShown = true;
    EXPECT_EQ(checkFindNow(e, host).message, "Text to be Excluded from search must contain Text to find.");
}

TEST(FindNow, Dates) {
    tavtest::ScriptedHost host;
    FindNowEntries e = containing();
    e.dates = DateChoice::Modified;
    EXPECT_EQ(checkFindNow(e, host).message,
              "Enter at least one date between which files should be selected. Or Select All Files.\r"
              "E.g. enter date 19th April 2001 in format: 19/04/2001");
    e.dateFrom = "31/02/2001";
    EXPECT_EQ(checkFindNow(e, host).message,
              "Enter a valid date as date to start selection of files.\rE.g. enter date 19th April 2001 in format: 19/04/2001");
    e.dateFrom = "1/2/2001";
    e.dateTo = "tomorrow";
    EXPECT_EQ(checkFindNow(e, host).message.substr(0, 54), "Enter a valid date as date to end selection of files.\r");
    e.dateTo = "2001-04-19";
    EXPECT_TRUE(checkFindNow(e, host).ok);
    EXPECT_EQ(plainDateParse("19/04/2001"), plainDateParse("2001-04-19"));
}

TEST(FindNow, SizeAboveHighestAsksAndReduces) {
    tavtest::ScriptedHost host;
    FindNowEntries e = containing();
    e.maxSizeOn = true;
    e.maxSize = "3000000000";
    host.answer(2);
    EXPECT_FALSE(checkFindNow(e, host).ok);
    EXPECT_EQ(host.messages().back(),
              "Value entered as maximum size [3000000000] is more than highest value allowed allowed [2147483647].\r"
              "Press Yes to continue with value reduced to maximum\rPress No to change value.\r"
              "Do you want to continue with search using this maximum size");
    host.answer(1);
    EXPECT_TRUE(checkFindNow(e, host).ok);
    EXPECT_EQ(e.maxSize, "2147483647");
}

TEST(FindNow, MaxLengthAndSubdirs) {
    tavtest::ScriptedHost host;
    FindNowEntries e = containing();
    e.maxLength = "9999999999";
    EXPECT_TRUE(checkFindNow(e, host).ok);
    EXPECT_EQ(e.maxLength, "2147483647");
    EXPECT_EQ(host.messages().back(),
              "Maximum length more than 2147483647not allowed. Maximum length to be used will be reduced automatically.");
    e = containing();
    e.text.clear();
    e.pattern = "*.txt";
    e.includeSubdirs = false;
    host.answer(1);
    EXPECT_TRUE(checkFindNow(e, host).ok);
    EXPECT_TRUE(e.includeSubdirs);
    EXPECT_EQ(host.messages().back().substr(0, 50), "Search for files without specifying Text to Find.\r");
    e.includeSubdirs = false;
    e.viewMode = 'T';
    size_t asked = host.messages().size();
    EXPECT_TRUE(checkFindNow(e, host).ok);
    EXPECT_EQ(host.messages().size(), asked);
}
