#include "filelist/DateParseTyped.h"

#include <array>
#include <ctime>
#include <vector>

#include "filelist/FormatLocalTime.h"

namespace tav {

namespace {

constexpr std::array<std::string_view, 17> kLongYearPatterns = {
    "##/##/####", "#/##/####", "##/#/####", "#/#/####", "##/##/###", "#/##/###",
    "##/#/###",   "#/#/###",   "####/##/##", "####/##/#", "####/#/##", "####/#/#",
    "###/##/##",  "###/##/#",  "###/#/##",  "###/#/#",  "########"};

constexpr std::array<std::string_view, 9> kShortYearPatterns = {
    "##/##/##", "#/##/##", "##/#/##", "#/#/##", "######", "##/##/#", "#/##/#", "##/#/#", "#/#/#"};

bool matches(std::string_view text, std::string_view pattern) {
    if (text.size() != pattern.size()) return false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool digit = text[i] >= '0' && text[i] <= '9';
        if (pattern[i] == '#' ? !digit : text[i] != pattern[i]) return false;
    }
    return true;
}

template <std::size_t N>
bool matchesAny(std::string_view text, const std::array<std::string_view, N>& patterns) {
    for (std::string_view p : patterns)
        if (matches(text, p)) return true;
    return false;
}

// The three digit groups; a run of digits is cut by the year position.
std::vector<std::string> digitGroups(const std::string& text, int yearPosition, std::size_t yearDigits) {
    if (text.find('/') == std::string::npos) {
        std::array<std::size_t, 3> lengths = {2, 2, 2};
        lengths[yearPosition - 1] = yearDigits;
        return {text.substr(0, lengths[0]), text.substr(lengths[0], lengths[1]),
                text.substr(lengths[0] + lengths[1])};
    }
    std::vector<std::string> groups;
    std::size_t start = 0;
    for (std::size_t slash; (slash = text.find('/', start)) != std::string::npos; start = slash + 1)
        groups.push_back(text.substr(start, slash - start));
    groups.push_back(text.substr(start));
    return groups;
}

bool validDay(int year, int month, int day) {
    CivilDateTime probe;
    probe.year = year;
    probe.month = month;
    probe.day = day;
    return isValidCivil(probe);
}

// Day and month from the two groups beside the year: in the style's order,
// or, if that is no date, the other way round.
bool placeDayMonth(int year, int first, int second, bool dayFirst, CivilDateTime& out) {
    const int day = dayFirst ? first : second;
    const int month = dayFirst ? second : first;
    if (validDay(year, month, day)) {
        out = CivilDateTime{year, month, day, 0, 0, 0};
        return true;
    }
    if (validDay(year, day, month)) {
        out = CivilDateTime{year, day, month, 0, 0, 0};
        return true;
    }
    return false;
}

int presentYearOfClock() {
    return localCivilTime(static_cast<std::int64_t>(std::time(nullptr))).year;
}

}  // namespace

RegionalCheck TypedDateReader::checkRegionalStyle() {
    RegionalCheck check = checkShortDateStyle(platformShortDateSample());
    if (check.ok()) order_ = check.order;
    return check;
}

TypedDate TypedDateReader::read(std::string_view typed) {
    TypedDate result;
    if (yearWindow_ == 0) yearWindow_ = kDefaultYearWindow;
    if (order_.yearPosition == 0) {
        const RegionalCheck check = checkRegionalStyle();
        if (!check.ok()) {
            result.error = check.error;
            return result;
        }
    }

    std::string text(typed);
    for (char& c : text)
        if (c == '.' || c == '-') c = '/';

    const bool longYear = matchesAny(text, kLongYearPatterns);
    if (!longYear && !matchesAny(text, kShortYearPatterns)) return result;

    int yearIndex = 0;
    std::vector<std::string> groups;
    if (longYear) {
        groups = digitGroups(text, order_.yearPosition, 4);
        for (int k = 0; k < 3; ++k)
            if (groups[k].size() >= 3) yearIndex = k;
    } else {
        groups = digitGroups(text, order_.yearPosition, 2);
        yearIndex = order_.yearPosition - 1;
    }

    int year = std::stoi(groups[yearIndex]);
    int status = kTypedDateAsTyped;
    if (!longYear) {
        const int present = presentYear_ != 0 ? presentYear_ : presentYearOfClock();
        const int century = present - present % 100;
        const int difference = year - present % 100;
        if (difference > yearWindow_) {
            year += century - 100;
            status = kTypedDatePreviousCentury;
        } else if (difference < -yearWindow_) {
            year += century + 100;
            status = kTypedDateNextCentury;
        } else {
            year += century;
            status = kTypedDateThisCentury;
        }
    }

    std::array<int, 2> others{};
    for (int k = 0, n = 0; k < 3; ++k)
        if (k != yearIndex) others[n++] = std::stoi(groups[k]);
    // A year in front reads month then day, as in 2000/12/29.
    const bool dayFirst = yearIndex == 0 ? false : order_.dayBeforeMonth;
    if (!placeDayMonth(year, others[0], others[1], dayFirst, result.date)) return result;
    result.status = status;
    return result;
}

TypedDateReader& typedDateReader() {
    static TypedDateReader reader;
    return reader;
}

TypedDate ReadTypedDate(std::string_view text) { return typedDateReader().read(text); }

}  // namespace tav
