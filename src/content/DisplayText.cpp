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

void appendDisplayText(std::string& out, std::string_view bytes) {
    std::size_t i = 0;
    const std::size_t n = bytes.size();
    while (i < n) {
        // Runs of ASCII go over in one piece.
        std::size_t j = i;
        // Eight bytes at a time while none has its high bit set.
        while (j + 8 <= n) {
            std::uint64_t w;
            std::memcpy(&w, bytes.data() + j, 8);
            if (w & 0x8080808080808080ULL) break;
            j += 8;
        }
        while (j < n && static_cast<unsigned char>(bytes[j]) < 0x80) ++j;
        out.append(bytes.data() + i, j - i);
        i = j;
        if (i >= n) break;
        const std::size_t len = validSequence(bytes, i);
        if (len > 0) {
            out.append(bytes.data() + i, len);
            i += len;
        } else {
            const auto b = static_cast<unsigned char>(bytes[i]);
            appendUtf8(out, cp1252CodePoint(b));
            ++i;
        }
    }
}

std::string toDisplayText(std::string_view bytes) {
    std::string out;
    out.reserve(bytes.size());
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

std::size_t byteLengthOfChars(std::string_view text, std::size_t count) {
    std::size_t i = 0;
    while (count > 0 && i < text.size()) {
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
    std::size_t i = 0, n = 0;
    while (i < text.size()) {
        const auto b = static_cast<unsigned char>(text[i]);
        if (b < 0x80) {
            ++i;
        } else {
            nextCodePoint(text, i);
        }
        ++n;
    }
    return n;
}

}  // namespace tav
