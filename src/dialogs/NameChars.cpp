#include "dialogs/NameChars.h"

#include <vector>

#include "core/Utf8.h"

namespace tav {

namespace {

bool inOldSet(char32_t c) {
    return c == 33 || (c >= 35 && c <= 41) || c == 45 || c == 46 || (c >= 48 && c <= 57) || c == 64 ||
           (c >= 65 && c <= 90) || (c >= 94 && c <= 96) || (c >= 97 && c <= 122) || c == 123 || c == 125 ||
           c == 126;
}

// Decodes one code point at s[i], advancing i; a byte that is no valid
// UTF-8 start counts as the Windows-1252 character of that byte.
char32_t nextCodePoint(std::string_view s, size_t& i) {
    unsigned char b = static_cast<unsigned char>(s[i]);
    int extra = b < 0x80 ? 0 : (b >> 5) == 6 ? 1 : (b >> 4) == 14 ? 2 : (b >> 3) == 30 ? 3 : -1;
    if (extra > 0 && i + extra < s.size()) {
        char32_t cp = b & (0x3F >> extra);
        bool ok = true;
        for (int k = 1; k <= extra; ++k) {
            unsigned char cb = static_cast<unsigned char>(s[i + k]);
            ok = ok && (cb & 0xC0) == 0x80;
            cp = (cp << 6) | (cb & 0x3F);
        }
        if (ok) {
            i += extra + 1;
            return cp;
        }
    }
    ++i;
    return b;
}

}  // namespace

bool isAllowedNameChar(char32_t cp, bool oldCharset) {
    if (oldCharset) return inOldSet(cp);
    if (cp == 0) return false;
#ifdef _WIN32
    switch (cp) {
    case '"': case '*': case '/': case ':': case '<': case '>': case '?': case '\\': case '|':
        return false;
    default:
        return true;
    }
#else
    return cp != '/';
#endif
}

std::string badNameChars(std::string_view part, bool oldCharset) {
    std::vector<char32_t> bad;
    for (size_t i = 0; i < part.size();) {
        char32_t cp = nextCodePoint(part, i);
        if (isAllowedNameChar(cp, oldCharset)) continue;
        bool seen = false;
        for (char32_t b : bad) seen = seen || b == cp;
        if (!seen) bad.push_back(cp);
    }
    std::string out;
    for (char32_t cp : bad) {
        if (!out.empty()) out += ' ';
        if (cp < 32 || cp == 127)
            out += "chr(" + std::to_string(static_cast<unsigned>(cp)) + ")";
        else
            appendUtf8(out, cp);
    }
    return out;
}

}  // namespace tav
