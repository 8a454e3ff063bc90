#include "filelist/FormatLocalTime.h"

#include <algorithm>
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

const LocalTimeConverter::Span* LocalTimeConverter::findSpan(std::int64_t seconds) {
    if (last_ < spans_.size() && spans_[last_].start <= seconds && seconds < spans_[last_].end) return &spans_[last_];
    auto it = std::upper_bound(spans_.begin(), spans_.end(), seconds,
                               [](std::int64_t s, const Span& span) { return s < span.start; });
    if (it == spans_.begin()) return nullptr;
    --it;
    if (seconds >= it->end) return nullptr;
    last_ = static_cast<std::size_t>(it - spans_.begin());
    return &*it;
}

void LocalTimeConverter::addSpan(Span span) {
    auto it = std::upper_bound(spans_.begin(), spans_.end(), span.start,
                               [](std::int64_t s, const Span& other) { return s < other.start; });
    it = spans_.insert(it, span);
    // Join with the neighbours where they touch and agree.
    if (it + 1 != spans_.end() && (it + 1)->start == it->end && (it + 1)->offset == it->offset) {
        it->end = (it + 1)->end;
        spans_.erase(it + 1);
    }
    if (it != spans_.begin() && (it - 1)->end == it->start && (it - 1)->offset == it->offset) {
        (it - 1)->end = it->end;
        it = spans_.erase(it) - 1;
    }
    last_ = static_cast<std::size_t>(it - spans_.begin());
}

CivilDateTime LocalTimeConverter::fromPosix(std::int64_t seconds) {
    if (const Span* span = findSpan(seconds)) return civilFromSeconds(seconds + span->offset);
    // A day, or else an hour, with one offset at both ends has no change
    // inside: zones change their offset at most a few times a year.
    for (const std::int64_t length : {std::int64_t{86400}, std::int64_t{3600}}) {
        const std::int64_t start = floorDiv(seconds, length) * length;
        std::int32_t first = 0, last = 0;
        if (!offsetAt(start, first) || !offsetAt(start + length - 1, last)) return civilFromSeconds(seconds);
        if (first == last) {
            addSpan(Span{start, start + length, first});
            return civilFromSeconds(seconds + first);
        }
    }
    std::int32_t offset = 0;
    if (!offsetAt(seconds, offset)) offset = 0;
    return civilFromSeconds(seconds + offset);
}

void LocalTimeConverter::reset() {
    spans_.clear();
    last_ = 0;
}

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
