#pragma once
// Dates typed by the user (criteria, prompts): digit groups separated by
// `/`, `.` or `-`, or six or eight digits in a row, in the order of the
// machine's short date style. A year of one or two digits is placed in a
// century by the year window around the present year.
#include <string>
#include <string_view>

#include "filelist/DateParseRegional.h"
#include "filelist/FormatCivil.h"

namespace tav {

// The status of a typed date.
inline constexpr int kTypedDateAsTyped = -1;          // a three- or four-digit year, as it stood
inline constexpr int kTypedDateThisCentury = -21;     // short year within the window
inline constexpr int kTypedDateNextCentury = -22;     // short year more than the window behind
inline constexpr int kTypedDatePreviousCentury = -23; // short year more than the window ahead
inline constexpr int kTypedDateInvalid = -9999;

inline constexpr int kDefaultYearWindow = 50;

struct TypedDate {
    CivilDateTime date;         // the day, at midnight
    int status = kTypedDateInvalid;
    std::string error;          // the regional check's message when the style is unusable
    bool ok() const { return status != kTypedDateInvalid; }
};

class TypedDateReader {
public:
    // Forces the order; the regional check then does not run (tests, settings).
    void setOrder(ShortDateOrder order) { order_ = order; }
    void setYearWindow(int years) { yearWindow_ = years; }
    // 0: the year of the local clock.
    void setPresentYear(int year) { presentYear_ = year; }

    // 0 until the regional check has run.
    int yearPosition() const { return order_.yearPosition; }
    // 0 until the first date is read.
    int yearWindow() const { return yearWindow_; }

    // Runs the regional check now (start-up); on success the order is kept.
    RegionalCheck checkRegionalStyle();

    TypedDate read(std::string_view text);

private:
    ShortDateOrder order_;
    int yearWindow_ = 0;
    int presentYear_ = 0;
};

// The program-wide reader, and reading through it. Used from the user
// interface thread only.
TypedDateReader& typedDateReader();
TypedDate ReadTypedDate(std::string_view text);

}  // namespace tav
