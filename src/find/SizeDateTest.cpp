#include "find/SizeDateTest.h"

#include <chrono>

#include "filelist/FormatCivil.h"
#include "filelist/ListSpec.h"

namespace tav {

SizeDateTest::SizeDateTest(const FileFindRecord& record, int64_t today) : record_(record), today_(today) {}

bool SizeDateTest::active() const {
    return record_.hasNamePattern() || record_.hasSizeCriteria() || record_.hasDateCriteria();
}

bool SizeDateTest::needsCreated() const {
    return !record_.modifiedToday && !record_.modified.on && record_.created.on;
}

int64_t SizeDateTest::dayOf(int64_t posixSeconds) { return WholeDayNumber(clock_.fromPosix(posixSeconds)); }

bool SizeDateTest::inRange(const DateRange& range, int64_t posixSeconds) {
    const int64_t day = dayOf(posixSeconds);
    if (range.from && day < *range.from) return false;
    if (range.to && day > *range.to) return false;
    return true;
}

bool SizeDateTest::passes(const FoundItem& item) {
    if (record_.hasNamePattern() && !wildMatch(record_.pattern, item.name)) return false;
    if (record_.minSize > 0 && item.size < record_.minSize) return false;
    if (record_.maxSize > 0 && item.size > record_.maxSize) return false;
    if (record_.modifiedToday) return dayOf(item.modified) == today_;
    if (record_.modified.on) return inRange(record_.modified, item.modified);
    if (record_.created.on) return inRange(record_.created, item.created);
    if (record_.accessed.on) return inRange(record_.accessed, item.accessed);
    return true;
}

int64_t todayDayNumber() {
    const auto now = std::chrono::system_clock::now();
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(now.time_since_epoch()).count();
    return WholeDayNumber(localCivilTime(static_cast<std::int64_t>(seconds)));
}

}  // namespace tav
