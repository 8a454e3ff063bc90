#include "find/ComplexCriteria.h"

#include "core/ListText.h"
#include "find/EscapeSequence.h"

namespace tav {

namespace {

// Field numbers of the stored string.
enum Field {
    kExclude = 0, kExcludeLineStarts = 1, kIncludeLineStarts = 2, kIncludeSameLine = 3,
    kIncludeRange = 4, kRestrictLine = 5, kIncludeRangeBytes = 6, kExcludeIgnoreSpaces = 7,
    kIncludeIgnoreSpaces = 8, kValues = 9, kExcludeSameLine = 10, kExcludeRange = 11,
    kExcludeRangeBytes = 12, kLastPlain = 13,
    kTildeFlag = 14, kOpenFlag = 15, kCloseFlag = 16, kHashFlag = 17,
    kTildeSub = 18, kOpenSub = 19, kCloseSub = 20, kHashSub = 21,
};

constexpr int kListFields[] = {kExclude, kExcludeLineStarts, kIncludeLineStarts, kIncludeSameLine,
                               kIncludeRange, kValues, kExcludeSameLine, kExcludeRange};

std::vector<std::string>* listOf(ComplexCriteria& c, int field) {
    switch (field) {
        case kExclude: return &c.exclude;
        case kExcludeLineStarts: return &c.excludeLineStarts;
        case kIncludeLineStarts: return &c.includeLineStarts;
        case kIncludeSameLine: return &c.includeSameLine;
        case kIncludeRange: return &c.includeRange;
        case kValues: return &c.values;
        case kExcludeSameLine: return &c.excludeSameLine;
        case kExcludeRange: return &c.excludeRange;
        default: return nullptr;
    }
}

std::vector<std::string> splitHashList(std::string_view text) {
    std::vector<std::string> out;
    size_t pos = 0;
    while (pos <= text.size()) {
        size_t next = text.find('#', pos);
        if (next == std::string_view::npos) next = text.size();
        if (next > pos) out.emplace_back(text.substr(pos, next - pos));
        pos = next + 1;
    }
    return out;
}

std::string joinHashList(const std::vector<std::string>& items) {
    std::string out;
    bool first = true;
    for (const auto& s : items) {
        if (s.empty()) continue;
        if (!first) out += '#';
        out += s;
        first = false;
    }
    return out;
}

// Puts `sub` in for `ch` in fields [0, kLastPlain], if any holds it, and
// records the flag and the substitute.
void escapeTopLevel(std::vector<std::string>& f, char ch, int flagField, int subField) {
    bool any = false;
    for (int i = 0; i <= kLastPlain; ++i) any = any || f[static_cast<size_t>(i)].find(ch) != std::string::npos;
    if (!any) return;
    std::string all;
    for (const auto& s : f) all += s + '\x01';
    std::string sub = escapeSequence(all);
    for (int i = 0; i <= kLastPlain; ++i)
        f[static_cast<size_t>(i)] = replaceAllOf(f[static_cast<size_t>(i)], std::string(1, ch), sub);
    if (f.size() <= static_cast<size_t>(subField)) f.resize(static_cast<size_t>(subField) + 1);
    f[static_cast<size_t>(flagField)] = storedFlag(true);
    f[static_cast<size_t>(subField)] = sub;
}

}  // namespace

int64_t leadingNumber(std::string_view text) {
    size_t i = 0;
    while (i < text.size() && text[i] == ' ') ++i;
    bool negative = false;
    if (i < text.size() && (text[i] == '-' || text[i] == '+')) negative = text[i++] == '-';
    int64_t v = 0;
    for (; i < text.size() && text[i] >= '0' && text[i] <= '9'; ++i) {
        if (v > (INT64_MAX - 9) / 10) break;
        v = v * 10 + (text[i] - '0');
    }
    return negative ? -v : v;
}

bool ComplexCriteria::empty() const {
    return values.empty() && exclude.empty() && excludeLineStarts.empty() && excludeSameLine.empty() &&
           excludeRange.empty() && includeLineStarts.empty() && includeSameLine.empty() &&
           includeRange.empty();
}

ComplexCriteria ComplexCriteria::withoutLineAndRange() const {
    ComplexCriteria c;
    c.values = values;
    c.exclude = exclude;
    return c;
}

ComplexCriteria parseComplexCriteria(std::string_view text) {
    ComplexCriteria c;
    if (text.empty()) return c;
    std::vector<std::string> f = splitItems(text, "~", "[]");
    if (f.size() <= kHashSub) f.resize(kHashSub + 1);
    auto at = [&](int i) -> std::string& { return f[static_cast<size_t>(i)]; };
    // Undo the top-level substitutes in the reverse order of their making.
    if (textIsTrue(at(kTildeFlag)) || textIsTrue(at(kOpenFlag)) || textIsTrue(at(kCloseFlag))) {
        const std::pair<int, char> undo[] = {{kCloseSub, ']'}, {kOpenSub, '['}, {kTildeSub, '~'}};
        const int flags[] = {kCloseFlag, kOpenFlag, kTildeFlag};
        for (int k = 0; k < 3; ++k) {
            if (!textIsTrue(at(flags[k])) || at(undo[k].first).empty()) continue;
            for (int i = 0; i <= kLastPlain; ++i)
                at(i) = replaceAllOf(at(i), at(undo[k].first), std::string(1, undo[k].second));
        }
    }
    const bool hashEscaped = textIsTrue(at(kHashFlag)) && !at(kHashSub).empty();
    for (int field : kListFields) {
        auto items = splitHashList(at(field));
        if (hashEscaped)
            for (auto& s : items) s = replaceAllOf(s, at(kHashSub), "#");
        *listOf(c, field) = std::move(items);
    }
    c.restrictLine = leadingNumber(at(kRestrictLine));
    c.includeRangeBytes = leadingNumber(at(kIncludeRangeBytes));
    c.excludeRangeBytes = leadingNumber(at(kExcludeRangeBytes));
    c.excludeStartIgnoreSpaces = textIsTrue(at(kExcludeIgnoreSpaces));
    c.includeStartIgnoreSpaces = textIsTrue(at(kIncludeIgnoreSpaces));
    return c;
}

std::string buildComplexCriteria(const ComplexCriteria& input) {
    if (input.empty()) return {};
    ComplexCriteria c = input;
    std::vector<std::string> f(kLastPlain);  // fields 0..12
    // "#" inside the eight lists.
    std::string all;
    bool anyHash = false;
    for (int field : kListFields)
        for (const auto& s : *listOf(c, field)) {
            all += s + '\x01';
            anyHash = anyHash || s.find('#') != std::string::npos;
        }
    if (anyHash) {
        std::string sub = escapeSequence(all);
        for (int field : kListFields)
            for (auto& s : *listOf(c, field)) s = replaceAllOf(s, "#", sub);
        f.resize(kHashSub + 1);
        f[kHashFlag] = storedFlag(true);
        f[kHashSub] = sub;
    }
    for (int field : kListFields) f[static_cast<size_t>(field)] = joinHashList(*listOf(c, field));
    f[kRestrictLine] = std::to_string(c.restrictLine);
    f[kIncludeRangeBytes] = std::to_string(c.includeRangeBytes);
    f[kExcludeRangeBytes] = std::to_string(c.excludeRangeBytes);
    f[kExcludeIgnoreSpaces] = storedFlag(c.excludeStartIgnoreSpaces);
    f[kIncludeIgnoreSpaces] = storedFlag(c.includeStartIgnoreSpaces);
    if (f.size() <= kLastPlain) f.resize(kLastPlain + 1);
    escapeTopLevel(f, '~', kTildeFlag, kTildeSub);
    escapeTopLevel(f, '[', kOpenFlag, kOpenSub);
    escapeTopLevel(f, ']', kCloseFlag, kCloseSub);
    // Never longer than the last used field; fields 0..12 always stand.
    while (f.size() > kLastPlain && f.back().empty()) f.pop_back();
    std::string out;
    for (size_t i = 0; i < f.size(); ++i) {
        if (i) out += '~';
        out += f[i];
    }
    return out;
}

}  // namespace tav
