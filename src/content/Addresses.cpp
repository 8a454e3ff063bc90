#include "content/Addresses.h"

#include "content/DisplayText.h"
#include "content/ItemList.h"
#include "core/ListText.h"

namespace tav {

EndChars::EndChars() {
    table_['\r'] = true;
    table_['\n'] = true;
}

void EndChars::remove(unsigned char c) {
    if (c != '\r' && c != '\n') table_[c] = false;
}

EndChars EndChars::fromChars(std::string_view chars) {
    EndChars e;
    for (char c : chars) e.add(static_cast<unsigned char>(c));
    return e;
}

EndChars EndChars::fromList(std::string_view list) {
    EndChars e;
    for (const std::string& item : splitItems(list)) {
        if (item.empty()) continue;
        std::size_t i = 0;
        const char32_t c = nextCodePoint(item, i);
        // File bytes are matched one by one: a character up to 255 stands
        // for its byte in a Windows-1252 file.
        if (c <= 0xFF) e.add(static_cast<unsigned char>(c));
    }
    return e;
}

std::string EndChars::describe() const {
    std::string out;
    for (int c = 0; c < 256; ++c) {
        if (!table_[static_cast<std::size_t>(c)] || c == '\r' || c == '\n') continue;
        appendUtf8(out, static_cast<char32_t>(c));
    }
    return out.empty() ? std::string("**Empty**") : out;
}

std::string EndChars::toList() const {
    std::vector<std::string> items;
    for (int c = 0; c < 256; ++c) {
        if (!table_[static_cast<std::size_t>(c)] || c == '\r' || c == '\n') continue;
        std::string one;
        appendUtf8(one, static_cast<char32_t>(c));
        items.push_back(one);
    }
    return joinList(items);
}

EndChars defaultWwwEndChars() { return EndChars::fromChars("<>\"' )([],;\\^"); }
EndChars defaultMailEndChars() { return EndChars::fromChars("<>\"' )([],;:/\\?=&^"); }

// Everything up to the last of ": =<>\n\"/;" that stands before the '@' is
// dropped (dropping them one kind after the other comes to the same), the
// text is cut before the first of "\">&<)" behind it, and a final '.' goes.
std::string cleanMailCandidate(std::string_view candidate) {
    constexpr std::string_view kBefore = ": =<>\n\"/;";
    constexpr std::string_view kBehind = "\">&<)";
    std::size_t from = 0, to = candidate.size();
    const std::size_t at = candidate.find('@');
    if (at != std::string_view::npos) {
        for (std::size_t i = at; i > 0; --i) {
            if (kBefore.find(candidate[i - 1]) != std::string_view::npos) {
                from = i;
                break;
            }
        }
        for (std::size_t i = at + 1; i < candidate.size(); ++i) {
            if (kBehind.find(candidate[i]) != std::string_view::npos) {
                to = i;
                break;
            }
        }
    }
    std::string_view kept = candidate.substr(from, to - from);
    if (!kept.empty() && kept.back() == '.') kept.remove_suffix(1);
    return std::string(kept);
}

namespace {

bool equalsIgnoreCase(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        char x = a[i], y = b[i];
        if (x >= 'A' && x <= 'Z') x = static_cast<char>(x + 32);
        if (y >= 'A' && y <= 'Z') y = static_cast<char>(y + 32);
        if (x != y) return false;
    }
    return true;
}

}  // namespace

char splitAddress(std::string_view c, bool mailWanted, bool wwwWanted, bool convertWwwToHttp, std::string& item) {
    if (mailWanted && c.find('@') != std::string_view::npos) {
        item = cleanMailCandidate(c);
        return 'm';
    }
    if (!wwwWanted || equalsIgnoreCase(c, "http://www")) return 0;
    if (convertWwwToHttp && c.size() >= 3 && equalsIgnoreCase(c.substr(0, 3), "www")) {
        item.assign("http://").append(c);
    } else {
        item.assign(c);
    }
    return 'w';
}

namespace {

void splitOne(std::string_view c, bool mailWanted, bool wwwWanted, bool convertWwwToHttp,
              std::vector<std::string>& mailList, std::vector<std::string>& wwwList) {
    std::string item;
    const char where = splitAddress(c, mailWanted, wwwWanted, convertWwwToHttp, item);
    if (where == 'm') mailList.push_back(std::move(item));
    if (where == 'w') wwwList.push_back(std::move(item));
}

}  // namespace

void SplitAddresses(const std::vector<std::string>& candidates, bool mailWanted, bool wwwWanted,
                    bool convertWwwToHttp, std::vector<std::string>& mailList,
                    std::vector<std::string>& wwwList) {
    for (const std::string& c : candidates) splitOne(c, mailWanted, wwwWanted, convertWwwToHttp, mailList, wwwList);
}

void SplitAddresses(const ItemList& candidates, bool mailWanted, bool wwwWanted, bool convertWwwToHttp,
                    std::vector<std::string>& mailList, std::vector<std::string>& wwwList) {
    for (std::size_t i = 0; i < candidates.size(); ++i)
        splitOne(candidates[i], mailWanted, wwwWanted, convertWwwToHttp, mailList, wwwList);
}

}  // namespace tav
