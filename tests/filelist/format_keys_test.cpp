// Hidden key cells: their masks, their growth, and that a text sort of the
// keys gives date, time and size order.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "filelist/DateParseText.h"
#include "filelist/FormatCellPut.h"
#include "filelist/FormatCivil.h"
#include "filelist/FormatColumnMask.h"
#include "filelist/FormatDateMask.h"
#include "filelist/FormatValueText.h"

namespace {

struct KeyMaskCase {
    const char* name;
    const char* dataType;
    const char* keyMask;
    bool mayGrow;
};

class KeyMask : public ::testing::TestWithParam<KeyMaskCase> {};

TEST_P(KeyMask, ForDataType) {
    EXPECT_EQ(tav::keyMaskForDataType(GetParam().dataType), GetParam().keyMask);
    EXPECT_EQ(tav::keyMaskMayGrow(GetParam().dataType), GetParam().mayGrow);
}

INSTANTIATE_TEST_SUITE_P(
    Table, KeyMask,
    ::testing::Values(KeyMaskCase{"Date", "D", "yyyy/mm/dd", false},
                      KeyMaskCase{"DateWord", "Date", "yyyy/mm/dd", false},
                      KeyMaskCase{"Time", "T", "hh:nn:ss", false},
                      KeyMaskCase{"NumberDefault", "N", "0000000000000000", true},
                      KeyMaskCase{"NumberZeroLength", "N0", "0000000000000000", true},
                      KeyMaskCase{"NumberLength", "N12", "000000000000", true},
                      KeyMaskCase{"NumberLengthOne", "N1", "0", true},
                      KeyMaskCase{"Text", "X", "", false}, KeyMaskCase{"Empty", "", "", false},
                      KeyMaskCase{"LowerCaseIsText", "n5", "", false}),
    [](const auto& p) { return std::string(p.param.name); });

TEST(KeyMask, GrowsByItsLastCharacterToTheValueLength) {
    EXPECT_EQ(tav::grownKeyMask("0000", "123456"), "000000");
    EXPECT_EQ(tav::grownKeyMask("0000", "1234"), "0000");
    EXPECT_EQ(tav::grownKeyMask("0000", "12"), "0000");
    EXPECT_EQ(tav::grownKeyMask("0000000000000000", "12345678901234567"), "00000000000000000");
}

TEST(DisplayMask, WindowMasksStandInForTheirNames) {
    const tav::WindowFormats window{"dd mmm yyyy", "hh:nn", "#,##0"};
    EXPECT_EQ(tav::displayMaskFor("Dt4Win", window), "dd mmm yyyy");
    EXPECT_EQ(tav::displayMaskFor("Tm4Win", window), "hh:nn");
    EXPECT_EQ(tav::displayMaskFor("Sz4Win", window), "#,##0");
    EXPECT_EQ(tav::displayMaskFor("0.00", window), "0.00");
    EXPECT_EQ(tav::displayMaskFor("", window), "");
}

TEST(SortKeys, DatesDisplayedByMonthNameSortInCalendarOrder) {
    const std::vector<tav::CivilDateTime> dates = {
        {1999, 12, 31, 0, 0, 0}, {2000, 1, 1, 0, 0, 0}, {2000, 2, 29, 0, 0, 0}, {2000, 10, 2, 0, 0, 0},
        {2000, 12, 29, 0, 0, 0}, {2038, 1, 20, 0, 0, 0}, {2100, 3, 1, 0, 0, 0}};
    std::vector<std::string> display, keys;
    for (const auto& d : dates) {
        display.push_back(tav::formatDateTime(d, "dd mmm yyyy").text);
        keys.push_back(tav::dateKey(d));
    }
    // The display text alone would not sort right ("01 Jan" before "31 Dec").
    EXPECT_FALSE(std::is_sorted(display.begin(), display.end()));
    EXPECT_TRUE(std::is_sorted(keys.begin(), keys.end()));
    // A display cell rebuilt from its key is the same text.
    for (std::size_t k = 0; k < keys.size(); ++k)
        EXPECT_EQ(tav::formatValueText(keys[k], "dd mmm yyyy").text, display[k]);
}

TEST(SortKeys, TimesWithAmPmSortByClock) {
    std::vector<std::string> keys;
    for (int hour : {0, 1, 11, 12, 13, 23}) keys.push_back(tav::timeKey({1899, 12, 30, hour, 5, 0}));
    EXPECT_TRUE(std::is_sorted(keys.begin(), keys.end()));
    EXPECT_EQ(tav::formatValueText(keys.front(), "h:nn AM/PM").text, "12:05 AM");
}

TEST(SortKeys, SizesAbove4GiBSortNumerically) {
    const std::vector<std::int64_t> sizes = {0, 1, 999, 4294967295LL, 4294967296LL, 5000000000LL, 12341234123456LL,
                                             999999999999999LL};
    const std::string mask = tav::keyMaskForDataType("N");
    std::vector<std::string> keys;
    for (std::int64_t s : sizes) keys.push_back(tav::numberKey(s, mask));
    EXPECT_TRUE(std::is_sorted(keys.begin(), keys.end()));
    for (std::size_t k = 0; k < sizes.size(); ++k) {
        EXPECT_EQ(keys[k].size(), mask.size());
        EXPECT_EQ(tav::formatValueText(keys[k], "#").text, sizes[k] == 0 ? "" : std::to_string(sizes[k]));
    }
}

TEST(SortKeys, GrownMaskKeepsNumericOrderForLongValues) {
    std::string mask = tav::keyMaskForDataType("N4");
    const std::string longValue = "1234567";
    mask = tav::grownKeyMask(mask, longValue);
    const std::string small = tav::formatValueText("42", mask).text;
    const std::string large = tav::formatValueText(longValue, mask).text;
    EXPECT_EQ(small, "0000042");
    EXPECT_LT(small, large);
    // A key made before the mask grew is rewritten from its own text.
    EXPECT_EQ(tav::formatValueText("0042", mask).text, small);
}

TEST(SortKeys, ZeroSizeShowsEmptyButKeepsAZeroKey) {
    EXPECT_EQ(tav::formatValueText("0", "#").text, "");
    EXPECT_EQ(tav::formatValueText("0", tav::keyMaskForDataType("N")).text, "0000000000000000");
}

TEST(WholeDayNumber, CountsFromTheEndOf1899AndDropsTheTime) {
    EXPECT_EQ(tav::WholeDayNumber({1899, 12, 30, 0, 0, 0}), 0);
    EXPECT_EQ(tav::WholeDayNumber({1900, 1, 1, 0, 0, 0}), 2);
    EXPECT_EQ(tav::WholeDayNumber({2000, 1, 1, 0, 0, 0}), 36526);
    EXPECT_EQ(tav::WholeDayNumber({2000, 12, 29, 23, 59, 59}), 36889);
    EXPECT_EQ(tav::WholeDayNumber({2000, 12, 29, 0, 0, 0}), 36889);
    EXPECT_EQ(tav::WholeDayNumber({1800, 1, 1, 0, 0, 0}), -36522);
    EXPECT_EQ(tav::WholeDayNumber({2001, 2, 29, 0, 0, 0}), 0);
    EXPECT_EQ(tav::WholeDayNumber({2000, 1, 1, 24, 0, 0}), 0);
}

TEST(WholeDayNumber, OfTexts) {
    EXPECT_EQ(tav::WholeDayNumber("29/12/2000 23:44.01"), 36889);
    EXPECT_EQ(tav::WholeDayNumber("2000/12/29"), 36889);
    EXPECT_EQ(tav::WholeDayNumber("not a date"), 0);
}

struct CellCase {
    const char* name;
    const char* value;
    const char* displayMask;
    const char* keyMask;
    bool mayGrow;
    const char* display;
    const char* key;
    const char* keyMaskAfter;
};

class CellPut : public ::testing::TestWithParam<CellCase> {};

TEST_P(CellPut, GivesDisplayAndKey) {
    const CellCase& c = GetParam();
    const tav::CellTexts cell = tav::formatCellTexts(c.value, c.displayMask, c.keyMask, c.mayGrow);
    EXPECT_EQ(cell.display, c.display);
    EXPECT_EQ(cell.key, c.key);
    EXPECT_EQ(cell.keyMask, c.keyMaskAfter);
    EXPECT_EQ(cell.keyGrew, std::string(c.keyMask) != c.keyMaskAfter);
}

INSTANTIATE_TEST_SUITE_P(
    Table, CellPut,
    ::testing::Values(
        CellCase{"FileDate", "29/12/2000", "dd mmm yyyy", "yyyy/mm/dd", false, "29 Dec 2000", "2000/12/29",
                 "yyyy/mm/dd"},
        CellCase{"FileTime", "23:44.01", "hh:mm AM/PM", "hh:nn:ss", false, "11:44 PM", "23:44:01", "hh:nn:ss"},
        CellCase{"Size", "5000000000", "#,##0", "0000000000000000", true, "5,000,000,000", "0000005000000000",
                 "0000000000000000"},
        CellCase{"EmptySizeOfDirectory", "", "#,##0", "0000000000000000", true, "", "", "0000000000000000"},
        CellCase{"ZeroSizeUnderHash", "0", "#", "0000000000000000", true, "", "0000000000000000",
                 "0000000000000000"},
        CellCase{"NumberLongerThanKeyGrows", "123456", "0", "0000", true, "123456", "123456", "000000"},
        CellCase{"NoDisplayMask", "any text", "", "", false, "any text", "", ""},
        CellCase{"BrokenDisplayMaskLeavesValue", "12", "\"open", "00", true, "12", "12", "00"}),
    [](const auto& p) { return std::string(p.param.name); });

TEST(CellPut, DisplayRebuiltFromKeyUnderNewMasks) {
    const tav::CellTexts date = tav::formatCellTexts("29/12/2000", "dd/mm/yy", "yyyy/mm/dd", false);
    const tav::CellTexts time = tav::formatCellTexts("23:44.01", "hh:nn", "hh:nn:ss", false);
    const tav::CellTexts size = tav::formatCellTexts("5000000000", "#,##0", "0000000000000000", true);
    EXPECT_EQ(tav::displayFromKey(date.key, "dd mmm yyyy"), "29 Dec 2000");
    EXPECT_EQ(tav::displayFromKey(time.key, "h:nn:ss AM/PM"), "11:44:01 PM");
    EXPECT_EQ(tav::displayFromKey(size.key, "#,##0K"), "5,000,000,000K");
    EXPECT_EQ(tav::displayFromKey(size.key, "#"), "5000000000");
    EXPECT_EQ(tav::displayFromKey("", "#,##0"), "");
}

TEST(CivilCalendar, DaysRoundTripOverFourCenturies) {
    for (std::int64_t days = tav::daysFromCivil(1900, 1, 1); days < tav::daysFromCivil(2300, 1, 1); days += 37) {
        const tav::CivilDateTime c = tav::civilFromDays(days);
        ASSERT_TRUE(tav::isValidCivil(c)) << days;
        ASSERT_EQ(tav::daysFromCivil(c.year, c.month, c.day), days);
    }
    EXPECT_EQ(tav::weekdayNumber(2000, 12, 29), 6);  // a Friday
    EXPECT_EQ(tav::weekdayNumber(1970, 1, 1), 5);    // a Thursday
}

}  // namespace
