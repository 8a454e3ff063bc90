#include "find/CriteriaCheck.h"

#include <algorithm>
#include <cstring>

namespace tav {

namespace {

bool contains(std::string_view text, std::string_view value, bool ignoreCase) {
    if (value.empty()) return false;
    return ValueSearcher(value, ignoreCase).find(text) != ValueSearcher::npos;
}

bool startsWith(std::string_view text, std::string_view value, bool ignoreCase) {
    return !value.empty() && ValueSearcher(value, ignoreCase).startsWith(text);
}

std::string trimLeadingSpaces(std::string s) {
    size_t i = s.find_first_not_of(' ');
    return i == std::string::npos ? std::string() : s.substr(i);
}

// The span around the hit for a range test of n bytes.
std::string rangeSpan(const HitContext& h, int64_t n) {
    auto lenBefore = static_cast<int64_t>(h.before.size());
    auto lenAfter = static_cast<int64_t>(h.after.size());
    int64_t b = std::min(lenBefore, std::max<int64_t>(n, 0));
    int64_t a = std::min(lenAfter, std::max<int64_t>(n, 0));
    return h.before.substr(static_cast<size_t>(lenBefore - b)) + h.value + h.after.substr(0, static_cast<size_t>(a));
}

bool inRanges(const std::vector<WordRange>& ranges, unsigned char c) {
    return std::any_of(ranges.begin(), ranges.end(), [c](const WordRange& r) { return c >= r.low && c <= r.high; });
}

}  // namespace

HitContext gatherHitContext(const PreparedCriteria& c, ByteSource& source, int64_t byteNumber,
                            std::string_view value) {
    HitContext h;
    h.value = std::string(value);
    const int64_t bn = byteNumber;
    const auto len = static_cast<int64_t>(value.size());
    const int64_t valueEnd = bn + len;  // first byte behind the value
    int64_t needBefore = c.baseBefore, needAfter = c.baseAfter;
    int64_t lineBreak = -1;  // byte number of the break ahead of the line, 0 for the file's start
    if (c.needLineStart) {
        const int64_t windowStart = std::max<int64_t>(1, bn - c.restrictLine);
        std::string w = source.read(windowStart, bn + 1);
        size_t j = w.find_last_of("\r\n");
        if (j != std::string::npos)
            lineBreak = windowStart + static_cast<int64_t>(j);
        else if (bn - c.restrictLine <= 1)
            lineBreak = 0;  // every byte ahead of the hit is on its line
        int64_t reach = lineBreak >= 0 ? lineBreak : bn - c.restrictLine;
        needBefore = std::max(needBefore, bn - reach - 1);
    }
    if (c.needLineEnd) {
        std::string w = source.read(valueEnd, valueEnd + c.restrictLine);
        size_t j = w.find_first_of("\r\n");
        int64_t e = j != std::string::npos ? valueEnd + static_cast<int64_t>(j) : valueEnd + c.restrictLine;
        needAfter = std::max(needAfter, e - valueEnd);
    }
    needBefore = std::min(needBefore, bn - 1);
    if (needBefore > 0) h.before = source.read(bn - needBefore, bn);
    if (needAfter > 0) h.after = source.read(valueEnd, valueEnd + needAfter);
    if (lineBreak >= 0) {
        const int64_t beforeStart = bn - static_cast<int64_t>(h.before.size());
        h.lineStartIndex = lineBreak + 1 - beforeStart + 1;
    }
    return h;
}

std::string gatherLine(const PreparedCriteria& c, const HitContext& h) {
    const auto lenBefore = static_cast<int64_t>(h.before.size());
    int64_t m;
    if (h.lineStartIndex < 0)
        m = std::min(lenBefore, c.restrictLine);
    else
        m = lenBefore >= h.lineStartIndex ? lenBefore + 1 - h.lineStartIndex : 0;
    const auto a = std::min<int64_t>(static_cast<int64_t>(h.after.size()), c.restrictLine);
    std::string line = h.before.substr(static_cast<size_t>(lenBefore - m)) + h.value + h.after.substr(0, static_cast<size_t>(a));
    size_t cut = line.find_first_of("\r\n");
    if (cut != std::string::npos) line.resize(cut + 1);
    return line;
}

std::optional<std::string> alignmentReject(const HitContext& h, std::string_view exclude, bool ignoreCase) {
    const std::string& value = h.value;
    if (value.empty() || exclude.size() < value.size()) return std::nullopt;
    ValueSearcher inExclude(value, ignoreCase);
    for (size_t at = inExclude.find(exclude); at != ValueSearcher::npos; at = inExclude.find(exclude, at + 1)) {
        // The hit would be this occurrence: `at` bytes of the exclusion lie ahead of it.
        if (h.before.size() < at) continue;
        std::string s = h.before.substr(h.before.size() - at) + value;
        size_t rest = exclude.size() - s.size();
        if (h.after.size() < rest) continue;
        s += h.after.substr(0, rest);
        if (textEquals(s, exclude, ignoreCase)) return s + "   -(" + std::string(exclude) + ")";
    }
    return std::nullopt;
}

std::optional<std::string> checkCriteria(const PreparedCriteria& c, ByteSource& source, int64_t byteNumber,
                                         std::string_view value) {
    if (c.acceptsEveryHit()) return std::nullopt;
    return checkCriteria(c, gatherHitContext(c, source, byteNumber, value));
}

std::optional<std::string> checkCriteria(const PreparedCriteria& c, const HitContext& h) {
    const bool ic = c.ignoreCase;
    std::optional<std::string> lineCache;
    auto line = [&]() -> const std::string& {
        if (!lineCache) lineCache = gatherLine(c, h);
        return *lineCache;
    };
    // 1. Whole word: the bytes either side must not be word characters.
    if (c.wholeWord) {
        if (!h.before.empty() && inRanges(c.wordRanges, static_cast<unsigned char>(h.before.back())))
            return " WW   " + std::string(1, h.before.back()) + h.value;
        if (!h.after.empty() && inRanges(c.wordRanges, static_cast<unsigned char>(h.after.front())))
            return " WW   " + h.value + std::string(1, h.after.front());
    }
    // 2. Exclude line start.
    if (h.lineStartIndex >= 0 && !c.excludeLineStarts.empty()) {
        std::string l = c.excludeStartIgnoreSpaces ? trimLeadingSpaces(line()) : line();
        for (const auto& v : c.excludeLineStarts)
            if (startsWith(l, v, ic))
                return l + "   " + (c.excludeStartIgnoreSpaces ? "-LG(" : "-L(") + v + ")";
    }
    // 3. Exclude values.
    for (const auto& v : c.excludeValues)
        if (auto r = alignmentReject(h, v, ic)) return r;
    // 4. Exclude same line.
    for (const auto& v : c.excludeSameLine)
        if (contains(line(), v, ic)) return line() + "   -S(" + v + ")";
    // 5. Exclude range.
    if (!c.excludeRange.empty()) {
        std::string t = rangeSpan(h, c.excludeRangeBytes);
        for (const auto& v : c.excludeRange)
            if (contains(t, v, ic)) return t + "   -R" + std::to_string(c.excludeRangeBytes) + "(" + v + ")";
    }
    // 6. Include line start.
    if (!c.includeLineStarts.empty()) {
        const char* tag = c.includeStartIgnoreSpaces ? "+LG(" : "+L(";
        if (h.lineStartIndex < 0)
            return std::string(tag) + "Line start not found Cannot Check " + c.includeLineStarts.front() + ")" +
                   " etc.   ";
        std::string l = c.includeStartIgnoreSpaces ? trimLeadingSpaces(line()) : line();
        bool any = std::any_of(c.includeLineStarts.begin(), c.includeLineStarts.end(),
                               [&](const std::string& v) { return startsWith(l, v, ic); });
        if (!any) {
            std::string r = l + "   ";
            for (const auto& v : c.includeLineStarts) r += std::string(tag) + v + ") ";
            return r;
        }
    }
    // 7. Include same line.
    if (!c.includeSameLine.empty()) {
        bool any = std::any_of(c.includeSameLine.begin(), c.includeSameLine.end(),
                               [&](const std::string& v) { return contains(line(), v, ic); });
        if (!any) {
            std::string r = line() + "   ";
            for (const auto& v : c.includeSameLine) r += "+S(" + v + ") ";
            return r;
        }
    }
    // 8. Include range.
    if (!c.includeRange.empty()) {
        std::string t = rangeSpan(h, c.includeRangeBytes);
        bool any = std::any_of(c.includeRange.begin(), c.includeRange.end(),
                               [&](const std::string& v) { return contains(t, v, ic); });
        if (!any) {
            std::string r = t + "   ";
            for (const auto& v : c.includeRange) r += "+R" + std::to_string(c.includeRangeBytes) + "(" + v + ") ";
            return r;
        }
    }
    // 9. Simple exclude.
    if (!c.simpleExclude.empty())
        if (auto r = alignmentReject(h, c.simpleExclude, ic)) return r;
    return std::nullopt;
}

}  // namespace tav
