#include "content/Entities.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

struct Case {
    const char* name;
    std::string in;
    std::string out;
};

class DecodeEntitiesTest : public ::testing::TestWithParam<Case> {};

TEST_P(DecodeEntitiesTest, Decodes) { EXPECT_EQ(tav::DecodeEntities(GetParam().in), GetParam().out); }

INSTANTIATE_TEST_SUITE_P(
    Cases, DecodeEntitiesTest,
    ::testing::Values(Case{"NumericA", "&#65;", "A"},
                      Case{"NumericOutOfRangeIsBlank", "x&#300;y", "x y"},
                      Case{"NumericLatin1", "&#233;", "\xC3\xA9"},
                      Case{"MissingSemicolonLosesNextChar", "&#65xy", "Ay"},
                      Case{"NoNumberTakesOneChar", "&#x41;", std::string("\0", 1) + "41;"},
                      Case{"AmpAtEndStays", "a&#", "a&#"},
                      Case{"AmpLtStaysOneLevel", "&amp;lt;", "&lt;"},
                      Case{"LtGt", "&lt;b&gt;", "<b>"},
                      Case{"NamesIgnoreCaseForTheFirstSet", "&QUOT;&Copy;", "\"\xC2\xA9"},
                      Case{"NbspIsBlank", "a&nbsp;b", "a b"},
                      Case{"EmptyNameIsAmp", "a&;b", "a&b"},
                      Case{"AcuteIsLetterA", "&acute;", "a"},
                      Case{"EthIsCapital", "&eth;", "\xC3\x90"},
                      Case{"LettersExactCase", "&Eacute;&eacute;&ntilde;", "\xC3\x89\xC3\xA9\xC3\xB1"},
                      Case{"LetterWrongCaseUnknown", "&EACUTE;", "???EACUTE???"},
                      Case{"UnknownName", "&zork;", "???zork???"},
                      Case{"LongNameSkipped", "&abcdefghijk; &lt;", "&abcdefghijk; <"},
                      Case{"NameWithAmpSkipped", "&a &lt;", "&a <"},
                      Case{"Char161BecomesAmp", "\xC2\xA1", "&"},
                      Case{"NoReference", "plain text", "plain text"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(DecodeEntities, ReportsInvalidNumbersOnlyWhenAsked) {
    std::vector<std::string> problems;
    EXPECT_EQ(tav::DecodeEntities("&#999;x", &problems), " x");
    ASSERT_EQ(problems.size(), 1u);
    EXPECT_EQ(problems[0],
              "&# followed by >>999;x<< found. This is invalid. Should be follwed by numeric value 0-255");
    problems.clear();
    tav::DecodeEntities("&#65;", &problems);
    EXPECT_TRUE(problems.empty());
}

class EscapeCellTest : public ::testing::TestWithParam<Case> {};

TEST_P(EscapeCellTest, Escapes) { EXPECT_EQ(tav::EscapeCell(GetParam().in), GetParam().out); }

INSTANTIATE_TEST_SUITE_P(Cases, EscapeCellTest,
                         ::testing::Values(Case{"PrintableStays", "a b~", "a b~"},
                                           Case{"LineEnds", "a\r\nb", "a&#13&#10b"},
                                           Case{"Tab", "\t", "&#9"},
                                           Case{"Delete", "\x7F", "&#127"},
                                           Case{"C1", "\xC2\x80", "&#128"},
                                           Case{"Latin1Stays", "\xC2\xA0\xC3\xBF", "\xC2\xA0\xC3\xBF"},
                                           Case{"BeyondLatin1Stays", "\xE2\x82\xAC", "\xE2\x82\xAC"}),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
