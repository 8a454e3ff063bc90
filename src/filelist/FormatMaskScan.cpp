#include "filelist/FormatMaskScan.h"

namespace tav {

bool takeMaskLiteral(std::string_view mask, std::size_t& i, std::string& out, std::string& error) {
    const char c = mask[i];
    if (c == '\\') {
        if (i + 1 >= mask.size()) {
            error = "The format ends with a backslash.";
            i = mask.size();
            return true;
        }
        out += mask[i + 1];
        i += 2;
        return true;
    }
    if (c == '"') {
        const std::size_t close = mask.find('"', i + 1);
        if (close == std::string_view::npos) {
            error = "The format has a quote that is not closed.";
            i = mask.size();
            return true;
        }
        out.append(mask.substr(i + 1, close - i - 1));
        i = close + 1;
        return true;
    }
    return false;
}

std::vector<std::string> splitMaskSections(std::string_view mask, std::string& error) {
    std::vector<std::string> sections(1);
    std::size_t i = 0;
    while (i < mask.size() && error.empty()) {
        const std::size_t start = i;
        std::string ignored;
        if (takeMaskLiteral(mask, i, ignored, error)) {
            sections.back().append(mask.substr(start, i - start));
            continue;
        }
        if (mask[i] == ';')
            sections.emplace_back();
        else
            sections.back() += mask[i];
        ++i;
    }
    return sections;
}

}  // namespace tav
