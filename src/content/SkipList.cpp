#include "content/SkipList.h"

#include "core/ListText.h"

namespace tav {

SkipList::SkipList(std::vector<SkipEntry> entries) {
    for (SkipEntry& e : entries)
        if (!e.startText.empty()) entries_.push_back(std::move(e));
}

void SkipList::filter(std::string_view piece, int& skipping, std::string& out) const {
    while (!piece.empty()) {
        if (skipping >= 0) {
            const std::string& endText = entries_[static_cast<std::size_t>(skipping)].endText;
            const std::size_t e = endText.empty() ? 0 : piece.find(endText);
            if (e == std::string_view::npos) return;  // the whole piece is skipped
            piece.remove_prefix(e + endText.size());
            skipping = -1;
            continue;
        }
        std::size_t first = std::string_view::npos;
        int which = -1;
        for (std::size_t i = 0; i < entries_.size(); ++i) {
            const std::size_t p = piece.find(entries_[i].startText);
            if (p < first) {
                first = p;
                which = static_cast<int>(i);
            }
        }
        if (which < 0) {
            out.append(piece);
            return;
        }
        out.append(piece.substr(0, first));
        piece.remove_prefix(first + entries_[static_cast<std::size_t>(which)].startText.size());
        skipping = which;
    }
}

SkipList loadSkipList(const std::vector<std::pair<std::string, std::string>>& section,
                      std::vector<std::string>* problems) {
    auto valueOf = [&](std::string_view key, bool& found) -> std::string {
        for (const auto& [k, v] : section)
            if (k == key) {
                found = true;
                return v;
            }
        found = false;
        return {};
    };
    bool found = false;
    const std::string names = valueOf("Plain Text Remove - Entry List", found);
    std::vector<SkipEntry> entries;
    if (!found || names.empty()) return SkipList();
    for (const std::string& name : splitItems(names)) {
        if (name.empty()) continue;
        const std::string value = valueOf(name, found);
        const std::vector<std::string> parts = splitItems(value);
        if (!found || parts.size() < 2 || parts[0].empty()) {
            if (problems) problems->push_back(name);
            continue;
        }
        entries.push_back(SkipEntry{name, parts[0], parts[1]});
    }
    return SkipList(std::move(entries));
}

}  // namespace tav
