#pragma once
// The order of day, month and year in the machine's short date style, found
// by writing 25 October 3467 in that style: none of its parts can be taken
// for another.
#include <string>
#include <string_view>

#include "filelist/FormatCivil.h"

namespace tav {

struct ShortDateOrder {
    int yearPosition = 0;        // 1, 2 or 3: digit groups from the left; 0 unknown
    bool dayBeforeMonth = true;  // of the two other groups, the day comes first
};

struct RegionalCheck {
    ShortDateOrder order;
    std::string error;  // the message for the user; empty when the style is usable
    bool ok() const { return error.empty(); }
};

// Reads the order from the short date text of 25 October 3467.
RegionalCheck checkShortDateStyle(std::string_view sample);

// A date in the short date style of the user's locale (on POSIX the
// LC_TIME date format, nl_langinfo(D_FMT)), as criteria texts and prompts
// show dates.
std::string platformShortDate(const CivilDateTime& date);

// 25 October 3467 in that style.
std::string platformShortDateSample();

}  // namespace tav
