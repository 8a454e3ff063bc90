#pragma once
// The name, size and date test of a file find record, on what a directory
// entry tells of a file:
//   - a name pattern other than "*" ("*.*", empty) must match the name,
//     case ignored (* any run, ? one character, # one digit, [set]);
//   - a size below the minimum or above the maximum fails (both inclusive,
//     0 for none);
//   - Today: the modified date is today; otherwise the first of Modified,
//     Created, Accessed that is on: the date, as a whole local day, lies
//     between the from-day and the to-day, either of which may be open.
// Not thread-safe: it keeps a local time converter.
#include <cstdint>
#include <string_view>

#include "filelist/FormatLocalTime.h"
#include "filelist/WalkDirectory.h"
#include "find/FileFindRecord.h"

namespace tav {

class SizeDateTest {
public:
    // `today`: the day number of today (day 0 is 30 December 1899).
    SizeDateTest(const FileFindRecord& record, int64_t today);

    // True when the test can fail at all.
    bool active() const;
    // True when the test reads creation times.
    bool needsCreated() const;

    bool passes(const FoundItem& item);

    // The local whole day number of POSIX seconds.
    int64_t dayOf(int64_t posixSeconds);

private:
    bool inRange(const DateRange& range, int64_t posixSeconds);

    FileFindRecord record_;
    int64_t today_;
    LocalTimeConverter clock_;
};

// The day number of today, on the local clock.
int64_t todayDayNumber();

}  // namespace tav
