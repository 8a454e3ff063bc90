#include "viewer/PlainText.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <utility>

#include "core/Utf8.h"

namespace tav {

namespace {

bool isSpace(char c) { return static_cast<unsigned char>(c) < 33; }

std::string upper(std::string_view s) {
    std::string u(s);
    for (char& c : u) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return u;
}

size_t findNoCase(std::string_view text, std::string_view what, size_t from) {
    if (what.empty()) return from;
    const char first = static_cast<char>(std::tolower(static_cast<unsigned char>(what[0])));
    const char firstUp = static_cast<char>(std::toupper(static_cast<unsigned char>(what[0])));
    const char both[3] = {first, firstUp, 0};
    for (size_t p = text.find_first_of(both, from); p != std::string_view::npos;
         p = text.find_first_of(both, p + 1)) {
        if (p + what.size() > text.size()) return std::string_view::npos;
        bool same = true;
        for (size_t i = 1; i < what.size() && same; ++i)
            same = std::tolower(static_cast<unsigned char>(text[p + i])) ==
                   std::tolower(static_cast<unsigned char>(what[i]));
        if (same) return p;
    }
    return std::string_view::npos;
}

// Position just behind `end` searched from `from`, or the text's end.
size_t behind(std::string_view text, size_t found, size_t length) {
    return found == std::string_view::npos ? text.size() : found + length;
}

}  // namespace

std::string stripMarkup(std::string_view text) {
    std::string out;
    out.reserve(text.size());  // a blank stands only where a tag of two or more characters was
    bool tagMet = false;
    auto addPiece = [&](std::string_view piece) {
        if (piece.empty()) return;
        if (tagMet && !out.empty() && !isSpace(out.back()) && !isSpace(piece.front())) out += ' ';
        out.append(piece);
        tagMet = false;
    };
    size_t pos = 0;
    while (pos < text.size()) {
        const size_t lt = text.find('<', pos);
        if (lt == std::string_view::npos) {
            addPiece(text.substr(pos));
            break;
        }
        addPiece(text.substr(pos, lt - pos));
        tagMet = true;
        const size_t gt = text.find('>', lt + 1);
        if (gt == std::string_view::npos) break;  // a tag that never ends holds the rest
        const std::string_view tag = text.substr(lt + 1, gt - lt - 1);
        const std::string word = upper(tag.substr(0, tag.find_first_of(" \r\n")));
        if (tag.substr(0, 3) == "!--") {
            pos = (tag.size() >= 5 && tag.substr(tag.size() - 2) == "--") ? gt + 1
                                                                          : behind(text, text.find("-->", lt + 4), 3);
        } else if (word == "SCRIPT" || word == "STYLE") {
            const std::string end = "</" + word + ">";
            pos = behind(text, findNoCase(text, end, gt + 1), end.size());
        } else if (!tag.empty() && tag.front() == '%') {
            pos = (tag.size() >= 2 && tag.back() == '%') ? gt + 1 : behind(text, text.find("%>", lt + 2), 2);
        } else {
            pos = gt + 1;
        }
    }
    return out;
}

std::string decodeEntities(std::string_view text) {
    static const std::array<std::pair<const char*, int>, 14> kCommon = {{
        {"nbsp", 32}, {"quot", 34}, {"amp", '&'}, {"copy", 169}, {"reg", 174}, {"lt", '<'}, {"gt", '>'},
        {"pound", 163}, {"frac14", 188}, {"frac12", 189}, {"frac34", 190}, {"acute", 97}, {"eth", 208}, {"", '&'},
    }};
    static const std::array<std::pair<const char*, int>, 46> kLetters = {{
        {"auml", 228},   {"euml", 235},   {"iuml", 239},   {"ouml", 246},   {"uuml", 252},   {"Auml", 196},
        {"Euml", 203},   {"Iuml", 207},   {"Ouml", 214},   {"Uuml", 220},   {"Agrave", 192}, {"Aacute", 193},
        {"Acirc", 194},  {"Atilde", 195}, {"Egrave", 200}, {"Eacute", 201}, {"Ecirc", 202},  {"Igrave", 204},
        {"Iacute", 205}, {"Icirc", 206},  {"Ograve", 210}, {"Oacute", 211}, {"Ocirc", 212},  {"Otilde", 213},
        {"Ugrave", 217}, {"Uacute", 218}, {"Ucirc", 219},  {"agrave", 224}, {"aacute", 225}, {"acirc", 226},
        {"atilde", 227}, {"egrave", 232}, {"eacute", 233}, {"ecirc", 234},  {"igrave", 236}, {"iacute", 237},
        {"icirc", 238},  {"ograve", 242}, {"oacute", 243}, {"ocirc", 244},  {"otilde", 245}, {"ugrave", 249},
        {"uacute", 250}, {"ucirc", 251},  {"ntilde", 241}, {"Ntilde", 209},
    }};
    std::string out;
    out.reserve(text.size());
    size_t pos = 0;
    while (pos < text.size()) {
        const size_t amp = text.find('&', pos);
        if (amp == std::string_view::npos) {
            out.append(text.substr(pos));
            break;
        }
        out.append(text.substr(pos, amp - pos));
        pos = amp + 1;
        if (pos < text.size() && text[pos] == '#') {
            // A numeric reference ends one character behind its digits.
            size_t d = pos + 1;
            while (d < text.size() && d - pos <= 9 && std::isdigit(static_cast<unsigned char>(text[d]))) ++d;
            if (d == pos + 1) {
                out += "&#";
                pos = pos + 1;
                continue;
            }
            const long value = std::stol(std::string(text.substr(pos + 1, d - pos - 1)));
            appendUtf8(out, static_cast<char32_t>(value >= 0 && value <= 255 ? value : 32));
            pos = std::min(text.size(), d + 1);
            continue;
        }
        const size_t semi = text.find(';', pos);
        const std::string_view name =
            semi == std::string_view::npos ? std::string_view{} : text.substr(pos, semi - pos);
        if (semi == std::string_view::npos || name.size() > 10 || name.find('&') != std::string_view::npos) {
            out += '&';
            continue;
        }
        std::string lower(name);
        for (char& c : lower) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        int code = -1;
        for (const auto& [n, v] : kCommon)
            if (lower == n) code = v;
        for (const auto& [n, v] : kLetters)
            if (code < 0 && name == n) code = v;
        if (code < 0)
            out += "???" + std::string(name) + "???";
        else
            appendUtf8(out, static_cast<char32_t>(code));
        pos = semi + 1;
    }
    return out;
}

std::string tidyText(std::string_view text, size_t maxLength, int maxBlankLines, bool joinLineEnds) {
    // Lines are split at CR LF, a lone CR or a lone LF when joining line ends,
    // else at CR LF only; every kept line end comes out as CR LF.
    std::string out;
    out.reserve(text.size() + text.size() / 8);  // room for CR LF in place of LF
    int blankRun = 0;
    size_t pos = 0;
    bool first = true;
    while (pos <= text.size()) {
        size_t brk, next;
        if (joinLineEnds) {
            brk = text.find_first_of("\r\n", pos);
            next = brk == std::string_view::npos ? brk
                   : (text[brk] == '\r' && brk + 1 < text.size() && text[brk + 1] == '\n') ? brk + 2
                                                                                             : brk + 1;
        } else {
            brk = text.find("\r\n", pos);
            next = brk == std::string_view::npos ? brk : brk + 2;
        }
        std::string_view line = text.substr(pos, brk == std::string_view::npos ? std::string_view::npos : brk - pos);
        if (!first) {
            size_t skip = 0;
            while (skip < line.size() && isSpace(line[skip])) ++skip;
            line.remove_prefix(skip);
        }
        const bool ended = brk != std::string_view::npos;
        if (!first && ended && line.empty()) {
            if (++blankRun <= maxBlankLines) out += "\r\n";
        } else {
            blankRun = 0;
            out.append(line);
            if (ended) out += "\r\n";
        }
        first = false;
        if (!ended) break;
        pos = next;
    }
    // Leading characters go until one of codes 32-126 or from 160 on.
    size_t start = 0;
    while (start < out.size()) {
        const unsigned char c = static_cast<unsigned char>(out[start]);
        if (c >= 32 && c <= 126) break;
        if (c >= 0x80) {
            const unsigned char c2 = start + 1 < out.size() ? static_cast<unsigned char>(out[start + 1]) : 0;
            if (c > 0xC2 || (c == 0xC2 && c2 >= 0xA0)) break;
            start += (c == 0xC2) ? 2 : 1;
            continue;
        }
        ++start;
    }
    out.erase(0, start);
    if (maxLength > 0 && utf8Length(out) > maxLength) out.resize(utf8Offset(out, maxLength));
    return out;
}

std::string plainTextOf(std::string_view bytes, const std::function<bool()>& stopped) {
    const auto stop = [&] { return stopped && stopped(); };
    // One step at a time, so that each step's input is freed before the next.
    if (stop()) return {};
    std::string text = isValidUtf8(bytes) ? stripMarkup(bytes) : stripMarkup(cp1252ToUtf8(bytes));
    if (stop()) return {};
    text = decodeEntities(text);
    if (stop()) return {};
    text = tidyText(text, 0, 1, true);
    if (stop()) return {};
    for (char& c : text)
        if (c == '\0' || c == '\t') c = '\x01';
    return text;
}

}  // namespace tav
