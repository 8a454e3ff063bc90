#include <gtest/gtest.h>

#include "core/AppError.h"
#include "core/ListText.h"
#include "core/UniqueName.h"
#include "core/Utf8.h"
#include "support/TempDir.h"

using namespace tav;
using V = std::vector<std::string>;

struct SplitCase {
    const char* name;
    std::string text;
    V items;
};

class BracketSplit : public ::testing::TestWithParam<SplitCase> {};

TEST_P(BracketSplit, GivesElements) { EXPECT_EQ(splitItems(GetParam().text), GetParam().items); }

INSTANTIATE_TEST_SUITE_P(
    Lists, BracketSplit,
    ::testing::Values(SplitCase{"empty", "", {""}}, SplitCase{"plain", "a|b|c", {"a", "b", "c"}},
                      SplitCase{"bracketHoldsSeparator", "{a|b}|c", {"a|b", "c"}},
                      SplitCase{"textBehindBracketIsDropped", "{a|b}x|c", {"a|b"}},
                      SplitCase{"bracketUntrimmedInside", " { a } | b", {" a ", " b"}},
                      SplitCase{"missingCloseRunsToEnd", "{a|b", {"a|b"}},
                      SplitCase{"trailingSeparatorGivesEmpty", "a|", {"a", ""}},
                      SplitCase{"blanksKeptOutsideBrackets", " a | b ", {" a ", " b "}}),
    [](const auto& p) { return std::string(p.param.name); });

TEST(ListText, ElementNumbersFromOneAndEmptyBeyondEnd) {
    EXPECT_EQ(listElement("x|y", 1), "x");
    EXPECT_EQ(listElement("x|y", 2), "y");
    EXPECT_EQ(listElement("x|y", 5), "");
    EXPECT_EQ(listElement("x|y", 0), "");
}

TEST(ListText, LimitLeavesTheRest) {
    ListSplit s = splitList("a|b|c|d", "|", "{}", 2);
    EXPECT_EQ(s.items, (V{"a", "b"}));
    EXPECT_EQ(s.rest, "c|d");
}

TEST(ListText, OtherBracketPairsAndFallback) {
    EXPECT_EQ(splitItems("(a,b),c", ",", "()"), (V{"a,b", "c"}));
    EXPECT_EQ(splitItems("{a,b},c", ",", "xx"), (V{"a,b", "c"}));  // same characters fall back to braces
}

TEST(ListText, JoinRoundTripsElementsWithBracesAndSeparators) {
    const std::vector<V> cases = {
        {"a", "b|c", ""}, {"{x}", "y}", "{"}, {"", ""}, {" lead", "trail "}, {"a{b|c}d", "{{"}, {"\xC2\xA0x", "|"}};
    for (const V& items : cases) {
        std::string joined = joinList(items);
        EXPECT_EQ(splitItems(joined), items) << joined;
    }
}

TEST(ListText, JoinWithBracesEndsWithTrailerOfTwoCodes) {
    std::string joined = joinList({"a{", "b"});
    ASSERT_GE(joined.size(), 6u);
    EXPECT_EQ(joined.substr(joined.size() - 6, 2), "{{");
    EXPECT_EQ(joined.substr(joined.size() - 4), "!!!\"");  // the first free codes in rising order
}

TEST(ListText, PlainStyleTrailerLeavesOneBraceOnTheLastElement) {
    std::string joined = joinList({"a|b", "c"}, "|", kPlainListStyle);
    EXPECT_NE(joined.find("{{||{{"), std::string::npos);
    V items = splitItems(joined, "|", kPlainListStyle);
    EXPECT_EQ(items, (V{"a|b", "c{"}));
    EXPECT_EQ(splitItems("a|b", "|", kPlainListStyle), (V{"a", "b"}));
}

TEST(ListText, UnusedSequenceIsFirstFreeInRisingOrder) {
    EXPECT_EQ(unusedSequence("abc", 1), "!");
    EXPECT_EQ(unusedSequence("!", 1), "\"");
    EXPECT_EQ(unusedSequence("!!!\"", 2), "!#");
    EXPECT_EQ(unusedSequence("x", 1, "!\""), "#");
    EXPECT_EQ(unusedSequence("x", 4), "");
}

TEST(ListText, FlagTextFalseOnlyForEmptyZeroAndFalse) {
    for (const char* f : {"", " ", "0", " 0 ", "False"}) EXPECT_FALSE(textIsTrue(f)) << f;
    for (const char* t : {"1", "-1", "True", "false", "x"}) EXPECT_TRUE(textIsTrue(t)) << t;
}

TEST(Utf8, InvalidTextReadsAsWindows1252) {
    EXPECT_EQ(toUtf8("caf\xC3\xA9"), "caf\xC3\xA9");
    EXPECT_EQ(toUtf8("caf\xE9"), "caf\xC3\xA9");
    EXPECT_EQ(toUtf8("\x80"), "\xE2\x82\xAC");
    EXPECT_FALSE(isValidUtf8("\xC0\x80"));  // overlong
    EXPECT_FALSE(isValidUtf8("\xC1\xBF"));  // overlong
    EXPECT_FALSE(isValidUtf8("abcdefgh\xC3"));  // cut at the end
    EXPECT_FALSE(isValidUtf8("abcdefgh\xC3" "A"));
    EXPECT_TRUE(isValidUtf8("abcdefgh\xC3\xA9\xDF\xBF" "abcdefgh"));
    EXPECT_EQ(utf8Length("a\xC2\xA0" "b"), 3u);
}

TEST(UniqueName, FreeNameStandsAndTakenNameCountsUp) {
    tavtest::TempDir dir;
    std::string p = (dir / "Report.txt").string();
    EXPECT_EQ(uniqueFileName(p), p);
    dir.write("Report.txt", "x");
    EXPECT_EQ(uniqueFileName(p), (dir / "Report01.txt").string());
    dir.write("Report01.txt", "x");
    dir.write("Report02.txt", "x");
    EXPECT_EQ(uniqueFileName(p), (dir / "Report03.txt").string());
    dir.write("VeryLongName.ini", "x");
    EXPECT_EQ(uniqueFileName((dir / "VeryLongName.ini").string()), (dir / "VeryLonh.ini").string());
    dir.write("Ab09.ini", "x");
    dir.write("Ab090001.ini", "x");
    EXPECT_EQ(uniqueFileName((dir / "Ab09.ini").string()), (dir / "Ab090002.ini").string());
}
