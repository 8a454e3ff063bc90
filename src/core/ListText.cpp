#include "core/ListText.h"

#include "core/AppError.h"
#include "core/TextTrim.h"
#include "core/Utf8.h"

namespace tav {

namespace {

void replaceAll(std::string& s, std::string_view from, std::string_view to) {
    if (from.empty()) return;
    for (size_t pos = s.find(from); pos != std::string::npos; pos = s.find(from, pos + to.size()))
        s.replace(pos, from.size(), to);
}

// The bracket pair of a split or join: "{}" unless two different non-blank
// characters are given.
struct Brackets {
    std::string open = "{", close = "}";
    bool plain = false;
};

Brackets bracketsOf(std::string_view arg) {
    Brackets b;
    if (arg == kPlainListStyle) {
        b.plain = true;
        return b;
    }
    if (utf8Length(arg) == 2) {
        size_t second = utf8Offset(arg, 1);
        std::string o(arg.substr(0, second)), c(arg.substr(second));
        if (o != c && o != " " && c != " ") {
            b.open = o;
            b.close = c;
        }
    }
    return b;
}

// The last n code points of s, and where they start.
size_t tailStart(std::string_view s, size_t n) {
    size_t len = utf8Length(s);
    return len < n ? std::string::npos : utf8Offset(s, len - n);
}

// Two 2-character codes, characters 33 to 254 without those in `skip`,
// neither occurring in `text`; raises 9910 when there are none.
std::pair<std::string, std::string> twoFreeCodes(std::string_view text, std::string_view skip) {
    std::string first = unusedSequence(text, 2, skip);
    if (first.empty()) raiseError(9910, "No free code to escape brackets in list");
    std::string probe(text);
    probe += '\x01';
    probe += first;
    std::string second = unusedSequence(probe, 2, skip);
    if (second.empty()) raiseError(9910, "No free code to escape brackets in list");
    return {first, second};
}

void splitPlain(std::string_view text, std::string_view sep, int limit, ListSplit& out) {
    size_t pos = 0;
    while (true) {
        if (limit > 0 && static_cast<int>(out.items.size()) >= limit) {
            out.rest = std::string(text.substr(pos));
            return;
        }
        size_t next = text.find(sep, pos);
        if (next == std::string_view::npos) {
            out.items.emplace_back(text.substr(pos));
            return;
        }
        out.items.emplace_back(text.substr(pos, next - pos));
        pos = next + sep.size();
    }
}

void splitBracketed(std::string_view text, std::string_view sep, const Brackets& br, int limit,
                    ListSplit& out) {
    std::string_view rest = text;
    while (true) {
        if (limit > 0 && static_cast<int>(out.items.size()) >= limit) {
            out.rest = std::string(rest);
            return;
        }
        std::string_view trimmed = trimBlanks(rest);
        if (trimmed.substr(0, br.open.size()) == br.open) {
            std::string_view inner = trimmed.substr(br.open.size());
            size_t close = inner.find(br.close);
            if (close == std::string_view::npos) {
                out.items.emplace_back(inner);
                return;
            }
            out.items.emplace_back(inner.substr(0, close));
            std::string_view after = trimBlanks(inner.substr(close + br.close.size()));
            if (after.empty()) return;
            if (after.substr(0, sep.size()) != sep) return;  // text behind a bracket is dropped
            rest = after.substr(sep.size());
            continue;
        }
        size_t next = rest.find(sep);
        if (next == std::string_view::npos) {
            out.items.emplace_back(rest);
            return;
        }
        out.items.emplace_back(rest.substr(0, next));
        rest = rest.substr(next + sep.size());
    }
}

}  // namespace

ListSplit splitList(std::string_view text, std::string_view separator, std::string_view brackets,
                    int limit) {
    std::string sep = separator.empty() ? std::string("|") : std::string(separator);
    Brackets br = bracketsOf(brackets);
    ListSplit out;
    if (text.empty()) {
        out.items.emplace_back();
        return out;
    }
    if (br.plain) {
        // Trailer "{{||{{" + one character + a 2-character code for the separator.
        // The kept part reaches one character into the trailer, so the last
        // element keeps a "{": stored lists depend on exactly this.
        std::string code;
        std::string_view body = text;
        size_t start = tailStart(text, 9);
        if (start != std::string::npos && text.substr(start, 6) == "{{||{{") {
            size_t codeStart = tailStart(text, 2);
            code = std::string(text.substr(codeStart));
            body = text.substr(0, start + 1);
        }
        splitPlain(body, sep, limit, out);
        if (!code.empty())
            for (auto& item : out.items) replaceAll(item, code, sep);
        return out;
    }
    std::string code1, code2;
    std::string_view body = text;
    size_t start = tailStart(text, 6);
    if (start != std::string::npos && text.substr(start, 2) == "{{") {
        size_t mid = tailStart(text, 4), last = tailStart(text, 2);
        code1 = std::string(text.substr(mid, last - mid));
        code2 = std::string(text.substr(last));
        body = text.substr(0, start);
    }
    splitBracketed(body, sep, br, limit, out);
    if (!code1.empty()) {
        for (auto& item : out.items) {
            replaceAll(item, code1, br.open);
            replaceAll(item, code2, br.close);
        }
    }
    return out;
}

std::vector<std::string> splitItems(std::string_view text, std::string_view separator,
                                    std::string_view brackets) {
    return splitList(text, separator, brackets).items;
}

std::string listElement(std::string_view text, int n, std::string_view separator,
                        std::string_view brackets) {
    if (n < 1) return {};
    ListSplit s = splitList(text, separator, brackets, 0);
    if (static_cast<size_t>(n) > s.items.size()) return {};
    return s.items[n - 1];
}

std::string joinList(const std::vector<std::string>& items, std::string_view separator,
                     std::string_view brackets) {
    std::string sep = separator.empty() ? std::string("|") : std::string(separator);
    Brackets br = bracketsOf(brackets);
    std::string all;
    for (const auto& item : items) all += item;

    if (br.plain) {
        bool holdsSep = all.find(sep) != std::string::npos;
        for (const auto& item : items) holdsSep = holdsSep || item.find(sep) != std::string::npos;
        std::string code;
        if (holdsSep) {
            std::string probe;
            for (const auto& item : items) probe += item + '\x01';
            code = unusedSequence(probe, 2, "{}" + sep);
            if (code.empty()) raiseError(9910, "No free code to escape the separator in list");
        }
        std::string out;
        for (size_t i = 0; i < items.size(); ++i) {
            if (i) out += sep;
            std::string item = items[i];
            if (!code.empty()) replaceAll(item, sep, code);
            out += item;
        }
        if (!code.empty()) out += "{{||{{" + sep.substr(0, 1) + code;
        return out;
    }

    bool needsCodes = false;
    for (const auto& item : items)
        if (item.find(br.open) != std::string::npos || item.find(br.close) != std::string::npos)
            needsCodes = true;
    std::string out;
    if (needsCodes) {
        std::string probe;
        for (const auto& item : items) probe += item + '\x01';
        auto [c1, c2] = twoFreeCodes(probe, br.open + br.close + sep);
        for (size_t i = 0; i < items.size(); ++i) {
            if (i) out += sep;
            std::string item = items[i];
            replaceAll(item, br.open, c1);
            replaceAll(item, br.close, c2);
            out += br.open + item + br.close;
        }
        out += "{{" + c1 + c2;
        return out;
    }
    for (size_t i = 0; i < items.size(); ++i) {
        if (i) out += sep;
        const std::string& item = items[i];
        bool bracket = item.find(sep) != std::string::npos ||
                       trimBlanks(item).substr(0, br.open.size()) == br.open;
        out += bracket ? br.open + item + br.close : item;
    }
    return out;
}

std::string unusedSequence(std::string_view text, int length, std::string_view skip) {
    if (length < 1 || length > 3) return {};
    std::vector<std::string> chars;
    for (char32_t cp = 33; cp <= 254; ++cp) {
        std::string c = utf8Char(cp);
        if (!skip.empty() && skip.find(c) != std::string_view::npos) continue;
        chars.push_back(c);
    }
    const size_t n = chars.size();
    std::vector<size_t> idx(length, 0);
    while (true) {
        std::string candidate;
        for (size_t i : idx) candidate += chars[i];
        if (text.find(candidate) == std::string_view::npos) return candidate;
        int pos = length - 1;
        while (pos >= 0 && ++idx[pos] == n) idx[pos--] = 0;
        if (pos < 0) return {};
    }
}

bool textIsTrue(std::string_view text) {
    std::string_view t = trimBlanks(text);
    return !(t.empty() || t == "0" || t == "False");
}

}  // namespace tav
