#include "find/LastSearches.h"

#include <algorithm>

#include "core/ListText.h"

namespace tav {

std::vector<std::string> parseLastSearches(std::string_view stored) {
    if (stored.empty()) return {};
    std::vector<std::string> items = splitItems(stored, "|", "{}");
    std::erase_if(items, [](const std::string& s) { return s.empty(); });
    return items;
}

std::string buildLastSearches(const std::vector<std::string>& entries) {
    if (entries.empty()) return {};
    return joinList(entries, "|", "{}");
}

void addLastSearch(std::vector<std::string>& entries, const std::string& entry) {
    std::erase(entries, entry);
    entries.insert(entries.begin(), entry);
}

std::vector<std::string> lastSearchesForDialog(const std::vector<std::string>& openWindows,
                                               const std::vector<std::string>& stored) {
    std::vector<std::string> out;
    for (const auto& r : openWindows)
        if (!r.empty()) out.push_back(r);
    out.emplace_back(kLastSearchDivider);
    out.insert(out.end(), stored.begin(), stored.end());
    return out;
}

}  // namespace tav
