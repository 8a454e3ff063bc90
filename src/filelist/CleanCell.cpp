#include "filelist/CleanCell.h"

#include <algorithm>

namespace tav {

std::string cleanCell(std::string_view text) {
    const std::size_t first = std::min(text.find('\r'), text.find('\n'));
    if (first == std::string_view::npos) return std::string(text);
    std::string out;
    out.reserve(text.size());
    out.append(text.substr(0, first));
    for (std::size_t i = first; i < text.size(); ++i) {
        const char c = text[i];
        if (c == '\r' && i + 1 < text.size() && text[i + 1] == '\n') {
            out += ' ';
            ++i;
        } else if (c == '\r' || c == '\n') {
            out += ' ';
        } else {
            out += c;
        }
    }
    return out;
}

}  // namespace tav
