#pragma once
// Date and time masks, letters in either case: `d` `dd` day, `ddd` `dddd`
// weekday name, `ddddd` short date (dd/mm/yyyy), `dddddd` long date
// (dddd, d mmmm yyyy), `w` weekday number (Sunday 1), `ww` week of the year,
// `m` `mm` month (minutes right after an hour or right before seconds),
// `mmm` `mmmm` month name, `q` quarter, `y` day of the year, `yy` `yyyy`
// year, `h` `hh` hour, `n` `nn` minute, `s` `ss` second, `ttttt` full time
// (hh:nn:ss), `c` general date (date, time, or both), and `AM/PM`, `am/pm`,
// `A/P`, `a/p`, `AMPM` for a 12-hour clock, written in the mask's case.
// `"text"` and `\x` are literals, as is every other character. English month
// and day names, whatever the locale, so that lists read the same everywhere.
#include <string_view>

#include "filelist/FormatCivil.h"
#include "filelist/FormatResult.h"

namespace tav {

// Fails on an open quote or trailing backslash, on a digit placeholder
// (`0`, `#`: a number mask), on a mask that shows no part of the date or
// time, and on a date out of range. An empty mask gives the general date.
FormatResult formatDateTime(const CivilDateTime& value, std::string_view mask);

// True if the mask holds any date or time part outside literals.
bool maskHasDateToken(std::string_view mask);

}  // namespace tav
