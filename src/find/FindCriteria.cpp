#include "find/FindCriteria.h"

#include <algorithm>
#include <vector>

#include "core/ListText.h"
#include "find/ComplexCriteria.h"
#include "find/EscapeSequence.h"

namespace tav {

namespace {

constexpr size_t kSubLength = 3;  // length of a substitute sequence

std::vector<std::string> splitBackquote(std::string_view record) {
    std::vector<std::string> f;
    size_t pos = 0;
    while (true) {
        size_t next = record.find('`', pos);
        if (next == std::string_view::npos) {
            f.emplace_back(record.substr(pos));
            return f;
        }
        f.emplace_back(record.substr(pos, next - pos));
        pos = next + 1;
    }
}

}  // namespace

bool sectionHasNoLines(std::string_view section) {
    return section == kSectionFileList || section == kSectionTopList || section == kSectionDirs;
}

std::string complexPartsNote(std::string_view section, std::string_view complex) {
    if (!sectionHasNoLines(section) || complex.empty()) return {};
    ComplexCriteria c = parseComplexCriteria(complex);
    if (c == c.withoutLineAndRange()) return {};
    return std::string(kComplexPartsNote);
}

FindCriteria parseFindCriteria(std::string_view record, std::string_view section) {
    std::vector<std::string> f = splitBackquote(record);
    if (f.size() < 8) f.resize(8);
    if (textIsTrue(f[7]) && f[6].size() >= kSubLength) {
        std::string sub = f[6].substr(0, kSubLength);
        f[6] = f[6].substr(kSubLength);
        for (int i = 0; i <= 6; ++i) f[static_cast<size_t>(i)] = replaceAllOf(f[static_cast<size_t>(i)], sub, "`");
    }
    FindCriteria c;
    c.text = f[0];
    c.exclude = f[1];
    c.matchCase = textIsTrue(f[2]);
    c.wholeWord = textIsTrue(f[3]);
    c.complex = f[4];
    c.wordRanges = f[5].empty() ? std::string(kDefaultWordRanges) : f[5];
    c.switches = f[6];
    if (sectionHasNoLines(section) && !c.complex.empty())
        c.complex = buildComplexCriteria(parseComplexCriteria(c.complex).withoutLineAndRange());
    return c;
}

std::string buildFindCriteria(const FindCriteria& c) {
    std::vector<std::string> f = {c.text, c.exclude, storedFlag(c.matchCase), storedFlag(c.wholeWord),
                                  c.complex, c.wordRanges, c.switches, storedFlag(false)};
    bool any = false;
    std::string all;
    for (int i = 0; i <= 6; ++i) {
        any = any || f[static_cast<size_t>(i)].find('`') != std::string::npos;
        all += f[static_cast<size_t>(i)] + '\x01';
    }
    if (any) {
        std::string sub = escapeSequence(all);
        for (int i = 0; i <= 6; ++i) f[static_cast<size_t>(i)] = replaceAllOf(f[static_cast<size_t>(i)], "`", sub);
        f[6] = sub + f[6];
        f[7] = storedFlag(true);
    }
    std::string out;
    for (size_t i = 0; i < f.size(); ++i) {
        if (i) out += '`';
        out += f[i];
    }
    return out;
}

std::vector<WordRange> parseWordRanges(std::string_view text) {
    if (text.empty()) text = kDefaultWordRanges;
    std::vector<WordRange> out;
    size_t pos = 0;
    while ((pos = text.find('[', pos)) != std::string_view::npos) {
        size_t close = text.find(']', pos);
        if (close == std::string_view::npos) break;
        std::string_view inner = text.substr(pos + 1, close - pos - 1);
        size_t dash = inner.find('-', 1);
        WordRange r;
        r.low = static_cast<int>(leadingNumber(inner.substr(0, dash)));
        r.high = dash == std::string_view::npos ? r.low : static_cast<int>(leadingNumber(inner.substr(dash + 1)));
        out.push_back(r);
        pos = close + 1;
    }
    return out;
}

std::string buildListSearchValue(int64_t maxBytes, std::string_view record) {
    return std::to_string(maxBytes) + "|" + std::string(record);
}

void parseListSearchValue(std::string_view value, int64_t& maxBytes, std::string& record) {
    size_t bar = value.find('|');
    maxBytes = std::max<int64_t>(0, leadingNumber(value.substr(0, bar)));
    record = bar == std::string_view::npos ? std::string() : std::string(value.substr(bar + 1));
}

}  // namespace tav
