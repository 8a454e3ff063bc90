// Cells of file dates, times and sizes made straight from their values must
// read exactly as the long way makes them: the value text put through the
// column's mask. Every plain mask is checked against the long way over many
// values, and the masks that are not plain must still come out right.
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "format_test_print.h"
#include "filelist/FormatCellPut.h"
#include "filelist/FormatFileTimeCell.h"
#include "filelist/FormatIntegerCell.h"

namespace {

using tav::CivilDateTime;
using tav::FileTimePart;

CivilDateTime at(int y, int mo, int d, int h, int mi, int s) {
    CivilDateTime v;
    v.year = y;
    v.month = mo;
    v.day = d;
    v.hour = h;
    v.minute = mi;
    v.second = s;
    return v;
}

// Midnight, the hours around noon (12-hour clocks), one-digit parts, the
// ends of the day, of months and of the range of years.
std::vector<CivilDateTime> times() {
    std::vector<CivilDateTime> out = {
        at(2026, 11, 23, 0, 0, 0),   at(2026, 11, 23, 0, 5, 9),   at(2026, 1, 2, 11, 59, 59),
        at(2026, 1, 2, 12, 0, 0),    at(2026, 1, 2, 12, 30, 1),   at(2000, 2, 29, 13, 4, 5),
        at(1999, 12, 31, 23, 59, 59), at(1970, 1, 1, 0, 0, 0),    at(2019, 9, 10, 9, 9, 9),
        at(100, 1, 1, 1, 1, 1),      at(999, 6, 15, 18, 45, 0),   at(9999, 12, 31, 23, 59, 59),
        at(2038, 1, 19, 3, 14, 7),   at(2001, 10, 31, 22, 10, 20), at(1900, 3, 1, 6, 0, 0),
    };
    for (int month = 1; month <= 12; ++month) out.push_back(at(2024, month, month + 10, month * 2 - 1, month * 5, month));
    return out;
}

struct MaskRow {
    const char* mask;
    bool plain;  // made straight from the civil time
};

const MaskRow kMasks[] = {
    {"dd mmm yyyy", true},   {"hh:nn:ss", true},     {"yyyy/mm/dd", true},      {"dd/mm/yyyy", true},
    {"DD/mm/yyyy", true},    {"HH:NN.SS", true},     {"mm/dd/yy", true},        {"d-m-yy", true},
    {"dd.mm.yyyy", true},    {"mmm d, yyyy", true},  {"hh:nn AM/PM", true},     {"h:nn:ss am/pm", true},
    {"hh:nn Am/pM", true},   {"hh:mm", true},        {"mm:ss", true},           {"h:m:s", true},
    {"yyyy-mm-dd hh:nn:ss", true}, {"d mmm yy h:nn AM/PM", true}, {"m", true},  {"yy", true},
    {"dddd", false},         {"ddd dd mmm", false},  {"dd mmmm yyyy", false},   {"c", false},
    {"ttttt", false},        {"\"at\" hh:nn", false}, {"hh\\hnn", false},       {"hh:nn A/P", false},
    {"hh:nn AMPM", false},   {"yyy", false},         {"q/yyyy", false},         {"ww", false},
    {"dd_mm_yyyy", false},   {"#,##0", false},       {"0000", false},           {"", false},
    {"/-.:", false},         {"\"open", false},
};

TEST(FileTimeCell, PlainMasksAreMadeStraightFromTheCivilTime) {
    for (const MaskRow& row : kMasks) {
        std::string text;
        EXPECT_EQ(tav::plainDateMaskText(at(2026, 11, 23, 14, 3, 22), row.mask, text), row.plain) << row.mask;
    }
}

TEST(FileTimeCell, EveryMaskGivesTheTextOfTheLongWay) {
    for (const MaskRow& row : kMasks) {
        const tav::FileTimeCellMask column(row.mask);
        for (const CivilDateTime& when : times()) {
            for (FileTimePart part : {FileTimePart::Date, FileTimePart::Time}) {
                const std::string longWay = tav::displayFromKey(tav::fileTimeValueText(when, part), row.mask);
                EXPECT_EQ(tav::fileTimeCell(when, part, row.mask), longWay)
                    << "mask '" << row.mask << "' " << ::testing::PrintToString(when)
                    << (part == FileTimePart::Date ? " date" : " time");
                EXPECT_EQ(column.cell(when, part), longWay) << "column mask '" << row.mask << "'";
            }
        }
    }
}

TEST(FileTimeCell, KnownTexts) {
    const CivilDateTime when = at(2026, 3, 7, 0, 5, 9);
    EXPECT_EQ(tav::fileTimeCell(when, FileTimePart::Date, "dd mmm yyyy"), "07 Mar 2026");
    EXPECT_EQ(tav::fileTimeCell(when, FileTimePart::Date, "yyyy/mm/dd"), "2026/03/07");
    EXPECT_EQ(tav::fileTimeCell(when, FileTimePart::Time, "hh:nn:ss"), "00:05:09");
    EXPECT_EQ(tav::fileTimeCell(when, FileTimePart::Time, "h:nn AM/PM"), "12:05 AM");
    EXPECT_EQ(tav::fileTimeCell(at(2026, 3, 7, 12, 5, 9), FileTimePart::Time, "h:nn am/pm"), "12:05 pm");
    EXPECT_EQ(tav::fileTimeCell(at(2026, 3, 7, 23, 5, 9), FileTimePart::Time, "hh:nn AM/PM"), "11:05 PM");
    // A date column shows midnight, a time column day 0.
    EXPECT_EQ(tav::fileTimeCell(when, FileTimePart::Date, "hh:nn"), "00:00");
    EXPECT_EQ(tav::fileTimeCell(when, FileTimePart::Time, "yyyy/mm/dd"), "1899/12/30");
    EXPECT_EQ(tav::fileTimeCell(when, FileTimePart::Date, ""), "07/03/2026");
    EXPECT_EQ(tav::fileTimeCell(when, FileTimePart::Time, ""), "00:05.09");
    // A number mask leaves the value text as it is.
    EXPECT_EQ(tav::fileTimeCell(when, FileTimePart::Date, "#,##0"), "07/03/2026");
}

TEST(FileTimeCell, TimesOutOfTheRangeOfDatesGiveEmptyCells) {
    for (const CivilDateTime& when : {at(10000, 1, 1, 0, 0, 0), at(99, 12, 31, 23, 0, 0)}) {
        EXPECT_EQ(tav::fileTimeValueText(when, FileTimePart::Date), "");
        EXPECT_EQ(tav::FileTimeCellMask("dd mmm yyyy").cell(when, FileTimePart::Date), "");
        EXPECT_EQ(tav::fileTimeCell(when, FileTimePart::Date, "dd mmm yyyy"), "");
        EXPECT_EQ(tav::fileTimeCell(when, FileTimePart::Time, "hh:nn:ss"), "");
        EXPECT_EQ(tav::fileTimeCell(when, FileTimePart::Time, "dddd"), "");
    }
}

struct NumberMaskRow {
    const char* mask;
    bool plain;
};

const NumberMaskRow kNumberMasks[] = {
    {"#,##0", true},   {"#", true},          {"0", true},         {"0000000000000000", true}, {"#,###,##0", true},
    {"00000", true},   {"#,#", true},        {"000,000", true},   {"##0", true},              {"0#", true},
    {"#,##0.00", false}, {"#,##0,", false},  {",#", false},       {"0%", false},              {"#,##0K", false},
    {"", false},       {"0.0E+00", false},   {"#;(#)", false},    {"000000000000000000000", false},
};

const std::int64_t kNumbers[] = {0,         1,          9,          10,         99,      100,    999,
                                 1000,      1001,       9999,       12345,      999999,  1000000, 1234567,
                                 2147483647, 4294967296, 1234567890123, 12341234123456, 99999999999999999,
                                 std::numeric_limits<std::int64_t>::max()};

TEST(IntegerCell, PlainMasksAreMadeStraightFromTheValue) {
    for (const NumberMaskRow& row : kNumberMasks) {
        std::string text;
        EXPECT_EQ(tav::plainIntegerMaskText(1234, row.mask, text), row.plain) << row.mask;
    }
    std::string text;
    EXPECT_FALSE(tav::plainIntegerMaskText(-5, "#,##0", text)) << "negative values go the long way";
}

TEST(IntegerCell, EveryMaskGivesTheTextOfTheLongWay) {
    for (const NumberMaskRow& row : kNumberMasks) {
        const tav::IntegerCellMask column(row.mask);
        for (std::int64_t value : kNumbers) {
            for (std::int64_t v : {value, -value}) {
                const std::string longWay = tav::displayFromKey(std::to_string(v), row.mask);
                EXPECT_EQ(tav::integerCell(v, row.mask), longWay) << "mask '" << row.mask << "' value " << v;
                EXPECT_EQ(column.cell(v), longWay) << "column mask '" << row.mask << "' value " << v;
            }
        }
    }
}

TEST(IntegerCell, KnownTexts) {
    EXPECT_EQ(tav::integerCell(0, "#"), "");
    EXPECT_EQ(tav::integerCell(0, "0000000000000000"), "0000000000000000");
    EXPECT_EQ(tav::integerCell(1234567, "#,##0"), "1,234,567");
    EXPECT_EQ(tav::integerCell(42, "000,000"), "000,042");
    EXPECT_EQ(tav::integerCell(12345678901234567, "0000000000000000"), "12345678901234567");
}

}  // namespace
