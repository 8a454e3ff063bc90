// Typed dates in the three orders of the short date style, the year window
// and the regional check.
#include <gtest/gtest.h>

#include <string>

#include "format_test_print.h"
#include "filelist/DateParseRegional.h"
#include "filelist/DateParseTyped.h"

namespace {

constexpr tav::ShortDateOrder kDayMonthYear{3, true};
constexpr tav::ShortDateOrder kMonthDayYear{3, false};
constexpr tav::ShortDateOrder kYearMonthDay{1, false};
constexpr tav::ShortDateOrder kDayYearMonth{2, true};

struct TypedCase {
    const char* name;
    tav::ShortDateOrder order;
    int presentYear;
    const char* text;
    int status;
    int year, month, day;  // expected date when the status is not invalid
};

class TypedDates : public ::testing::TestWithParam<TypedCase> {};

TEST_P(TypedDates, ReadAsTheStyleSays) {
    const TypedCase& c = GetParam();
    tav::TypedDateReader reader;
    reader.setOrder(c.order);
    reader.setPresentYear(c.presentYear);
    const tav::TypedDate d = reader.read(c.text);
    EXPECT_EQ(d.status, c.status);
    if (c.status != tav::kTypedDateInvalid) {
        EXPECT_EQ(d.date, (tav::CivilDateTime{c.year, c.month, c.day, 0, 0, 0}));
    }
}

constexpr int kAsTyped = tav::kTypedDateAsTyped;
constexpr int kThis = tav::kTypedDateThisCentury;
constexpr int kNext = tav::kTypedDateNextCentury;
constexpr int kPrevious = tav::kTypedDatePreviousCentury;
constexpr int kInvalid = tav::kTypedDateInvalid;

INSTANTIATE_TEST_SUITE_P(
    Table, TypedDates,
    ::testing::Values(
        // Day first, year last.
        TypedCase{"DmyFourDigitYear", kDayMonthYear, 2026, "29/12/2000", kAsTyped, 2000, 12, 29},
        TypedCase{"DmyPoints", kDayMonthYear, 2026, "29.12.2000", kAsTyped, 2000, 12, 29},
        TypedCase{"DmyHyphens", kDayMonthYear, 2026, "29-12-2000", kAsTyped, 2000, 12, 29},
        TypedCase{"DmySingleDigits", kDayMonthYear, 2026, "1/2/2000", kAsTyped, 2000, 2, 1},
        TypedCase{"DmyEightDigits", kDayMonthYear, 2026, "29122000", kAsTyped, 2000, 12, 29},
        TypedCase{"DmyYearFirstStillRead", kDayMonthYear, 2026, "2000/12/29", kAsTyped, 2000, 12, 29},
        TypedCase{"DmyThreeDigitYear", kDayMonthYear, 2026, "29/12/999", kAsTyped, 999, 12, 29},
        TypedCase{"DmyTwoDigitYear", kDayMonthYear, 2026, "29/12/00", kThis, 2000, 12, 29},
        TypedCase{"DmySixDigits", kDayMonthYear, 2026, "291200", kThis, 2000, 12, 29},
        TypedCase{"DmyOneDigitYear", kDayMonthYear, 2026, "5/1/7", kThis, 2007, 1, 5},
        TypedCase{"DmyAmbiguousDayFirst", kDayMonthYear, 2026, "01/02/2000", kAsTyped, 2000, 2, 1},
        TypedCase{"DmyImpossibleDayReadMonthFirst", kDayMonthYear, 2026, "12/29/2000", kAsTyped, 2000, 12, 29},
        // Year window edges around 2026: 26 + 50 = 76 is still this century.
        TypedCase{"WindowAheadEdge", kDayMonthYear, 2026, "1/1/76", kThis, 2076, 1, 1},
        TypedCase{"WindowAheadBeyond", kDayMonthYear, 2026, "1/1/77", kPrevious, 1977, 1, 1},
        TypedCase{"WindowBehindEdge", kDayMonthYear, 2080, "1/1/30", kThis, 2030, 1, 1},
        TypedCase{"WindowBehindBeyond", kDayMonthYear, 2080, "1/1/29", kNext, 2129, 1, 1},
        TypedCase{"WindowPresentYear", kDayMonthYear, 2026, "1/1/26", kThis, 2026, 1, 1},
        // Month first, year last.
        TypedCase{"MdyTwoDigitYear", kMonthDayYear, 2026, "12/29/00", kThis, 2000, 12, 29},
        TypedCase{"MdyAmbiguousMonthFirst", kMonthDayYear, 2026, "01/02/2000", kAsTyped, 2000, 1, 2},
        TypedCase{"MdyEightDigits", kMonthDayYear, 2026, "12292000", kAsTyped, 2000, 12, 29},
        // Year first.
        TypedCase{"YmdTwoDigitYear", kYearMonthDay, 2026, "00/12/29", kThis, 2000, 12, 29},
        TypedCase{"YmdSixDigits", kYearMonthDay, 2026, "001229", kThis, 2000, 12, 29},
        TypedCase{"YmdEightDigits", kYearMonthDay, 2026, "20001229", kAsTyped, 2000, 12, 29},
        TypedCase{"YmdHyphens", kYearMonthDay, 2026, "2000-12-29", kAsTyped, 2000, 12, 29},
        TypedCase{"YmdOneDigitYear", kYearMonthDay, 2026, "7/1/5", kThis, 2007, 1, 5},
        TypedCase{"YmdOneDigitDay", kYearMonthDay, 2026, "07/1/5", kThis, 2007, 1, 5},
        // Year in the middle.
        TypedCase{"DymTwoDigitYear", kDayYearMonth, 2026, "29/00/12", kThis, 2000, 12, 29},
        // Not dates.
        TypedCase{"NoSuchDay", kDayMonthYear, 2026, "31/02/2000", kInvalid, 0, 0, 0},
        TypedCase{"FiveDigitYear", kDayMonthYear, 2026, "29/12/20000", kInvalid, 0, 0, 0},
        TypedCase{"TwoGroups", kDayMonthYear, 2026, "29/12", kInvalid, 0, 0, 0},
        TypedCase{"SevenDigits", kDayMonthYear, 2026, "2912200", kInvalid, 0, 0, 0},
        TypedCase{"Letters", kDayMonthYear, 2026, "29 Dec 2000", kInvalid, 0, 0, 0},
        TypedCase{"Blanks", kDayMonthYear, 2026, " 29/12/2000", kInvalid, 0, 0, 0},
        TypedCase{"Empty", kDayMonthYear, 2026, "", kInvalid, 0, 0, 0},
        TypedCase{"YearBelowRange", kDayMonthYear, 2026, "29/12/099", kInvalid, 0, 0, 0}),
    [](const auto& p) { return std::string(p.param.name); });

TEST(TypedDateReader, SetsTheYearWindowOnFirstUse) {
    tav::TypedDateReader reader;
    reader.setOrder(kDayMonthYear);
    EXPECT_EQ(reader.yearWindow(), 0);
    reader.read("1/1/2000");
    EXPECT_EQ(reader.yearWindow(), tav::kDefaultYearWindow);
}

TEST(TypedDateReader, RunsTheRegionalCheckOnceWhenNoOrderIsSet) {
    tav::TypedDateReader reader;
    EXPECT_EQ(reader.yearPosition(), 0);
    const tav::TypedDate d = reader.read("2000/12/29");
    EXPECT_TRUE(d.error.empty()) << d.error;
    EXPECT_GE(reader.yearPosition(), 1);
    EXPECT_LE(reader.yearPosition(), 3);
    EXPECT_EQ(d.date, (tav::CivilDateTime{2000, 12, 29, 0, 0, 0}));
}

struct RegionalCase {
    const char* name;
    const char* sample;
    int yearPosition;
    bool dayBeforeMonth;
};

class RegionalStyle : public ::testing::TestWithParam<RegionalCase> {};

TEST_P(RegionalStyle, GivesOrder) {
    const tav::RegionalCheck check = tav::checkShortDateStyle(GetParam().sample);
    ASSERT_TRUE(check.ok()) << check.error;
    EXPECT_EQ(check.order.yearPosition, GetParam().yearPosition);
    EXPECT_EQ(check.order.dayBeforeMonth, GetParam().dayBeforeMonth);
}

INSTANTIATE_TEST_SUITE_P(Table, RegionalStyle,
                         ::testing::Values(RegionalCase{"British", "25/10/3467", 3, true},
                                           RegionalCase{"American", "10/25/67", 3, false},
                                           RegionalCase{"Iso", "3467-10-25", 1, false},
                                           RegionalCase{"German", "25.10.67", 3, true},
                                           RegionalCase{"SpacedPoints", "25. 10. 3467", 3, true},
                                           RegionalCase{"YearInMiddle", "25/3467/10", 2, true}),
                         [](const auto& p) { return std::string(p.param.name); });

TEST(RegionalStyle, MissingPartsGiveTheirMessages) {
    const std::string first =
        "Error in date format specified under regional settings / International settings in windows Control panel. \r";
    EXPECT_EQ(tav::checkShortDateStyle("Oct 3467").error,
              first + "For this system \"short date style\" must include day of month.");
    EXPECT_EQ(tav::checkShortDateStyle("25 Oct 3467").error,
              first + "For this system \"short date style\" must include month.");
    EXPECT_EQ(tav::checkShortDateStyle("25/10/3").error,
              first + "For this system \"short date style\" must include at least two digit year.");
}

TEST(RegionalStyle, PlatformSampleIsUsable) {
    const std::string sample = tav::platformShortDateSample();
    EXPECT_TRUE(tav::checkShortDateStyle(sample).ok()) << sample;
}

TEST(RegionalStyle, PlatformShortDateReadsBackAsTyped) {
    tav::TypedDateReader reader;
    ASSERT_TRUE(reader.checkRegionalStyle().ok());
    reader.setPresentYear(2026);
    const std::string shown = tav::platformShortDate({2001, 4, 19, 0, 0, 0});
    const tav::TypedDate d = reader.read(shown);
    EXPECT_TRUE(d.ok()) << shown;
    EXPECT_EQ(d.date, (tav::CivilDateTime{2001, 4, 19, 0, 0, 0})) << shown;
}

}  // namespace
