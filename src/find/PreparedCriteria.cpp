#include "find/PreparedCriteria.h"

#include <algorithm>

#include "find/ComplexCriteria.h"

namespace tav {

bool PreparedCriteria::acceptsEveryHit() const {
    return !wholeWord && excludeValues.empty() && excludeLineStarts.empty() && excludeSameLine.empty() &&
           excludeRange.empty() && includeLineStarts.empty() && includeSameLine.empty() && includeRange.empty() &&
           simpleExclude.empty();
}

PreparedCriteria prepareFindCriteria(std::string_view text, std::string_view exclude, bool matchCase,
                                     bool wholeWord, std::string_view complex, std::string_view wordRanges,
                                     bool keepAllRejected) {
    PreparedCriteria p;
    p.ignoreCase = !matchCase;
    p.wholeWord = wholeWord;
    p.keepAllRejected = keepAllRejected;
    p.mainValue = ValueSearcher(text, p.ignoreCase);
    p.maxValueLength = static_cast<int64_t>(text.size());
    int64_t needBefore = 0, needAfter = 0;
    if (wholeWord) {
        needBefore = needAfter = 1;
        p.wordRanges = parseWordRanges(wordRanges);
    }
    if (complex.empty() && !exclude.empty()) {
        ValueSearcher inExclude(text, p.ignoreCase);
        size_t first = inExclude.find(exclude);
        if (first != ValueSearcher::npos && !text.empty()) {
            p.simpleExclude = std::string(exclude);
            // The exclusion must be seen whole around a hit, whichever of its
            // occurrences of the value the hit is: the most bytes ahead come
            // with the last occurrence, the most behind with the first.
            size_t last = first;
            for (size_t at = first; at != ValueSearcher::npos; at = inExclude.find(exclude, at + 1)) last = at;
            needBefore = std::max(needBefore, static_cast<int64_t>(last));
            needAfter = std::max(needAfter, static_cast<int64_t>(exclude.size() - first - text.size()));
        }
    }
    if (!complex.empty()) {
        ComplexCriteria c = parseComplexCriteria(complex);
        p.restrictLine = c.restrictLine > 0 ? c.restrictLine : 1000;
        for (const auto& v : c.values) {
            p.otherValues.emplace_back(v, p.ignoreCase);
            p.maxValueLength = std::max(p.maxValueLength, static_cast<int64_t>(v.size()));
        }
        p.excludeValues = c.exclude;
        p.excludeLineStarts = c.excludeLineStarts;
        p.excludeSameLine = c.excludeSameLine;
        p.excludeRange = c.excludeRange;
        p.includeLineStarts = c.includeLineStarts;
        p.includeSameLine = c.includeSameLine;
        p.includeRange = c.includeRange;
        p.excludeRangeBytes = c.excludeRangeBytes;
        p.includeRangeBytes = c.includeRangeBytes;
        p.excludeStartIgnoreSpaces = c.excludeStartIgnoreSpaces;
        p.includeStartIgnoreSpaces = c.includeStartIgnoreSpaces;
        for (const auto& v : p.excludeValues) {
            needBefore = std::max(needBefore, static_cast<int64_t>(v.size()));
            needAfter = std::max(needAfter, static_cast<int64_t>(v.size()));
        }
        for (const auto* list : {&p.excludeLineStarts, &p.includeLineStarts})
            for (const auto& v : *list) needAfter = std::max(needAfter, static_cast<int64_t>(v.size()));
        if (!p.excludeRange.empty()) {
            needBefore = std::max(needBefore, p.excludeRangeBytes);
            needAfter = std::max(needAfter, p.excludeRangeBytes);
        }
        if (!p.includeRange.empty()) {
            needBefore = std::max(needBefore, p.includeRangeBytes);
            needAfter = std::max(needAfter, p.includeRangeBytes);
        }
        p.needLineStart = !p.excludeLineStarts.empty() || !p.includeLineStarts.empty() ||
                          !p.excludeSameLine.empty() || !p.includeSameLine.empty();
        p.needLineEnd = !p.excludeSameLine.empty() || !p.includeSameLine.empty();
    }
    p.baseBefore = needBefore;
    p.baseAfter = needAfter;
    return p;
}

PreparedCriteria prepareFindCriteria(const FindCriteria& c, bool keepAllRejected) {
    return prepareFindCriteria(c.text, c.exclude, c.matchCase, c.wholeWord, c.complex, c.wordRanges,
                               keepAllRejected);
}

}  // namespace tav
