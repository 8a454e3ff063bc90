// Number masks applied to sizes and counts, and the number reader.
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "filelist/FormatNumberMask.h"
#include "filelist/FormatReadNumber.h"

namespace {

struct WholeCase {
    const char* name;
    std::int64_t value;
    const char* mask;
    const char* expected;
};

class WholeNumberMask : public ::testing::TestWithParam<WholeCase> {};

TEST_P(WholeNumberMask, GivesText) {
    const WholeCase& c = GetParam();
    const tav::FormatResult r = tav::formatNumber(c.value, c.mask);
    ASSERT_TRUE(r.ok()) << r.error;
    EXPECT_EQ(r.text, c.expected);
}

INSTANTIATE_TEST_SUITE_P(
    Table, WholeNumberMask,
    ::testing::Values(
        WholeCase{"ThousandsZero", 0, "#,##0", "0"},
        WholeCase{"ThousandsMillion", 1234567, "#,##0", "1,234,567"},
        WholeCase{"ThousandsAbove4GiB", 4294967296LL, "#,##0", "4,294,967,296"},
        WholeCase{"ThousandsLargest", std::numeric_limits<std::int64_t>::max(), "#,##0",
                  "9,223,372,036,854,775,807"},
        WholeCase{"ThousandsNegative", -1234, "#,##0", "-1,234"},
        WholeCase{"HashZeroIsEmpty", 0, "#", ""},
        WholeCase{"HashValue", 5, "#", "5"},
        WholeCase{"KeySixteenZero", 0, "0000000000000000", "0000000000000000"},
        WholeCase{"KeyAbove4GiB", 5000000000LL, "0000000000000000", "0000005000000000"},
        WholeCase{"KeyLongerThanMask", 12345678, "0000", "12345678"},
        WholeCase{"KeyNegative", -1, "0000000000000000", "-0000000000000001"},
        WholeCase{"LiteralSuffix", 1234, "#,##0K", "1,234K"},
        WholeCase{"GroupedMinimumDigits", 5, "#,##0,000", "0,005"},
        WholeCase{"GroupedMinimumDigitsBig", 12341234123456LL, "#,##0,000", "12,341,234,123,456"},
        WholeCase{"LiteralsBetweenDigits", 123456, "##-##-##", "12-34-56"},
        WholeCase{"LiteralsWithFewDigits", 5, "(###) ###", "() 5"},
        WholeCase{"DecimalsShown", 5, "0.00", "5.00"},
        WholeCase{"QuotedLiteral", 2048, "\"Size: \"#,##0", "Size: 2,048"},
        WholeCase{"EscapedPlaceholder", 7, "\\#0", "#7"},
        WholeCase{"NegativeSection", -1234, "#,##0;(#,##0)", "(1,234)"},
        WholeCase{"ZeroSection", 0, "0;-0;\"zero\"", "zero"},
        WholeCase{"EmptyNegativeSectionUsesFirst", -3, "0;;\"zero\"", "-3"},
        WholeCase{"ScaleByThousand", 1234567, "#,##0,", "1,235"},
        WholeCase{"ScaleByMillion", 1500000, "0,,", "2"},
        WholeCase{"Percent", 1, "0%", "100%"},
        WholeCase{"EmptyMaskIsPlain", 42, "", "42"},
        WholeCase{"OnlyLiterals", 42, "K", "K"}),
    [](const auto& p) { return std::string(p.param.name); });

struct RealCase {
    const char* name;
    double value;
    const char* mask;
    const char* expected;
};

class RealNumberMask : public ::testing::TestWithParam<RealCase> {};

TEST_P(RealNumberMask, GivesText) {
    const RealCase& c = GetParam();
    const tav::FormatResult r = tav::formatNumber(c.value, c.mask);
    ASSERT_TRUE(r.ok()) << r.error;
    EXPECT_EQ(r.text, c.expected);
}

INSTANTIATE_TEST_SUITE_P(
    Table, RealNumberMask,
    ::testing::Values(
        RealCase{"ElapsedTime", 12.5, "#0.000", "12.500"},
        RealCase{"HalfRoundsAway", 0.0625, "#0.000", "0.063"},
        RealCase{"HalfRoundsAwayNegative", -2.5, "0", "-3"},
        RealCase{"HalfRoundsUp", 2.5, "0", "3"},
        RealCase{"RoundsToZeroLosesSign", -0.4, "0", "0"},
        RealCase{"CarryIntoNewDigit", 999.96, "#,##0.0", "1,000.0"},
        RealCase{"NoLeadingZeroWithHash", 0.5, "#.##", ".5"},
        RealCase{"PointStaysWithoutDecimals", 1.0, "0.##", "1."},
        RealCase{"OptionalDecimals", 1.25, "0.##", "1.25"},
        RealCase{"GroupedDecimals", 1234567.891, "#,##0.00", "1,234,567.89"},
        RealCase{"Kilobytes", 1953.125, "#,###,##0K", "1,953K"},
        RealCase{"Exponent", 12345.0, "0.00E+00", "1.23E+04"},
        RealCase{"NegativeExponent", 0.00012345, "0.00E-00", "1.23E-04"},
        RealCase{"ExponentCarry", 99999.0, "0.0E+0", "1.0E+5"},
        RealCase{"GeneralFraction", 0.5, "", "0.5"},
        RealCase{"GeneralTrimsNoise", 0.1 + 0.2, "", "0.3"},
        RealCase{"RoundsAsWritten", 2.675, "0.00", "2.68"},
        RealCase{"RoundsAsWrittenNegative", -1.005, "0.00", "-1.01"},
        RealCase{"PercentFraction", 0.256, "0.0%", "25.6%"}),
    [](const auto& p) { return std::string(p.param.name); });

class BrokenNumberMask : public ::testing::TestWithParam<const char*> {};

TEST_P(BrokenNumberMask, Fails) {
    const tav::FormatResult r = tav::formatNumber(std::int64_t{12341234123456}, GetParam());
    EXPECT_FALSE(r.ok()) << "gave " << r.text;
    EXPECT_TRUE(r.text.empty());
}

INSTANTIATE_TEST_SUITE_P(Table, BrokenNumberMask,
                         ::testing::Values("\"open quote", "0\\", "0;0;0;0;0", "dd/mm/yy", "hh:nn", "abc"));

TEST(FormatNumber, NonFiniteFails) {
    EXPECT_FALSE(tav::formatNumber(std::numeric_limits<double>::infinity(), "0").ok());
    EXPECT_FALSE(tav::formatNumber(std::numeric_limits<double>::quiet_NaN(), "0").ok());
}

TEST(FormatNumber, PlaceholderInsideLiteralIsNotAPlaceholder) {
    EXPECT_FALSE(tav::maskHasDigitPlaceholder("\"0#\"\\0"));
    EXPECT_TRUE(tav::maskHasDigitPlaceholder("\"x\"#"));
}

TEST(FormatNumber, ManyMasksInTurnKeepTheirOwnResults) {
    // More masks than a thread keeps read, used in turn.
    std::vector<std::string> masks;
    for (int zeros = 1; zeros <= 12; ++zeros) masks.push_back(std::string(zeros, '0'));
    for (int round = 0; round < 3; ++round)
        for (const std::string& m : masks)
            EXPECT_EQ(tav::formatNumber(std::int64_t{7}, m).text, std::string(m.size() - 1, '0') + "7");
}

struct ReadCase {
    const char* name;
    const char* text;
    double expected;
};

class ReadNumber : public ::testing::TestWithParam<ReadCase> {};

TEST_P(ReadNumber, ReadsLeadingNumber) { EXPECT_DOUBLE_EQ(tav::ReadNumber(GetParam().text), GetParam().expected); }

INSTANTIATE_TEST_SUITE_P(
    Table, ReadNumber,
    ::testing::Values(ReadCase{"Digits", "123", 123}, ReadCase{"BlanksInside", "  12 34", 1234},
                      ReadCase{"TabsAndLineFeeds", "\t8\n", 8}, ReadCase{"Negative", "-5.5", -5.5},
                      ReadCase{"Plus", "+7", 7}, ReadCase{"CommaEnds", "1,234", 1},
                      ReadCase{"LetterEnds", "12abc", 12}, ReadCase{"NoNumber", "abc", 0}, ReadCase{"Empty", "", 0},
                      ReadCase{"LeadingPoint", ".5", 0.5}, ReadCase{"Exponent", "1e3", 1000},
                      ReadCase{"ExponentD", "1D2", 100}, ReadCase{"ExponentWithoutDigits", "1e", 1},
                      ReadCase{"Hex", "&H1F", 31}, ReadCase{"Octal", "&O17", 15}, ReadCase{"OctalShort", "&17", 15},
                      ReadCase{"PercentEnds", "12%", 12}, ReadCase{"Above32Bits", "5000000000", 5000000000.0},
                      ReadCase{"OverflowIsZero", "1e999", 0},
                      ReadCase{"HexOverflowIsZero", "&HFFFFFFFFFFFFFFFFFFFF", 0},
                      ReadCase{"NumericReference", "65;", 65}),
    [](const auto& p) { return std::string(p.param.name); });

}  // namespace
