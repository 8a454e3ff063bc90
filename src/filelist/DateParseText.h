#pragma once
// Reading a date or time back from a cell or a stored text: the key forms
// (`yyyy/mm/dd`, `hh:nn:ss`), the day-first form the list maker writes
// (`dd/mm/yyyy`, `hh:nn.ss`) and what a file may hold: a date, a time, or a
// date followed by a time. Separators `/`, `-` and `.`; a month may be
// written as its English name or first three letters; a time may end in
// AM/PM or A/P. A two-digit year is 1930 to 2029. A time without a date
// lies on day 0, 30 December 1899.
#include <cstdint>
#include <string_view>

#include "filelist/FormatCivil.h"

namespace tav {

// True and sets `out` if the whole text (blanks around it ignored) is a
// valid date and/or time. A day-first date whose day and month cannot be
// so is read month first.
bool readDateTimeText(std::string_view text, CivilDateTime& out);

// The day number of a date text read as above, the time dropped; 0 if the
// text is no date.
std::int64_t WholeDayNumber(std::string_view text);

}  // namespace tav
