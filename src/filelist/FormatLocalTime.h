#pragma once
// File times to local civil time, the way the list shows them. The C library
// is asked twice for each UTC day that the files touch: a day whose first
// and last second have the same offset is taken as one span of that offset,
// and neighbouring spans of one offset are joined, so after a few files the
// whole listed period is a handful of spans and the rest is arithmetic. The
// hour of a change of offset is told by the library second by second. One
// converter per job: it is not shared between threads.
#include <cstdint>
#include <filesystem>
#include <vector>

#include "filelist/FormatCivil.h"

namespace tav {

// Seconds since 1970-01-01 UTC of a file time, rounded down.
std::int64_t posixSecondsOf(std::filesystem::file_time_type time);

class LocalTimeConverter {
public:
    CivilDateTime fromPosix(std::int64_t seconds);
    CivilDateTime fromFileTime(std::filesystem::file_time_type time) { return fromPosix(posixSecondsOf(time)); }

    // Forgets what the C library said, for a changed time zone.
    void reset();

private:
    struct Span {
        std::int64_t start;   // first UTC second
        std::int64_t end;     // one past the last
        std::int32_t offset;  // local minus UTC, seconds
    };
    const Span* findSpan(std::int64_t seconds);
    void addSpan(Span span);

    std::vector<Span> spans_;  // sorted, not overlapping
    std::size_t last_ = 0;     // the span of the previous call
};

// The same through a converter of the calling thread.
CivilDateTime localCivilTime(std::int64_t posixSeconds);
CivilDateTime localCivilTime(std::filesystem::file_time_type time);

// Re-reads the time zone (tzset) and clears the calling thread's converter.
void reloadLocalTimeZone();

}  // namespace tav
