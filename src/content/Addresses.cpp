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

std::string cleanMailCandidate(std::string_view candidate) {
    std::string s(candidate);
    // Drop everything up to each of these that stands before the '@'.
    for (char c : std::string_view(": =<>\n\"/;")) {
        while (true) {
            const std::size_t at = s.find('@');
            const std::size_t p = s.find(c);
            if (p == std::string::npos || at == std::string::npos || p >= at) break;
            s.erase(0, p + 1);
        }
    }
    // Cut before each of these that stands behind the '@'.
    for (char c : std::string_view("\">&<)")) {
        const std::size_t at = s.find('@');
        if (at == std::string::npos) break;
        const std::size_t p = s.find(c, at + 1);
        if (p != std::string::npos) s.erase(p);
    }
    if (!s.empty() && s.back() == '.') s.pop_back();
    return s;
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

namespace {

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
