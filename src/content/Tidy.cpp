#include "content/Tidy.h"

#include "content/DisplayText.h"

#include <bit>
#include <cstdint>
#include <cstring>

namespace tav {

namespace {

// Characters that may start a tidied text: codes 32 to 126 and from 160 up.
bool keepsAtStart(char32_t c) { return (c >= 32 && c <= 126) || c >= 160; }

std::size_t firstKeepable(std::string_view s, std::size_t from) {
    std::size_t i = from;
    while (i < s.size()) {
        const auto b = static_cast<unsigned char>(s[i]);
        if (b >= 32 && b <= 126) return i;
        if (b < 0x80) {
            ++i;
            continue;
        }
        std::size_t next = i;
        if (keepsAtStart(nextCodePoint(s, next))) return i;
        i = next;
    }
    return i;
}

// Index of the first CR or LF at or after `from`, or the text's size;
// eight bytes a step.
std::size_t lineEndFrom(std::string_view s, std::size_t from) {
    constexpr std::uint64_t ones = 0x0101010101010101ULL;
    constexpr std::uint64_t highs = 0x8080808080808080ULL;
    std::size_t i = from;
    const std::size_t n = s.size();
    while (std::endian::native == std::endian::little && i + 8 <= n) {
        std::uint64_t w;
        std::memcpy(&w, s.data() + i, 8);
        const std::uint64_t cr = w ^ (ones * '\r');
        const std::uint64_t lf = w ^ (ones * '\n');
        // A zero byte in either: the first such byte is exact.
        const std::uint64_t zero = ((cr - ones) & ~cr & highs) | ((lf - ones) & ~lf & highs);
        if (zero != 0) return i + static_cast<std::size_t>(std::countr_zero(zero)) / 8;
        i += 8;
    }
    while (i < n && s[i] != '\r' && s[i] != '\n') ++i;
    return i;
}

// Keeps out[start..] up to maxLength characters, in place.
void cutInPlace(std::string& out, std::size_t start, std::size_t maxLength) {
    if (start > 0) out.erase(0, start);
    if (maxLength > 0) out.resize(byteLengthOfChars(out, maxLength));
}

}  // namespace

void Tidy(std::string_view text, std::size_t maxLength, int maxBlankLines, bool joinLineEnds, std::string& out) {
    if (!joinLineEnds || (text.find('\r') == std::string_view::npos && text.find('\n') == std::string_view::npos)) {
        const std::size_t start = firstKeepable(text, 0);
        std::string_view rest = text.substr(start);
        if (maxLength > 0) rest = rest.substr(0, byteLengthOfChars(rest, maxLength));
        out.assign(rest.data(), rest.size());
        return;
    }
    out.clear();
    std::size_t keepFrom = std::string_view::npos;  // start of the kept text, once known
    int blankRun = 0;
    std::size_t pos = 0;
    bool firstLine = true;
    const std::size_t n = text.size();
    while (true) {
        const std::size_t end = lineEndFrom(text, pos);
        std::string_view line = text.substr(pos, end - pos);
        const bool last = end >= n;
        if (firstLine) {
            out.append(line);
            firstLine = false;
        } else {
            std::size_t k = 0;
            while (k < line.size() && static_cast<unsigned char>(line[k]) < 33) ++k;
            line.remove_prefix(k);
            if (line.empty() && !last) {
                if (blankRun < maxBlankLines) out.append(kTidyLineEnd);
                ++blankRun;
            } else {
                out.append(kTidyLineEnd);
                out.append(line);
                blankRun = 0;
            }
        }
        if (last) break;
        pos = end + ((text[end] == '\r' && end + 1 < n && text[end + 1] == '\n') ? 2 : 1);
        // Enough text for the cut: stop early (a character is at most 4 bytes).
        if (maxLength > 0) {
            if (keepFrom == std::string_view::npos) {
                const std::size_t k = firstKeepable(out, 0);
                if (k < out.size()) keepFrom = k;
            }
            if (keepFrom != std::string_view::npos && out.size() - keepFrom >= 4 * maxLength) break;
        }
    }
    cutInPlace(out, firstKeepable(out, 0), maxLength);
}

std::string Tidy(std::string_view text, std::size_t maxLength, int maxBlankLines, bool joinLineEnds) {
    std::string out;
    Tidy(text, maxLength, maxBlankLines, joinLineEnds, out);
    return out;
}

}  // namespace tav
