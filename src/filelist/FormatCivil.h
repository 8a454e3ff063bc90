#pragma once
// A local calendar date and time of day, as the grid shows it: no time zone,
// no fractions of a second. Day numbers count from 30 December 1899 (day 0),
// the serial that date values have always had in stored lists and criteria.
#include <cstdint>

namespace tav {

struct CivilDateTime {
    int year = 1899;
    int month = 12;  // 1..12
    int day = 30;    // 1..31
    int hour = 0;    // 0..23
    int minute = 0;  // 0..59
    int second = 0;  // 0..59

    friend bool operator==(const CivilDateTime&, const CivilDateTime&) = default;
};

// Dates from 1 January 100 to 31 December 9999 are in range, as typed dates
// and date masks accept them.
constexpr int kFirstYear = 100;
constexpr int kLastYear = 9999;

bool isLeapYear(int year);
int daysInMonth(int year, int month);

// True if the date exists and lies in range and the time of day is valid.
bool isValidCivil(const CivilDateTime& value);

// Days since 1970-01-01 of a proleptic Gregorian date, and back.
std::int64_t daysFromCivil(int year, int month, int day);
CivilDateTime civilFromDays(std::int64_t days);

// Seconds since 1970-01-01 00:00 of the date-time read as UTC, and back.
std::int64_t secondsFromCivil(const CivilDateTime& value);
CivilDateTime civilFromSeconds(std::int64_t seconds);

// Day 0 is 30 December 1899.
std::int64_t daySerial(int year, int month, int day);

// The day number of the value's date, the time dropped; 0 if the value is
// not a valid date.
std::int64_t WholeDayNumber(const CivilDateTime& value);

// 1 = Sunday ... 7 = Saturday.
int weekdayNumber(int year, int month, int day);

// 1 = 1 January.
int dayOfYear(int year, int month, int day);

}  // namespace tav
