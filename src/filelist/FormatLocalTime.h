#pragma once
// File times to local civil time, the way the list shows them. The C library
// is asked once for each hour of UTC that the files touch; within an hour
// without a change of offset the rest is arithmetic. One converter per job:
// it is not shared between threads.
#include <array>
#include <cstdint>
#include <filesystem>

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
    struct Slot {
        std::int64_t hour = INT64_MIN;  // UTC hour number the entry holds
        std::int32_t offset = 0;        // local minus UTC, seconds
        bool uniform = false;           // one offset for the whole hour
    };
    std::array<Slot, 256> slots_{};
};

// The same through a converter of the calling thread.
CivilDateTime localCivilTime(std::int64_t posixSeconds);
CivilDateTime localCivilTime(std::filesystem::file_time_type time);

// Re-reads the time zone (tzset) and clears the calling thread's converter.
void reloadLocalTimeZone();

}  // namespace tav
