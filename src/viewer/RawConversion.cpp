#include "viewer/RawConversion.h"

#include <algorithm>

namespace tav {

std::string removeBlankLines(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    size_t pos = 0;
    while (pos < text.size()) {
        // The line runs to its break: CR LF, a lone CR or a lone LF.
        size_t brk = text.find_first_of("\r\n", pos);
        if (brk == std::string_view::npos) {
            out.append(text.substr(pos));
            break;
        }
        size_t next = brk + 1;
        if (text[brk] == '\r' && next < text.size() && text[next] == '\n') ++next;
        const std::string_view content = text.substr(pos, brk - pos);
        const bool blank = std::all_of(content.begin(), content.end(),
                                       [](char c) { return static_cast<unsigned char>(c) < 33; });
        if (!blank) out.append(text.substr(pos, next - pos));
        pos = next;
    }
    return out;
}

std::string convertRawBlock(std::string_view bytes, bool removeBlank) {
    std::string out = removeBlank ? removeBlankLines(bytes) : std::string(bytes);
    for (char& c : out)
        if (c == '\0' || c == '\t') c = '\x01';
    return out;
}

}  // namespace tav
