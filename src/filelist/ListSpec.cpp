#include "filelist/ListSpec.h"

#include <filesystem>

#include "core/ListText.h"

namespace tav {

namespace {

char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

std::string lowered(std::string_view s) {
    std::string out(s);
    for (char& c : out) c = lower(c);
    return out;
}

std::string_view trimmed(std::string_view s) {
    while (!s.empty() && (s.front() == ' ' || s.front() == '\t')) s.remove_prefix(1);
    while (!s.empty() && (s.back() == ' ' || s.back() == '\t')) s.remove_suffix(1);
    return s;
}

bool isSeparator(char c) {
    return c == '/' || c == static_cast<char>(std::filesystem::path::preferred_separator);
}

// One character against a `[...]` set starting after the '['; advances `p`
// past the ']'. False if the set is not closed.
bool matchSet(std::string_view pattern, std::size_t& p, char c, bool& matched) {
    bool negate = false;
    if (p < pattern.size() && pattern[p] == '!') {
        negate = true;
        ++p;
    }
    bool in = false;
    bool first = true;
    while (p < pattern.size() && (pattern[p] != ']' || first)) {
        first = false;
        const char a = lower(pattern[p]);
        if (p + 2 < pattern.size() && pattern[p + 1] == '-' && pattern[p + 2] != ']') {
            const char b = lower(pattern[p + 2]);
            if (c >= a && c <= b) in = true;
            p += 3;
        } else {
            if (c == a) in = true;
            ++p;
        }
    }
    if (p >= pattern.size()) return false;
    ++p;  // the ']'
    matched = in != negate;
    return true;
}

}  // namespace

bool wildMatch(std::string_view pattern, std::string_view name) {
    std::size_t p = 0, n = 0;
    std::size_t starP = std::string_view::npos, starN = 0;
    while (n < name.size()) {
        const char c = lower(name[n]);
        if (p < pattern.size()) {
            const char pc = pattern[p];
            if (pc == '*') {
                starP = ++p;
                starN = n;
                continue;
            }
            bool ok = false;
            std::size_t next = p + 1;
            if (pc == '?') {
                ok = true;
            } else if (pc == '#') {
                ok = c >= '0' && c <= '9';
            } else if (pc == '[') {
                std::size_t q = p + 1;
                bool matched = false;
                if (matchSet(pattern, q, c, matched)) {
                    ok = matched;
                    next = q;
                } else {
                    ok = c == '[';
                }
            } else {
                ok = lower(pc) == c;
            }
            if (ok) {
                p = next;
                ++n;
                continue;
            }
        }
        if (starP == std::string_view::npos) return false;
        p = starP;
        n = ++starN;
    }
    while (p < pattern.size() && pattern[p] == '*') ++p;
    return p == pattern.size();
}

TypeFilter::TypeFilter(std::string_view typeList) {
    const std::string_view t = trimmed(typeList);
    if (t == "*") {
        all_ = true;
        return;
    }
    for (const std::string& item : splitItems(t)) {
        const std::string_view pattern = trimmed(item);
        if (pattern.empty()) continue;
        if (pattern.find('*') != std::string_view::npos) wild_ = true;
        patterns_.push_back(lowered(pattern));
    }
    if (patterns_.empty()) all_ = true;
}

bool TypeFilter::passes(std::string_view name) const {
    if (all_) return true;
    if (wild_) {
        for (const std::string& p : patterns_)
            if (wildMatch(p, name)) return true;
        return false;
    }
    const std::string low = lowered(name);
    for (const std::string& p : patterns_)
        if (low.find(p) != std::string::npos) return true;
    return false;
}

ListEntry parseListEntry(std::string_view entry, std::string_view defaultType, bool defaultSubdirs) {
    ListEntry e;
    e.text = std::string(trimmed(entry));
    std::string_view path = e.text;
    std::string markType;
    bool subdirs = defaultSubdirs;
    const std::size_t mark = path.rfind(" <");
    if (mark != std::string_view::npos && path.find('>', mark) != std::string_view::npos) {
        std::string_view inner = path.substr(mark + 2);
        inner = inner.substr(0, inner.rfind('>'));
        // The mark is written after the type (` <*.htm+>`); a leading one is read too.
        subdirs = false;
        if (!inner.empty() && (inner.back() == '+' || inner.back() == '-')) {
            subdirs = inner.back() == '+';
            inner.remove_suffix(1);
        } else if (!inner.empty() && (inner.front() == '+' || inner.front() == '-')) {
            subdirs = inner.front() == '+';
            inner.remove_prefix(1);
        }
        markType = std::string(trimmed(inner));
        path = trimmed(path.substr(0, mark));
    }
    std::size_t cut = path.size();
    while (cut > 0 && !isSeparator(path[cut - 1])) --cut;
    e.directory = std::string(path.substr(0, cut));
    const std::string_view filePart = trimmed(path.substr(cut));
    e.namedFiles = !filePart.empty();
    e.subdirs = subdirs;
    if (!markType.empty())
        e.type = markType;
    else if (!filePart.empty())
        e.type = std::string(filePart);
    else
        e.type = std::string(trimmed(defaultType));
    if (e.type.empty()) e.type = "*";
    return e;
}

std::vector<ListEntry> parseListSpec(std::string_view spec, std::string_view defaultType, bool defaultSubdirs) {
    std::vector<ListEntry> out;
    const std::string_view t = trimmed(spec);
    if (t.empty() || t == "{}") return out;
    for (const std::string& item : splitItems(t)) {
        if (trimmed(item).empty()) continue;
        out.push_back(parseListEntry(item, defaultType, defaultSubdirs));
    }
    return out;
}

}  // namespace tav
