#pragma once
// The two small "|" lists that ride along with the criteria: the find
// switches (in the criteria record) and the find options (in the file find
// record). Fields are numbered from 1; fields with no meaning here are kept
// as they came.
#include <cstdint>
#include <string>
#include <string_view>

namespace tav {

struct FindSwitches {
    bool showPopup = false;    // 1: Show Popup/Request Action
    bool promptAtEnd = false;  // 2: prompt when the end of the text or list is reached
    std::string onceOnly;      // 3: cleared when the dialog closes
    bool operator==(const FindSwitches&) const = default;
};

FindSwitches parseFindSwitches(std::string_view text);
std::string buildFindSwitches(const FindSwitches& s);

struct FindOptions {
    bool includeSubdirs = false;   // 1
    std::string field2;            // 2: kept as read
    int64_t maxBytes = 0;          // 3: bytes to search in each file, 0 for no limit
    bool keepAllRejected = false;  // 4: save detail of all rejected values
    bool showFoundValue = false;   // 5
    bool showFoundAt = false;      // 6
    bool showFoundText = false;    // 7
    int64_t lastCriteriaRow = 0;   // 8: last criteria row copied
    bool operator==(const FindOptions&) const = default;
};

FindOptions parseFindOptions(std::string_view text);
std::string buildFindOptions(const FindOptions& o);

// The largest byte count the options and size boxes take.
inline constexpr int64_t kMaxSearchBytes = 2147483647;

// The maximum bytes to search as a search uses it: above 2147473647 it is
// 2147483647, any other positive value is rounded up to whole 10,000-byte
// blocks; 0 or less stays (no limit).
int64_t roundMaxBytes(int64_t value);

}  // namespace tav
