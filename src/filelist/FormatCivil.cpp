#include "filelist/FormatCivil.h"

namespace tav {

namespace {
constexpr std::int64_t kSerialEpochDays = -25569;  // 1899-12-30 counted from 1970-01-01

std::int64_t floorDiv(std::int64_t a, std::int64_t b) {
    std::int64_t q = a / b;
    if ((a % b != 0) && ((a < 0) != (b < 0))) --q;
    return q;
}
}  // namespace

bool isLeapYear(int year) { return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0; }

int daysInMonth(int year, int month) {
    static constexpr int kDays[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (month < 1 || month > 12) return 0;
    return month == 2 && isLeapYear(year) ? 29 : kDays[month - 1];
}

bool isValidCivil(const CivilDateTime& v) {
    return v.year >= kFirstYear && v.year <= kLastYear && v.month >= 1 && v.month <= 12 && v.day >= 1 &&
           v.day <= daysInMonth(v.year, v.month) && v.hour >= 0 && v.hour <= 23 && v.minute >= 0 &&
           v.minute <= 59 && v.second >= 0 && v.second <= 59;
}

// Civil calendar arithmetic on 400-year eras (the era starts on 1 March).
std::int64_t daysFromCivil(int year, int month, int day) {
    std::int64_t y = static_cast<std::int64_t>(year) - (month <= 2 ? 1 : 0);
    const std::int64_t era = floorDiv(y, 400);
    const std::int64_t yoe = y - era * 400;
    const std::int64_t mp = (month + 9) % 12;
    const std::int64_t doy = (153 * mp + 2) / 5 + day - 1;
    const std::int64_t doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
    return era * 146097 + doe - 719468;
}

CivilDateTime civilFromDays(std::int64_t days) {
    days += 719468;
    const std::int64_t era = floorDiv(days, 146097);
    const std::int64_t doe = days - era * 146097;
    const std::int64_t yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
    const std::int64_t doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
    const std::int64_t mp = (5 * doy + 2) / 153;
    CivilDateTime out;
    out.day = static_cast<int>(doy - (153 * mp + 2) / 5 + 1);
    out.month = static_cast<int>(mp < 10 ? mp + 3 : mp - 9);
    out.year = static_cast<int>(yoe + era * 400 + (out.month <= 2 ? 1 : 0));
    out.hour = out.minute = out.second = 0;
    return out;
}

std::int64_t secondsFromCivil(const CivilDateTime& v) {
    return daysFromCivil(v.year, v.month, v.day) * 86400 + v.hour * 3600 + v.minute * 60 + v.second;
}

CivilDateTime civilFromSeconds(std::int64_t seconds) {
    const std::int64_t days = floorDiv(seconds, 86400);
    const std::int64_t rest = seconds - days * 86400;
    CivilDateTime out = civilFromDays(days);
    out.hour = static_cast<int>(rest / 3600);
    out.minute = static_cast<int>(rest / 60 % 60);
    out.second = static_cast<int>(rest % 60);
    return out;
}

std::int64_t daySerial(int year, int month, int day) { return daysFromCivil(year, month, day) - kSerialEpochDays; }

std::int64_t WholeDayNumber(const CivilDateTime& value) {
    if (!isValidCivil(value)) return 0;
    return daySerial(value.year, value.month, value.day);
}

int weekdayNumber(int year, int month, int day) {
    // 1970-01-01 was a Thursday (5 when Sunday is 1).
    const std::int64_t d = daysFromCivil(year, month, day);
    return static_cast<int>(((d + 4) % 7 + 7) % 7) + 1;
}

int dayOfYear(int year, int month, int day) {
    return static_cast<int>(daysFromCivil(year, month, day) - daysFromCivil(year, 1, 1)) + 1;
}

}  // namespace tav
