#include "core/Utf8.h"

#include <cstdint>
#include <cstring>

namespace tav {

void appendUtf8(std::string& out, char32_t cp) {
    if (cp < 0x80) {
        out += static_cast<char>(cp);
    } else if (cp < 0x800) {
        out += static_cast<char>(0xC0 | (cp >> 6));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else if (cp < 0x10000) {
        out += static_cast<char>(0xE0 | (cp >> 12));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (cp >> 18));
        out += static_cast<char>(0x80 | ((cp >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    }
}

std::string utf8Char(char32_t cp) {
    std::string s;
    appendUtf8(s, cp);
    return s;
}

namespace {
// Length of the well-formed sequence at p, or 0 when it is not one.
size_t sequenceLength(const unsigned char* p, size_t avail) {
    unsigned char c = p[0];
    if (c < 0x80) return 1;
    size_t n;
    char32_t min;
    if ((c & 0xE0) == 0xC0) { n = 2; min = 0x80; }
    else if ((c & 0xF0) == 0xE0) { n = 3; min = 0x800; }
    else if ((c & 0xF8) == 0xF0) { n = 4; min = 0x10000; }
    else return 0;
    if (avail < n) return 0;
    char32_t cp = c & (0x7F >> n);
    for (size_t i = 1; i < n; ++i) {
        if ((p[i] & 0xC0) != 0x80) return 0;
        cp = (cp << 6) | (p[i] & 0x3F);
    }
    if (cp < min || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) return 0;
    return n;
}
}  // namespace

bool isValidUtf8(std::string_view bytes) {
    auto p = reinterpret_cast<const unsigned char*>(bytes.data());
    size_t i = 0, n = bytes.size();
    while (i < n) {
        if (p[i] < 0x80) {
            // ASCII runs eight bytes at a time.
            ++i;
            while (i + 8 <= n) {
                std::uint64_t word;
                std::memcpy(&word, p + i, 8);
                if (word & 0x8080808080808080ULL) break;
                i += 8;
            }
            continue;
        }
        // Two-byte sequences (Latin letters) without the general test.
        if (p[i] >= 0xC2 && p[i] <= 0xDF && i + 1 < n && (p[i + 1] & 0xC0) == 0x80) {
            i += 2;
            continue;
        }
        size_t len = sequenceLength(p + i, n - i);
        if (len == 0) return false;
        i += len;
    }
    return true;
}

char32_t cp1252CodePoint(unsigned char byte) {
    static const char16_t high[32] = {
        0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
        0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
        0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};
    return byte >= 0x80 && byte < 0xA0 ? high[byte - 0x80] : char32_t{byte};
}

std::string cp1252ToUtf8(std::string_view bytes) {
    std::string out;
    out.reserve(bytes.size() + bytes.size() / 8);
    for (unsigned char c : bytes) {
        if (c < 0x80) out += static_cast<char>(c);
        else appendUtf8(out, cp1252CodePoint(c));
    }
    return out;
}

std::string toUtf8(std::string_view bytes) {
    if (isValidUtf8(bytes)) return std::string(bytes);
    return cp1252ToUtf8(bytes);
}

size_t utf8Length(std::string_view text) {
    auto p = reinterpret_cast<const unsigned char*>(text.data());
    size_t count = 0;
    for (size_t i = 0; i < text.size(); ++i)
        if ((p[i] & 0xC0) != 0x80) ++count;
    return count;
}

size_t utf8Offset(std::string_view text, size_t index) {
    auto p = reinterpret_cast<const unsigned char*>(text.data());
    size_t count = 0;
    for (size_t i = 0; i < text.size(); ++i) {
        if ((p[i] & 0xC0) != 0x80) {
            if (count == index) return i;
            ++count;
        }
    }
    return text.size();
}

}  // namespace tav
