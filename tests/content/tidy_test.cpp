#include "content/Tidy.h"

#include <gtest/gtest.h>

#include <string>

namespace {

struct TidyCase {
    const char* name;
    std::string text;
    std::size_t maxLength;
    int maxBlankLines;
    bool join;
    std::string expected;
};

class TidyTest : public ::testing::TestWithParam<TidyCase> {};

TEST_P(TidyTest, Tidies) {
    const TidyCase& c = GetParam();
    EXPECT_EQ(tav::Tidy(c.text, c.maxLength, c.maxBlankLines, c.join), c.expected);
}

const std::string ten = "a\n\n\n\n\n\n\n\n\n\n\nb";

INSTANTIATE_TEST_SUITE_P(
    Cases, TidyTest,
    ::testing::Values(
        TidyCase{"TenBlankLinesKeepOne", ten, 0, 1, true, "a\r\n\r\nb"},
        TidyCase{"TenBlankLinesKeepNone", ten, 0, 0, true, "a\r\nb"},
        TidyCase{"TenBlankLinesKeepTwo", ten, 0, 2, true, "a\r\n\r\n\r\nb"},
        TidyCase{"NoLimitKeepsAll", std::string(5000, 'x'), 0, 1, true, std::string(5000, 'x')},
        TidyCase{"LimitCuts", "abcdef", 3, 1, true, "abc"},
        TidyCase{"AllLineEndKinds", "a\r\nb\rc\nd", 0, 1, true, "a\r\nb\r\nc\r\nd"},
        TidyCase{"IndentationDropped", "a\n   \tb\n  c", 0, 1, true, "a\r\nb\r\nc"},
        TidyCase{"BlankLineOfSpacesIsBlank", "a\n   \n\t\nb", 0, 1, true, "a\r\n\r\nb"},
        TidyCase{"LeadingLineEndsSkipped", "\n\n\r\nabc", 0, 1, true, "abc"},
        TidyCase{"LeadingBlankStays", "  abc", 0, 1, true, "  abc"},
        TidyCase{"LeadingControlsSkipped", "\x01\x02\tabc", 0, 1, true, "abc"},
        TidyCase{"LeadingC1Skipped", "\xC2\x85" "abc", 0, 1, true, "abc"},
        TidyCase{"LeadingLatin1Kept", "\xC3\xA9t\xC3\xA9", 0, 1, true, "\xC3\xA9t\xC3\xA9"},
        TidyCase{"CutCountsCharacters", "\xC3\xA9\xC3\xA9\xC3\xA9", 2, 1, true, "\xC3\xA9\xC3\xA9"},
        TidyCase{"TrailingLineEndKept", "a\n", 0, 1, true, "a\r\n"},
        TidyCase{"NoJoinKeepsLineEnds", "\nab\n\n\ncd", 0, 0, false, "ab\n\n\ncd"},
        TidyCase{"Empty", "", 10, 1, true, ""}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(TidyLongText, EarlyStopGivesTheSameCut) {
    std::string text;
    for (int i = 0; i < 2000; ++i) text += "line " + std::to_string(i) + "\n\n\n   ";
    const std::string whole = tav::Tidy(text, 0, 1, true);
    EXPECT_EQ(tav::Tidy(text, 100, 1, true), whole.substr(0, 100));
}

}  // namespace
