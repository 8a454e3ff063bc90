#include "viewer/LineMeasure.h"

namespace tav {

size_t displayCharLength(std::string_view text) {
    if (text.empty()) return 0;
    const auto c = static_cast<unsigned char>(text[0]);
    size_t n = c < 0x80 ? 1 : (c >= 0xC2 && c <= 0xDF) ? 2 : (c >= 0xE0 && c <= 0xEF) ? 3 : (c >= 0xF0 && c <= 0xF4) ? 4 : 1;
    if (n == 1 || n > text.size()) return 1;
    for (size_t i = 1; i < n; ++i)
        if ((static_cast<unsigned char>(text[i]) & 0xC0) != 0x80) return 1;
    return n;
}

size_t FixedWidthMeasure::lineLength(std::string_view text) const {
    size_t pos = 0;
    int col = 0;
    size_t lastBlankEnd = 0;  // position behind the last blank of the line
    while (pos < text.size()) {
        const char c = text[pos];
        if (c == '\n') return pos + 1;
        if (c == '\r') return (pos + 1 < text.size() && text[pos + 1] == '\n') ? pos + 2 : pos + 1;
        if (col == columns_) {
            // The line is full: a break right behind it belongs to it.
            if (wordWrap_ && c != ' ' && lastBlankEnd > 0) return lastBlankEnd;
            if (wordWrap_ && c == ' ') {
                while (pos < text.size() && text[pos] == ' ') ++pos;
            }
            if (pos < text.size() && text[pos] == '\n') return pos + 1;
            if (pos < text.size() && text[pos] == '\r')
                return (pos + 1 < text.size() && text[pos + 1] == '\n') ? pos + 2 : pos + 1;
            return pos;
        }
        if (c == ' ') lastBlankEnd = pos + 1;
        pos += displayCharLength(text.substr(pos));
        ++col;
    }
    return text.size();
}

}  // namespace tav
