#include "dialogs/SpecText.h"

#include "core/ListText.h"

namespace tav {

std::string MBSpec(std::string_view text) {
    std::string out;
    if (text.find('{') != std::string_view::npos) {
        std::vector<std::string> fields = splitItems(text, "|", "{}");
        for (size_t i = 0; i < fields.size(); ++i) {
            if (i) out += kSpecSeparator;
            out += fields[i];
        }
        return out;
    }
    for (char c : text) {
        if (c == '|')
            out += kSpecSeparator;
        else
            out += c;
    }
    return out;
}

std::string MBRepeatBars(int count, std::string_view text) {
    if (count < 1) return {};
    std::string out(text);
    for (int i = 1; i < count; ++i) out += kSpecSeparator;
    return out;
}

std::vector<std::string> splitStoredSpec(std::string_view stored) {
    std::vector<std::string> out;
    size_t pos = 0;
    while (true) {
        size_t next = stored.find(kSpecSeparator, pos);
        if (next == std::string_view::npos) {
            out.emplace_back(stored.substr(pos));
            return out;
        }
        out.emplace_back(stored.substr(pos, next - pos));
        pos = next + kSpecSeparator.size();
    }
}

}  // namespace tav
