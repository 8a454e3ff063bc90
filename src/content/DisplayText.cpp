#include "content/DisplayText.h"

#include <cstdint>
#include <cstring>

namespace tav {

namespace {

// Length of the valid UTF-8 sequence at s[i], or 0 if there is none.
std::size_t validSequence(std::string_view s, std::size_t i) {
    const auto b0 = static_cast<unsigned char>(s[i]);
    const std::size_t left = s.size() - i;
    auto cont = [&](std::size_t k) { return (static_cast<unsigned char>(s[i + k]) & 0xC0) == 0x80; };
    if (b0 < 0x80) return 1;
    if (b0 >= 0xC2 && b0 <= 0xDF) return left >= 2 && cont(1) ? 2 : 0;
    if (b0 >= 0xE0 && b0 <= 0xEF) {
        if (left < 3 || !cont(1) || !cont(2)) return 0;
        const auto b1 = static_cast<unsigned char>(s[i + 1]);
        if (b0 == 0xE0 && b1 < 0xA0) return 0;   // overlong
        if (b0 == 0xED && b1 >= 0xA0) return 0;  // surrogates
        return 3;
    }
    if (b0 >= 0xF0 && b0 <= 0xF4) {
        if (left < 4 || !cont(1) || !cont(2) || !cont(3)) return 0;
        const auto b1 = static_cast<unsigned char>(s[i + 1]);
        if (b0 == 0xF0 && b1 < 0x90) return 0;
        if (b0 == 0xF4 && b1 >= 0x90) return 0;
        return 4;
    }
    return 0;
}

}  // namespace

namespace {

// The UTF-8 form of each byte read as Windows-1252: up to three bytes, and
// the length in the fourth.
struct Cp1252Utf8 {
    unsigned char bytes[256][4];
    Cp1252Utf8() {
        for (int b = 0; b < 256; ++b) {
            std::string u;
            appendUtf8(u, cp1252CodePoint(static_cast<unsigned char>(b)));
            std::memcpy(bytes[b], u.data(), u.size());
            bytes[b][3] = static_cast<unsigned char>(u.size());
        }
    }
};
const Cp1252Utf8 kCp1252;

}  // namespace

void appendDisplayText(std::string& out, std::string_view bytes) {
    // Written through a pointer, a piece at a time: a byte becomes at most
    // three, and a sequence begun in a piece may end up to three bytes on.
    constexpr std::size_t kPiece = 1 << 16;
    const std::size_t n = bytes.size();
    const char* in = bytes.data();
    std::size_t i = 0;
    while (i < n) {
        const std::size_t stop = n - i > kPiece ? i + kPiece : n;
        const std::size_t base = out.size();
        out.resize(base + 3 * (stop - i) + 4);
        char* const begin = out.data();
        char* o = begin + base;
        while (i < stop) {
            // Runs of ASCII go over in one piece, eight bytes at a time
            // while none has its high bit set.
            std::size_t j = i;
            while (j + 8 <= stop) {
                std::uint64_t w;
                std::memcpy(&w, in + j, 8);
                if (w & 0x8080808080808080ULL) break;
                j += 8;
            }
            while (j < stop && static_cast<unsigned char>(in[j]) < 0x80) ++j;
            std::memcpy(o, in + i, j - i);
            o += j - i;
            i = j;
            if (i >= stop) break;
            const std::size_t len = validSequence(bytes, i);
            if (len > 0) {
                std::memcpy(o, in + i, len);
                o += len;
                i += len;
            } else {
                const unsigned char* u = kCp1252.bytes[static_cast<unsigned char>(in[i])];
                std::memcpy(o, u, 3);
                o += u[3];
                ++i;
            }
        }
        out.resize(static_cast<std::size_t>(o - begin));
    }
}

std::string toDisplayText(std::string_view bytes) {
    std::string out;
    appendDisplayText(out, bytes);
    return out;
}

char32_t nextCodePoint(std::string_view s, std::size_t& i) {
    const auto b0 = static_cast<unsigned char>(s[i]);
    const std::size_t len = validSequence(s, i);
    if (len <= 1) {
        ++i;
        return b0;
    }
    char32_t c = b0 & (len == 2 ? 0x1F : len == 3 ? 0x0F : 0x07);
    for (std::size_t k = 1; k < len; ++k) c = (c << 6) | (static_cast<unsigned char>(s[i + k]) & 0x3F);
    i += len;
    return c;
}

namespace {

// True when the eight bytes at p are all ASCII.
inline bool asciiWord(const char* p) {
    std::uint64_t w;
    std::memcpy(&w, p, 8);
    return (w & 0x8080808080808080ULL) == 0;
}

}  // namespace

std::size_t byteLengthOfChars(std::string_view text, std::size_t count) {
    std::size_t i = 0;
    const std::size_t n = text.size();
    while (count > 0 && i < n) {
        if (count >= 8 && i + 8 <= n && asciiWord(text.data() + i)) {
            i += 8;
            count -= 8;
            continue;
        }
        if (static_cast<unsigned char>(text[i]) < 0x80) {
            ++i;
        } else {
            nextCodePoint(text, i);
        }
        --count;
    }
    return i;
}

std::size_t charCount(std::string_view text) {
    std::size_t i = 0, count = 0;
    const std::size_t n = text.size();
    while (i < n) {
        if (i + 8 <= n && asciiWord(text.data() + i)) {
            i += 8;
            count += 8;
            continue;
        }
        const auto b = static_cast<unsigned char>(text[i]);
        if (b < 0x80) {
            ++i;
        } else {
            nextCodePoint(text, i);
        }
        ++count;
    }
    return count;
}

}  // namespace tav
