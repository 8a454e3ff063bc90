#include "filelist/FormatLocalTime.h"

#include <chrono>
#include <ctime>

namespace tav {

namespace {

std::int64_t floorDiv(std::int64_t a, std::int64_t b) {
    std::int64_t q = a / b;
    if ((a % b != 0) && ((a < 0) != (b < 0))) --q;
    return q;
}

// Local minus UTC at a moment, from the C library; false if it cannot say.
bool offsetAt(std::int64_t seconds, std::int32_t& offset) {
    const std::time_t t = static_cast<std::time_t>(seconds);
    std::tm local{};
#ifdef _WIN32
    if (localtime_s(&local, &t) != 0) return false;
#else
    if (localtime_r(&t, &local) == nullptr) return false;
#endif
    CivilDateTime civil;
    civil.year = local.tm_year + 1900;
    civil.month = local.tm_mon + 1;
    civil.day = local.tm_mday;
    civil.hour = local.tm_hour;
    civil.minute = local.tm_min;
    civil.second = local.tm_sec > 59 ? 59 : local.tm_sec;
    offset = static_cast<std::int32_t>(secondsFromCivil(civil) - seconds);
    return true;
}

LocalTimeConverter& threadConverter() {
    thread_local LocalTimeConverter converter;
    return converter;
}

}  // namespace

std::int64_t posixSecondsOf(std::filesystem::file_time_type time) {
    const auto system = std::chrono::file_clock::to_sys(time);
    return std::chrono::floor<std::chrono::seconds>(system).time_since_epoch().count();
}

CivilDateTime LocalTimeConverter::fromPosix(std::int64_t seconds) {
    const std::int64_t hour = floorDiv(seconds, 3600);
    Slot& slot = slots_[static_cast<std::uint64_t>(hour) % slots_.size()];
    if (slot.hour != hour) {
        std::int32_t first = 0, last = 0;
        const bool known = offsetAt(hour * 3600, first) && offsetAt(hour * 3600 + 3599, last);
        slot.hour = hour;
        slot.offset = first;
        slot.uniform = known && first == last;
        if (!known) {
            slot.offset = 0;
            slot.uniform = true;  // no zone information: show UTC
        }
    }
    std::int32_t offset = slot.offset;
    if (!slot.uniform && !offsetAt(seconds, offset)) offset = 0;
    return civilFromSeconds(seconds + offset);
}

void LocalTimeConverter::reset() { slots_.fill(Slot{}); }

CivilDateTime localCivilTime(std::int64_t posixSeconds) { return threadConverter().fromPosix(posixSeconds); }

CivilDateTime localCivilTime(std::filesystem::file_time_type time) { return threadConverter().fromFileTime(time); }

void reloadLocalTimeZone() {
#ifdef _WIN32
    _tzset();
#else
    tzset();
#endif
    threadConverter().reset();
}

}  // namespace tav
