#include "filelist/DateParseRegional.h"

#include <ctime>

#if !defined(_WIN32)
#include <langinfo.h>
#include <locale.h>
#endif

namespace tav {

RegionalCheck checkShortDateStyle(std::string_view sample) {
    RegionalCheck check;
    const std::string first =
        "Error in date format specified under regional settings / International settings in windows Control panel. ";
    const std::size_t day = sample.find("25");
    const std::size_t month = sample.find("10");
    const std::size_t year = sample.find("67");
    if (day == std::string_view::npos) {
        check.error = first + "\rFor this system \"short date style\" must include day of month.";
    } else if (month == std::string_view::npos) {
        check.error = first + "\rFor this system \"short date style\" must include month.";
    } else if (year == std::string_view::npos) {
        check.error = first + "\rFor this system \"short date style\" must include at least two digit year.";
    }
    if (!check.ok()) return check;

    int position = 1;
    bool afterDigit = false;
    for (char c : sample.substr(0, year)) {
        const bool digit = c >= '0' && c <= '9';
        if (!digit && afterDigit && position < 3) ++position;
        afterDigit = digit;
    }
    check.order.yearPosition = position;
    check.order.dayBeforeMonth = day < month;
    return check;
}

std::string platformShortDate(const CivilDateTime& date) {
    std::tm when{};
    when.tm_year = date.year - 1900;
    when.tm_mon = date.month - 1;
    when.tm_mday = date.day;
    when.tm_wday = weekdayNumber(date.year, date.month, date.day) - 1;
    when.tm_yday = dayOfYear(date.year, date.month, date.day) - 1;
    char buffer[128] = {};
#if defined(_WIN32)
    std::strftime(buffer, sizeof buffer, "%x", &when);
#else
    locale_t user = newlocale(LC_TIME_MASK, "", static_cast<locale_t>(0));
    if (user == static_cast<locale_t>(0)) user = newlocale(LC_TIME_MASK, "C", static_cast<locale_t>(0));
    if (user != static_cast<locale_t>(0)) {
        const char* pattern = nl_langinfo_l(D_FMT, user);
        strftime_l(buffer, sizeof buffer, pattern && *pattern ? pattern : "%m/%d/%y", &when, user);
        freelocale(user);
    }
#endif
    return buffer;
}

std::string platformShortDateSample() { return platformShortDate(CivilDateTime{3467, 10, 25, 0, 0, 0}); }

}  // namespace tav
