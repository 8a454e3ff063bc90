#pragma once
// Criteria made ready for a search: the values compiled for scanning, the
// exclusion and line lists, and how much context a hit needs.
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "find/FindCriteria.h"
#include "find/ValueSearcher.h"

namespace tav {

struct PreparedCriteria {
    bool ignoreCase = true;
    bool wholeWord = false;
    std::vector<WordRange> wordRanges;        // only with whole word

    ValueSearcher mainValue;                  // the text to find
    std::vector<ValueSearcher> otherValues;   // or(...) values, in list order

    std::vector<std::string> excludeValues;        // -(
    std::vector<std::string> excludeLineStarts;    // -L(
    std::vector<std::string> excludeSameLine;      // -S(
    std::vector<std::string> excludeRange;         // -R
    std::vector<std::string> includeLineStarts;    // +L(
    std::vector<std::string> includeSameLine;      // +S(
    std::vector<std::string> includeRange;         // +R
    int64_t restrictLine = 1000;
    int64_t excludeRangeBytes = 0, includeRangeBytes = 0;
    bool excludeStartIgnoreSpaces = false, includeStartIgnoreSpaces = false;
    std::string simpleExclude;                // only when there is no complex string

    int64_t baseBefore = 0, baseAfter = 0;    // context bytes every hit starts from
    bool needLineStart = false;               // any of -L +L -S +S
    bool needLineEnd = false;                 // any of -S +S
    int64_t maxValueLength = 0;               // the longest value: the block overlap
    bool keepAllRejected = false;

    // All values in list order: main value first.
    size_t valueCount() const { return 1 + otherValues.size(); }
    const ValueSearcher& value(size_t i) const { return i == 0 ? mainValue : otherValues[i - 1]; }
    // True when hits need no check at all (raw hits are finds).
    bool acceptsEveryHit() const;
};

PreparedCriteria prepareFindCriteria(std::string_view text, std::string_view exclude, bool matchCase,
                                     bool wholeWord, std::string_view complex, std::string_view wordRanges,
                                     bool keepAllRejected = false);
PreparedCriteria prepareFindCriteria(const FindCriteria& c, bool keepAllRejected = false);

}  // namespace tav
