// Date and time masks, and cell texts put through masks.
#include <gtest/gtest.h>

#include <iterator>
#include <string>
#include <vector>

#include "format_test_print.h"
#include "filelist/DateParseText.h"
#include "filelist/FormatDateMask.h"
#include "filelist/FormatValueText.h"

namespace {

tav::CivilDateTime at(int y, int mo, int d, int h = 0, int mi = 0, int s = 0) {
    return tav::CivilDateTime{y, mo, d, h, mi, s};
}

// A Friday late in the evening, and a Sunday morning with one-digit parts.
const tav::CivilDateTime kFriday = at(2000, 12, 29, 23, 44, 1);
const tav::CivilDateTime kSunday = at(2000, 3, 5, 4, 7, 9);

struct DateCase {
    const char* name;
    tav::CivilDateTime value;
    const char* mask;
    const char* expected;
};

class DateMask : public ::testing::TestWithParam<DateCase> {};

TEST_P(DateMask, GivesText) {
    const DateCase& c = GetParam();
    const tav::FormatResult r = tav::formatDateTime(c.value, c.mask);
    ASSERT_TRUE(r.ok()) << r.error;
    EXPECT_EQ(r.text, c.expected);
}

INSTANTIATE_TEST_SUITE_P(
    Table, DateMask,
    ::testing::Values(
        DateCase{"DayMonthNameYear", kFriday, "dd mmm yyyy", "29 Dec 2000"},
        DateCase{"Day", kSunday, "d", "5"}, DateCase{"DayPadded", kSunday, "dd", "05"},
        DateCase{"DayNameShort", kSunday, "ddd", "Sun"}, DateCase{"DayName", kFriday, "dddd", "Friday"},
        DateCase{"Month", kSunday, "m", "3"}, DateCase{"MonthPadded", kSunday, "mm", "03"},
        DateCase{"MonthNameShort", kSunday, "mmm", "Mar"}, DateCase{"MonthName", kSunday, "mmmm", "March"},
        DateCase{"YearShort", kFriday, "yy", "00"}, DateCase{"Year", kFriday, "yyyy", "2000"},
        DateCase{"Hour", kSunday, "h", "4"}, DateCase{"HourPadded", kSunday, "hh", "04"},
        DateCase{"Minute", kSunday, "n", "7"}, DateCase{"MinutePadded", kSunday, "nn", "07"},
        DateCase{"Second", kSunday, "s", "9"}, DateCase{"SecondPadded", kSunday, "ss", "09"},
        DateCase{"MinutesAfterHour", kFriday, "hh:mm", "23:44"},
        DateCase{"MinutesBeforeSeconds", kSunday, "mm:ss", "07:09"},
        DateCase{"UpperCaseLetters", kFriday, "DD/MM/YYYY", "29/12/2000"},
        DateCase{"ListDateForm", kFriday, "DD/mm/yyyy", "29/12/2000"},
        DateCase{"ListTimeForm", kFriday, "HH:NN.SS", "23:44.01"},
        DateCase{"DateKey", kSunday, "yyyy/mm/dd", "2000/03/05"},
        DateCase{"TimeKey", kSunday, "hh:nn:ss", "04:07:09"},
        DateCase{"AmPmEvening", kFriday, "hh:mm AM/PM", "11:44 PM"},
        DateCase{"AmPmLowerMorning", kSunday, "h:nn am/pm", "4:07 am"},
        DateCase{"APEvening", kFriday, "h A/P", "11 P"}, DateCase{"APLowerMorning", kSunday, "h a/p", "4 a"},
        DateCase{"MidnightIsTwelveAM", at(2000, 1, 1, 0, 30), "h:nn AM/PM", "12:30 AM"},
        DateCase{"NoonIsTwelvePM", at(2000, 1, 1, 12, 5), "h:nn AMPM", "12:05 PM"},
        DateCase{"LongUsDate", kFriday, "dddd, mmmm d, yyyy", "Friday, December 29, 2000"},
        DateCase{"QuotedLiteral", kSunday, "\"Day \"d", "Day 5"},
        DateCase{"EscapedLetters", kSunday, "d \\d\\a\\y", "5 day"},
        DateCase{"OtherCharactersStand", kSunday, "d. m. yyyy", "5. 3. 2000"},
        DateCase{"Quarter", kFriday, "q", "4"}, DateCase{"DayOfYearLeap", kFriday, "y", "364"},
        DateCase{"WeekdayNumber", kFriday, "w", "6"}, DateCase{"FirstWeek", at(2000, 1, 1), "ww", "1"},
        DateCase{"SecondWeekStartsSunday", at(2000, 1, 2), "ww", "2"},
        DateCase{"ShortDate", kFriday, "ddddd", "29/12/2000"},
        DateCase{"LongDate", kFriday, "dddddd", "Friday, 29 December 2000"},
        DateCase{"FullTime", kSunday, "ttttt", "04:07:09"},
        DateCase{"GeneralDateAndTime", kFriday, "c", "29/12/2000 23:44:01"},
        DateCase{"GeneralDateOnly", at(2000, 12, 29), "", "29/12/2000"},
        DateCase{"GeneralTimeOnly", at(1899, 12, 30, 23, 44, 1), "", "23:44:01"},
        DateCase{"YearBeyond2038", at(2100, 2, 28), "yyyy/mm/dd", "2100/02/28"},
        DateCase{"ThreeDigitYear", at(999, 1, 2), "yyyy", "0999"}),
    [](const auto& p) { return std::string(p.param.name); });

class BrokenDateMask : public ::testing::TestWithParam<const char*> {};

TEST_P(BrokenDateMask, Fails) {
    const tav::FormatResult r = tav::formatDateTime(kFriday, GetParam());
    EXPECT_FALSE(r.ok()) << "gave " << r.text;
}

INSTANTIATE_TEST_SUITE_P(Table, BrokenDateMask, ::testing::Values("0.00", "#", "dd/mm/yy 0", "\"open", "dd\\", "K"));

TEST(FormatDateTime, DateOutOfRangeFails) {
    EXPECT_FALSE(tav::formatDateTime(at(50, 1, 1), "yyyy").ok());
    EXPECT_FALSE(tav::formatDateTime(at(2001, 2, 29), "yyyy").ok());
}

TEST(FormatDateTime, ManyMasksInTurnKeepTheirOwnResults) {
    // More masks than a thread keeps read, used in turn, with masks inside masks.
    const char* masks[] = {"d", "dd", "ddd", "dddd", "ddddd", "dddddd", "m", "mm", "mmm", "mmmm", "yy", "c", "ttttt"};
    std::vector<std::string> first;
    for (const char* m : masks) first.push_back(tav::formatDateTime(kFriday, m).text);
    for (int round = 0; round < 3; ++round)
        for (std::size_t k = 0; k < std::size(masks); ++k)
            EXPECT_EQ(tav::formatDateTime(kFriday, masks[k]).text, first[k]) << masks[k];
    EXPECT_EQ(first[4], "29/12/2000");
}

struct ValueCase {
    const char* name;
    const char* value;
    const char* mask;
    const char* expected;
};

class ValueText : public ::testing::TestWithParam<ValueCase> {};

TEST_P(ValueText, GivesCellText) {
    const ValueCase& c = GetParam();
    const tav::FormatResult r = tav::formatValueText(c.value, c.mask);
    ASSERT_TRUE(r.ok()) << r.error;
    EXPECT_EQ(r.text, c.expected);
}

INSTANTIATE_TEST_SUITE_P(
    Table, ValueText,
    ::testing::Values(
        ValueCase{"ListDateToKey", "29/12/2000", "yyyy/mm/dd", "2000/12/29"},
        ValueCase{"ListTimeToKey", "23:44.01", "hh:nn:ss", "23:44:01"},
        ValueCase{"DateKeyToDisplay", "2000/12/29", "dd mmm yyyy", "29 Dec 2000"},
        ValueCase{"TimeKeyToDisplay", "23:44:01", "hh:mm AM/PM", "11:44 PM"},
        ValueCase{"DateAndTime", "29/12/2000 23:44.01", "yyyy/mm/dd hh:nn", "2000/12/29 23:44"},
        ValueCase{"MonthFirstWhenDayFirstCannotBe", "12/29/2000", "yyyy/mm/dd", "2000/12/29"},
        ValueCase{"MonthName", "29 Dec 2000", "yyyy/mm/dd", "2000/12/29"},
        ValueCase{"MonthNameFirst", "December 29 2000", "yyyy/mm/dd", "2000/12/29"},
        ValueCase{"TwoDigitYear", "29/12/29", "yyyy", "2029"},
        ValueCase{"TwoDigitYearOld", "29/12/30", "yyyy", "1930"},
        ValueCase{"SizeToDisplay", "12341234123456", "#,##0", "12,341,234,123,456"},
        ValueCase{"SizeKeyToDisplay", "0000000000001234", "#,##0", "1,234"},
        ValueCase{"SizeToKeyAbove4GiB", "5000000000", "0000000000000000", "0000005000000000"},
        ValueCase{"LargestSizeExact", "9223372036854775807", "#,##0", "9,223,372,036,854,775,807"},
        ValueCase{"GroupedTextToPlain", "12,341,234,123,456", "#", "12341234123456"},
        ValueCase{"NegativeToKey", "-1", "0000000000000000", "-0000000000000001"},
        ValueCase{"DecimalText", "2.5", "0", "3"},
        ValueCase{"EmptyStaysEmpty", "", "#,##0", ""},
        ValueCase{"TextUnderNumberMask", "abc", "#,##0", "abc"},
        ValueCase{"TextUnderDateMask", "n/a", "dd mmm yyyy", "n/a"},
        ValueCase{"NumberUnderDateMaskStands", "1234", "dd mmm yyyy", "1234"},
        ValueCase{"BadDateStands", "31/02/2000", "yyyy/mm/dd", "31/02/2000"},
        ValueCase{"NoMask", "anything at all", "", "anything at all"},
        ValueCase{"NumberWithLiteralMask", "12", "\"#\"0", "#12"}),
    [](const auto& p) { return std::string(p.param.name); });

TEST(ReadDateTimeText, RejectsWhatIsNoDateOrTime) {
    tav::CivilDateTime out;
    for (const char* text : {"", "12", "20001229", "29/12", "25:00", "12:60", "29/12/2000 x", "13:00 PM", "1.5"})
        EXPECT_FALSE(tav::readDateTimeText(text, out)) << text;
}

TEST(ReadDateTimeText, TimeAloneLiesOnDayZero) {
    tav::CivilDateTime out;
    ASSERT_TRUE(tav::readDateTimeText(" 7:05 pm ", out));
    EXPECT_EQ(out, at(1899, 12, 30, 19, 5, 0));
}

}  // namespace
