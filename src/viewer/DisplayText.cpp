#include "viewer/DisplayText.h"

#include "core/Utf8.h"
#include "viewer/LineMeasure.h"

namespace tav {

std::string displayText(std::string_view bytes, bool markControls) {
    std::string out;
    out.reserve(bytes.size());
    size_t pos = 0;
    while (pos < bytes.size()) {
        const size_t n = displayCharLength(bytes.substr(pos));
        const auto c = static_cast<unsigned char>(bytes[pos]);
        if (n > 1) {
            out.append(bytes.substr(pos, n));
        } else if (c >= 0x80) {
            out += cp1252ToUtf8(bytes.substr(pos, 1));
        } else if (markControls && (c < 32 || c == 127) && c != '\n' && c != '\r') {
            out += '.';
        } else {
            out += static_cast<char>(c);
        }
        pos += n;
    }
    return out;
}

size_t unfinishedUtf8Tail(std::string_view bytes) {
    for (size_t back = 1; back <= 3 && back <= bytes.size(); ++back) {
        const auto c = static_cast<unsigned char>(bytes[bytes.size() - back]);
        if ((c & 0xC0) == 0x80) continue;  // a continuation byte: look further back
        const size_t need = (c >= 0xC2 && c <= 0xDF) ? 2 : (c >= 0xE0 && c <= 0xEF) ? 3 : (c >= 0xF0 && c <= 0xF4) ? 4 : 1;
        return need > back ? back : 0;
    }
    return 0;
}

}  // namespace tav
